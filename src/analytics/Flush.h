#pragma once

#include "analytics/FlushRequest.h"
#include "analytics/StoredEntity.h"

#include <atomic>
#include <cstdint>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

class QTimer;

namespace quillbay {

/// The client instance as `Flush` sees it.
class FlushDelegate
{
public:
    virtual ~FlushDelegate() = default;

    /// Called by the timer, on the main thread.
    ///
    /// An instance that is asked to flush while the sends of an earlier flush still run must load its rows
    /// after those of the earlier one are deleted: what it loads sooner goes out twice.
    virtual void flush(bool performFullFlush, std::function<void()> completion) = 0;
    /// Asked before each batch, on the network queue: the user may have opted out since the last one.
    virtual bool maySend() const { return true; }
    /// The service took these rows: delete them on the tracking queue. Called on the network queue, after
    /// each batch.
    virtual void flushSuccess(FlushType type, std::vector<std::int32_t> ids) = 0;
};

/// The base URL that this build sends to, from the build setting QUILLBAY_ANALYTICS_URL; empty unless set.
std::string builtInServerURL();

/// Sends queues in batches, and asks the instance to flush every so often.
/// Thread: any, except where a call says otherwise.
class Flush
{
public:
    static constexpr std::size_t MaximumBatchSize = 50;

    /// `serverURL` as in `FlushRequest`.
    explicit Flush(std::string serverURL, bool useGzipCompression = false,
                   FlushRequest::Surroundings surroundings = FlushRequest::defaultSurroundings());
    ~Flush();
    Flush(const Flush &) = delete;
    Flush &operator=(const Flush &) = delete;

    /// Before the first other call.
    void setDelegate(std::weak_ptr<FlushDelegate> delegate);
    FlushRequest &flushRequest() { return m_flushRequest; }
    /// Whether there is a service to send to. Without one a flush ends before the network step.
    bool canSend() const { return !m_flushRequest.serverURL().empty(); }

    /// Seconds; 0 or less for no timer. Setting it starts the timer anew.
    double flushInterval() const;
    void setFlushInterval(double seconds);
    /// At least 1, at most 50, which it is at first.
    std::size_t flushBatchSize() const;
    void setFlushBatchSize(std::size_t size);
    /// Whether the service may look up the place by the sender's address; at first it may.
    bool useIPAddressForGeoLocation() const { return m_useIPAddressForGeoLocation; }
    void setUseIPAddressForGeoLocation(bool use) { m_useIPAddressForGeoLocation = use; }

    /// The timer lives on the main thread and takes a running event loop; these calls return before it has
    /// started or stopped. Without a service no timer runs: an idle program shall wake nobody.
    void startFlushTimer();
    void stopFlushTimer();
    /// Stops the timer.
    void applicationWillResignActive();

    /// Sends the queue, oldest first, until it is empty or a batch fails; the rows of each batch that the
    /// service took are handed to the delegate. Does nothing without a service or during a back-off. Headers
    /// and query items are those of the instance's proxy, if it has one. Thread: the network queue, which it
    /// blocks.
    void flushQueueInBatches(StoredEntities queue, FlushType type, const HttpFields &headers = {},
                             const HttpFields &queryItems = {});

private:
    void runWithTimer(std::function<void(QTimer &)> change);

    std::weak_ptr<FlushDelegate> m_delegate;
    FlushRequest m_flushRequest;
    const bool m_useGzipCompression;
    std::atomic_bool m_useIPAddressForGeoLocation = true;
    mutable std::mutex m_mutex; ///< For what follows.
    double m_flushInterval = 60;
    std::size_t m_flushBatchSize = MaximumBatchSize;
    QTimer *m_timer = nullptr; ///< Lives on the main thread, and is deleted there.
};

} // namespace quillbay
