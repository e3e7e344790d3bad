#include "uninstaller/ResidualFixture.h"

#include <QFile>
#include <QFileInfo>

#include <filesystem>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::testing {

namespace {

void makeFolders(const QByteArray &path)
{
    for (qsizetype at = path.indexOf('/', 1); at >= 0; at = path.indexOf('/', at + 1))
        ::mkdir(path.left(at).constData(), 0755);
}

} // namespace

platform::ResidualLayout macLayout(const QByteArray &root)
{
    using Name = platform::NamedChild::Name;
    platform::ResidualLayout layout;
    layout.home = root + "/home/user";
    const QByteArray library = layout.home + "/Library/";
    const QByteArray shared = root + "/Library/";
    layout.preferences = {library + "Preferences", shared + "Preferences"};
    layout.appSupport = {library + "Application Support"};
    layout.caches = {library + "Caches"};
    layout.logs = {library + "Logs"};
    layout.containers = {{library + "Containers", Name::Identifier}};
    layout.groupContainers = {library + "Group Containers"};
    layout.launchAgents = {library + "LaunchAgents", shared + "LaunchAgents", shared + "LaunchDaemons"};
    layout.crashReports = {library + "Logs/DiagnosticReports"};
    layout.savedState = {{library + "Saved Application State", Name::Identifier, ".savedState"}};
    layout.extensions = {library + "Extensions"};
    layout.receipts = {shared + "Receipts"};
    layout.sharedFolders = {layout.home, library + "Preferences", library + "Caches", shared + "Preferences"};
    return layout;
}

platform::ApplicationFacts MadeRoots::factsOf(const QString &, const QString &) const
{
    gate.pass();
    return facts;
}

QString memoryFolder()
{
    const QFileInfo memory(QStringLiteral("/dev/shm"));
    return memory.isDir() && memory.isWritable() ? memory.filePath() : QDir::tempPath();
}

MadeTree::MadeTree(const QString &place)
    : m_folder(place + QStringLiteral("/quillbay-tree-XXXXXX"))
{
    root = QFile::encodeName(m_folder.path());
    home = root + "/home/user";
    ::chmod(root.constData(), 0755);
    folder("~/Applications");
}

MadeTree::~MadeTree()
{
    // Takes names of any bytes, which QTemporaryDir leaves behind.
    std::error_code error;
    std::filesystem::remove_all(root.toStdString(), error);
    EXPECT_FALSE(error) << error.message();
}

platform::LinuxBaseFolders MadeTree::linuxFolders() const
{
    platform::LinuxBaseFolders folders = platform::LinuxBaseFolders::inHome(home);
    folders.systemRoot = root;
    return folders;
}

QByteArray MadeTree::path(const QByteArray &path) const
{
    return path.startsWith('~') ? home + path.mid(1) : root + path;
}

QByteArray MadeTree::file(const QByteArray &name, int size) const
{
    const QByteArray whole = path(name);
    makeFolders(whole);
    const int file = ::open(whole.constData(), O_CREAT | O_WRONLY | O_TRUNC | O_CLOEXEC, 0644);
    if (file < 0 || ::write(file, QByteArray(size, 'x').constData(), size_t(size)) != size)
        ADD_FAILURE() << "cannot write " << whole.constData();
    ::close(file);
    return whole;
}

QByteArray MadeTree::folder(const QByteArray &name) const
{
    const QByteArray whole = path(name);
    makeFolders(whole + '/');
    return whole;
}

QByteArray MadeTree::link(const QByteArray &name, const QByteArray &target) const
{
    const QByteArray whole = path(name);
    makeFolders(whole);
    if (::symlink(target.constData(), whole.constData()) != 0)
        ADD_FAILURE() << "cannot link " << whole.constData();
    return whole;
}

std::vector<AppResidualFile> MadeTree::scan(const QString &name, const QString &appPath) const
{
    AppItem app;
    app.name = name;
    app.path = appPath.isEmpty() ? QFile::decodeName(home + "/Applications/Acme.app") : appPath;
    const std::atomic_bool stopped = false;
    ResidualScan scan(app, {roots, packages}, stopped);
    std::vector<AppResidualFile> rows;
    for (const ScanStep &step : scanSteps) {
        for (const AppResidualFile &row : scan.run(step))
            rows.push_back(row);
    }
    return rows;
}

std::vector<std::string> MadeTree::rows(const QString &name) const
{
    std::vector<std::string> lines;
    for (const AppResidualFile &row : scan(name)) {
        if (row.category != ResidualCategory::appBundle)
            lines.push_back(line(row));
    }
    return lines;
}

std::string MadeTree::line(const AppResidualFile &row) const
{
    QByteArray where = row.path;
    if (where.startsWith(home))
        where = '~' + where.mid(home.size());
    else if (where.startsWith(root))
        where = where.mid(root.size());
    return (rawValue(row.category).toUtf8() + ' ' + where + ' ' + QByteArray::number(row.sizeBytes))
        .toStdString();
}

OrdinaryUser::OrdinaryUser()
    : m_wasRoot(::geteuid() == 0)
{
    if (m_wasRoot && ::seteuid(65534) != 0)
        ADD_FAILURE() << "cannot become an ordinary user";
}

OrdinaryUser::~OrdinaryUser()
{
    if (m_wasRoot && ::seteuid(0) != 0)
        ADD_FAILURE() << "cannot become root again";
}

} // namespace quillbay::testing
