#include "VantoraHost/core/workers/ConfinedCall.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/DescriptorText.h"
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
#include <cstring>
#include <deque>
#include <memory>
#include <new>
#include <optional>
#include <string_view>
#include <vector>

namespace vantora {

using karvel::io::FileDescriptor;

namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

constexpr auto tick = 200ms;
constexpr int outOfMemory = 3; // the copy's status
constexpr std::size_t longestAnswer = 64 * 1024 * 1024;

// Writes each answer after its length.
int doConfined(const CallLimits& limits, int answers, std::size_t count,
               const std::function<std::string(std::size_t)>& work)
{
    try {
        giveUpPrivileges();
        ::signal(SIGTERM, SIG_DFL);
        confine(limits.memory, limits.files);
        for (std::size_t i = 0; i < count; ++i) {
            const std::string text = work(i);
            const std::uint64_t length = text.size();
            const std::string_view lengthBytes(reinterpret_cast<const char*>(&length),
                                               sizeof length);
            if (!writeText(answers, lengthBytes) || !writeText(answers, text)) {
                return EXIT_FAILURE;
            }
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
        return Reading::More;
    }
    return got == 0 ? Reading::End : errno == EINTR ? Reading::More : Reading::Failed;
}

/// Which part of which piece.
struct Place {
    std::size_t piece = 0;
    std::size_t part = 0;
};

/// Places that one copy is at, one after the other.
using Places = std::deque<Place>;

struct Answer {
    Place place;
    Result<std::string> text;
};

/// A copy that is at work, and what it is still to answer.
class RunningCall {
public:
    RunningCall(Places places, CallLimits limits, FileDescriptor answers, pid_t process)
        : places_(std::move(places)), isAlone_(places_.size() == 1), limits_(std::move(limits)),
          answers_(std::move(answers)), copy_(std::make_unique<Copy>(process))
    {
    }

    int descriptor() const { return answers_.get(); }
    bool isOver() const { return isOver_; }

    /// What a copy that is over leaves to be done again.
    std::vector<Places> rest()
    {
        std::vector<Places> rest;
        if (!places_.empty() && isSuspect_) {
            rest.push_back({places_.front()});
            places_.pop_front();
        }
        if (!places_.empty()) {
            rest.push_back(std::move(places_));
        }
        return rest;
    }

    /// Takes what there is of answers.
    std::vector<Answer> goOn(bool readable)
    {
        const Reading read = readable ? readSome(answers_.get(), text_) : Reading::More;
        std::vector<Answer> answered = wholeAnswers();
        isOver_ = isOver_ || places_.empty();
        if (isOver_) {
            return answered;
        }
        if (read == Reading::Failed) {
            giveUp(answered, noSense());
        } else if (read == Reading::End) {
            end(answered);
        } else if (limits_.time > 0s && Clock::now() - start_ > limits_.time) {
            giveUp(answered,
                   {Reason::TimedOut, {}, "it took longer than " + secondsText(limits_.time)});
        }
        return answered;
    }

private:
    std::vector<Answer> wholeAnswers()
    {
        std::vector<Answer> answered;
        std::uint64_t length = 0;
        std::size_t position = 0;
        while (text_.size() - position >= sizeof length && !places_.empty()) {
            std::memcpy(&length, text_.data() + position, sizeof length);
            if (length > longestAnswer) {
                giveUp(answered, noSense());
                return answered;
            }
            if (text_.size() - position - sizeof length < length) {
                break;
            }
            answered.push_back({places_.front(), text_.substr(position + sizeof length, length)});
            places_.pop_front();
            position += sizeof length + length;
            start_ = Clock::now();
        }
        text_.erase(0, position);
        return answered;
    }

    // The copy has closed its side, and not answered everything.
    void end(std::vector<Answer>& answered)
    {
        const ProcessEnd end = copy_->end();
        if (!isAlone_) {
            isOver_ = isSuspect_ = true;
        } else if (end.signal == 0 && end.status == outOfMemory) {
            giveUp(answered, {Reason::OutOfMemory, {}, memorySentence(limits_.memory)});
        } else {
            giveUp(answered, {end.isCrash() ? Reason::Crashed : Reason::Killed,
                              {},
                              "the worker process that was at it ended: " + end.text()});
        }
    }

    void giveUp(std::vector<Answer>& answered, Error error)
    {
        answered.push_back({places_.front(), tl::unexpected<Error>(std::move(error))});
        places_.pop_front();
        isOver_ = true;
    }

    Places places_; ///< it is at the first
    bool isAlone_;
    bool isOver_ = false;
    bool isSuspect_ = false; ///< whether the first place may be what ended the copy
    CallLimits limits_;
    FileDescriptor answers_;
    std::unique_ptr<Copy> copy_;
    Clock::time_point start_ = Clock::now();
    std::string text_;
};

CallLimits limitsFor(const ConfinedWork& calls, const Places& places)
{
    CallLimits limits = calls.limits;
    for (const Place place : places) {
        if (calls.documents) {
            const std::vector<std::string> read = calls.documents(place.piece);
            limits.files.readable.insert(limits.files.readable.end(), read.begin(), read.end());
        }
    }
    return limits;
}

Result<RunningCall> start(const ConfinedWork& calls, const Places& places)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    FileDescriptor answers(ends[0]);
    const FileDescriptor answer(ends[1]);
    CallLimits limits = limitsFor(calls, places);
    const pid_t process = startCopy({answer.get()}, [&] {
        return doConfined(limits, answer.get(), places.size(), [&](std::size_t i) {
            return calls.work(places[i].piece, places[i].part);
        });
    });
    if (process < 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    return RunningCall(places, std::move(limits), std::move(answers), process);
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

    /// What is to be begun next: what is to be done again first, then further parts of earlier
    /// pieces.
    Places next()
    {
        if (!again_.empty()) {
            Places places = std::move(again_.front());
            again_.pop_front();
            return places;
        }
        const auto more = std::find_if(open_.begin(), open_.end(),
                                       [](const Piece& piece) { return piece.hasMore(); });
        if (more != open_.end()) {
            return {{handedOver_ + static_cast<std::size_t>(more - open_.begin()), more->begin()}};
        }
        const std::size_t first = handedOver_ + open_.size();
        if (first >= calls_.count) {
            return {};
        }
        const std::size_t asked = calls_.together ? calls_.together(first) : 1;
        const std::size_t count = std::clamp<std::size_t>(asked, 1, calls_.count - first);
        // One that takes long must not let the answers of all others pile up.
        most_ = std::max(most_, 2 * atOnce_ * count);
        if (open_.size() >= most_) {
            return {};
        }
        Places places;
        for (std::size_t i = 0; i < count; ++i) {
            places.push_back({first + i, open_.emplace_back().begin()});
        }
        return places;
    }

    void doAgain(Places places) { again_.push_back(std::move(places)); }

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
    std::size_t most_ = 0; ///< open at a time
    std::deque<Piece> open_;
    std::deque<Places> again_;
};

} // namespace

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
            const Places places = pieces.next();
            if (places.empty()) {
                break;
            }
            Result<RunningCall> call = start(calls, places);
            if (call) {
                running.push_back(std::move(*call));
                continue;
            }
            for (const Place place : places) {
                pieces.take(place, tl::unexpected<Error>(call.error()));
            }
        }
        const std::vector<bool> readable = readableOf(running);
        for (std::size_t i = running.size(); i-- > 0;) {
            for (Answer& answer : running[i].goOn(readable[i])) {
                pieces.take(answer.place, std::move(answer.text));
            }
            if (running[i].isOver()) {
                for (Places& rest : running[i].rest()) {
                    pieces.doAgain(std::move(rest));
                }
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
    calls.limits = limits;
    calls.work = [&](std::size_t, std::size_t) { return work(); };
    callEachConfined(calls, 1, cancelled, [&](std::size_t, PieceAnswers given) {
        answer = onlyAnswer(std::move(given));
    });
    return answer;
}

} // namespace vantora
