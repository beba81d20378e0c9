#include "VantoraHost/cli/configuration/ConfigArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/cli/configuration/ConfigurableOptions.h"

namespace vantora::cli {

namespace {

constexpr char configExamples[] = R"(Examples:
  vantora config
  vantora config --profile scans
  vantora config --example >~/.config/vantora/vantora.toml

The file is vantora/vantora.toml in $XDG_CONFIG_HOME or ~/.config.)";

constexpr char exampleHead[] =
    R"(# Defaults for vantora run and vantora watch, in TOML. Remove the # before what shall hold.
# The command line goes before a profile, and a profile before what stands outside of it:
# --directory DIR takes the place of directory, and --no-verify switches verify off.
# vantora config shows what holds.
)";

constexpr char exampleProfile[] = R"(
# What stands below such a line holds for vantora run --profile scans. All of the above
# may stand here, too.
#[profile.scans]
)";

void addOption(std::string& text, const ConfigurableOption& option, const CLI::App& run)
{
    const std::string name = option.name;
    text += "\n# ";
    for (const char character : run.get_option("--" + name)->get_description()) {
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

std::string exampleConfiguration(const CLI::App& run)
{
    std::string text = exampleHead;
    for (const Place place : {Place::Anywhere, Place::Profiles}) {
        text += place == Place::Profiles ? exampleProfile : "";
        for (const ConfigurableOption& option : configurableOptions()) {
            if (option.place == place) {
                addOption(text, option, run);
            }
        }
    }
    return text;
}

} // namespace vantora::cli
