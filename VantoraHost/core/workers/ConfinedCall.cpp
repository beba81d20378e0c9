#include "VantoraHost/core/workers/ConfinedCall.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/workers/Confinement.h"
#include "VantoraHost/core/workers/ProcessCopy.h"
#include "VantoraHost/core/workers/Verdicts.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <deque>
#include <memory>
#include <new>
#include <optional>
#include <vector>

namespace vantora {

using karvel::io::FileDescriptor;

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto tick = 200ms;
constexpr int outOfMemory = 3; // the copy's status
constexpr std::size_t longestAnswer = 64 * 1024 * 1024;

int doConfined(const CallLimits& limits, int answer, const std::function<std::string()>& work)
{
    try {
        giveUpPrivileges();
        ::signal(SIGTERM, SIG_DFL);
        confine(limits.memory, limits.files);
        const std::string text = work();
        for (std::size_t written = 0; written < text.size();) {
            const ssize_t count = ::write(answer, text.data() + written, text.size() - written);
            if (count < 0 && errno != EINTR) {
                return EXIT_FAILURE;
            }
            written += count > 0 ? static_cast<std::size_t>(count) : 0;
        }
        return EXIT_SUCCESS;
    } catch (const std::bad_alloc&) {
        return outOfMemory;
    }
}

/// The copy that works; killed at the end of this object.
class Copy {
public:
    explicit Copy(pid_t process) : process_(process) {}
    ~Copy()
    {
        if (process_ > 0) {
            ::kill(process_, SIGKILL);
            end();
        }
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    ProcessEnd end()
    {
        int status = 0;
        while (::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
        }
        process_ = 0;
        return WIFSIGNALED(status) ? ProcessEnd{WTERMSIG(status), 0}
                                   : ProcessEnd{0, WEXITSTATUS(status)};
    }

private:
    pid_t process_;
};

enum class Reading { More, End, Failed };

Reading readSome(int descriptor, std::string& text)
{
    char piece[65536];
    const ssize_t got = ::read(descriptor, piece, sizeof piece);
    if (got > 0) {
        text.append(piece, static_cast<std::size_t>(got));
        return text.size() > longestAnswer ? Reading::Failed : Reading::More;
    }
    return got == 0 ? Reading::End : errno == EINTR ? Reading::More : Reading::Failed;
}

/// Which part of which piece.
struct Place {
    std::size_t piece = 0;
    std::size_t part = 0;
};

/// A copy that is at work, and what it has answered so far.
class RunningCall {
public:
    RunningCall(Place place, CallLimits limits, FileDescriptor answers, pid_t process)
        : place_(place), limits_(std::move(limits)), answers_(std::move(answers)),
          copy_(std::make_unique<Copy>(process))
    {
    }

    int descriptor() const { return answers_.get(); }
    Place place() const { return place_; }

    /// Takes what there is of the answer; the result, once there is one.
    std::optional<Result<std::string>> goOn(bool readable)
    {
        const Reading read = readable ? readSome(answers_.get(), text_) : Reading::More;
        if (read == Reading::End) {
            return ended();
        }
        if (read == Reading::Failed) {
            return tl::unexpected<Error>(noSense());
        }
        if (limits_.time > 0s && Clock::now() - start_ > limits_.time) {
            return fail(Reason::TimedOut, {}, "it took longer than " + secondsText(limits_.time));
        }
        return std::nullopt;
    }

private:
    Result<std::string> ended()
    {
        const ProcessEnd end = copy_->end();
        if (end.signal == 0 && end.status == outOfMemory) {
            return fail(Reason::OutOfMemory, {}, memorySentence(limits_.memory));
        }
        if (end.signal != 0 || end.status != 0) {
            return fail(end.isCrash() ? Reason::Crashed : Reason::Killed, {},
                        "the worker process that was at it ended: " + end.text());
        }
        return std::move(text_);
    }

    Place place_;
    CallLimits limits_;
    FileDescriptor answers_;
    std::unique_ptr<Copy> copy_;
    Clock::time_point start_ = Clock::now();
    std::string text_;
};

Result<RunningCall> start(const ConfinedWork& calls, Place place)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    FileDescriptor answers(ends[0]);
    const FileDescriptor answer(ends[1]);
    CallLimits limits = calls.limits(place.piece);
    const pid_t process = startCopy({answer.get()}, [&] {
        return doConfined(limits, answer.get(),
                          [&] { return calls.work(place.piece, place.part); });
    });
    if (process < 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    return RunningCall(place, std::move(limits), std::move(answers), process);
}

// Waits a while for answers; which calls have some.
std::vector<bool> readableOf(const std::vector<RunningCall>& running)
{
    std::vector<pollfd> polled;
    for (const RunningCall& call : running) {
        polled.push_back({call.descriptor(), POLLIN, 0});
    }
    const int ready = ::poll(polled.data(), polled.size(), static_cast<int>(tick.count()));
    std::vector<bool> readable;
    for (const pollfd& one : polled) {
        readable.push_back(ready > 0 && one.revents != 0);
    }
    return readable;
}

/// The parts of a piece: which are to be begun, which are at work, what they answered.
class Piece {
public:
    bool hasMore() const { return !error_ && begun_ < answers_.size(); }
    bool isDone() const { return atWork_ == 0 && (error_ || begun_ == answers_.size()); }

