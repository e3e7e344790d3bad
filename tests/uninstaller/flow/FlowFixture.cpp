#include "uninstaller/flow/FlowFixture.h"

#include <QFile>
#include <QThreadPool>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace quillbay::testing {

namespace {

constexpr int patience = 20'000;

} // namespace

FlowTest::FlowTest()
{
    tree.useMacLayout();
    tree.file("~/Applications/Acme.app/run", 1'000);
    appFolder = tree.path("~/Applications/Acme.app");
    preferences = tree.file("~/Library/Preferences/acme.plist", 600);
    tree.file("~/Library/Caches/acme/x", 1'400);
    cache = tree.path("~/Library/Caches/acme");
    log = tree.file("~/Library/Logs/acme.log", 3'000);
    tree.file("~/Library/Caches/other", 5);
    app.name = QStringLiteral("Acme");
    app.path = QFile::decodeName(appFolder);
}

FlowTest::~FlowTest()
{
    flow.reset();
    uninstaller.reset();
    QThreadPool::globalInstance()->waitForDone();
    QCoreApplication::processEvents();
}

void FlowTest::begin()
{
    flow.reset();
    uninstaller = std::make_unique<Uninstaller>(
        UninstallerServices{tree.roots, packages, runElevated, files, trash, admin, access,
                            QFile::decodeName(tree.root + "/receipts")});
    flow = uninstaller->begin(app);
}

void FlowTest::review()
{
    begin();
    ASSERT_TRUE(waitForStage(Stage::Review));
}

bool FlowTest::waitForStage(Stage stage)
{
    return QTest::qWaitFor([&] { return flow->stage() == stage; }, patience);
}

bool FlowTest::settle()
{
    return QTest::qWaitFor([&] { return !flow->isBusy(); }, patience);
}

bool FlowTest::waitForQuestion()
{
    return QTest::qWaitFor([&] { return flow->hasPackageQuestion(); }, patience);
}

void FlowTest::removeToTrash()
{
    flow->moveToTrash();
    ASSERT_TRUE(flow->isBusy());
    ASSERT_TRUE(settle());
}

void FlowTest::removeForGood()
{
    flow->deletePermanently();
    ASSERT_TRUE(flow->isBusy());
    ASSERT_TRUE(settle());
}

bool FlowTest::exists(const QByteArray &path) const
{
    return FileIdentity::of(path).has_value();
}

platform::Package &FlowTest::ownApplication(const QStringList &others)
{
    packages->install(appFolder, QStringLiteral("acme"), others);
    return packages->installed[appFolder].package;
}

std::map<std::string, std::string> FlowTest::homeContent() const
{
    std::map<std::string, std::string> content;
    for (const auto &entry : std::filesystem::recursive_directory_iterator(tree.home.toStdString())) {
        std::ifstream file(entry.path());
        content[entry.path().string()] =
            entry.is_directory() ? "folder" : std::string(std::istreambuf_iterator<char>(file), {});
    }
    return content;
}

QList<RemovalRecord> FlowTest::receipts() const
{
    QList<RemovalRecord> records;
    for (const QString &file : ReceiptStore::files(QFile::decodeName(tree.root + "/receipts")))
        records += ReceiptStore::read(file).records;
    return records;
}

QString FlowTest::rowId(const QString &name) const
{
    const ResidualRowsModel &rows = *flow->rows();
    for (int row = 0; row < rows.count(); ++row) {
        if (rows.index(row).data(ResidualRowsModel::NameRole) == name)
            return rows.index(row).data(ResidualRowsModel::RowIdRole).toString();
    }
    ADD_FAILURE() << "no row " << name.toStdString();
    return {};
}

} // namespace quillbay::testing
