#include "VantoraHost/cli/CommandLine.h"

#include "VantoraHost/cli/actions/ActionsArguments.h"
#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/completion/Completion.h"
#include "VantoraHost/cli/configuration/ConfigArguments.h"
#include "VantoraHost/cli/configuration/ConfigurationArguments.h"
#include "VantoraHost/cli/configure/ConfigureArguments.h"
#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/desktop/DesktopArguments.h"
#include "VantoraHost/cli/info/InfoArguments.h"
#include "VantoraHost/cli/lists_favourites_settings/SavedArguments.h"
#include "VantoraHost/cli/pages/PagesArguments.h"
#include "VantoraHost/cli/run/RunArguments.h"
#include "VantoraHost/cli/undo/UndoArguments.h"
#include "VantoraHost/cli/verify/VerifyArguments.h"
#include "VantoraHost/cli/watch/WatchArguments.h"
#include "VantoraHost/core/ShownText.h"
#include "VantoraHost/core/workers/WorkerProcess.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <array>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <string_view>
#include <utility>

namespace vantora::cli {

namespace {

constexpr char programHelp[] = "Runs actions over PDF documents; above all, removes pages.";

constexpr char programExamples[] = R"(Examples:
  vantora run --pages 1,4-6 report.pdf -o short.pdf
  vantora run --pages 1 *.pdf -d without-covers
  vantora watch inbox -d without-covers --pages 1
  vantora pages --choose last:2 report.pdf
  vantora info short.pdf
  vantora verify report.pdf short.pdf --pages 1,4-6
  vantora configure "Delete Pages"
  vantora desktop *.pdf

`vantora COMMAND --help`, or `vantora help COMMAND`, explains a command.)";

// The parser would print how many values are wanted.
class HelpText : public CLI::Formatter {
public:
    explicit HelpText(Language language) : language_(std::move(language))
    {
        label("Usage", language_.text("Usage"));
        label("OPTIONS", language_.text("OPTIONS"));
        label("Positionals", language_.text("Positionals"));
        label("SUBCOMMAND", language_.text("COMMAND"));
    }

    std::string make_description(const CLI::App* app) const override
    {
        return text(app->get_description()) + '\n';
    }

    std::string make_footer(const CLI::App* app) const override
    {
        return app->get_footer().empty() ? "" : text(app->get_footer()) + '\n';
    }

    std::string make_option_desc(const CLI::Option* option) const override
    {
        return text(option->get_description());
    }

    std::string make_subcommand(const CLI::App* command) const override
    {
        std::stringstream line;
        CLI::detail::format_help(line, command->get_display_name(true),
                                 text(command->get_description()), column_width_);
        return line.str();
    }

    // The parser heads a list of commands with their group as it is.
    std::string make_subcommands(const CLI::App* app, CLI::AppFormatMode mode) const override
    {
        std::string list = Formatter::make_subcommands(app, mode);
        const std::size_t end = list.find(":\n");
        return end == std::string::npos ? list
                                        : '\n' + text(list.substr(1, end - 1)) + list.substr(end);
    }

    std::string make_option_usage(const CLI::Option* option) const override
    {
        return option->get_name() + option->get_option_text();
    }

    std::string make_group(std::string group, bool isPositional,
                           std::vector<const CLI::Option*> options) const override
    {
        return group == notInHelp ? "" : Formatter::make_group(text(group), isPositional, options);
    }

    // "--[no-]verify" for a flag that another one switches off.
    std::string make_option_name(const CLI::Option* option, bool isPositional) const override
    {
        const std::string names = Formatter::make_option_name(option, isPositional);
        for (const CLI::Option* other : option->get_excludes()) {
            const std::string& name = other->get_lnames().front();
            const std::string positive = "--" + name.substr(name.rfind("no-", 0) == 0 ? 3 : 0);
            const std::size_t place = names.rfind(positive);
            if (other->get_group() == notInHelp && place != std::string::npos) {
                return names.substr(0, place) + "--[no-]" + names.substr(place + 2);
            }
        }
        return names;
    }

    // The parser would tell which options exclude each other.
    std::string make_option_opts(const CLI::Option* option) const override
    {
        const std::string& text = option->get_option_text();
        return text.empty() ? "" : " " + text;
    }

private:
    std::string text(const std::string& english) const { return language_.text(english.c_str()); }

    const Language language_;
};

std::string commandMistake(const std::vector<std::string>& arguments)
{
    const std::string which =
        "name what to do: run, watch, pages, desktop, configure, info, verify, undo, "
        "config, actions, lists, favourites or settings";
    return arguments.empty() ? which : "\"" + arguments.front() + "\" is no command; " + which;
}

/// All that the commands' arguments are read into.
struct AllArguments {
    RunArguments run;
    WatchArguments watch;
    PagesArguments pages;
    DesktopOptions desktop;
    InfoArguments info;
    VerifyArguments verify;
    UndoOptions undo;
    ConfigArguments config;
    ActionsOptions actions;
    SavedArguments saved;
    ConfigureArguments configure;
};

using Finished = tl::expected<Command, Ending>;

/// What declaring a command takes.
struct Declaring {
    CLI::App& program;
    AllArguments& all;
    std::size_t arguments; // how many the line has
};

/// A command, or some that are declared together.
struct KnownCommand {
    std::array<const char*, 3> names;
    void (*declare)(const Declaring& to);
    /// What to do, once it is read.
    Finished (*finished)(AllArguments& all, const std::string& chosen);

