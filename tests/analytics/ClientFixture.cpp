#include "analytics/ClientFixture.h"

#include "foundation/Database.h"
#include "foundation/Statement.h"

#include <QJsonDocument>
#include <QTest>
#include <QVariant>

#include <chrono>

namespace quillbay::testing {

namespace {

constexpr std::chrono::seconds patience(30);

} // namespace

ClientFixture::ClientFixture()
{
    EXPECT_TRUE(folder.isValid());
}

ClientFixture::~ClientFixture()
{
    // Every store holds the clock until it is closed.
    EXPECT_TRUE(runUntil([this] { return clock.use_count() == 1; })) << "an instance lives on";
}

MarlpostSurroundings ClientFixture::surroundings() const
{
    MarlpostSurroundings around;
    around.device = device;
    around.appVersion = {"1.2", "34"};
    around.places = {folder.filePath(QStringLiteral("cache")),
                     folder.filePath(QStringLiteral("preferences.sqlite"))};
    around.flush.clock = [clock = clock] { return clock->load(); };
    around.builtInServer.clear(); // whatever this build has
    return around;
}

std::shared_ptr<MarlpostInstance> ClientFixture::start(MarlpostOptions options)
{
    if (options.token.empty())
        options.token = token;
    return MarlpostInstance::create(options, surroundings());
}

std::shared_ptr<MarlpostInstance> ClientFixture::startAndSettle(MarlpostOptions options)
{
    std::shared_ptr<MarlpostInstance> instance = start(std::move(options));
    settle(*instance);
    return instance;
}

void ClientFixture::settle(const MarlpostInstance &instance)
{
    // Each queue hands work to the other: only when both have nothing left in a row is all done.
    for (int quiet = 0; quiet < 2;) {
        ASSERT_TRUE(instance.trackingQueue().waitUntilDone(patience));
        quiet = instance.networkQueue().waitUntilDone(std::chrono::milliseconds(0)) &&
                        instance.trackingQueue().waitUntilDone(std::chrono::milliseconds(0))
                    ? quiet + 1
                    : 0;
        ASSERT_TRUE(instance.networkQueue().waitUntilDone(patience));
    }
}

void ClientFixture::end(std::shared_ptr<MarlpostInstance> &instance)
{
    settle(*instance);
    const std::weak_ptr<MarlpostInstance> gone = instance;
    instance.reset();
    ASSERT_TRUE(runUntil([&gone] { return gone.expired(); }));
}

bool ClientFixture::runUntil(const std::function<bool()> &condition)
{
    return QTest::qWaitFor(condition, int(std::chrono::milliseconds(patience).count()));
}

QList<QJsonObject> ClientFixture::rows(const char *kind, int flag, const char *name) const
{
    Database database;
    QList<QJsonObject> found;
    if (!database.open(folder.filePath(QStringLiteral("cache/%1_MPDB.sqlite").arg(QLatin1String(name))),
                       Database::Mode::ReadOnly))
        return found;
    EXPECT_TRUE(database.setBusyTimeout(int(std::chrono::milliseconds(patience).count())));
    Statement statement(database, QByteArray("SELECT data FROM marlpost_") + name + "_" + kind +
                                      " WHERE flag = " + QByteArray::number(flag) + " ORDER BY id");
    while (statement.step() == Statement::Result::Row)
        found.append(QJsonDocument::fromJson(statement.blob(0)).object());
    EXPECT_EQ(statement.errorCode(), 0) << statement.errorText().toStdString();
    return found;
}

QStringList ClientFixture::events(const char *name) const
{
    QStringList names;
    for (const QJsonObject &row : rows("events", 0, name))
        names.append(row.value(QLatin1String("event")).toString());
    return names;
}

QJsonObject ClientFixture::lastProperties() const
{
    const QList<QJsonObject> all = rows("events");
    return all.isEmpty() ? QJsonObject() : all.last().value(QLatin1String("properties")).toObject();
}

QVariant ClientFixture::stored(const char *baseKey) const
{
    Database database;
    if (!database.open(folder.filePath(QStringLiteral("preferences.sqlite")), Database::Mode::ReadOnly))
        return {};
    EXPECT_TRUE(database.setBusyTimeout(int(std::chrono::milliseconds(patience).count())));
    Statement statement(database, "SELECT value FROM preferences WHERE domain = 'Marlpost' AND key = ?");
    statement.bindText(1, QStringLiteral("Marlpost-token-") + QLatin1String(baseKey));
    return statement.step() == Statement::Result::Row ? QVariant(statement.text(0)) : QVariant();
}

} // namespace quillbay::testing
