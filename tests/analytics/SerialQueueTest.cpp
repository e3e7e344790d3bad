#include "analytics/SerialQueue.h"

#include <atomic>
#include <future>
#include <memory>
#include <mutex>
#include <set>
#include <thread>
#include <vector>

#include <gmock/gmock.h>

namespace quillbay {

namespace {

constexpr std::chrono::seconds Bound(30);

TEST(SerialQueueTest, RunsInOrderOnOneThreadWhoeverQueues)
{
    constexpr int PerThread = 2000;
    SerialQueue queue("many");
    std::vector<std::pair<int, int>> ran; // touched by the queue's tasks alone
    std::set<std::thread::id> threads;
    {
        std::vector<std::jthread> producers;
        for (int producer = 0; producer < 4; ++producer) {
            producers.emplace_back([&, producer] {
                for (int i = 0; i < PerThread; ++i) {
                    queue.async([&ran, &threads, &queue, producer, i] {
                        ran.emplace_back(producer, i);
                        if (queue.isCurrent())
                            threads.insert(std::this_thread::get_id());
                    });
                }
            });
        }
    }
    ASSERT_TRUE(queue.waitUntilDone(Bound));
    EXPECT_EQ(threads.size(), 1U);
    EXPECT_FALSE(queue.isCurrent());
    int next[4] = {};
    for (const auto &[producer, i] : ran)
        EXPECT_EQ(i, next[producer]++);
    EXPECT_EQ(ran.size(), std::size_t(4 * PerThread));
}

TEST(SerialQueueTest, EveryWaiterWakesWhenItsTasksAreDone)
{
    SerialQueue queue("waited for");
    std::atomic_int late = 0;
    for (int round = 0; round < 100; ++round) {
        std::vector<std::jthread> waiters;
        for (int i = 0; i < 4; ++i) {
            queue.async([] { std::this_thread::yield(); });
            waiters.emplace_back([&] { late += queue.waitUntilDone(Bound) ? 0 : 1; });
        }
    }
    EXPECT_EQ(late, 0);
}

TEST(SerialQueueTest, WhatIsQueuedRunsThoughTheQueueIsGone)
{
    std::promise<void> gone;
    std::promise<int> last;
    const auto token = std::make_shared<int>(7);
    {
        SerialQueue queue("short");
        queue.async([future = gone.get_future().share()] { future.wait(); });
        queue.async([&last, token] { last.set_value(*token); });
        EXPECT_FALSE(queue.waitUntilDone(std::chrono::milliseconds(1)));
    }
    gone.set_value();
    auto result = last.get_future();
    ASSERT_EQ(result.wait_for(Bound), std::future_status::ready);
    EXPECT_EQ(result.get(), 7);
}

TEST(SerialQueueTest, TaskMayDestroyItsOwnQueue)
{
    std::promise<void> done;
    auto queue = std::make_shared<SerialQueue>("own");
    SerialQueue *const plain = queue.get();
    plain->async([&done, queue = std::move(queue)]() mutable {
        queue.reset();
        done.set_value();
    });
    EXPECT_EQ(done.get_future().wait_for(Bound), std::future_status::ready);
}

} // namespace

} // namespace quillbay
