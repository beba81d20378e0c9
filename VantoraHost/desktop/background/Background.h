#pragma once

#include <QtCore/QObject>

#include <atomic>
#include <functional>
#include <memory>
#include <thread>

namespace vantora::desktop {

/// One piece of work beside the window's thread, with exactly one result, which the window's thread
/// gets. Work that is begun while other work goes on takes its place: that is asked to stop, and
/// its result is dropped. The end of this object waits for the work.
class Background {
public:
    /// What is done with the result, in the thread that this object belongs to.
    using Delivery = std::function<void()>;

    /// What is done in the other thread. It looks now and then whether it is to stop.
    using Work = std::function<Delivery(const std::atomic<bool>& stopped)>;

    Background() = default;
    Background(const Background&) = delete;
    Background& operator=(const Background&) = delete;
    ~Background();

    void start(Work work);

    /// Asks the work to stop; what it returns is delivered all the same.
    void stop();

    /// Waits for the work, whose result is dropped.
    void finish();

    bool isBusy() const { return busy_; }

private:
    void giveUp();

    QObject receiver_; ///< in the window's thread
    std::thread thread_;
    std::shared_ptr<std::atomic<bool>> stopped_;
    quint64 current_ = 0; ///< whose result counts
    bool busy_ = false;
};

} // namespace vantora::desktop
