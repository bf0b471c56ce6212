#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <exception>
#include <functional>
#include <future>
#include <mutex>
#include <new>
#include <system_error>
#include <thread>
#include <utility>
#include <vector>

namespace zel::base {

/// How many jobs OrderedWorkers accepts, so that memory stays bounded.
struct WorkerLimits {
    /// @param unfinished_jobs  at least 1.
    WorkerLimits(std::size_t unfinished_jobs, std::size_t waiting_results = 0) noexcept
        : unfinished(unfinished_jobs), results(unfinished_jobs + waiting_results) {}

    /// Jobs that wait or run.
    std::size_t unfinished;
    /// These and the results that wait to be passed on.
    std::size_t results;
};

/// Runs jobs on several threads and passes their results on in the order of the jobs, one at a time, on a thread of its
/// own. With more jobs than the limits allow, Give waits. If the system has too few threads or too little memory for
/// them, fewer are used. Without any, Give runs the job itself.
template <class Result>
class OrderedWorkers {
  public:
    /// @param take  receives each result. What it or a job throws ends the work; Give and Finish then throw it.
    OrderedWorkers(std::size_t threads, WorkerLimits limits, std::function<void(Result)> take)
        : m_limits(limits), m_take(std::move(take)) {
        // Threads that failed at the system's limit would leave no memory for the work, so they are given back first.
        while (threads != 0 && !StartAll(threads)) threads = GiveBackThreads() / 4;
    }
    /// Waits for the running jobs; their results and the waiting jobs are dropped.
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

    /// @param job  called without arguments, returns a Result.
    template <class Job>
    void Give(Job job) {
        if (m_threads.empty()) {
            if (m_failure || !TakeResult([&] { return job(); })) std::rethrow_exception(m_failure);
            return;
        }
        std::packaged_task<Result()> task(std::move(job));
        std::unique_lock lock(m_mutex);
        m_room.wait(lock, [this] { return HasRoom() || m_failure; });
        if (m_failure) std::rethrow_exception(m_failure);
        m_results.push_back(task.get_future());
        m_tasks.push_back(std::move(task));
        ++m_unfinished;
        const bool is_first_result = m_results.size() == 1;
        lock.unlock();
        m_has_task.notify_one();
        if (is_first_result) m_has_result.notify_one();
    }

    /// Returns when every result has been passed on.
    void Finish() {
        Join();
        if (m_failure) std::rethrow_exception(m_failure);
    }

  private:
    bool HasRoom() const noexcept { return m_unfinished < m_limits.unfinished && m_results.size() < m_limits.results; }

    void NotifyAll() noexcept {
        for (std::condition_variable* changed : {&m_room, &m_has_task, &m_has_result}) changed->notify_all();
    }

    /// @return false if the system has no thread, or no memory for one.
    template <class Work>
    bool Start(Work work) {
        try {
            m_threads.emplace_back(std::move(work));
            return true;
        } catch (const std::system_error&) {
            return false;
        } catch (const std::bad_alloc&) {
            return false;
        }
    }

    bool StartAll(std::size_t threads) {
        bool started = Start([this] { PassOn(); });
        for (std::size_t n = 0; n < threads && started; ++n) started = Start([this] { Work(); });
        return started;
    }

    /// Ends all threads before there is any work. @return their number.
    std::size_t GiveBackThreads() {
        const std::size_t count = m_threads.size();
        Join();
        m_threads.clear();
        m_closed = false;
        return count;
    }

    void Work() {
        for (;;) {
            std::packaged_task<Result()> task;
            {
                std::unique_lock lock(m_mutex);
                m_has_task.wait(lock, [this] { return !m_tasks.empty() || m_closed; });
                if (m_tasks.empty() || m_dropped || m_failure) return;
                task = std::move(m_tasks.front());
                m_tasks.pop_front();
            }
            task();
            {
                const std::lock_guard lock(m_mutex);
                --m_unfinished;
            }
            m_room.notify_one();
        }
    }

    void PassOn() {
        for (;;) {
            std::future<Result> result;
            {
                std::unique_lock lock(m_mutex);
                m_has_result.wait(lock, [this] { return !m_results.empty() || m_closed; });
                if (m_results.empty() || m_dropped) return;
                result = std::move(m_results.front());
            }
            if (!TakeResult([&] { return result.get(); })) return;
            {
                const std::lock_guard lock(m_mutex);
                m_results.pop_front();
            }
            m_room.notify_one();
        }
    }

    /// Passes one result on. @return false after a failure, which ends the work.
    template <class GetResult>
    bool TakeResult(GetResult get) {
        try {
            Result result = get();
            if (!IsDropped()) m_take(std::move(result));
        } catch (...) {
            const std::lock_guard lock(m_mutex);
            m_failure = std::current_exception();
            m_closed = true;
            NotifyAll();
        }
        return !m_failure;
    }

    bool IsDropped() {
        const std::lock_guard lock(m_mutex);
        return m_dropped;
    }

    void Join() {
        {
            const std::lock_guard lock(m_mutex);
            m_closed = true;
        }
        NotifyAll();
        for (std::thread& thread : m_threads) {
            if (thread.joinable()) thread.join();
        }
    }

    const WorkerLimits m_limits;
    const std::function<void(Result)> m_take;
    std::mutex m_mutex;
    /// For Give, the workers, and the thread that passes results on.
    std::condition_variable m_room, m_has_task, m_has_result;
    std::deque<std::packaged_task<Result()>> m_tasks;
    /// Jobs that wait or run.
    std::size_t m_unfinished = 0;
    std::deque<std::future<Result>> m_results;  // in order, beginning with the one that is being passed on
    bool m_closed = false;
    bool m_dropped = false;
    std::exception_ptr m_failure;
    std::vector<std::thread> m_threads;
};

}  // namespace zel::base
