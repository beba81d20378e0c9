#include "VantoraHost/cli/Options.h"

#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/DeletePagesOptions.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <map>
#include <optional>

namespace vantora::cli {

namespace {

constexpr char programHelp[] = "Runs actions over PDF documents; above all, removes pages.";

constexpr char programExamples[] = R"(Examples:
  vantora run --pages 1,4-6 report.pdf -o short.pdf
  vantora run --pages 1 *.pdf -d without-covers
  vantora info short.pdf
  vantora configure "Delete Pages"

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
  What was saved from an options dialog:
    vantora run --list "Clean scans" scans/*.pdf -d clean

Exit status: 0 every document is done, 1 at least one failed (the others are done),
2 wrong usage, 130 interrupted.)";

constexpr char infoExamples[] = R"(Examples:
  vantora info report.pdf
  vantora info --json *.pdf)";

constexpr char configureExamples[] = R"(Examples:
  vantora configure "Delete Pages"
  vantora configure "Delete Pages" --set byPageRangeTextEdit=1,4-6 --inside main-window

Prints the options as a JSON object when they are accepted.
Exit status: 0 accepted, 1 not accepted, 2 wrong usage, 130 interrupted.)";

// The parser would print how many values are wanted.
class HelpText : public CLI::Formatter {
public:
    std::string make_option_usage(const CLI::Option* option) const override
    {
        return option->get_name() + option->get_option_text();
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
    std::vector<std::string> lists;
    std::vector<std::string> favourites;
    std::vector<std::string> toolSettings;
    std::vector<std::string> settings;
    CLI::Option* pagesOption = nullptr;
    CLI::Option* actionOption = nullptr;
    CLI::Option* listOption = nullptr;
    CLI::Option* favouriteOption = nullptr;
    CLI::Option* toolSettingsOption = nullptr;
    CLI::Option* setOption = nullptr;
    CLI::Option* outputOption = nullptr;
    CLI::Option* folderOption = nullptr;
    std::string output;
    std::string folder;
    bool inPlace = false;
    bool backup = false;
    RunOptions options;
};

struct ConfigureArguments {
    std::string action;
    std::vector<std::string> settings;
    std::string place;
    ConfigureOptions options;
};

CLI::App& declareCommand(CLI::App& program, const char* name, const char* what)
{
    return *program.add_subcommand(name, what)->group("Commands");
}

// What the steps of a run are.
void declareSteps(CLI::App& command, RunArguments& run)
{
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
    run.listOption = oneEach(
        command.add_option("--list", run.lists,
                           "Run this action list: one of yours, or a file that ends in .xqq"),
        "NAME|FILE");
    run.favouriteOption = oneEach(
        command.add_option("--favourite", run.favourites, "Run this favourite of yours"), "NAME");
    run.toolSettingsOption =
        oneEach(command.add_option("--settings", run.toolSettings,
                                   "Run the action of this tool-settings file (.tsf)"),
                "FILE");
    run.setOption = oneEach(command.add_option("--set", run.settings,
                                               "An option of the action, favourite or settings\n"
                                               "file before it; may be repeated"),
                            "KEY=VALUE");
}

void declareRun(CLI::App& program, RunArguments& run, std::size_t arguments)
{
    CLI::App& command = declareCommand(program, "run", "Run actions over documents");
    run.command = &command;
    command.footer(runExamples);
    takeAll(command.add_option("INPUT", run.options.inputs, "PDF files; - is standard input"),
            arguments);
    declareSteps(command, run);
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
    command.add_flag("--keep-signed", run.options.keepSigned,
                     "Refuse signed documents: no signature would hold any more");
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

void declareSavedLists(CLI::App& program, SavedListOptions& lists, SavedListOptions& favourites)
{
    favourites.kind = SavedKind::Favourite;
    declareCommand(program, "lists", "List your action lists")
        .add_flag("--json", lists.json, "Print one JSON object per action list");
    declareCommand(program, "favourites", "List your favourites")
        .add_flag("--json", favourites.json, "Print one JSON object per favourite");
}

constexpr char insideMainWindow[] = "main-window";
constexpr char insidePreview[] = "preview";

void declareConfigure(CLI::App& program, ConfigureArguments& configure)
{
    CLI::App& command =
        declareCommand(program, "configure", "Open the options dialog of an action");
    command.footer(configureExamples);
    command.add_option("ACTION", configure.action, "The action's name")
        ->required()
        ->option_text(" ");
    oneEach(command.add_option("--set", configure.settings,
                               "An option that the dialog starts from; may be repeated"),
            "KEY=VALUE");
    command.add_flag("--hide-add-to-action-list", configure.options.hideAddToActionList,
                     "Leave out the button that adds the options to an action list");
    command
        .add_option("--inside", configure.place,
                    "Show it inside a window of the host: main-window or preview")
        ->option_text("WINDOW");
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
    const std::string which = "name what to do: run, configure, info, actions, lists or favourites";
    return arguments.empty() ? which : "\"" + arguments.front() + "\" is no command; " + which;
}

using Setting = std::pair<std::string, std::string>;

tl::expected<Setting, std::string> settingOf(const std::string& text)
{
    const auto equals = text.find('=');
    if (equals == std::string::npos || equals == 0) {
        return tl::unexpected<std::string>("--set " + text + " is not KEY=VALUE");
    }
    return Setting(text.substr(0, equals), text.substr(equals + 1));
}

NamedStep savedStep(SavedKind kind, const std::string& name)
{
    NamedStep step;
    step.saved = SavedIn{kind, name};
    return step;
}

// The step that one of the options names, the `index`th of its kind.
NamedStep stepOf(const RunArguments& run, const CLI::Option* option, std::size_t index)
{
    if (option == run.listOption) {
        return savedStep(SavedKind::ActionList, run.lists[index]);
    }
    if (option == run.favouriteOption) {
        return savedStep(SavedKind::Favourite, run.favourites[index]);
    }
    if (option == run.toolSettingsOption) {
        return savedStep(SavedKind::ToolSettings, run.toolSettings[index]);
    }
    NamedStep step;
    if (option == run.pagesOption) {
        step.action = deletepages::actionName;
        step.options = {{deletepages::rangeKey, run.pages[index]}};
    } else {
        step.action = run.actions[index];
    }
    return step;
}

// The steps in the order of the command line, which the parser keeps apart by option.
tl::expected<std::vector<NamedStep>, std::string> stepsOf(const RunArguments& run)
{
    std::vector<NamedStep> steps;
    std::map<const CLI::Option*, std::size_t> counts;
    const CLI::Option* latest = nullptr;
    for (const CLI::Option* option : run.command->parse_order()) {
        if (option == run.setOption) {
            const std::string& text = run.settings[counts[option]++];
            auto setting = settingOf(text);
            if (!setting) {
                return tl::unexpected<std::string>(std::move(setting.error()));
            }
            if (!latest || latest == run.pagesOption) {
                return tl::unexpected<std::string>("--set " + text + " stands before any --action");
            }
            if (latest == run.listOption) {
                return tl::unexpected<std::string>("--set " + text +
                                                   " stands after a --list, which has its own");
            }
            steps.back().options.push_back(std::move(*setting));
        } else if (option == run.pagesOption || option == run.actionOption ||
                   option == run.listOption || option == run.favouriteOption ||
                   option == run.toolSettingsOption) {
            steps.push_back(stepOf(run, option, counts[option]++));
            latest = option;
        }
    }
    if (steps.empty()) {
        return tl::unexpected<std::string>("nothing to do: name the pages to remove with --pages "
                                           "RANGE (or an action, a list or a favourite)");
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

tl::expected<Command, Ending> finished(ConfigureArguments& configure)
{
    configure.options.step.action = configure.action;
    for (const std::string& text : configure.settings) {
        auto setting = settingOf(text);
        if (!setting) {
            return tl::unexpected<Ending>(mistake(setting.error(), "configure"));
        }
        configure.options.step.options.push_back(std::move(*setting));
    }
    if (configure.place == insideMainWindow) {
        configure.options.place = DialogPlace::MainWindow;
    } else if (configure.place == insidePreview) {
        configure.options.place = DialogPlace::Preview;
    } else if (!configure.place.empty()) {
        return tl::unexpected<Ending>(
            mistake("--inside takes main-window or preview, not " + configure.place, "configure"));
    }
    return Command(std::move(configure.options));
}

/// All that the commands' arguments are read into.
struct AllArguments {
    RunArguments run;
    InfoOptions info;
    ActionsOptions actions;
    SavedListOptions lists;
    SavedListOptions favourites;
    ConfigureArguments configure;
};

void declareAll(CLI::App& program, AllArguments& all, std::size_t arguments)
{
    declareRun(program, all.run, arguments);
    declareConfigure(program, all.configure);
    declareInfo(program, all.info, arguments);
    declareActions(program, all.actions);
    declareSavedLists(program, all.lists, all.favourites);
}

tl::expected<Command, Ending> finished(AllArguments& all, const std::string& chosen)
{
    if (chosen == "run") {
        return finished(all.run);
    }
    if (chosen == "configure") {
        return finished(all.configure);
    }
    if (chosen == "lists") {
        return Command(all.lists);
    }
    if (chosen == "favourites") {
        return Command(all.favourites);
    }
    return chosen == "info" ? Command(all.info) : Command(all.actions);
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
    AllArguments all;
    declareAll(program, all, arguments.size());

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
    return finished(all, chosen());
}

bool opensWindows(const std::vector<std::string>& arguments)
{
    return !arguments.empty() && arguments.front() == "configure";
}

} // namespace vantora::cli
