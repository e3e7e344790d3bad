#include "uninstaller/removal/RemovalFixture.h"

#include "platform/linux/uninstalling/removal/ElevationAnswer.h"
#include "platform/linux/uninstalling/removal/ElevationHelper.h"

#include <QDir>
#include <QEventLoop>
#include <QFile>
#include <QProcess>
#include <QThread>

#include <algorithm>
#include <filesystem>

namespace quillbay::testing {

using platform::FileResult;

RemovalTest::RemovalTest()
    : home(qgetenv("HOME"))
    , rows(qgetenv("XDG_CONFIG_HOME") + "/rows")
    , outside(home + "/outside")
    , trashFolder(qgetenv("XDG_DATA_HOME") + "/Trash")
{
    clear();
    std::filesystem::create_directories(rows.toStdString());
    HostileTree(1, outside.toStdString()).makeOutside();
    m_before = snapshotOf(outside.toStdString());
}

RemovalTest::~RemovalTest()
{
    EXPECT_EQ(damage(), "");
    clear();
}

// Qt itself cannot remove all of these names.
void RemovalTest::clear() const
{
    for (const QByteArray &folder :
         {rows, outside, trashFolder, home + "/receipts", home + "/kept", qgetenv("XDG_STATE_HOME")})
        std::filesystem::remove_all(folder.toStdString());
}

bool RemovalTest::exists(const QByteArray &path)
{
    return FileIdentity::of(path).has_value();
}

RemovalItem RemovalTest::item(const QByteArray &path, bool isUserDeletable, qint64 size)
{
    return {path, QString::fromUtf8(path.mid(path.lastIndexOf('/') + 1)), size, isUserDeletable,
            FileIdentity::of(path).value_or(FileIdentity{})};
}

QByteArray RemovalTest::file(const QByteArray &name, const QByteArray &content) const
{
    const QByteArray path = rows + '/' + name;
    writeFile(path.toStdString(), content.toStdString());
    return path;
}

RemovalServices RemovalTest::services()
{
    RemovalServices result{files, trash, admin, QFile::decodeName(home + "/receipts")};
    result.isProtected = isProtected;
    result.now = [] { return QDateTime(QDate(2024, 5, 1), QTime(12, 0, 0, 250), Qt::UTC); };
    result.stop = stopSource.get_token();
    return result;
}

void RemovalTest::off(const std::function<void()> &work)
{
    QEventLoop loop;
    const std::unique_ptr<QThread> thread(QThread::create(work));
    QObject::connect(thread.get(), &QThread::finished, &loop, &QEventLoop::quit);
    thread->start();
    loop.exec();
    thread->wait();
}

RemovalResult RemovalTest::remove(const QList<RemovalItem> &items, DeletionMethod method)
{
    RemovalResult result;
    off([&] { result = removeItems(items, method, services()); });
    return result;
}

PutBackResult RemovalTest::back(const Receipt &receipt)
{
    PutBackResult result;
    off([&] { result = putBack(receipt, services()); });
    return result;
}

void RemovalTest::elevate()
{
    elevation.perform = &runHelper;
}

void RemovalTest::breakTrash()
{
    trash.failure = [](const QByteArray &) {
        return FileResult{FileResult::Outcome::Failed, QStringLiteral("No Trash here")};
    };
}

bool RemovalTest::hasTrash()
{
    static const bool works = [] {
        const QByteArray path = qgetenv("HOME") + "/trash probe";
        writeFile(path.toStdString(), "x");
        return FakeTrash().moveToTrash(path).done();
    }();
    return works;
}

QByteArrayList RemovalTest::inTrash(const char *folder) const
{
    QByteArrayList result;
    const std::filesystem::path path = (trashFolder + '/' + folder).toStdString();
    if (std::filesystem::exists(path)) {
        for (const auto &entry : std::filesystem::directory_iterator(path))
            result.append(QByteArray::fromStdString(entry.path().filename().string()));
    }
    std::sort(result.begin(), result.end());
    return result;
}

QByteArrayList RemovalTest::lines() const
{
    QByteArrayList result;
    for (const platform::ElevatedCommand &command : elevation.commands)
        result.append(command.line);
    return result;
}

platform::ElevationResult runHelper(const platform::ElevatedCommand &command)
{
    QProcess process;
    process.start(QStringLiteral(QUILLBAY_ELEVATE), platform::helperArguments(command));
    if (!process.waitForFinished(20000))
        return {};
    return platform::readAnswer({process.exitStatus() == QProcess::CrashExit, process.exitCode(),
                                 process.readAllStandardOutput(), process.readAllStandardError()});
}

} // namespace quillbay::testing