    std::size_t begin()
    {
        ++atWork_;
        return begun_++;
    }

    void take(std::size_t part, Result<std::string> answer,
              const std::function<std::size_t(const std::string&)>& furtherParts)
    {
        --atWork_;
        if (!answer) {
            error_ = error_ ? error_ : std::move(answer.error());
            return;
        }
        if (part == 0) {
            answers_.resize(1 + furtherParts(*answer));
        }
        answers_[part] = std::move(*answer);
    }

    PieceAnswers answers()
    {
        return error_ ? PieceAnswers(tl::unexpected<Error>(std::move(*error_)))
                      : PieceAnswers(std::move(answers_));
    }

private:
    std::vector<std::string> answers_ = std::vector<std::string>(1);
    std::size_t begun_ = 0;
    std::size_t atWork_ = 0;
    std::optional<Error> error_;
};

/// The pieces that have begun and are not handed over.
class Pieces {
public:
    Pieces(const ConfinedWork& calls, std::size_t atOnce) : calls_(calls), atOnce_(atOnce) {}

    bool areDone() const { return handedOver_ == calls_.count; }

    /// What is to be begun next: further parts of earlier pieces first.
    std::optional<Place> next()
    {
        const auto more = std::find_if(open_.begin(), open_.end(),
                                       [](const Piece& piece) { return piece.hasMore(); });
        if (more != open_.end()) {
            return Place{handedOver_ + static_cast<std::size_t>(more - open_.begin()),
                         more->begin()};
        }
        // One that takes long must not let the answers of all others pile up.
        const std::size_t piece = handedOver_ + open_.size();
        if (piece >= calls_.count || open_.size() >= 2 * atOnce_) {
            return std::nullopt;
        }
        return Place{piece, open_.emplace_back().begin()};
    }

    void take(Place place, Result<std::string> answer)
    {
        open_[place.piece - handedOver_].take(
            place.part, std::move(answer), [&](const std::string& first) {
                return calls_.furtherParts ? calls_.furtherParts(place.piece, first) : 0;
            });
    }

    void handOver(const std::function<void(std::size_t, PieceAnswers)>& receive)
    {
        while (!open_.empty() && open_.front().isDone()) {
            PieceAnswers answers = open_.front().answers();
            open_.pop_front();
            receive(handedOver_++, std::move(answers));
        }
    }

private:
    const ConfinedWork& calls_;
    std::size_t atOnce_;
    std::size_t handedOver_ = 0;
    std::deque<Piece> open_;
};

} // namespace

CallLimits limitsToRead(const std::vector<std::string>& documents,
                        const std::vector<std::string>& programFiles, std::uint64_t memory,
                        std::chrono::seconds time)
{
    CallLimits limits{{programFiles, {}}, memory, time};
    limits.files.readable.insert(limits.files.readable.end(), documents.begin(), documents.end());
    return limits;
}

Result<std::string> onlyAnswer(PieceAnswers answers)
{
    return std::move(answers).map(
        [](std::vector<std::string> parts) { return std::move(parts.front()); });
}

bool callEachConfined(const ConfinedWork& calls, std::size_t atOnce,
                      const std::function<bool()>& cancelled,
                      const std::function<void(std::size_t, PieceAnswers)>& receive)
{
    Pieces pieces(calls, atOnce);
    std::vector<RunningCall> running;
    while (!pieces.areDone()) {
        if (cancelled()) {
            return false;
        }
        while (running.size() < atOnce) {
            const std::optional<Place> place = pieces.next();
            if (!place) {
                break;
            }
            Result<RunningCall> call = start(calls, *place);
            if (call) {
                running.push_back(std::move(*call));
            } else {
                pieces.take(*place, tl::unexpected<Error>(std::move(call.error())));
            }
        }
        const std::vector<bool> readable = readableOf(running);
        for (std::size_t i = running.size(); i-- > 0;) {
            if (auto answer = running[i].goOn(readable[i])) {
                pieces.take(running[i].place(), std::move(*answer));
                running.erase(running.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        pieces.handOver(receive);
    }
    return true;
}

Result<std::string> callConfined(const CallLimits& limits, const std::function<bool()>& cancelled,
                                 const std::function<std::string()>& work)
{
    Result<std::string> answer = fail(Reason::Interrupted, {}, "interrupted");
    ConfinedWork calls;
    calls.count = 1;
    calls.limits = [&](std::size_t) { return limits; };
    calls.work = [&](std::size_t, std::size_t) { return work(); };
    callEachConfined(calls, 1, cancelled, [&](std::size_t, PieceAnswers given) {
        answer = onlyAnswer(std::move(given));
    });
    return answer;
}

} // namespace vantora