    bool isCalled(std::string_view name) const
    {
        return std::any_of(names.begin(), names.end(),
                           [&](const char* one) { return one != nullptr && name == one; });
    }
};

/// What arguments come to, or the mistake in them.
template <auto arguments>
Finished checked(AllArguments& all, const std::string& /*chosen*/)
{
    return finished(all.*arguments);
}

/// What was read, as it is.
template <auto options>
Finished asRead(AllArguments& all, const std::string& /*chosen*/)
{
    return all.*options;
}

template <WorkerOptions::Work work>
Finished asWorker(AllArguments& /*all*/, const std::string& /*chosen*/)
{
    return WorkerOptions{work};
}

void declareHidden(CLI::App& program, const char* name)
{
    program.add_subcommand(name)->group(""); // no group: not in the help
}

constexpr KnownCommand commands[] = {
    {{"run"},
     [](const Declaring& to) { declareRun(to.program, to.all.run, to.arguments); },
     checked<&AllArguments::run>},
    {{"watch"},
     [](const Declaring& to) { declareWatch(to.program, to.all.watch, to.arguments); },
     checked<&AllArguments::watch>},
    {{"pages"},
     [](const Declaring& to) { declarePages(to.program, to.all.pages, to.arguments); },
     checked<&AllArguments::pages>},
    {{"desktop"},
     [](const Declaring& to) { declareDesktop(to.program, to.all.desktop, to.arguments); },
     asRead<&AllArguments::desktop>},
    {{"configure"},
     [](const Declaring& to) { declareConfigure(to.program, to.all.configure); },
     checked<&AllArguments::configure>},
    {{"info"},
     [](const Declaring& to) { declareInfo(to.program, to.all.info, to.arguments); },
     checked<&AllArguments::info>},
    {{"verify"},
     [](const Declaring& to) { declareVerify(to.program, to.all.verify); },
     checked<&AllArguments::verify>},
    {{"undo"},
     [](const Declaring& to) { declareUndo(to.program, to.all.undo, to.arguments); },
     asRead<&AllArguments::undo>},
    {{"config"},
     [](const Declaring& to) { declareConfig(to.program, to.all.config); },
     [](AllArguments& all, const std::string& /*chosen*/) -> Finished {
         return all.config.options;
     }},
    {{"actions"},
     [](const Declaring& to) { declareActions(to.program, to.all.actions); },
     asRead<&AllArguments::actions>},
    {{"lists", "favourites", "settings"},
     [](const Declaring& to) { declareSaved(to.program, to.all.saved); },
     [](AllArguments& all, const std::string& chosen) -> Finished {
         return finished(all.saved, chosen);
     }},
    {{workerCommand},
     [](const Declaring& to) { declareHidden(to.program, workerCommand); },
     asWorker<WorkerOptions::Work::Documents>},
    {{picturesCommand},
     [](const Declaring& to) { declareHidden(to.program, picturesCommand); },
     asWorker<WorkerOptions::Work::Pictures>},
    {{certificatesCommand},
     [](const Declaring& to) { declareHidden(to.program, certificatesCommand); },
     asWorker<WorkerOptions::Work::Certificates>},
};

const KnownCommand* commandNamed(std::string_view name)
{
    const auto* const found =
        std::find_if(std::begin(commands), std::end(commands),
                     [&](const KnownCommand& command) { return command.isCalled(name); });
    return found != std::end(commands) ? found : nullptr;
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

/// One reading of a command line, with what it is read into.
class Reading {
public:
    explicit Reading(Language language = {}) : language_(std::move(language)) {}

    AllArguments all;

    /// All commands, for a line with so many arguments.
    CLI::App& declared(std::size_t arguments)
    {
        declareProgram();
        for (const KnownCommand& command : commands) {
            command.declare({program_, all, arguments});
        }
        return program_;
    }

    /// The name of the command, or the end.
    tl::expected<std::string, Ending> read(const std::vector<std::string>& arguments)
    {
        declareFor(arguments);
        try {
            program_.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        } catch (const CLI::CallForHelp&) {
            if (chosen().empty() && arguments.front().rfind('-', 0) != 0) {
                return tl::unexpected<Ending>(mistake(commandMistake(arguments), ""));
            }
            return tl::unexpected<Ending>(Ending{AllDone, helpText()});
        } catch (const CLI::CallForVersion& version) {
            return tl::unexpected<Ending>(Ending{AllDone, version.what() + std::string("\n")});
        } catch (const CLI::RequiredError& error) {
            return tl::unexpected<Ending>(
                mistake(chosen().empty() ? commandMistake(arguments) : error.what(), chosen()));
        } catch (const CLI::ParseError& error) {
            return tl::unexpected<Ending>(mistake(error.what(), chosen()));
        }
        return chosen();
    }

    /// The command "run", read or not.
    const CLI::App& run() const { return *program_.get_subcommand("run"); }

    /// The command that was read.
    const CLI::App& command() const { return *program_.get_subcommands().front(); }

private:
    void declareProgram()
    {
        program_.footer(programExamples);
        program_.set_version_flag("--version", "vantora " VANTORA_VERSION);
        program_.require_subcommand(1, 1);
        program_.formatter(std::make_shared<HelpText>(language_));
    }

    // Declaring all takes longer than deleting a page. Where the line begins with a command, it is
    // that one alone; but "config" has the options of "run" explained.
    void declareFor(const std::vector<std::string>& arguments)
    {
        const KnownCommand* const one =
            arguments.empty() ? nullptr : commandNamed(arguments.front());
        if (one == nullptr || one->isCalled("config")) {
            declared(arguments.size());
            return;
        }
        declareProgram();
        one->declare({program_, all, arguments.size()});
    }

    std::string chosen() const
    {
        const auto commands = program_.get_subcommands();
        return commands.empty() ? "" : commands.front()->get_name();
    }

    std::string helpText() const
    {
        std::string text = program_.help();
        const std::size_t hidden = text.find("\n\n\n"); // a line left for a group that isn't shown
        return hidden == std::string::npos ? text : text.erase(hidden, 1);
    }

    const Language language_;
    CLI::App program_{programHelp, "vantora"};
};

// What a command and those below it say in helps.
void collect(const CLI::App& command, std::vector<std::string>& texts)
{
    const auto add = [&](const std::string& text) {
        if (!text.empty() && std::find(texts.begin(), texts.end(), text) == texts.end()) {
            texts.push_back(text);
        }
    };
    if (command.get_group().empty()) {
        return; // not in the help
    }
    add(command.get_description());
    add(command.get_footer());
    for (const CLI::Option* option : command.get_options()) {
        add(option->get_description());
        add(option->get_group() == notInHelp ? "" : option->get_group());
    }
    for (const CLI::App* one : command.get_subcommands({})) {
        add(one->get_group());
        collect(*one, texts);
    }
}

Finished finished(Reading& reading)
{
    const std::string chosen = reading.command().get_name();
    return commandNamed(chosen)->finished(reading.all, chosen);
}

Finished finishedRun(Reading& reading, const std::vector<std::string>& arguments)
{
    if (!reading.all.run.certificate.empty()) { // which says how the document was made
        reading.all.run.options.arguments = arguments;
    }
    return finished(reading);
}

// What a reading says to do, with the user's configuration.
Finished configured(const std::vector<std::string>& typed, Reading& plain)
{
    auto configured = withConfiguration(typed, plain.command());
    if (!configured) {
        return tl::unexpected<Ending>(std::move(configured.error()));
    }
    if (configured->added.empty()) {
        return finishedRun(plain, typed);
    }
    Reading whole;
    const auto chosen = whole.read(configured->arguments);
    auto command = chosen ? finishedRun(whole, configured->arguments)
                          : tl::expected<Command, Ending>(tl::unexpected<Ending>(chosen.error()));
    return command ? std::move(command)
                   : tl::unexpected<Ending>(configured->explained(std::move(command.error())));
}

// What is wrong with a configuration that runs would be refused for.
std::optional<Ending> configurationMistake(const ConfigOptions& options)
{
    std::vector<std::string> run = {"run", "any.pdf", "-d", "."};
    if (options.profile) {
        run.push_back("--profile=" + *options.profile);
    }
    const auto blamed = [](const tl::expected<Command, Ending>& command) {
        return !command && command.error().place.rfind(shown(configurationPath()), 0) == 0;
    };
    for (const bool profileHasSteps : {true, false}) {
        if (!profileHasSteps) {
            run.emplace_back("--pages=1");
        }
        Reading reading;
        if (reading.read(run)) {
            auto command = configured(run, reading);
            if (blamed(command)) {
                return std::move(command.error());
            }
        }
    }
    return std::nullopt;
}

} // namespace

std::vector<std::string> helpTexts()
{
    Reading reading;
    std::vector<std::string> texts;
    collect(reading.declared(0), texts);
    return texts;
}

tl::expected<Command, Ending> parse(const std::vector<std::string>& given, const Language& language)
{
    const std::vector<std::string> arguments = helpAsOption(given);
    Reading reading(language);
    if (!arguments.empty() && arguments.front() == completeCommand) {
        const std::vector<std::string> words(arguments.begin() + 1, arguments.end());
        return Command(completionOf(reading.declared(words.size()), words, language));
    }
    const auto chosen = reading.read(arguments);
    if (!chosen) {
        return tl::unexpected<Ending>(chosen.error());
    }
    if (takesConfiguration(reading.command())) {
        return configured(arguments, reading);
    }
    if (*chosen == "config") {
        if (reading.all.config.example) {
            return tl::unexpected<Ending>(
                Ending{AllDone, exampleConfiguration(reading.run(), language)});
        }
        if (auto mistake = configurationMistake(reading.all.config.options)) {
            return tl::unexpected<Ending>(std::move(*mistake));
        }
    }
    return finished(reading);
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
