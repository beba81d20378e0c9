#include "VantoraHost/cli/CommandLine.h"

#include "VantoraHost/cli/actions/ActionsArguments.h"
#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/configure/ConfigureArguments.h"
#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/desktop/DesktopArguments.h"
#include "VantoraHost/cli/info/InfoArguments.h"
#include "VantoraHost/cli/lists_favourites_settings/SavedArguments.h"
#include "VantoraHost/cli/pages/PagesArguments.h"
#include "VantoraHost/cli/run/RunArguments.h"
#include "VantoraHost/cli/undo/UndoArguments.h"
#include "VantoraHost/cli/verify/VerifyArguments.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <memory>

namespace vantora::cli {

namespace {

constexpr char programHelp[] = "Runs actions over PDF documents; above all, removes pages.";

constexpr char programExamples[] = R"(Examples:
  vantora run --pages 1,4-6 report.pdf -o short.pdf
  vantora run --pages 1 *.pdf -d without-covers
  vantora pages --choose last:2 report.pdf
  vantora info short.pdf
  vantora verify report.pdf short.pdf --pages 1,4-6
  vantora configure "Delete Pages"
  vantora desktop *.pdf

`vantora COMMAND --help`, or `vantora help COMMAND`, explains a command.)";

// The parser would print how many values are wanted.
class HelpText : public CLI::Formatter {
public:
    std::string make_option_usage(const CLI::Option* option) const override
    {
        return option->get_name() + option->get_option_text();
    }
};

std::string commandMistake(const std::vector<std::string>& arguments)
{
    const std::string which =
        "name what to do: run, pages, desktop, configure, info, verify, undo, actions, "
        "lists, favourites or settings";
    return arguments.empty() ? which : "\"" + arguments.front() + "\" is no command; " + which;
}

/// All that the commands' arguments are read into.
struct AllArguments {
    RunArguments run;
    PagesArguments pages;
    DesktopOptions desktop;
    InfoArguments info;
    VerifyArguments verify;
    UndoOptions undo;
    ActionsOptions actions;
    SavedArguments saved;
    ConfigureArguments configure;
};

void declareAll(CLI::App& program, AllArguments& all, std::size_t arguments)
{
    declareRun(program, all.run, arguments);
    declarePages(program, all.pages, arguments);
    declareDesktop(program, all.desktop, arguments);
    declareConfigure(program, all.configure);
    declareInfo(program, all.info, arguments);
    declareVerify(program, all.verify);
    declareUndo(program, all.undo, arguments);
    declareActions(program, all.actions);
    declareSaved(program, all.saved);
    for (const char* hidden : {workerCommand, picturesCommand, certificatesCommand}) {
        program.add_subcommand(hidden)->group(""); // no group: not in the help
    }
}

// "help" and "help run" are "--help" and "run --help".
std::vector<std::string> helpAsOption(const std::vector<std::string>& arguments)
{
    if (arguments.empty() || arguments.front() != "help") {
        return arguments;
    }
    std::vector<std::string> asked(arguments.begin() + 1, arguments.end());
    asked.emplace_back("--help");
    return asked;
}

tl::expected<Command, Ending> finished(AllArguments& all, const std::string& chosen)
{
    if (chosen == "run") {
        return finished(all.run);
    }
    using Work = WorkerOptions::Work;
    for (const auto& [command, work] :
         {std::pair(workerCommand, Work::Documents), std::pair(picturesCommand, Work::Pictures),
          std::pair(certificatesCommand, Work::Certificates)}) {
        if (chosen == command) {
            return Command(WorkerOptions{work});
        }
    }
    if (chosen == "desktop") {
        return Command(all.desktop);
    }
    if (chosen == "configure") {
        return finished(all.configure);
    }
    if (isSaved(all.saved, chosen)) {
        return finished(all.saved, chosen);
    }
    if (chosen == "pages") {
        return finished(all.pages);
    }
    if (chosen == "info") {
        return finished(all.info);
    }
    if (chosen == "verify") {
        return finished(all.verify);
    }
    if (chosen == "undo") {
        return Command(all.undo);
    }
    return Command(all.actions);
}

} // namespace

tl::expected<Command, Ending> parse(const std::vector<std::string>& given)
{
    const std::vector<std::string> arguments = helpAsOption(given);
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
        if (chosen().empty() && arguments.front().rfind('-', 0) != 0) {
            return tl::unexpected<Ending>(mistake(commandMistake(arguments), ""));
        }
        return tl::unexpected<Ending>(Ending{AllDone, program.help()});
    } catch (const CLI::CallForVersion& version) {
        return tl::unexpected<Ending>(Ending{AllDone, version.what() + std::string("\n")});
    } catch (const CLI::RequiredError& error) {
        return tl::unexpected<Ending>(
            mistake(chosen().empty() ? commandMistake(arguments) : error.what(), chosen()));
    } catch (const CLI::ParseError& error) {
        return tl::unexpected<Ending>(mistake(error.what(), chosen()));
    }
    if (!all.run.certificate.empty()) { // which says how the document was made
        all.run.options.arguments = arguments;
    }
    return finished(all, chosen());
}

bool draws(const std::vector<std::string>& arguments)
{
    if (arguments.empty()) {
        return false;
    }
    // A favourite has an icon.
    return arguments.front() == "configure" || arguments.front() == certificatesCommand ||
           (arguments.front() == "favourites" &&
            std::find(arguments.begin(), arguments.end(), "add") != arguments.end());
}

} // namespace vantora::cli
