#include "platform/linux/uninstalling/LinuxResidualRoots.h"

#include "platform/linux/uninstalling/EntryProgram.h"
#include "platform/linux/uninstalling/MountPoints.h"

#include <QFile>
#include <QFileInfo>

#include <cstdlib>
#include <memory>

#include <unistd.h>

namespace quillbay::platform {

namespace {

QString baseName(const QString &path)
{
    return path.section(u'/', -1);
}

QByteArray realPath(const QByteArray &path)
{
    const std::unique_ptr<char, decltype(&std::free)> real(::realpath(path.constData(), nullptr), &std::free);
    return QByteArray(real.get());
}

bool isBelow(const QByteArray &path, const QByteArray &folder)
{
    return !folder.isEmpty() && path.startsWith(folder + '/');
}

} // namespace

LinuxResidualRoots::LinuxResidualRoots(const LinuxBaseFolders &folders,
                                       const ApplicationEnvironment &environment)
    : m_folders(folders)
    , m_environment(environment)
    , m_applications(environment)
{
}

ResidualLayout LinuxResidualRoots::layout() const
{
    LinuxBaseFolders folders = m_folders;
    folders.others += userFolders();
    return linuxResidualLayout(folders);
}

ApplicationFacts LinuxResidualRoots::factsOf(const QString &path, const QString &name) const
{
    const std::optional<ApplicationDetails> details = m_applications.read(path);
    if (!details)
        return {};
    ApplicationFacts facts;
    facts.identifier = details->identifier;
    if (const QString last = details->identifier.section(u'.', -1); !last.isEmpty())
        facts.wholeNames += last;
    const QString program = programOf(*details);
    const QString programName = baseName(program);
    const bool isEntry = details->executable.isEmpty();
    if (runsOthers(programName) || (isEntry && isStartedByAnother(programName, path)))
        return facts;
    facts.wholeNames += programName;
    facts.programNames += programName;
    if (path.startsWith(m_environment.dataHome + QStringLiteral("/applications/")))
        facts.ownFiles = selfInstalled(resolved(program), facts.wholeNames + QStringList(name));
    return facts;
}

std::optional<QList<QByteArray>> LinuxResidualRoots::mountPoints() const
{
    return currentMountPoints();
}

QString LinuxResidualRoots::resolved(const QString &program) const
{
    if (program.contains(u'/'))
        return program.startsWith(u'/') ? program : QString();
    for (const std::string &folder : m_environment.path) {
        const QString path = QFile::decodeName(folder.c_str()) + u'/' + program;
        const QFileInfo file(path);
        if (file.isFile() && file.isExecutable())
            return path;
    }
    return {};
}

bool LinuxResidualRoots::isStartedByAnother(const QString &programName, const QString &path) const
{
    for (const InstalledApplication &other : m_applications.scan()) {
        if (other.path == path)
            continue;
        const std::optional<ApplicationDetails> details = m_applications.read(other.path);
        // An image that is listed beside its entry is the program itself.
        if (details && details->executable.isEmpty() &&
            baseName(programOf(*details)).compare(programName, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// The program's file, or its own folder with, where the program is a link into it, the link.
QList<QByteArray> LinuxResidualRoots::selfInstalled(const QString &program, const QStringList &names) const
{
    const QByteArray path = cleanFolderPath(QFile::encodeName(program));
    if (path.isEmpty() || !isBelow(path, m_folders.home) || !QFileInfo(program).isFile())
        return {};
    const QByteArray real = realPath(path);
    const QByteArray folder = ownFolderOf(real, realPath(m_folders.home), names);
    // A working copy is more than the program that was built in it.
    if (folder.isEmpty() || layout().sharedFolders.contains(folder) ||
        QFileInfo::exists(QFile::decodeName(folder) + QStringLiteral("/.git")))
        return {path};
    return QFileInfo(program).isSymLink() && !isBelow(path, folder) ? QList<QByteArray>{path, folder}
                                                                    : QList<QByteArray>{folder};
}

} // namespace quillbay::platform
