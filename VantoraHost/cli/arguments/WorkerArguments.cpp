#include "VantoraHost/cli/arguments/WorkerArguments.h"

namespace vantora::cli {

void declareWorkers(CLI::App& command, WorkerArguments& workers)
{
    workers.jobsOption = command.add_option("-j,--jobs", workers.jobs,
                                            "Worker processes (the number of processors);\n"
                                            "0 does everything in this process");
    workers.jobsOption->option_text("N");
    workers.timeoutOption = command.add_option(
        "--timeout", workers.timeout, "Give a document up after so long, such as 90 or 5m (5m)");
    workers.timeoutOption->option_text("TIME");
    workers.memoryOption = command.add_option("--memory-limit", workers.memory,
                                              "The most memory for a worker, such as 512M or 2G\n"
                                              "(what the machine has, divided by the workers)");
    workers.memoryOption->option_text("SIZE");
}

tl::expected<WorkerChoice, std::string> readWorkers(const WorkerArguments& workers)
{
    constexpr std::uint64_t mostWorkers = 4096;
    constexpr std::uint64_t longest = 1000 * 24 * 3600;
    WorkerChoice choice;
    if (workers.jobsOption->count() > 0) {
        const auto jobs = amountOf(workers.jobs, {});
        if (!jobs || *jobs > mostWorkers) {
            return tl::unexpected<std::string>(
                "-j takes a number of worker processes from 0 to 4096, not " + workers.jobs);
        }
        choice.jobs = static_cast<std::size_t>(*jobs);
    }
    if (workers.timeoutOption->count() > 0) {
        const auto seconds = amountOf(workers.timeout, {{'s', 1}, {'m', 60}, {'h', 3600}});
        if (!seconds || *seconds > longest) {
            return tl::unexpected<std::string>(
                "--timeout takes seconds, or minutes such as 5m, not " + workers.timeout);
        }
        choice.timeout = static_cast<int>(*seconds);
    }
    if (workers.memoryOption->count() > 0) {
        choice.memoryLimit =
            amountOf(workers.memory,
                     {{'k', 1ULL << 10}, {'m', 1ULL << 20}, {'g', 1ULL << 30}, {'t', 1ULL << 40}});
        if (!choice.memoryLimit) {
            return tl::unexpected<std::string>(
                "--memory-limit takes a size such as 512M or 2G, not " + workers.memory);
        }
    }
    if (choice.jobs == 0U && (choice.timeout || choice.memoryLimit)) {
        return tl::unexpected<std::string>(
            "--timeout and --memory-limit need worker processes, of which -j 0 has none");
    }
    return choice;
}

} // namespace vantora::cli
