#include "platform/linux/watching/InotifyFolderWatch.h"

#include <QFile>
#include <QLoggingCategory>

#include <algorithm>
#include <array>
#include <cerrno>
#include <ctime>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

namespace quillbay::platform {

namespace {

Q_LOGGING_CATEGORY(log, "quillbay.platform.watching")

// A file linked into place (O_TMPFILE and linkat) gives IN_CREATE and nothing else.
constexpr std::uint32_t watchMask = IN_CLOSE_WRITE | IN_CREATE | IN_MOVED_TO | IN_MOVED_FROM | IN_DELETE |
                                    IN_ATTRIB | IN_DELETE_SELF | IN_MOVE_SELF | IN_ONLYDIR;
constexpr std::uint32_t goneMask = IN_DELETE_SELF | IN_MOVE_SELF | IN_UNMOUNT | IN_IGNORED;
constexpr time_t lately = 10;
constexpr char flatpakStampName[] = ".changed";

bool isExhausted(int error)
{
    return error == ENOSPC || error == EMFILE || error == ENFILE || error == ENOMEM;
}

/// The folder of the flatpak installation that exports into `folder`; null if none does.
QString flatpakInstallation(const QString &folder)
{
    const QLatin1String exports("/exports/share/applications");
    if (!folder.endsWith(QLatin1String("/flatpak") + exports))
        return {};
    return folder.chopped(exports.size());
}

/// False also where its clock or ours was set back since: better than a report each time.
bool changedLately(const QString &folder)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(folder).constData(), &status) != 0)
        return false;
    const time_t age = ::time(nullptr) - status.st_mtim.tv_sec;
    return age >= -1 && age <= lately;
}

void addOnce(QStringList &list, const QString &item)
{
    if (!list.contains(item))
        list.append(item);
}

} // namespace

InotifyFolderWatch::InotifyFolderWatch(QObject *parent)
    : InotifyFolderWatch(System(), parent)
{
}

InotifyFolderWatch::InotifyFolderWatch(const System &system, QObject *parent)
    : FolderWatch(parent)
    , m_system(system)
{
}

InotifyFolderWatch::~InotifyFolderWatch()
{
    m_notifier.reset();
    if (m_queue >= 0 && ::close(m_queue) != 0)
        qCWarning(log, "closing the queue: error %d", errno);
}

int InotifyFolderWatch::watch(const QStringList &folders)
{
    QStringList wanted = folders;
    wanted.removeDuplicates();
    const bool hasQueue = openQueue();
    if (!hasQueue && !isExhausted(errno))
        qCWarning(log, "no inotify queue: error %d", errno);

    Targets targets;
    PolledPaths polled;
    QStringList joined;
    int count = 0;
    for (const QString &folder : std::as_const(wanted)) {
        if (add(folder, {folder, {}}, targets, polled) != Added::Skipped) {
            ++count;
            if (!m_folders.isEmpty() && !m_folders.contains(folder) && changedLately(folder))
                joined.append(folder);
        }
        const QString installation = flatpakInstallation(folder);
        if (!installation.isEmpty())
            add(installation, {folder, flatpakStampName}, targets, polled);
    }
    const QStringList unsure = takeOver(std::move(targets), std::move(polled), wanted) + joined;
    if (!unsure.isEmpty())
        QMetaObject::invokeMethod(
            this, [this, unsure] { report(unsure); }, Qt::QueuedConnection);
    return count;
}

bool InotifyFolderWatch::openQueue()
{
    if (m_queue >= 0)
        return true;
    m_queue = m_system.initialise(IN_NONBLOCK | IN_CLOEXEC);
    if (m_queue < 0)
        return false;
    m_notifier = std::make_unique<QSocketNotifier>(m_queue, QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, &InotifyFolderWatch::readEvents);
    return true;
}

InotifyFolderWatch::Added InotifyFolderWatch::add(const QString &path, const Target &target, Targets &targets,
                                                  PolledPaths &polled) const
{
    if (m_queue >= 0) {
        // The kernel gives the descriptor it gave before if this is still the same folder, and a new one if
        // not.
        const int watch = m_system.addWatch(m_queue, QFile::encodeName(path).constData(), watchMask);
        if (watch >= 0) {
            targets.emplace(watch, target);
            return Added::Watched;
        }
        if (!isExhausted(errno))
            return Added::Skipped;
    }
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0 || !S_ISDIR(status.st_mode))
        return Added::Skipped;
    const QString file =
        target.fileName.isEmpty() ? path : path + QLatin1Char('/') + QFile::decodeName(target.fileName);
    const auto known = m_polled.find(file);
    polled.insert_or_assign(file,
                            known != m_polled.end() ? known->second : Polled{target.folder, stampOf(file)});
    return Added::Polled;
}

