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
#include <map>
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

/// A copy that is at work, and what it has answered so far.
class RunningCall {
public:
    RunningCall(std::size_t number, CallLimits limits, FileDescriptor answers, pid_t process)
        : number_(number), limits_(std::move(limits)), answers_(std::move(answers)),
          copy_(std::make_unique<Copy>(process))
    {
    }

    int descriptor() const { return answers_.get(); }
    std::size_t place() const { return number_; }

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

    std::size_t number_;
    CallLimits limits_;
    FileDescriptor answers_;
    std::unique_ptr<Copy> copy_;
    Clock::time_point start_ = Clock::now();
    std::string text_;
};

Result<RunningCall> start(const ConfinedWork& calls, std::size_t number)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    FileDescriptor answers(ends[0]);
    const FileDescriptor answer(ends[1]);
    CallLimits limits = calls.limits(number);
    const pid_t process = startCopy({answer.get()}, [&] {
        return doConfined(limits, answer.get(), [&] { return calls.work(number); });
    });
    if (process < 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    return RunningCall(number, std::move(limits), std::move(answers), process);
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

} // namespace

bool callEachConfined(const ConfinedWork& calls, std::size_t atOnce,
                      const std::function<bool()>& cancelled,
                      const std::function<void(std::size_t, Result<std::string>)>& receive)
{
    std::vector<RunningCall> running;
    std::map<std::size_t, Result<std::string>> finished; // whose turn has not come
    std::size_t started = 0;
    std::size_t received = 0;
    while (received < calls.count) {
        if (cancelled()) {
            return false;
        }
        // One that takes long must not let the answers of all others pile up.
        const std::size_t most = std::min(calls.count, received + 2 * atOnce);
        for (; running.size() < atOnce && started < most; ++started) {
            Result<RunningCall> call = start(calls, started);
            if (call) {
                running.push_back(std::move(*call));
            } else {
                finished.emplace(started, tl::unexpected<Error>(std::move(call.error())));
            }
        }
        const std::vector<bool> readable = readableOf(running);
        for (std::size_t i = running.size(); i-- > 0;) {
            if (auto result = running[i].goOn(readable[i])) {
                finished.emplace(running[i].place(), std::move(*result));
                running.erase(running.begin() + static_cast<std::ptrdiff_t>(i));
            }
        }
        for (auto first = finished.begin(); first != finished.end() && first->first == received;
             first = finished.erase(first)) {
            receive(received++, std::move(first->second));
        }
    }
    return true;
}

Result<std::string> callConfined(const CallLimits& limits, const std::function<bool()>& cancelled,
                                 const std::function<std::string()>& work)
{
    Result<std::string> answer = fail(Reason::Interrupted, {}, "interrupted");
    callEachConfined({1, [&](std::size_t) { return limits; }, [&](std::size_t) { return work(); }},
                     1, cancelled,
                     [&](std::size_t, Result<std::string> given) { answer = std::move(given); });
    return answer;
}

} // namespace vantora
