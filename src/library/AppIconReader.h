#pragma once

#include "library/AppIconLoader.h"

#include <QCache>
#include <QHash>
#include <QMutex>
#include <QPointer>
#include <QSet>
#include <QThreadPool>
#include <QTimer>

#include <chrono>
#include <deque>
#include <optional>
#include <vector>

namespace quillbay {

/// One icon in one size.
struct AppIconKey
{
    QString path;
    int pixelSize = 0;

    friend bool operator==(const AppIconKey &, const AppIconKey &) = default;
    friend size_t qHash(const AppIconKey &key, size_t seed = 0) noexcept
    {
        return qHashMulti(seed, key.path, key.pixelSize);
    }
};

/// The process-wide side of `AppIconLoader`: the cache, and the threads that fill it.
///
/// Two pools of threads, one for what loaders wait for and one, that gives way to everything, for
/// prefetching; each has work only while something is queued, and ends its threads afterwards. A request that
/// no loader waits for any more leaves the queue: fast scrolling does not read all it passes.
///
/// An application without an icon gets the generic one of its size, and is asked again later: its icon may be
/// installed after it.
///
/// Everything that was dropped by `invalidate` has an older generation and is ignored when it arrives.
///
/// Thread: main thread; only the functions marked so run on the pools' threads.
class AppIconReader
{
public:
    static AppIconReader &instance();

    void add(AppIconLoader *loader);
    void remove(AppIconLoader *loader);

    /// The icon if the cache has it, else null.
    QImage cached(const AppIconKey &key);
    /// Reads the icon for `loader`, which asks for no other at the same time.
    void read(const AppIconKey &key, AppIconLoader *loader);
    /// `loader` waits no longer.
    void forget(AppIconLoader *loader);
    void readAhead(const QStringList &paths, int pixelSize);
    void prefetch(const QStringList &paths, int pixelSize);
    QImage genericIcon(int pixelSize);
    void setSource(const platform::IconSource *source);
    void setCacheLimit(qint64 bytes);
    void setSecondLookDelay(std::chrono::milliseconds delay);
    void invalidate();
    void shutDown();

private:
    enum class Urgency { Visible, Prefetch };

    struct Work
    {
        QThreadPool pool;
        int running = 0; ///< Threads that have not yet seen an empty queue.
    };
    struct Batch
    {
        QStringList paths;
        int pixelSize = 0;
        qsizetype next = 0;
    };
    struct Job
    {
        AppIconKey key;
        const platform::IconSource *source = nullptr;
        quint64 generation = 0;
    };

    AppIconReader();
    ~AppIconReader();

    Work &work(Urgency urgency) { return urgency == Urgency::Visible ? m_visible : m_prefetch; }
    void enqueue(const AppIconKey &key);                              ///< With the mutex held.
    void startWorker(Urgency urgency);                                ///< With the mutex held.
    void startPrefetching();                                          ///< With the mutex held.
    void run(Urgency urgency);                                        ///< On a pool's thread.
    std::optional<Job> takeJob(Urgency urgency);                      ///< With the mutex held.
    std::optional<AppIconKey> takePrefetch();                         ///< With the mutex held.
    void finish(Urgency urgency, const Job &job, const QImage &icon); ///< On a pool's thread.
    void deliver(const Job &job, const QImage &icon);
    void askAgainForMissing();
    bool hasRoomFor(int pixelSize) const;

    QMutex m_mutex; ///< Held for moments only. Guards all up to the pools.
    const platform::IconSource *m_source = nullptr;
    quint64 m_generation = 0;
    QCache<AppIconKey, QImage> m_cache; ///< Null images for those that are missing.
    QSet<AppIconKey> m_missing;         ///< Came out without an icon.
    std::deque<AppIconKey> m_queue;
    std::deque<Batch> m_batches;
    QSet<AppIconKey> m_inProgress;
    QHash<AppIconKey, std::vector<QPointer<AppIconLoader>>> m_waiting;
    Work m_visible;
    Work m_prefetch;

    QObject m_mainThread; ///< Where results are delivered.
    QTimer m_secondLook;
    QSet<AppIconLoader *> m_loaders;
    QHash<AppIconLoader *, AppIconKey> m_wishes; ///< What each waiting loader waits for.
    QHash<int, QImage> m_genericIcons;
};

} // namespace quillbay
