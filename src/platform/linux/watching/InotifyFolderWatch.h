#pragma once

#include "platform/FolderWatch.h"

#include <QByteArray>
#include <QSocketNotifier>
#include <QTimer>

#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>

#include <sys/inotify.h>

namespace quillbay::platform {

/// Folder watch on one inotify queue, read when the kernel has something in it: nothing runs in between.
///
/// Each reading of the queue reports a folder at most once; a long burst takes several readings, and the
/// caller collects those. A folder that is deleted, moved or unmounted is reported and no longer watched; the
/// caller gives its list again after each reading of the folders, which picks up what has appeared or was
/// replaced since. Giving the same list again costs one system call a folder and keeps the watches that are
/// still right.
///
/// An entry that flatpak exports is a link through the installation's `active` link: an update changes
/// neither the link nor its folder. So for `…/flatpak/exports/share/applications` the installation's
/// `.changed` file, which every transaction touches, counts as part of the folder, even while the folder does
/// not exist.
///
/// Where the system has no watches or queues left, the modification times of the rest are compared at
/// intervals. That misses a file rewritten in place, and is all that there is.
class InotifyFolderWatch final : public FolderWatch
{
    Q_OBJECT

public:
    /// What a test may replace.
    struct System
    {
        int (*initialise)(int flags) = ::inotify_init1;
        int (*addWatch)(int queue, const char *path, std::uint32_t mask) = ::inotify_add_watch;
        std::chrono::milliseconds pollInterval = std::chrono::seconds(30);
    };

    explicit InotifyFolderWatch(QObject *parent = nullptr);
    explicit InotifyFolderWatch(const System &system, QObject *parent = nullptr);
    ~InotifyFolderWatch() override;

    /// A folder of the previous list whose watch had to be made anew is reported as changed, later than this
    /// returns: it may have changed between the caller's reading of it and this call. So is one that joins a
    /// list and changed within the last ten seconds, longer than reading the folders takes.
    int watch(const QStringList &folders) override;

private:
    /// What an event of a watch means: `folder` changed, if the event is about `fileName` (empty: about any).
    struct Target
    {
        QString folder;
        QByteArray fileName;
        bool operator==(const Target &) const = default;
    };
    using Targets = std::multimap<int, Target>;

    /// State of a path that is polled; nothing where it does not exist.
    struct Stamp
    {
        std::uint64_t device;
        std::uint64_t inode;
        std::int64_t seconds;
        std::int64_t nanoseconds;
        bool operator==(const Stamp &) const = default;
    };
    struct Polled
    {
        QString folder;
        std::optional<Stamp> stamp;
    };
    using PolledPaths = std::map<QString, Polled>;

    enum class Added { Watched, Polled, Skipped };

    static std::optional<Stamp> stampOf(const QString &path);
    bool openQueue();
    Added add(const QString &path, const Target &target, Targets &targets, PolledPaths &polled) const;
    void removeWatch(int watch) const;
    QStringList takeOver(Targets targets, PolledPaths polled, const QStringList &folders);
    void readEvents();
    void noteEvent(const inotify_event &event, QStringList &changedFolders);
    void poll();
    void report(const QStringList &changedFolders);

    System m_system;
    int m_queue = -1;
    std::unique_ptr<QSocketNotifier> m_notifier;
    std::unique_ptr<QTimer> m_pollTimer;
    QStringList m_folders;
    Targets m_targets;
    PolledPaths m_polled;
};

} // namespace quillbay::platform
