#pragma once

#include <QtCore/QObject>

#include <pthread.h>
#include <time.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

/// Milliseconds of a clock that only grows.
inline double wallTime()
{
    return std::chrono::duration<double, std::milli>(
               std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

/// Milliseconds that a thread has been running on a processor.
inline double processorTime(clockid_t thread = CLOCK_THREAD_CPUTIME_ID)
{
    timespec time{};
    ::clock_gettime(thread, &time);
    return static_cast<double>(time.tv_sec) * 1e3 + static_cast<double>(time.tv_nsec) / 1e6;
}

/// How long the event loop let others wait: each time in milliseconds that passed, and in those
/// that its thread was running meanwhile. On a machine that does other things only these are its
/// own.
struct Waits {
    int asked = 0;
    int late = 0;     ///< answers after more than a frame
    int lateBusy = 0; ///< those for which the thread was running for more than a frame
    double longest = 0;
    double longestBusy = 0;
};

/// Asks the event loop from a thread of its own, every millisecond and whenever it has answered,
/// whether it is there.
class Watchdog {
public:
    static constexpr double frame = 16; ///< milliseconds

    /// Made in the thread of the event loop.
    Watchdog()
    {
        ::pthread_getcpuclockid(::pthread_self(), &clock_);
        thread_ = std::thread([this] { run(); });
    }

    ~Watchdog()
    {
        ends_ = true;
        thread_.join();
    }

    Watchdog(const Watchdog&) = delete;
    Watchdog& operator=(const Watchdog&) = delete;

    /// What was seen since this was asked last.
    Waits take()
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        return std::exchange(waits_, {});
    }

private:
    void run()
    {
        while (!ends_) {
            if (!isAsking_.exchange(true)) {
                const double asked = wallTime();
                const double ran = processorTime(clock_);
                QMetaObject::invokeMethod(
                    &loop_, [this, asked, ran] { answer(asked, ran); }, Qt::QueuedConnection);
            }
            std::this_thread::sleep_for(std::chrono::milliseconds(1));
        }
    }

    void answer(double asked, double ran)
    {
        const double waited = wallTime() - asked;
        const double busy = processorTime(clock_) - ran;
        const std::lock_guard<std::mutex> lock(mutex_);
        ++waits_.asked;
        waits_.late += waited > frame ? 1 : 0;
        waits_.lateBusy += busy > frame ? 1 : 0;
        waits_.longest = std::max(waits_.longest, waited);
        waits_.longestBusy = std::max(waits_.longestBusy, busy);
        isAsking_ = false;
    }

    QObject loop_; ///< lives in the thread of the event loop
    clockid_t clock_{};
    std::mutex mutex_;
    Waits waits_;
    std::atomic<bool> isAsking_{false};
    std::atomic<bool> ends_{false};
    std::thread thread_;
};
