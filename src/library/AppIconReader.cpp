#include "library/AppIconReader.h"

#include "platform/IconSource.h"
#include "platform/ThreadPriority.h"

#include <QMutexLocker>
#include <QThread>

#include <algorithm>
#include <utility>

namespace quillbay {

namespace {

constexpr qint64 usualCacheLimit = 32 * 1024 * 1024;
constexpr int threadExpiryMilliseconds = 5000;
constexpr qsizetype mostGenericSizes = 16;
constexpr std::chrono::seconds usualSecondLookDelay(3);

qint64 bytesOf(int pixelSize)
{
    return qint64(pixelSize) * pixelSize * 4;
}

std::vector<QPointer<AppIconLoader>> copyOf(const QSet<AppIconLoader *> &loaders)
{
    return {loaders.cbegin(), loaders.cend()};
}

} // namespace

AppIconReader &AppIconReader::instance()
{
    static AppIconReader reader;
    return reader;
}

AppIconReader::AppIconReader()
    : m_cache(usualCacheLimit)
{
    const int cores = QThread::idealThreadCount();
    m_visible.pool.setMaxThreadCount(std::clamp(cores, 2, 4));
    m_prefetch.pool.setMaxThreadCount(std::clamp(cores / 2, 1, 2));
    m_prefetch.pool.setThreadPriority(QThread::LowPriority);
    for (QThreadPool *pool : {&m_visible.pool, &m_prefetch.pool})
        pool->setExpiryTimeout(threadExpiryMilliseconds);
    m_secondLook.setSingleShot(true);
    m_secondLook.setInterval(usualSecondLookDelay);
    QObject::connect(&m_secondLook, &QTimer::timeout, &m_mainThread, [this] { askAgainForMissing(); });
}

AppIconReader::~AppIconReader()
{
    shutDown();
}

void AppIconReader::add(AppIconLoader *loader)
{
    m_loaders.insert(loader);
}

void AppIconReader::remove(AppIconLoader *loader)
{
    forget(loader);
    m_loaders.remove(loader);
}

QImage AppIconReader::cached(const AppIconKey &key)
{
    {
        const QMutexLocker lock(&m_mutex);
        const QImage *icon = m_cache.object(key);
        if (!icon || !icon->isNull())
            return icon ? *icon : QImage();
    }
    return genericIcon(key.pixelSize);
}

void AppIconReader::read(const AppIconKey &key, AppIconLoader *loader)
{
    const QMutexLocker lock(&m_mutex);
    m_wishes.insert(loader, key);
    std::vector<QPointer<AppIconLoader>> &waiting = m_waiting[key];
    waiting.emplace_back(loader);
    if (waiting.size() == 1)
        enqueue(key);
}

void AppIconReader::readAhead(const QStringList &paths, int pixelSize)
{
    const QMutexLocker lock(&m_mutex);
    for (const QString &path : paths) {
        const AppIconKey key{path, pixelSize};
        if (pixelSize > 0 && !m_cache.contains(key))
            enqueue(key);
    }
}

void AppIconReader::enqueue(const AppIconKey &key)
{
    if (m_inProgress.contains(key) || std::find(m_queue.cbegin(), m_queue.cend(), key) != m_queue.cend())
        return;
    m_queue.push_back(key);
    startWorker(Urgency::Visible);
}

void AppIconReader::forget(AppIconLoader *loader)
{
    const auto wish = m_wishes.constFind(loader);
    if (wish == m_wishes.cend())
        return;
    const AppIconKey key = *wish;
    m_wishes.erase(wish);
    const QMutexLocker lock(&m_mutex);
    const auto waiting = m_waiting.find(key);
    if (waiting == m_waiting.end())
        return;
    std::erase(*waiting, loader);
    if (!waiting->empty())
        return;
    m_waiting.erase(waiting);
    std::erase(m_queue, key);
}

void AppIconReader::prefetch(const QStringList &paths, int pixelSize)
{
    if (pixelSize <= 0)
        return;
    askAgainForMissing();
    m_secondLook.start();
    const QMutexLocker lock(&m_mutex);
    std::erase_if(m_batches, [pixelSize](const Batch &batch) { return batch.pixelSize == pixelSize; });
    m_batches.push_back({paths, pixelSize, 0});
    startPrefetching();
}

void AppIconReader::askAgainForMissing()
{
    QSet<AppIconKey> missing;
    {
        const QMutexLocker lock(&m_mutex);
        // One that is waited for has just been read: its delivery, still to come, would end a second wait.
        for (const AppIconKey &key : std::as_const(m_missing)) {
            if (!m_waiting.contains(key))
                missing.insert(key);
        }
        if (missing.isEmpty() || !m_source)
            return;
        m_missing.subtract(missing);
        m_source->refresh();
        QHash<int, QStringList> paths;
        for (const AppIconKey &key : std::as_const(missing)) {
            m_cache.remove(key);
            paths[key.pixelSize].append(key.path);
        }
        for (auto size = paths.cbegin(); size != paths.cend(); ++size)
            m_batches.push_back({*size, size.key(), 0});
    }
    for (const QPointer<AppIconLoader> &loader : copyOf(m_loaders)) {
        if (loader && missing.contains({loader->path(), loader->pixelSize()}))
            loader->request(true);
    }
    const QMutexLocker lock(&m_mutex);
    startPrefetching();
}

void AppIconReader::startPrefetching()
{
    if (m_batches.empty())
        return;
    for (int i = 0; i < m_prefetch.pool.maxThreadCount(); ++i)
        startWorker(Urgency::Prefetch);
}

void AppIconReader::startWorker(Urgency urgency)
{
    Work &of = work(urgency);
    if (!m_source || of.running >= of.pool.maxThreadCount())
        return;
    ++of.running;
    of.pool.start([this, urgency] { run(urgency); });
}

void AppIconReader::run(Urgency urgency)
{
    platform::lowerThreadPriority(urgency == Urgency::Visible ? platform::BackgroundWork::Awaited
                                                              : platform::BackgroundWork::Ahead);
    while (true) {
        std::optional<Job> job;
        {
            const QMutexLocker lock(&m_mutex);
            job = takeJob(urgency);
            if (!job) {
                --work(urgency).running;
                return;
            }
        }
        finish(urgency, *job, job->source->icon(job->key.path, job->key.pixelSize));
    }
}

std::optional<AppIconReader::Job> AppIconReader::takeJob(Urgency urgency)
{
    if (!m_source)
        return std::nullopt;
    std::optional<AppIconKey> key;
    if (urgency == Urgency::Prefetch) {
        key = takePrefetch();
    } else if (!m_queue.empty()) {
        key = std::move(m_queue.front());
        m_queue.pop_front();
    }
    if (!key)
        return std::nullopt;
    m_inProgress.insert(*key);
    return Job{*key, m_source, m_generation};
}

std::optional<AppIconKey> AppIconReader::takePrefetch()
{
    while (!m_batches.empty()) {
        Batch &batch = m_batches.front();
        while (batch.next < batch.paths.size() && hasRoomFor(batch.pixelSize)) {
            AppIconKey key{batch.paths.at(batch.next++), batch.pixelSize};
            if (!m_cache.contains(key) && !m_inProgress.contains(key) && !m_waiting.contains(key))
                return key;
        }
        m_batches.pop_front();
    }
    return std::nullopt;
}

bool AppIconReader::hasRoomFor(int pixelSize) const
{
    // Reads in progress are stored when they end.
    qint64 used = m_cache.totalCost();
    for (const AppIconKey &key : m_inProgress)
        used += bytesOf(key.pixelSize);
    return used + bytesOf(pixelSize) <= m_cache.maxCost();
}

void AppIconReader::finish(Urgency urgency, const Job &job, const QImage &icon)
{
    const QMutexLocker lock(&m_mutex);
    if (job.generation != m_generation)
        return;
    m_inProgress.remove(job.key);
    const bool fits = m_cache.totalCost() + icon.sizeInBytes() <= m_cache.maxCost();
    const bool isWaitedFor = m_waiting.contains(job.key);
    if (urgency == Urgency::Visible || isWaitedFor || fits) {
        m_cache.insert(job.key, new QImage(icon), std::max<qsizetype>(icon.sizeInBytes(), 1));
        if (icon.isNull())
            m_missing.insert(job.key);
    }
    if (!isWaitedFor)
        return;
    QMetaObject::invokeMethod(
        &m_mainThread, [this, job, icon] { deliver(job, icon); }, Qt::QueuedConnection);
}

void AppIconReader::deliver(const Job &job, const QImage &icon)
{
    std::vector<QPointer<AppIconLoader>> loaders;
    {
        const QMutexLocker lock(&m_mutex);
        if (job.generation != m_generation)
            return;
        loaders = m_waiting.take(job.key);
        std::erase(m_queue, job.key);
    }
    for (const QPointer<AppIconLoader> &loader : loaders)
        m_wishes.remove(loader);
    for (const QPointer<AppIconLoader> &loader : loaders) {
        // What one loader's listeners do may destroy another, or give it another path.
        if (loader && AppIconKey{loader->path(), loader->pixelSize()} == job.key)
            loader->setIcon(icon.isNull() ? genericIcon(job.key.pixelSize) : icon);
    }
}

QImage AppIconReader::genericIcon(int pixelSize)
{
    if (pixelSize <= 0)
        return {};
    if (const auto known = m_genericIcons.constFind(pixelSize); known != m_genericIcons.cend())
        return *known;
    QImage icon;
    if (m_source) {
        icon = m_source->genericIcon(pixelSize);
    } else {
        icon = QImage(pixelSize, pixelSize, QImage::Format_ARGB32_Premultiplied);
        icon.fill(Qt::transparent);
    }
    if (m_genericIcons.size() >= mostGenericSizes)
        m_genericIcons.clear();
    m_genericIcons.insert(pixelSize, icon);
    return icon;
}

void AppIconReader::setSource(const platform::IconSource *source)
{
    {
        const QMutexLocker lock(&m_mutex);
        if (source == m_source)
            return;
        m_source = source;
    }
    m_genericIcons.clear();
    invalidate();
}

void AppIconReader::setCacheLimit(qint64 bytes)
{
    const QMutexLocker lock(&m_mutex);
    m_cache.setMaxCost(bytes);
}

void AppIconReader::setSecondLookDelay(std::chrono::milliseconds delay)
{
    m_secondLook.setInterval(delay);
}

void AppIconReader::invalidate()
{
    {
        const QMutexLocker lock(&m_mutex);
        ++m_generation;
        m_cache.clear();
        m_missing.clear();
        m_queue.clear();
        m_inProgress.clear();
        m_waiting.clear();
        for (Batch &batch : m_batches)
            batch.next = 0;
        startPrefetching();
    }
    m_wishes.clear();
    for (const QPointer<AppIconLoader> &loader : copyOf(m_loaders)) {
        if (loader)
            loader->request(true);
    }
}

void AppIconReader::shutDown()
{
    m_secondLook.stop();
    {
        const QMutexLocker lock(&m_mutex);
        m_source = nullptr;
        ++m_generation;
        m_cache.clear();
        m_missing.clear();
        m_queue.clear();
        m_batches.clear();
        m_inProgress.clear();
        m_waiting.clear();
    }
    m_wishes.clear();
    m_genericIcons.clear();
    for (QThreadPool *pool : {&m_visible.pool, &m_prefetch.pool})
        pool->waitForDone();
}

} // namespace quillbay
