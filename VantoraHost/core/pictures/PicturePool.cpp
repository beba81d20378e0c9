#include "VantoraHost/core/pictures/PicturePool.h"

#include "VantoraHost/core/workers/Verdicts.h"

#include <poll.h>
#include <signal.h>

#include <algorithm>
#include <utility>

namespace vantora {

namespace {

using namespace std::chrono_literals;

// The longest wait after which the time is looked at.
constexpr auto tick = 200ms;

// A worker that is at what nobody wants any more is given up after this time, where others wait.
constexpr auto patience = 1s;

// Facts of a thousand pages with the longest labels take less.
constexpr std::size_t longestLine = 1024 * 1024;

} // namespace

PicturePool::PicturePool(PictureSettings settings) : settings_(std::move(settings)) {}

PicturePool::~PicturePool() = default;

void PicturePool::open(PicturedDocument document, std::string input, std::string password)
{
    close(document);
    documents_[document] = {std::move(input), std::move(password), std::nullopt};
}

void PicturePool::close(PicturedDocument document)
{
    documents_.erase(document);
    workers_.erase(std::remove_if(workers_.begin(), workers_.end(),
                                  [&](const auto& worker) { return worker->document == document; }),
                   workers_.end());
    const auto isOfIt = [&](const PictureWish& wish) { return wish.document == document; };
    wishes_.erase(std::remove_if(wishes_.begin(), wishes_.end(), isOfIt), wishes_.end());
    answers_.erase(std::remove_if(answers_.begin(), answers_.end(),
                                  [&](const PictureAnswer& answer) { return isOfIt(answer.wish); }),
                   answers_.end());
}

void PicturePool::wish(std::vector<PictureWish> wishes)
{
    wishes_.assign(wishes.begin(), wishes.end());
    allWished_ = std::move(wishes);
}

std::vector<PictureAnswer> PicturePool::wait(int wake)
{
    bool woken = false;
    dispatch();
    while (answers_.empty() && !woken) {
        const std::vector<int> readable = pollOnce(wake);
        woken = std::find(readable.begin(), readable.end(), wake) != readable.end();
        // By their places: who is buried leaves the list.
        for (std::size_t i = workers_.size(); i-- > 0;) {
            const int descriptor = workers_[i]->process->answersToRead();
            if (std::find(readable.begin(), readable.end(), descriptor) != readable.end()) {
                hear(*workers_[i]);
            }
        }
        endOverdue();
        dispatch();
    }
    return std::exchange(answers_, {});
}

// Those of the descriptors that can be read from.
std::vector<int> PicturePool::pollOnce(int wake)
{
    std::vector<pollfd> polled = {{wake, POLLIN, 0}};
    bool isBusy = false;
    for (const auto& worker : workers_) {
        isBusy = isBusy || !worker->isIdle();
        polled.push_back({worker->process->answersToRead(), POLLIN, 0});
        if (const int orders = worker->process->ordersToWrite(); orders >= 0) {
            polled.push_back({orders, POLLOUT, 0});
        }
    }
    const int ready =
        ::poll(polled.data(), polled.size(), isBusy ? static_cast<int>(tick.count()) : -1);
    std::vector<int> readable;
    for (const pollfd& one : polled) {
        if (ready > 0 && (one.revents & (POLLIN | POLLHUP | POLLERR)) != 0) {
            readable.push_back(one.fd);
        }
    }
    for (const auto& worker : workers_) {
        if (worker->process->ordersToWrite() >= 0) {
            worker->process->writeOrders();
        }
    }
    return readable;
}

// Hands out what is wished, in its order, to those who can do it.
void PicturePool::dispatch()
{
    std::map<PicturedDocument, int> starting; // workers of which more is expected soon
    for (const auto& worker : workers_) {
        starting[worker->document] += worker->pages ? 0 : 1;
    }
    std::deque<PictureWish> left;
    for (std::deque<PictureWish> wishes = std::exchange(wishes_, {}); !wishes.empty();
         wishes.pop_front()) {
        if (!serve(wishes.front(), starting)) {
            left.push_back(wishes.front());
        }
    }
    wishes_ = std::move(left);
}

// Whether nothing more is to be done for the wish.
bool PicturePool::serve(const PictureWish& wish, std::map<PicturedDocument, int>& starting)
{
    const auto document = documents_.find(wish.document);
    if (document == documents_.end()) {
        return true;
    }
    if (document->second.failure) {
        answer(wish, tl::unexpected<Error>(*document->second.failure), true);
        return true;
    }
    Worker* idle = nullptr;
    for (const auto& worker : workers_) {
        if (worker->document != wish.document) {
            continue;
        }
        if (!wish.task && worker->pages) {
            answer(wish, PictureOpened{*worker->pages});
            return true;
        }
        if (wish.task && worker->task == wish.task) {
            return true;
        }
        idle = worker->isIdle() ? worker.get() : idle;
    }
    if (idle) {
        idle->task = wish.task;
        idle->since = settings_.now();
        idle->process->send(pictureTaskMessage(*wish.task) + '\n');
        return true;
    }
    if (starting[wish.document] > 0) {
        --starting[wish.document];
        return false;
    }
    if (makeRoom(wish.document)) {
        return !start(wish);
    }
    return false;
}

bool PicturePool::isWished(const Worker& worker) const
{
    return std::any_of(allWished_.begin(), allWished_.end(), [&](const PictureWish& wish) {
        return wish.document == worker.document &&
               (!worker.task || !wish.task || wish.task == worker.task);
    });
}

// Whether there may be one process more, for which one that has nothing to do ends.
bool PicturePool::makeRoom(PicturedDocument document)
{
    if (workers_.size() < std::max<std::size_t>(settings_.workers, 1)) {
        return true;
    }
    const auto now = settings_.now();
    const auto dispensable =
        std::find_if(workers_.begin(), workers_.end(), [&](const auto& worker) {
            return worker->isIdle() ? worker->document != document
                                    : !isWished(*worker) && now - worker->since > patience;
        });
    if (dispensable == workers_.end()) {
        return false;
    }
    workers_.erase(dispensable);
    return true;
}

// Whether a worker is on its way for the wish.
bool PicturePool::start(const PictureWish& wish)
{
    auto process = WorkerProcess::start(settings_.program, picturesCommand);
    if (!process) {
        failDocument(wish.document, process.error());
        answer(wish, tl::unexpected<Error>(process.error()), true);
        return false;
    }
    const Document& document = documents_.at(wish.document);
    auto worker = std::make_unique<Worker>();
    worker->process = std::move(*process);
    worker->document = wish.document;
    worker->since = settings_.now();
    worker->process->send(pictureSetupMessage({settings_.library, document.input, document.password,
                                               settings_.memoryLimit}) +
                          '\n');
    workers_.push_back(std::move(worker));
    return true;
}

void PicturePool::hear(Worker& worker)
{
    const Heard heard = worker.process->readBytes(worker.received);
    // What it has said before it ended counts.
    while (!worker.received.empty()) {
        const std::size_t before = worker.received.size();
        if (!takeAnswer(worker)) {
            bury(worker, false, true);
            return;
        }
        if (worker.received.size() == before) {
            break;
        }
    }
    if (heard == Heard::End) {
        bury(worker, false, false);
    }
}

// Takes one answer, if it is there as a whole. False for what makes no sense.
bool PicturePool::takeAnswer(Worker& worker)
{
    if (worker.picture) {
        const std::size_t wanted = pixelBytes(*worker.picture);
        if (worker.received.size() < wanted) {
            worker.received.reserve(wanted);
            return true;
        }
        PagePicture picture = *std::exchange(worker.picture, std::nullopt);
        std::string rest = worker.received.substr(wanted);
        worker.received.resize(wanted);
        picture.pixels = std::exchange(worker.received, std::move(rest));
        finish(worker, std::move(picture));
        return true;
    }
    const std::size_t end = worker.received.find('\n');
    if (end == std::string::npos) {
        return worker.received.size() <= longestLine;
    }
    const std::string line = worker.received.substr(0, end);
    worker.received.erase(0, end + 1);
    return takeLine(worker, line);
}

bool PicturePool::takeLine(Worker& worker, std::string_view line)
{
    const auto said = pictureSaidOf(line, worker.task.value_or(PictureTask()));
    if (!said) {
        return false;
    }
    if (const auto* failure = std::get_if<PictureFailure>(&*said)) {
        if (!worker.pages) {
            failDocument(worker.document, failure->error);
        } else if (worker.task) {
            finish(worker, tl::unexpected<Error>(failure->error));
        }
        return true;
    }
    if (const auto* opened = std::get_if<PictureOpened>(&*said)) {
        const bool isFirst = !worker.pages;
        worker.pages = opened->pages;
        return isFirst;
    }
    if (!worker.task) {
        return false; // nobody asked
    }
    if (const auto* picture = std::get_if<PagePicture>(&*said)) {
        worker.picture = *picture;
        return true;
    }
    finish(worker, std::get<ShownPages>(*said));
    return true;
}

void PicturePool::finish(Worker& worker, decltype(PictureAnswer::what) what)
{
    answer({worker.document, std::exchange(worker.task, std::nullopt)}, std::move(what));
    // The most recently used goes to the end.
    const auto place = std::find_if(workers_.begin(), workers_.end(),
                                    [&](const auto& other) { return other.get() == &worker; });
    std::rotate(place, place + 1, workers_.end());
}

void PicturePool::answer(PictureWish wish, decltype(PictureAnswer::what) what, bool ofDocument)
{
    answers_.push_back({std::move(wish), std::move(what), ofDocument});
}

void PicturePool::failDocument(PicturedDocument document, Error error)
{
    const auto found = documents_.find(document);
    if (found != documents_.end() && !found->second.failure) {
        found->second.failure = std::move(error);
    }
}

// A worker is gone, or is to go.
void PicturePool::bury(Worker& worker, bool timedOut, bool senseless)
{
    if (timedOut || senseless) {
        worker.process->signal(SIGKILL);
    }
    const ProcessEnd end = worker.process->end();
    Error error = *Verdicts(settings_.timeout, false).of(0, {end, timedOut, senseless, false});
    if (!worker.pages) {
        failDocument(worker.document, std::move(error));
    } else if (worker.task) {
        answer({worker.document, worker.task}, tl::unexpected<Error>(std::move(error)));
    }
    workers_.erase(std::find_if(workers_.begin(), workers_.end(),
                                [&](const auto& other) { return other.get() == &worker; }));
}

void PicturePool::endOverdue()
{
    if (settings_.timeout <= 0s) {
        return;
    }
    const auto now = settings_.now();
    for (std::size_t i = workers_.size(); i-- > 0;) {
        if (!workers_[i]->isIdle() && now - workers_[i]->since > settings_.timeout) {
            bury(*workers_[i], true, false);
        }
    }
}

} // namespace vantora
