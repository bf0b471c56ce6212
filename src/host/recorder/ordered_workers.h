#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <thread>
#include <vector>

namespace zel::recorder {

/// Does jobs on several threads and hands their results on in the order in which the jobs were given, one at a time, on
/// a thread of its own. No more than `capacity` jobs are under way or waiting to be handed on, so that memory stays
/// bounded; with more, giving one waits.
template <class Result>
class OrderedWorkers {
  public:
    /// @param take  gets each result; what it throws, or a job threw, ends the work and is thrown by Give and Finish.
    OrderedWorkers(std::size_t threads, std::size_t capacity, std::function<void(Result)> take)
        : m_capacity(capacity), m_take(std::move(take)) {
        for (std::size_t i = 0; i < threads; ++i) m_threads.emplace_back([this] { Work(); });
        m_threads.emplace_back([this] { HandOn(); });
    }
    /// Waits for the jobs under way; their results are dropped.
    ~OrderedWorkers() {
        {
            const std::lock_guard lock(m_mutex);
            m_dropped = true;
            m_tasks.clear();
        }
        Join();
    }
    OrderedWorkers(const OrderedWorkers&) = delete;
    OrderedWorkers& operator=(const OrderedWorkers&) = delete;

    template <class Job>
    void Give(Job job) {
        std::packaged_task<Result()> task(std::move(job));
        std::unique_lock lock(m_mutex);
        m_changed.wait(lock, [this] { return m_results.size() < m_capacity || m_failure; });
        if (m_failure) std::rethrow_exception(m_failure);
        m_results.push_back(task.get_future());
        m_tasks.push_back(std::move(task));
        m_changed.notify_all();
    }

    /// Returns when every result has been handed on.
    void Finish() {
        Join();
        if (m_failure) std::rethrow_exception(m_failure);
    }

  private:
    void Work() {
        for (;;) {
            std::packaged_task<Result()> task;
            {
                std::unique_lock lock(m_mutex);
                m_changed.wait(lock, [this] { return !m_tasks.empty() || m_closed; });
                if (m_tasks.empty() || m_dropped || m_failure) return;
                task = std::move(m_tasks.front());
                m_tasks.pop_front();
            }
            task();
        }
    }

    void HandOn() {
        for (;;) {
            std::future<Result> result;
            {
                std::unique_lock lock(m_mutex);
                m_changed.wait(lock, [this] { return !m_results.empty() || m_closed; });
                if (m_results.empty() || m_dropped) return;
                result = std::move(m_results.front());
            }
            try {
                m_take(result.get());
            } catch (...) {
                const std::lock_guard lock(m_mutex);
                m_failure = std::current_exception();
                m_closed = true;
                m_changed.notify_all();
                return;
            }
            const std::lock_guard lock(m_mutex);
            m_results.pop_front();
            m_changed.notify_all();
        }
    }

    void Join() {
        {
            const std::lock_guard lock(m_mutex);
            m_closed = true;
        }
        m_changed.notify_all();
        for (std::thread& thread : m_threads) {
            if (thread.joinable()) thread.join();
        }
    }

    const std::size_t m_capacity;
    const std::function<void(Result)> m_take;
    std::mutex m_mutex;
    std::condition_variable m_changed;
    std::deque<std::packaged_task<Result()>> m_tasks;
    std::deque<std::future<Result>> m_results;  // in order; the one being handed on first
    bool m_closed = false;
    bool m_dropped = false;
    std::exception_ptr m_failure;
    std::vector<std::thread> m_threads;
};

}  // namespace zel::recorder
