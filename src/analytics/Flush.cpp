#include "analytics/Flush.h"

#include "analytics/JSONHandler.h"
#include "analytics/MarlpostLogger.h"

#include <QCoreApplication>
#include <QTimer>

#include <algorithm>
#include <chrono>
#include <span>
#include <utility>

namespace quillbay {

std::string builtInServerURL()
{
    return QUILLBAY_ANALYTICS_URL;
}

Flush::Flush(std::string serverURL, bool useGzipCompression, FlushRequest::Surroundings surroundings)
    : m_flushRequest(std::move(serverURL), std::move(surroundings))
    , m_useGzipCompression(useGzipCompression)
{
}

Flush::~Flush()
{
    if (m_timer)
        m_timer->deleteLater();
}

void Flush::setDelegate(std::weak_ptr<FlushDelegate> delegate)
{
    m_delegate = std::move(delegate);
}

double Flush::flushInterval() const
{
    const std::lock_guard lock(m_mutex);
    return m_flushInterval;
}

void Flush::setFlushInterval(double seconds)
{
    {
        const std::lock_guard lock(m_mutex);
        m_flushInterval = seconds;
    }
    startFlushTimer();
}

std::size_t Flush::flushBatchSize() const
{
    const std::lock_guard lock(m_mutex);
    return m_flushBatchSize;
}

void Flush::setFlushBatchSize(std::size_t size)
{
    const std::lock_guard lock(m_mutex);
    m_flushBatchSize = std::clamp<std::size_t>(size, 1, MaximumBatchSize);
}

void Flush::startFlushTimer()
{
    runWithTimer([interval = canSend() ? flushInterval() : 0](QTimer &timer) {
        timer.stop();
        if (interval > 0)
            timer.start(
                std::chrono::ceil<std::chrono::milliseconds>(std::chrono::duration<double>(interval)));
    });
}

void Flush::stopFlushTimer()
{
    runWithTimer([](QTimer &timer) { timer.stop(); });
}

void Flush::applicationWillResignActive()
{
    stopFlushTimer();
}

void Flush::runWithTimer(std::function<void(QTimer &)> change)
{
    const std::lock_guard lock(m_mutex);
    if (!m_timer) {
        const QCoreApplication *application = QCoreApplication::instance();
        if (!application)
            return;
        m_timer = new QTimer;
        QObject::connect(m_timer, &QTimer::timeout, m_timer, [delegate = m_delegate] {
            if (const auto instance = delegate.lock())
                instance->flush(false, {});
        });
        m_timer->moveToThread(application->thread());
    }
    QMetaObject::invokeMethod(
        m_timer, [timer = m_timer, change = std::move(change)] { change(*timer); }, Qt::QueuedConnection);
}

void Flush::flushQueueInBatches(StoredEntities queue, FlushType type, const HttpFields &headers,
                                const HttpFields &queryItems)
{
    const std::size_t batchSize = flushBatchSize();
    for (std::span<StoredEntity> left = queue; !left.empty();
         left = left.subspan(std::min(batchSize, left.size()))) {
        if (!canSend() || m_flushRequest.requestNotAllowed())
            return;
        if (const auto instance = m_delegate.lock(); instance && !instance->maySend())
            return;
        const auto batch = left.first(std::min(batchSize, left.size()));
        auto requestData = JSONHandler::encodeAPIData(batch);
        if (!requestData)
            return;
        MarlpostLogger::debug("Sending batch of data ", *requestData);
        if (!m_flushRequest.sendRequest(*std::move(requestData), type, m_useIPAddressForGeoLocation, headers,
                                        queryItems, m_useGzipCompression))
            return;
        std::vector<std::int32_t> ids;
        ids.reserve(batch.size());
        for (StoredEntity &entity : batch) {
            ids.push_back(entity.id);
            entity = {};
        }
        if (const auto instance = m_delegate.lock())
            instance->flushSuccess(type, std::move(ids));
    }
}

} // namespace quillbay
