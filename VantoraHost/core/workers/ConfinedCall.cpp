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
#include <new>

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
    explicit Copy(pid_t process) : process(process) {}
    ~Copy()
    {
        if (process > 0) {
            ::kill(process, SIGKILL);
            end();
        }
    }
    Copy(const Copy&) = delete;
    Copy& operator=(const Copy&) = delete;

    ProcessEnd end()
    {
        int status = 0;
        while (::waitpid(process, &status, 0) < 0 && errno == EINTR) {
        }
        process = 0;
        return WIFSIGNALED(status) ? ProcessEnd{WTERMSIG(status), 0}
                                   : ProcessEnd{0, WEXITSTATUS(status)};
    }

private:
    pid_t process;
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

// The whole answer, or why there is none.
Result<std::string> answerFrom(int descriptor, const CallLimits& limits,
                               const std::function<bool()>& cancelled)
{
    const auto start = Clock::now();
    std::string text;
    for (;;) {
        pollfd readable = {descriptor, POLLIN, 0};
        const int ready = ::poll(&readable, 1, static_cast<int>(tick.count()));
        if (cancelled()) {
            return fail(Reason::Interrupted, {}, "interrupted");
        }
        const Reading read = ready > 0 ? readSome(descriptor, text) : Reading::More;
        if (read == Reading::End) {
            return text;
        }
        if (read == Reading::Failed) {
            return fail(Reason::Crashed, {}, "the worker process that was at it made no sense");
        }
        if (limits.time > 0s && Clock::now() - start > limits.time) {
            return fail(Reason::TimedOut, {}, "it took longer than " + secondsText(limits.time));
        }
    }
}

} // namespace

Result<std::string> callConfined(const CallLimits& limits, const std::function<bool()>& cancelled,
                                 const std::function<std::string()>& work)
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    const FileDescriptor answers(ends[0]);
    FileDescriptor answer(ends[1]);
    const pid_t process =
        startCopy({answer.get()}, [&] { return doConfined(limits, answer.get(), work); });
    if (process < 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    Copy copy(process);
    answer = FileDescriptor();
    Result<std::string> text = answerFrom(answers.get(), limits, cancelled);
    if (!text) {
        return text;
    }
    const ProcessEnd end = copy.end();
    if (end.signal == 0 && end.status == outOfMemory) {
        return fail(Reason::OutOfMemory, {}, memorySentence(limits.memory));
    }
    if (end.signal != 0 || end.status != 0) {
        return fail(end.isCrash() ? Reason::Crashed : Reason::Killed, {},
                    "the worker process that was at it ended: " + end.text());
    }
    return text;
}

} // namespace vantora
