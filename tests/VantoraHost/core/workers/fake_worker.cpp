// Stands in for a worker process, and is a bad one as the environment variable FAKE_WORKER says.
// While it only waits, there is a file at FAKE_WORKER_WAITS.

#include "VantoraHost/core/workers/MessageFrames.h"
#include "VantoraHost/core/workers/WorkerMessages.h"
#include "VantoraHost/core/workers/WorkerSide.h"

#include <signal.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

namespace {

namespace fs = std::filesystem;
using namespace vantora;

const std::string how = std::getenv("FAKE_WORKER");
const fs::path waits = std::getenv("FAKE_WORKER_WAITS");
std::uintmax_t starts = 0;

[[noreturn]] void dieSuddenly()
{
    ::raise(SIGKILL);
    std::abort();
}

void waitForever()
{
    std::ofstream{waits};
    for (;;) {
        ::pause();
    }
}

void answer(const WorkerSide& run, const WorkerAnswer& said)
{
    run.write(framed(answerMessage(said)));
}

WorkerWritten writtenTo(const fs::path& temporary, const WorkerTask& task)
{
    const FileVersion version = *versionAt(temporary);
    DocumentReport report;
    report.input = task.input;
    report.output = task.target.name;
    report.status = DocumentStatus::Done;
    report.pagesBefore = 2;
    report.pagesAfter = 1;
    report.bytesAfter = static_cast<std::uint64_t>(version.size);
    report.outputModified = std::to_string(version.modified);
    return {task.number, report, {version.device, version.inode}};
}

void giveNames(const std::vector<WorkerTask>& tasks, const std::vector<fs::path>& temporaries)
{
    for (std::size_t i = 0; i < tasks.size(); ++i) {
        fs::rename(temporaries[i], tasks[i].target.name);
        if (how == "dies between two names") {
            dieSuddenly();
        }
    }
}

void work(WorkerSide& run, const std::vector<WorkerTask>& tasks)
{
    std::vector<fs::path> temporaries;
    WorkerPlaced placed;
    for (const WorkerTask& task : tasks) {
        temporaries.emplace_back(task.target.name + ".new");
        std::ofstream(temporaries.back()) << "the output of " + task.input;
        answer(run, writtenTo(temporaries.back(), task));
        placed.numbers.push_back(task.number);
    }
    if (how == "asks for leave to give names") {
        answer(run, WorkerNaming{});
        if (run.nextMessage() != namingMessage()) {
            std::exit(1);
        }
    }
    if (how == "dies before it gives names") {
        dieSuddenly();
    }
    giveNames(tasks, temporaries);
    if (how == "dies after it gave names" || starts == 1) {
        dieSuddenly();
    }
    if (how == "hangs after it gave names") {
        waitForever();
    }
    if (how == "names what it was not given") {
        answer(run, WorkerPlaced{{999}});
    }
    answer(run, placed);
}

void leaveAProcess()
{
    if (::fork() == 0) {
        ::close(STDERR_FILENO); // which is the test's own
        // Until the test is over, which is not to wait for it.
        while (fs::exists(waits.parent_path())) {
            ::usleep(100000);
        }
        std::_Exit(0);
    }
    waitForever();
}

void misbehaveAtOnce(const WorkerSide& run)
{
    if (how == "sleeps") {
        waitForever();
    }
    if (how == "leaves a process that holds its answers") {
        leaveAProcess();
    }
    if (how == "prints garbage") {
        run.write("Hello, I am no worker\n");
        ::pause();
    }
    while (how == "prints without an end" && run.write(std::string(65536, 'x'))) {
    }
    if (how == "dies after its first document and while it begins") {
        const fs::path counted = std::getenv("FAKE_WORKER_STARTS");
        std::ofstream(counted, std::ios::app) << 'x';
        starts = fs::file_size(counted);
        if (starts > 1 && starts < 8) {
            dieSuddenly();
        }
    }
}

} // namespace

int main()
{
    WorkerSide run({STDIN_FILENO, STDOUT_FILENO});
    fs::remove(waits);
    misbehaveAtOnce(run);
    run.nextMessage(); // the setup
    answer(run, WorkerReady{});
    while (const auto order = run.nextMessage()) {
        work(run, tasksOf(*order).value());
    }
    answer(run, WorkerEnd{});
}
