#include "VantoraHost/desktop/background/Background.h"

#include <QtCore/QMetaObject>

#include <utility>

namespace vantora::desktop {

Background::~Background()
{
    giveUp();
}

void Background::start(Work work)
{
    giveUp();
    stopped_ = std::make_shared<std::atomic<bool>>(false);
    busy_ = true;
    const quint64 number = ++current_;
    thread_ = std::thread([this, number, stopped = stopped_, work = std::move(work)] {
        Delivery delivery = work(*stopped);
        QMetaObject::invokeMethod(
            &receiver_,
            [this, number, delivery = std::move(delivery)] {
                if (number != current_) {
                    return;
                }
                busy_ = false;
                if (delivery) {
                    delivery();
                }
            },
            Qt::QueuedConnection);
    });
}

void Background::stop()
{
    if (stopped_) {
        *stopped_ = true;
    }
}

void Background::giveUp()
{
    stop();
    finish();
}

void Background::finish()
{
    if (thread_.joinable()) {
        thread_.join();
    }
    ++current_; // what it has delivered meanwhile counts no longer
    busy_ = false;
}

} // namespace vantora::desktop
