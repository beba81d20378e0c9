#include "VantoraHost/cli/Options.h"

#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/DeletePagesOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <optional>

namespace vantora::cli {

namespace {

constexpr char programHelp[] = "Runs actions over PDF documents; above all, removes pages.";

constexpr char programExamples[] = R"(Examples:
  vantora run --pages 1,4-6 report.pdf -o short.pdf
  vantora run --pages 1 *.pdf -d without-covers
  vantora info short.pdf

`vantora COMMAND --help` explains a command.)";

constexpr char runExamples[] = R"(Examples:
  Remove pages 2 and 4 to 6, into a new file:
    vantora run --pages 2,4-6 report.pdf -o short.pdf
  See first which pages would go:
    vantora run --pages 2,4-6 --dry-run report.pdf
  Remove the first page of many files, into another folder:
    vantora run --pages 1 scans/*.pdf -d cut
  Remove it in the files themselves, the originals kept as NAME.pdf.bak:
    vantora run --pages 1 --in-place --backup scans/*.pdf
  In a pipe:
    vantora run --pages 1 - -o - <report.pdf >short.pdf

Exit status: 0 every document is done, 1 at least one failed (the others are done),
2 wrong usage, 130 interrupted.)";

constexpr char infoExamples[] = R"(Examples:
  vantora info report.pdf
  vantora info --json *.pdf)";

// The parser would print how many values are wanted, which is all there are.
class HelpText : public CLI::Formatter {
public:
    std::string make_option_usage(const CLI::Option* option) const override
    {
        return option->get_name() + "...";
    }
};

// The parser takes a value such as "[a,b]" for two of an option that it may feed with more; file
// names have to come through as they are. So options take one value an occurrence...
CLI::Option* oneEach(CLI::Option* option, const char* value)
{
    return option->allow_extra_args(false)->option_text(value);
}

// ... and what stands alone is wanted as often as there are arguments.
CLI::Option* takeAll(CLI::Option* option, std::size_t arguments)
{
    return option->required()
        ->expected(static_cast<int>(arguments))
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)
        ->allow_extra_args(false)
        ->option_text("...");
}

struct RunArguments {
    CLI::App* command = nullptr;
    std::vector<std::string> pages;
    std::vector<std::string> actions;
    std::vector<std::string> settings;
    CLI::Option* pagesOption = nullptr;
    CLI::Option* actionOption = nullptr;
    CLI::Option* setOption = nullptr;
    CLI::Option* outputOption = nullptr;
    CLI::Option* folderOption = nullptr;
    std::string output;
    std::string folder;
    bool inPlace = false;
    bool backup = false;
    RunOptions options;
};

CLI::App& declareCommand(CLI::App& program, const char* name, const char* what)
{
    return *program.add_subcommand(name, what)->group("Commands");
}

void declareRun(CLI::App& program, RunArguments& run, std::size_t arguments)
{
    CLI::App& command = declareCommand(program, "run", "Run actions over documents");
    run.command = &command;
    command.footer(runExamples);
    takeAll(command.add_option("INPUT", run.options.inputs, "PDF files; - is standard input"),
            arguments);
    run.pagesOption =
        oneEach(command.add_option("-p,--pages", run.pages,
                                   "Remove these pages, for example 1,4-6,9-15,21, or those that\n"
                                   "a file names whose name follows an @; short for\n"
                                   "--action \"Delete Pages\" --set byPageRangeTextEdit=RANGE"),
                "RANGE");
    run.actionOption =
        oneEach(command.add_option("--action", run.actions,
                                   "Run this action; several run one after the other"),
                "NAME");
    run.setOption =
        oneEach(command.add_option("--set", run.settings,
                                   "An option of the action before it; may be repeated"),
                "KEY=VALUE");
    run.outputOption =
        command.add_option("-o,--output", run.output, "Write to this file; - is standard output");
    run.outputOption->option_text("FILE");
    run.folderOption = command.add_option("-d,--directory", run.folder,
                                          "Write into this folder, under the inputs' names");
    run.folderOption->option_text("DIR");
    command.add_flag("-i,--in-place", run.inPlace, "Replace the inputs, each by a finished file");
    command.add_flag("--backup", run.backup, "With --in-place: keep each original as NAME.pdf.bak");
    command.add_flag("--overwrite", run.options.overwrite,
                     "Replace outputs and backups that exist");
    command
        .add_option("--password-file", run.options.passwordFile,
                    "Passwords, one a line, tried in order")
        ->option_text("FILE");
    command.add_flag("-n,--dry-run", run.options.dryRun,
                     "Say which pages would go and write nothing");
    command.add_flag("--json", run.options.json,
                     "Print one JSON object per document on standard output");
    command.add_flag("-q,--quiet", run.options.quiet, "Print nothing but errors");
}

void declareInfo(CLI::App& program, InfoOptions& info, std::size_t arguments)
{
    CLI::App& command = declareCommand(program, "info", "Show what documents are");
    command.footer(infoExamples);
    takeAll(command.add_option("FILE", info.inputs, "PDF files; - is standard input"), arguments);
    command
        .add_option("--password-file", info.passwordFile, "Passwords, one a line, tried in order")
        ->option_text("FILE");
    command.add_flag("--json", info.json, "Print one JSON object per document");
}

void declareActions(CLI::App& program, ActionsOptions& actions)
{
    CLI::App& command = declareCommand(program, "actions", "List the actions that are installed");
    command.add_flag("--json", actions.json, "Print one JSON object per action");
}

Ending mistake(const std::string& sentence, const std::string& helpFor)
{
    std::string line = sentence;
    std::replace(line.begin(), line.end(), '\n', ' ');
    return {WrongUsage,
            line + "; see vantora " + helpFor + (helpFor.empty() ? "--help" : " --help")};
}

std::string commandMistake(const std::vector<std::string>& arguments)
{
    const std::string which = "name what to do: run, info or actions";
    return arguments.empty() ? which : "\"" + arguments.front() + "\" is no command; " + which;
}

// The steps in the order of the command line, which the parser keeps apart by option.
tl::expected<std::vector<StepRequest>, std::string> stepsOf(const RunArguments& run)
{
    std::vector<StepRequest> steps;
    std::size_t page = 0;
    std::size_t action = 0;
    std::size_t setting = 0;
    bool settable = false;
    for (const CLI::Option* option : run.command->parse_order()) {
        if (option == run.pagesOption) {
            steps.push_back(
                {deletepages::actionName, {{deletepages::rangeKey, run.pages[page++]}}});
            settable = false;
        } else if (option == run.actionOption) {
            steps.push_back({run.actions[action++], {}});
            settable = true;
        } else if (option == run.setOption) {
            const std::string& text = run.settings[setting++];
            const auto equals = text.find('=');
            if (equals == std::string::npos || equals == 0) {
                return tl::unexpected<std::string>("--set " + text + " is not KEY=VALUE");
            }
            if (!settable) {
                return tl::unexpected<std::string>("--set " + text + " stands before any --action");
            }
            steps.back().options.emplace_back(text.substr(0, equals), text.substr(equals + 1));
        }
    }
    if (steps.empty()) {
        return tl::unexpected<std::string>(
            "nothing to do: name the pages to remove with --pages RANGE (or an action)");
    }
    return steps;
}

std::optional<std::string> destinationMistake(const RunArguments& run)
{
    const auto& inputs = run.options.inputs;
    const bool fromStandardInput =
        std::find(inputs.begin(), inputs.end(), standardStream) != inputs.end();
    const bool toFile = run.outputOption->count() > 0;
    const bool toFolder = run.folderOption->count() > 0;
    const int given = int{toFile} + int{toFolder} + int{run.inPlace};
    if (given > 1) {
        return "-o, -d and --in-place exclude each other";
    }
    if (given == 0 && !run.options.dryRun) {
        return "say where the result goes: -o FILE, -d DIR or --in-place";
    }
    if (toFile && inputs.size() > 1) {
        return "-o takes the result of one input; for several use -d DIR";
    }
    if ((toFile && run.output.empty()) || (toFolder && run.folder.empty())) {
        return "the name of the output is empty";
    }
    if (fromStandardInput && inputs.size() > 1) {
        return "standard input (-) can only be the one input";
    }
    if (fromStandardInput && (toFolder || run.inPlace)) {
        return "standard input (-) has no name to write to; use -o FILE";
    }
    if (run.backup && !run.inPlace) {
        return "--backup goes with --in-place";
    }
    if (toFile && run.output == standardStream && run.options.json && !run.options.dryRun) {
        return "--json and -o - would both write to standard output";
    }
    return std::nullopt;
}

std::optional<Destination> destinationOf(const RunArguments& run)
{
    if (run.inPlace) {
        return InPlace{run.backup};
    }
    if (run.folderOption->count() > 0) {
        return ToFolder{run.folder};
    }
    if (run.outputOption->count() == 0) {
        return std::nullopt;
    }
    return run.output == standardStream ? Destination(ToStandardOutput{})
                                        : Destination(ToFile{run.output});
}

tl::expected<Command, Ending> finished(RunArguments& run)
{
    auto steps = stepsOf(run);
    if (!steps) {
        return tl::unexpected<Ending>(mistake(steps.error(), "run"));
    }
    if (const auto wrong = destinationMistake(run)) {
        return tl::unexpected<Ending>(mistake(*wrong, "run"));
    }
    run.options.steps = std::move(*steps);
    run.options.destination = destinationOf(run);
    return Command(std::move(run.options));
}

} // namespace

tl::expected<Command, Ending> parse(const std::vector<std::string>& arguments)
{
    CLI::App program(programHelp, "vantora");
    program.footer(programExamples);
    program.set_version_flag("--version", "vantora " VANTORA_VERSION);
    program.require_subcommand(1, 1);
    auto help = std::make_shared<HelpText>();
    help->label("SUBCOMMAND", "COMMAND");
    program.formatter(help);
    RunArguments run;
    InfoOptions info;
    ActionsOptions actions;
    declareRun(program, run, arguments.size());
    declareInfo(program, info, arguments.size());
    declareActions(program, actions);

    const auto chosen = [&]() -> std::string {
        const auto commands = program.get_subcommands();
        return commands.empty() ? "" : commands.front()->get_name();
    };
    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
    } catch (const CLI::CallForHelp&) {
        return tl::unexpected<Ending>(Ending{AllDone, program.help()});
    } catch (const CLI::CallForVersion& version) {
        return tl::unexpected<Ending>(Ending{AllDone, version.what() + std::string("\n")});
    } catch (const CLI::RequiredError& error) {
        return tl::unexpected<Ending>(
            mistake(chosen().empty() ? commandMistake(arguments) : error.what(), chosen()));
    } catch (const CLI::ParseError& error) {
        return tl::unexpected<Ending>(mistake(error.what(), chosen()));
    }
    if (chosen() == "run") {
        return finished(run);
    }
    return chosen() == "info" ? Command(info) : Command(actions);
}

} // namespace vantora::cli
