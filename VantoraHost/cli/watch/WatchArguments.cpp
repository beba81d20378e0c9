#include "VantoraHost/cli/watch/WatchArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/configuration/ConfigurationArguments.h"

#include <algorithm>
#include <optional>

namespace vantora::cli {

namespace {

constexpr char watchExamples[] =
    R"(Documents are PDF files in the folders themselves; what lies in subfolders, hidden files and
links are left alone. Those that are there when it begins are done as well. Each is done once:
the report says which are done, also when the command is given again. One that is replaced
by another version is a new one. Documents stay where they are unless --done or --failed
says otherwise.

Examples:
  Remove the first page of what is put into a folder:
    vantora watch inbox -d cut --pages 1
  Move what is done and what fails out of the way:
    vantora watch inbox -d cut --pages 1 --done inbox/done --failed inbox/failed
  From a timer: do what is there, and end:
    vantora watch inbox -d cut --pages 1 --once

Exit status: 0 every document that arrived is done, 1 at least one failed for a reason that
--accept-failures does not name, 2 wrong usage, 3 done with losses that --salvage allowed,
130 asked to stop.)";

constexpr std::uint64_t longestWait = 86'400;

// Whole seconds from `least` on.
tl::expected<std::chrono::seconds, std::string>
secondsOf(const char* option, const std::string& text, std::uint64_t least)
{
    const auto seconds = amountOf(text, {});
    if (!seconds || *seconds < least || *seconds > longestWait) {
        return tl::unexpected<std::string>(std::string(option) + " takes seconds, " +
                                           std::to_string(least) + " to " +
                                           std::to_string(longestWait) + ", not " + text);
    }
    return std::chrono::seconds(*seconds);
}

void declarePlaces(CLI::App& command, WatchArguments& watch)
{
    RunArguments& run = watch.run;
    run.folderOption = command.add_option("-d,--directory", run.folder,
                                          "Write into this folder, under the documents' names");
    run.folderOption->option_text("DIR");
    run.nameOption = command.add_option(
        "--name", run.name, "Under these names, of {name} and {ext}, such as\n{name}-cut{ext}");
    run.nameOption->option_text("TEMPLATE");
    command.add_flag("--overwrite", run.overwrite, "Replace outputs that exist");
    command.add_flag("--rename", run.rename,
                     "Where an output exists: write NAME (1).pdf, or the first\n"
                     "such name that is free");
    watch.doneOption = command.add_option("--done", watch.options.done,
                                          "Move documents that are done into this folder, of the\n"
                                          "same file system");
    watch.doneOption->option_text("DIR");
    watch.failedOption =
        command.add_option("--failed", watch.options.failed,
                           "Move documents that fail into this one; without it they stay,\n"
                           "and are tried again when they are changed");
    watch.failedOption->option_text("DIR");
    run.reportOption =
        command.add_option("--report", run.options.reportPath,
                           "Keep what has become of each document in this file, a line\n"
                           "of JSON each, and leave alone what it says is done\n"
                           "(DIR/.vantora-watch.jsonl)");
    run.reportOption->option_text("FILE");
    command.add_flag("--report-hashes", run.options.reportHashes,
                     "With the SHA-256 of each document in it, which is compared\n"
                     "when it begins");
}

void declareWaiting(CLI::App& command, WatchArguments& watch)
{
    watch.settleOption =
        command.add_option("--settle", watch.settle,
                           "Take a document once it has stayed the same for so long (2);\n"
                           "0 takes it as soon as it is closed or moved there");
    watch.settleOption->option_text("SECONDS");
    watch.pollOption = command.add_option("--poll", watch.poll,
                                          "List the folders so often, instead of only those of\n"
                                          "which the system does not tell (5)");
    watch.pollOption->option_text("SECONDS");
    command.add_flag("--once", watch.options.once,
                     "Do what is there, and end; what grows is left to the next time");
}

std::optional<std::string> placesMistake(const WatchArguments& watch)
{
    const RunArguments& run = watch.run;
    const auto& folders = watch.options.folders;
    if (auto mistake = tellingMistake(run.options)) {
        return mistake;
    }
    if (std::find(folders.begin(), folders.end(), "") != folders.end()) {
        return "the name of a folder to watch is empty";
    }
    if (run.folderOption->count() == 0 || run.folder.empty()) {
        return "say where the results go: -d DIR";
    }
    if (run.rename && run.overwrite) {
        return "--rename keeps what exists, and --overwrite replaces it";
    }
    if (run.name.find("{number}") != std::string::npos) {
        return "--name takes {name} and {ext}, since nobody knows how many documents will come";
    }
    for (const auto& [option, name] : {std::pair(watch.doneOption, &watch.options.done),
                                       std::pair(watch.failedOption, &watch.options.failed),
                                       std::pair(run.reportOption, &run.options.reportPath)}) {
        if (option->count() > 0 && name->empty()) {
            return option->get_name() + " needs a name";
        }
    }
    return std::nullopt;
}

std::optional<std::string> readWaiting(WatchArguments& watch)
{
    if (watch.settleOption->count() > 0) {
        const auto settle = secondsOf("--settle", watch.settle, 0);
        if (!settle) {
            return settle.error();
        }
        watch.options.settle = *settle;
    }
    if (watch.pollOption->count() > 0) {
        const auto poll = secondsOf("--poll", watch.poll, 1);
        if (!poll) {
            return poll.error();
        }
        watch.options.poll = *poll;
    }
    auto workers = readWorkers(watch.run.workers);
    if (!workers) {
        return std::move(workers.error());
    }
    watch.run.options.workers = *workers;
    return std::nullopt;
}

} // namespace

void declareWatch(CLI::App& program, WatchArguments& watch, std::size_t arguments)
{
    CLI::App& command =
        declareCommand(program, "watch", "Run actions over documents as they arrive in folders");
    command.footer(watchExamples);
    takeAll(command.add_option("FOLDER", watch.options.folders, "A folder that documents come to"),
            arguments);
    declareSteps(command, watch.run);
    declarePlaces(command, watch);
    declareWaiting(command, watch);
    declarePasswords(command, watch.run.options.passwordFile);
    declareJudgement(command, watch.run);
    declareWorkers(command, watch.run.workers);
    declareTelling(command, watch.run.options);
    declareConfiguration(command);
}

tl::expected<WatchOptions, Ending> finished(WatchArguments& watch)
{
    auto steps = stepsOf(watch.run);
    if (!steps) {
        return tl::unexpected<Ending>(mistake(steps.error(), "watch"));
    }
    if (const auto wrong = placesMistake(watch)) {
        return tl::unexpected<Ending>(mistake(*wrong, "watch"));
    }
    for (const auto& wrong :
         {readDestination(watch.run), readJudgement(watch.run), readWaiting(watch)}) {
        if (wrong) {
            return tl::unexpected<Ending>(mistake(*wrong, "watch"));
        }
    }
    watch.options.run = std::move(watch.run.options);
    watch.options.run.steps = std::move(*steps);
    watch.options.outputs = watch.run.folder;
    if (watch.options.run.reportPath.empty()) {
        watch.options.run.reportPath =
            watch.run.folder + (watch.run.folder.back() == '/' ? "" : "/") + ".vantora-watch.jsonl";
    }
    return std::move(watch.options);
}

} // namespace vantora::cli
