#include "VantoraHost/core/workers/WorkerProcess.h"

#include "VantoraHost/core/workers/MessageFrames.h"
#include "VantoraHost/core/workers/ProcessCopy.h"

#include <fcntl.h>
#include <signal.h>
#include <spawn.h>
#include <string.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>

extern char** environ;

namespace vantora {

using karvel::io::FileDescriptor;

namespace {

struct Pipe {
    FileDescriptor read;
    FileDescriptor write;
};

Result<Pipe> makePipe()
{
    int ends[2];
    if (::pipe2(ends, O_CLOEXEC) != 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    return Pipe{FileDescriptor(ends[0]), FileDescriptor(ends[1])};
}

void neverWait(const FileDescriptor& descriptor)
{
    ::fcntl(descriptor.get(), F_SETFL, ::fcntl(descriptor.get(), F_GETFL) | O_NONBLOCK);
}

/// How a worker is started.
class Spawning {
public:
    Spawning(const Pipe& orders, const Pipe& answers)
    {
        posix_spawn_file_actions_init(&actions_);
        posix_spawn_file_actions_adddup2(&actions_, orders.read.get(), STDIN_FILENO);
        posix_spawn_file_actions_adddup2(&actions_, answers.write.get(), STDOUT_FILENO);
        // What else the user's shell has open is none of its business.
        posix_spawn_file_actions_addclosefrom_np(&actions_, STDERR_FILENO + 1);
        // Ctrl-C reaches every process of the terminal, but it is the run that stops its workers.
        sigset_t blocked;
        sigemptyset(&blocked);
        for (const int number : {SIGINT, SIGHUP, SIGQUIT}) {
            sigaddset(&blocked, number);
        }
        posix_spawnattr_init(&attributes_);
        posix_spawnattr_setsigmask(&attributes_, &blocked);
        posix_spawnattr_setflags(&attributes_, POSIX_SPAWN_SETSIGMASK);
    }
    ~Spawning()
    {
        posix_spawn_file_actions_destroy(&actions_);
        posix_spawnattr_destroy(&attributes_);
    }
    Spawning(const Spawning&) = delete;
    Spawning& operator=(const Spawning&) = delete;

    // Returns 0 or an errno value.
    int start(const std::filesystem::path& program, std::string command, pid_t& process)
    {
        char name[] = "vantora";
        char* arguments[] = {name, command.data(), nullptr};
        return ::posix_spawn(&process, program.c_str(), &actions_, &attributes_, arguments,
                             environ);
    }

private:
    posix_spawn_file_actions_t actions_;
    posix_spawnattr_t attributes_;
};

} // namespace

Result<std::unique_ptr<WorkerProcess>> WorkerProcess::start(const std::filesystem::path& program,
                                                            const char* command)
{
    auto orders = makePipe();
    auto answers = orders ? makePipe() : tl::unexpected<Error>(orders.error());
    if (!answers) {
        return tl::unexpected<Error>(std::move(answers.error()));
    }
    pid_t process = 0;
    if (const int failed = Spawning(*orders, *answers).start(program, command, process);
        failed != 0) {
        return fail(Reason::WorkerFailed, program,
                    "a worker process can't be started: " + systemMessage(failed));
    }
    neverWait(orders->write);
    neverWait(answers->read);
    return std::unique_ptr<WorkerProcess>(
        new WorkerProcess(process, std::move(orders->write), std::move(answers->read)));
}

Result<std::unique_ptr<WorkerProcess>>
WorkerProcess::copy(std::vector<int> kept, const std::function<int(int orders, int answers)>& work)
{
    auto orders = makePipe();
    auto answers = orders ? makePipe() : tl::unexpected<Error>(orders.error());
    if (!answers) {
        return tl::unexpected<Error>(std::move(answers.error()));
    }
    kept.push_back(orders->read.get());
    kept.push_back(answers->write.get());
    const pid_t process =
        startCopy(kept, [&] { return work(orders->read.get(), answers->write.get()); });
    if (process < 0) {
        return fail(Reason::WorkerFailed, {},
                    "a worker process can't be started: " + systemMessage(errno));
    }
    neverWait(orders->write);
    neverWait(answers->read);
    return std::unique_ptr<WorkerProcess>(
        new WorkerProcess(process, std::move(orders->write), std::move(answers->read)));
}

WorkerProcess::~WorkerProcess()
{
    signal(SIGKILL);
    end();
}

void WorkerProcess::send(std::string_view bytes)
{
    unsent_ += bytes;
    writeOrders();
}

void WorkerProcess::closeOrders()
{
    closing_ = true;
    writeOrders();
}

void WorkerProcess::writeOrders()
{
    while (!unsent_.empty()) {
        const ssize_t count = ::write(orders_.get(), unsent_.data(), unsent_.size());
        if (count > 0) {
            unsent_.erase(0, static_cast<std::size_t>(count));
        } else if (errno == EAGAIN) {
            return;
        } else if (errno != EINTR) {
            unsent_.clear(); // nobody reads it any more, as the end of the answers will tell
        }
    }
    if (closing_) {
        orders_ = FileDescriptor();
    }
}

Heard WorkerProcess::readBytes(std::string& bytes) const
{
    // A worker that never stops talking is not to keep the run from everything else.
    constexpr std::size_t mostAtATime = 1024 * 1024;
    for (std::size_t read = 0; read < mostAtATime;) {
        char piece[65536];
        const ssize_t got = ::read(answers_.get(), piece, sizeof piece);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got <= 0) {
            return got < 0 && errno == EAGAIN ? Heard::Answers : Heard::End;
        }
        read += static_cast<std::size_t>(got);
        bytes.append(piece, static_cast<std::size_t>(got));
    }
    return Heard::Answers;
}

Heard WorkerProcess::readLines(std::vector<std::string>& lines)
{
    std::size_t searched = received_.size();
    const Heard heard = readBytes(received_);
    std::size_t start = 0;
    for (std::size_t end = 0; (end = received_.find('\n', searched)) != std::string::npos;) {
        lines.push_back(received_.substr(start, end - start));
        start = searched = end + 1;
    }
    received_.erase(0, start);
    return heard == Heard::Answers && received_.size() > longestMessage ? Heard::Nonsense : heard;
}

Heard WorkerProcess::readMessages(std::vector<std::string>& messages)
{
    const Heard heard = readBytes(received_);
    std::string_view rest = received_;
    while (auto message = takeMessage(rest)) {
        messages.push_back(std::move(*message));
    }
    received_.erase(0, received_.size() - rest.size());
    return heard == Heard::Answers && isTooLong(received_) ? Heard::Nonsense : heard;
}

void WorkerProcess::signal(int number) const
{
    if (process_ > 0) {
        ::kill(process_, number);
    }
}

ProcessEnd WorkerProcess::end()
{
    if (process_ <= 0) {
        return {};
    }
    // One may close its answers a moment before it ends by itself, with a status worth telling.
    int status = 0;
    constexpr useconds_t longest = 100000;
    useconds_t waited = 0;
    for (useconds_t pause = 50; ::waitpid(process_, &status, WNOHANG) == 0; waited += pause) {
        if (waited > longest) {
            ::kill(process_, SIGKILL);
        }
        pause = std::min<useconds_t>(2 * pause, 1000);
        ::usleep(pause);
    }
    process_ = 0;
    return WIFSIGNALED(status) ? ProcessEnd{WTERMSIG(status), 0}
                               : ProcessEnd{0, WEXITSTATUS(status)};
}

std::string ProcessEnd::text() const
{
    return signal != 0 ? ::strsignal(signal) : "exit status " + std::to_string(status);
}

bool ProcessEnd::isCrash() const
{
    switch (signal) {
    case SIGSEGV:
    case SIGABRT:
    case SIGBUS:
    case SIGILL:
    case SIGFPE:
    case SIGSYS:
    case SIGTRAP:
        return true;
    default:
        return signal == 0;
    }
}

} // namespace vantora
