#include "base/ordered_workers.h"

#include <atomic>
#include <cerrno>
#include <chrono>
#include <latch>
#include <stdexcept>
#include <thread>

#include <dlfcn.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <pthread.h>

namespace {

/// Number of threads that the system still starts; then it has none left.
std::atomic<int> g_threads_left = 1000;

}  // namespace

// This replaces the system's function.
extern "C" int pthread_create(pthread_t* thread, const pthread_attr_t* attributes, void* (*work)(void*),
                              void* argument) {
    if (g_threads_left-- <= 0) return EAGAIN;
    static const auto system_function =
        reinterpret_cast<decltype(&pthread_create)>(::dlsym(RTLD_NEXT, "pthread_create"));
    return system_function(thread, attributes, work, argument);
}

namespace zel::test {

namespace {

using testing::ElementsAre;
using testing::ThrowsMessage;

void WaitUntil(const std::function<bool()>& holds) {
    while (!holds()) std::this_thread::yield();
}

class Workers : public testing::TestWithParam<std::size_t> {
  protected:
    std::vector<int> m_taken;
    std::function<void(int)> m_take = [this](int result) { m_taken.push_back(result); };
};
INSTANTIATE_TEST_SUITE_P(Threads, Workers, testing::Values(0, 1, 4), testing::PrintToStringParamName());

// Of the threads asked for, only so many start.
TEST_P(Workers, PassResultsOnInTheOrderOfTheJobs) {
    for (int started = 0; started <= 5; ++started) {
        g_threads_left = started;
        m_taken.clear();
        base::OrderedWorkers<int> workers(GetParam(), 8, m_take);
        g_threads_left = 1000;
        std::vector<int> expected;
        for (int n = 0; n < 100; ++n) {
            workers.Give([n] {
                if (n % 3 == 0) std::this_thread::sleep_for(std::chrono::microseconds(200));
                return n;
            });
            expected.push_back(n);
        }
        workers.Finish();
        EXPECT_EQ(m_taken, expected) << started;
    }
}

TEST_P(Workers, EndWithTheErrorOfAJobOrOfTheReceiver) {
    for (const bool job_fails : {true, false}) {
        m_taken.clear();
        base::OrderedWorkers<int> workers(GetParam(), 2, [&](int result) {
            if (!job_fails && result == 2) throw std::runtime_error("at 2");
            m_taken.push_back(result);
        });
        const auto run = [&] {
            for (int n = 0; n < 10; ++n)
                workers.Give([=] { return job_fails && n == 2 ? throw std::runtime_error("at 2") : n; });
            workers.Finish();
        };
        EXPECT_THAT(run, ThrowsMessage<std::runtime_error>("at 2"));
        EXPECT_THAT(m_taken, ElementsAre(0, 1));
        EXPECT_THAT([&] { workers.Finish(); }, ThrowsMessage<std::runtime_error>("at 2"));
    }
}

TEST(OrderedWorkers, LetTheGiverWaitWhileTheyAreFull) {
    std::latch gate(1);
    std::atomic<int> given = 0;
    base::OrderedWorkers<int> workers(2, 3, [](int) {});
    std::thread giver([&] {
        for (int n = 0; n < 5; ++n) {
            workers.Give([&gate, n] {
                gate.wait();
                return n;
            });
            ++given;
        }
    });
    WaitUntil([&] { return given == 3; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(given, 3) << "the fourth waits";
    gate.count_down();
    giver.join();
    workers.Finish();
    EXPECT_EQ(given, 5);
}

TEST(OrderedWorkers, GoOnWhileAResultIsPassedOn) {
    std::latch gate(1);
    std::atomic<int> given = 0;
    base::OrderedWorkers<int> workers(1, {1, 3}, [&](int) { gate.wait(); });
    std::thread giver([&] {
        for (int n = 0; n < 6; ++n) {
            workers.Give([n] { return n; });
            ++given;
        }
    });
    WaitUntil([&] { return given == 4; });
    std::this_thread::sleep_for(std::chrono::milliseconds(20));
    EXPECT_EQ(given, 4) << "one job and three results";
    gate.count_down();
    giver.join();
    workers.Finish();
}

TEST(OrderedWorkers, DropWaitingJobsAndResultsWhenDestroyed) {
    std::latch gate(1);
    std::atomic<int> begun = 0, taken = 0;
    std::thread opener;
    {
        base::OrderedWorkers<int> workers(1, 8, [&](int) { ++taken; });
        for (int n = 0; n < 5; ++n) {
            workers.Give([&] {
                ++begun;
                gate.wait();
                return 0;
            });
        }
        WaitUntil([&] { return begun == 1; });
        opener = std::thread([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            gate.count_down();
        });
    }
    opener.join();
    EXPECT_EQ(begun, 1);
    EXPECT_EQ(taken, 0);
}

}  // namespace

}  // namespace zel::test
