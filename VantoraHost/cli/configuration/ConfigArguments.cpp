#include "VantoraHost/cli/configuration/ConfigArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/configuration/ConfigurableOptions.h"

#include <QtCore/QtGlobal>

namespace vantora::cli {

namespace {

constexpr char configExamples[] = R"(Examples:
  vantora config
  vantora config --profile scans
  vantora config --example >~/.config/vantora/vantora.toml

The file is vantora/vantora.toml in $XDG_CONFIG_HOME or ~/.config.)";

constexpr const char* exampleHead = QT_TRANSLATE_NOOP(
    "Terminal",
    R"(# Defaults for vantora run and vantora watch, in TOML. Remove the # before what shall hold.
# The command line goes before a profile, and a profile before what stands outside of it:
# --directory DIR takes the place of directory, and --no-verify switches verify off.
# vantora config shows what holds.
)");

constexpr const char* exampleProfile = QT_TRANSLATE_NOOP("Terminal", R"(
# What stands below such a line holds for vantora run --profile scans. All of the above
# may stand here, too.
#[profile.scans]
)");

void addOption(std::string& text, const ConfigurableOption& option, const CLI::App& run,
               const Language& language)
{
    const std::string name = option.name;
    text += "\n# ";
    const std::string what = run.get_option("--" + name)->get_description();
    for (const char character : language.text(what.c_str())) {
        text += character == '\n' ? "\n# " : std::string(1, character);
    }
    text += "\n#" + name + " = " + option.sample + "\n";
}

} // namespace

void declareConfig(CLI::App& program, ConfigArguments& arguments)
{
    ConfigOptions& options = arguments.options;
    CLI::App& command =
        declareCommand(program, "config", "Show what your configuration says for runs");
    command.footer(configExamples);
    CLI::Option* profile = oneEach(
        command.add_option("--profile", options.profile, "With the options of this profile"),
        "NAME");
    CLI::Option* json = command.add_flag("--json", options.json, "Print one JSON object");
    command.add_flag("--example", arguments.example, "Print a file to begin with, with comments")
        ->excludes(profile)
        ->excludes(json);
}

std::string exampleConfiguration(const CLI::App& run, const Language& language)
{
    std::string text = language.text(exampleHead);
    for (const Place place : {Place::Anywhere, Place::Profiles}) {
        text += place == Place::Profiles ? language.text(exampleProfile) : "";
        for (const ConfigurableOption& option : configurableOptions()) {
            if (option.place == place) {
                addOption(text, option, run, language);
            }
        }
    }
    return text;
}

} // namespace vantora::cli
