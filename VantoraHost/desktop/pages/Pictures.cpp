#include "VantoraHost/desktop/pages/Pictures.h"

#include "VantoraHost/desktop/sentences/Sentences.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <QtCore/QFile>

#include <fcntl.h>
#include <signal.h>
#include <unistd.h>

#include <functional>
#include <mutex>
#include <thread>
#include <utility>

namespace vantora::desktop {

namespace {

QImage imageOf(const PagePicture& picture)
{
    constexpr int channels = 3;
    const QImage pixels(reinterpret_cast<const uchar*>(picture.pixels.data()), picture.width,
                        picture.height, picture.width * channels, QImage::Format_RGB888);
    return pixels.convertToFormat(QImage::Format_RGB32);
}

} // namespace

/// The thread that minds the processes. What it is told and what it hears are handed over in lists.
class Pictures::Thread {
public:
    using Order = std::function<void(PicturePool&)>;

    Thread(PictureSettings settings, std::function<void(Arrival)> hand) : hand_(std::move(hand))
    {
        int ends[2] = {-1, -1};
        if (::pipe2(ends, O_CLOEXEC | O_NONBLOCK) == 0) {
            woken_ = karvel::io::FileDescriptor(ends[0]);
            wake_ = karvel::io::FileDescriptor(ends[1]);
            thread_ = std::thread([this, settings = std::move(settings)] { run(settings); });
        }
    }

    ~Thread()
    {
        if (thread_.joinable()) {
            tell([this](PicturePool&) { ends_ = true; });
            thread_.join();
        }
    }

    Thread(const Thread&) = delete;
    Thread& operator=(const Thread&) = delete;

    void tell(Order order)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        orders_.push_back(std::move(order));
        wake();
    }

    /// Only the last of these counts.
    void wish(std::vector<PictureWish> wishes)
    {
        const std::lock_guard<std::mutex> lock(mutex_);
        wishes_ = std::move(wishes);
        wake();
    }

private:
    // That the pipe is full is as good: it wakes.
    void wake() const { [[maybe_unused]] const ssize_t written = ::write(wake_.get(), "", 1); }

    void run(const PictureSettings& settings)
    {
        // A process that is gone doesn't take orders, which is found out when it is heard of.
        sigset_t blocked;
        sigemptyset(&blocked);
        sigaddset(&blocked, SIGPIPE);
        ::pthread_sigmask(SIG_BLOCK, &blocked, nullptr);
        PicturePool pool(settings);
        while (obey(pool)) {
            for (PictureAnswer& answer : pool.wait(woken_.get())) {
                Arrival arrival{std::move(answer), {}};
                if (arrival.answer.what) {
                    if (auto* made = std::get_if<PagePicture>(&*arrival.answer.what)) {
                        arrival.picture = imageOf(*made);
                        made->pixels = {};
                    }
                }
                hand_(std::move(arrival));
            }
        }
    }

    // Whether there is more to come.
    bool obey(PicturePool& pool)
    {
        char bytes[256];
        while (::read(woken_.get(), bytes, sizeof bytes) > 0) {
        }
        std::vector<Order> orders;
        std::optional<std::vector<PictureWish>> wishes;
        {
            const std::lock_guard<std::mutex> lock(mutex_);
            orders = std::exchange(orders_, {});
            wishes = std::exchange(wishes_, std::nullopt);
        }
        for (const Order& order : orders) {
            order(pool);
        }
        if (wishes) {
            pool.wish(std::move(*wishes));
        }
        return !ends_;
    }

    const std::function<void(Arrival)> hand_;
    karvel::io::FileDescriptor woken_;
    karvel::io::FileDescriptor wake_;
    std::mutex mutex_;
    std::vector<Order> orders_;
    std::optional<std::vector<PictureWish>> wishes_;
    bool ends_ = false; ///< of the thread alone
    std::thread thread_;
};

Pictures::Pictures(PictureSettings settings, QObject* parent)
    : QObject(parent), thread_(std::make_unique<Thread>(std::move(settings), [this](Arrival got) {
          QMetaObject::invokeMethod(
              this, [this, arrival = std::move(got)] { arrive(arrival); }, Qt::QueuedConnection);
      }))
{
}

Pictures::~Pictures() = default;

void Pictures::open(DocumentId document, const QString& path, const QString& password)
{
    close(document);
    const PicturedDocument number = ++last_;
    open_[document] = number;
    documents_[number] = document;
    thread_->tell([number, input = QFile::encodeName(path).toStdString(),
                   opening = password.toStdString()](PicturePool& pool) {
        pool.open(number, input, opening);
    });
}

void Pictures::close(DocumentId document)
{
    const auto found = open_.constFind(document);
    if (found == open_.constEnd()) {
        return;
    }
    const PicturedDocument number = *found;
    documents_.remove(number);
    open_.erase(found);
    thread_->tell([number](PicturePool& pool) { pool.close(number); });
}

void Pictures::wish(PictureAsker asker, std::vector<PageWish> wishes)
{
    wishes_[asker] = std::move(wishes);
    sendWishes();
}

void Pictures::sendWishes()
{
    std::vector<PictureWish> all;
    for (const std::vector<PageWish>& wishes : qAsConst(wishes_)) {
        for (const PageWish& wish : wishes) {
            if (const PicturedDocument number = open_.value(wish.document)) {
                all.push_back({number, wish.task});
            }
        }
    }
    thread_->wish(std::move(all));
}

void Pictures::arrive(const Arrival& arrival)
{
    const PictureAnswer& answer = arrival.answer;
    const auto found = documents_.constFind(answer.wish.document);
    if (found == documents_.constEnd()) {
        return; // of a file that isn't wanted any more
    }
    const DocumentId document = *found;
    const int page = answer.wish.task ? answer.wish.task->page : 0;
    if (!answer.what) {
        emit failed(document, answer.ofDocument ? 0 : page,
                    shownSentence(answer.what.error().sentence));
    } else if (const auto* opened = std::get_if<PictureOpened>(&*answer.what)) {
        emit pagesKnown(document, opened->pages);
    } else if (const auto* told = std::get_if<ShownPages>(&*answer.what)) {
        emit factsKnown(document, page, told->pages);
    } else {
        emit made(document, page, answer.wish.task->side, arrival.picture);
    }
}

} // namespace vantora::desktop