void InotifyFolderWatch::removeWatch(int watch) const
{
    // EINVAL: the kernel has dropped it already, and the event that says so is still in the queue.
    if (inotify_rm_watch(m_queue, watch) != 0 && errno != EINVAL)
        qCWarning(log, "removing a watch: error %d", errno);
}

/// Returns the folders of the previous list that were not watched until now as they are now.
QStringList InotifyFolderWatch::takeOver(Targets targets, PolledPaths polled, const QStringList &folders)
{
    QStringList unsure;
    for (const auto &[watch, target] : targets) {
        const auto [begin, end] = m_targets.equal_range(watch);
        const bool isKept =
            std::any_of(begin, end, [&wanted = target](const auto &old) { return old.second == wanted; });
        if (!isKept && m_folders.contains(target.folder))
            addOnce(unsure, target.folder);
    }
    for (auto old = m_targets.begin(); old != m_targets.end(); old = m_targets.upper_bound(old->first)) {
        if (!targets.contains(old->first))
            removeWatch(old->first);
    }
    m_targets = std::move(targets);
    m_polled = std::move(polled);
    m_folders = folders;

    if (m_polled.empty()) {
        m_pollTimer.reset();
    } else if (!m_pollTimer) {
        m_pollTimer = std::make_unique<QTimer>(this);
        m_pollTimer->setTimerType(Qt::CoarseTimer);
        connect(m_pollTimer.get(), &QTimer::timeout, this, &InotifyFolderWatch::poll);
        m_pollTimer->start(m_system.pollInterval);
    }
    return unsure;
}

void InotifyFolderWatch::readEvents()
{
    alignas(inotify_event) std::array<char, 16 * 1024> buffer;
    const ssize_t size = ::read(m_queue, buffer.data(), buffer.size());
    if (size < 0) {
        if (errno != EAGAIN && errno != EINTR)
            qCWarning(log, "reading the queue: error %d", errno);
        return;
    }
    QStringList changedFolders;
    for (const char *at = buffer.data(); at < buffer.data() + size;) {
        const auto *event = reinterpret_cast<const inotify_event *>(at);
        noteEvent(*event, changedFolders);
        at += sizeof(inotify_event) + event->len;
    }
    report(changedFolders);
}

void InotifyFolderWatch::noteEvent(const inotify_event &event, QStringList &changedFolders)
{
    if (event.mask & IN_Q_OVERFLOW) {
        for (const QString &folder : std::as_const(m_folders))
            addOnce(changedFolders, folder);
        return;
    }
    const bool isGone = event.mask & goneMask;
    const QByteArray name(event.len > 0 ? static_cast<const char *>(event.name) : "");
    const auto [begin, end] = m_targets.equal_range(event.wd);
    for (auto it = begin; it != end; ++it) {
        const Target &target = it->second;
        if (isGone || target.fileName.isEmpty() || target.fileName == name)
            addOnce(changedFolders, target.folder);
    }
    if (!isGone || begin == end)
        return;
    if (event.mask & IN_MOVE_SELF)
        removeWatch(event.wd);
    m_targets.erase(event.wd);
}

std::optional<InotifyFolderWatch::Stamp> InotifyFolderWatch::stampOf(const QString &path)
{
    struct stat status = {};
    if (::stat(QFile::encodeName(path).constData(), &status) != 0)
        return {};
    return Stamp{status.st_dev, status.st_ino, status.st_mtim.tv_sec, status.st_mtim.tv_nsec};
}

void InotifyFolderWatch::poll()
{
    QStringList changedFolders;
    for (auto &[path, polled] : m_polled) {
        const std::optional<Stamp> stamp = stampOf(path);
        if (stamp != polled.stamp)
            addOnce(changedFolders, polled.folder);
        polled.stamp = stamp;
    }
    report(changedFolders);
}

void InotifyFolderWatch::report(const QStringList &changedFolders)
{
    for (const QString &folder : changedFolders)
        Q_EMIT changed(folder);
}

} // namespace quillbay::platform
