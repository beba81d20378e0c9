#include "VantoraHost/cli/configuration/ConfigurationArguments.h"

#include "VantoraHost/cli/arguments/ArgumentParsing.h"
#include "VantoraHost/core/ShownText.h"
#include "VantoraHost/core/Target.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace vantora::cli {

namespace {

constexpr char profileName[] = "--profile";
constexpr char noConfigurationName[] = "--no-config";

const CLI::Option* optionOf(const CLI::App& command, const std::string& name)
{
    return command.get_option_no_throw(name);
}

bool hasValue(const CLI::App& command, const std::string& name, const std::string& value)
{
    const CLI::Option* option = optionOf(command, name);
    const auto values = option ? option->results() : std::vector<std::string>();
    return std::find(values.begin(), values.end(), value) != values.end();
}

bool isGiven(const CLI::App& command, const std::string& name)
{
    if (name == fromStandardInput) {
        return hasValue(command, "INPUT", standardStream);
    }
    if (name == toStandardOutput) {
        return hasValue(command, "--output", standardStream);
    }
    if (name == withoutWorkers) {
        return hasValue(command, "--jobs", "0");
    }
    const CLI::Option* option = optionOf(command, "--" + name);
    return option && option->count() > 0;
}

bool isPartOfName(char character)
{
    return character == '-' || std::isalnum(static_cast<unsigned char>(character)) != 0;
}

// Where a text names an option; npos when it doesn't.
std::size_t placeOf(const std::string& option, const std::string& text)
{
    std::size_t place = text.find(option);
    while (place != std::string::npos) {
        const std::size_t end = place + option.size();
        const bool begins = place == 0 || !isPartOfName(text[place - 1]);
        if (begins && (end == text.size() || !isPartOfName(text[end]))) {
            return place;
        }
        place = text.find(option, end);
    }
    return place;
}

std::vector<std::string> namesOf(const CLI::Option& option)
{
    std::vector<std::string> names;
    for (const std::string& name : option.get_lnames()) {
        names.push_back("--" + name);
    }
    for (const std::string& name : option.get_snames()) {
        names.push_back("-" + name);
    }
    return names;
}

// What holds and has what it goes with.
std::vector<HeldOption> effective(const Configuration& configuration, const Profile* profile,
                                  const CLI::App& command)
{
    const auto given = [&](const std::string& name) { return isGiven(command, name); };
    const auto held = heldOptions(configuration, profile, given);
    std::vector<HeldOption> effective;
    for (const HeldOption& one : held) {
        const ConfigurableOption& option = *one.configured->option;
        const bool isAccompanied =
            !option.goesWith || given(option.goesWith) ||
            std::any_of(held.begin(), held.end(), [&](const HeldOption& other) {
                return std::string(other.configured->option->name) == option.goesWith;
            });
        if (isAccompanied && one.configured->on &&
            optionOf(command, "--" + std::string(option.name))) {
            effective.push_back(one);
        }
    }
    return effective;
}

Ending refusal(const Error& configuration)
{
    const std::string place = shown(configuration.file) + ": ";
    return {WrongUsage, configuration.sentence, {}, place};
}

} // namespace

void declareConfiguration(CLI::App& command)
{
    for (const ConfigurableOption& option : configurableOptions()) {
        CLI::Option* on = command.get_option_no_throw("--" + std::string(option.name));
        if (on && option.kind == ValueKind::Flag) {
            // Not in the help, which names both in one line.
            const std::string what =
                "Switch off --" + std::string(option.name) + " of your configuration";
            command.add_flag("--no-" + std::string(option.name), what)
                ->group(notInHelp)
                ->excludes(on);
        }
    }
    const std::string what = "Let the options hold, too, that a profile of your\n"
                             "configuration has (vantora config lists them)";
    oneEach(command.add_option(profileName, what), "NAME")->expected(1);
    const std::string without = "Pass over your configuration";
    command.add_flag(noConfigurationName, without)->excludes(command.get_option(profileName));
}

bool takesConfiguration(const CLI::App& command)
{
    return optionOf(command, noConfigurationName) != nullptr;
}

Ending ConfiguredArguments::explained(Ending ending) const
{
    std::size_t first = std::string::npos;
    std::size_t line = 0;
    for (const Added& one : added) {
        for (const std::string& name : one.names) {
            const std::size_t place = placeOf(name, ending.text);
            if (place < first) {
                first = place;
                line = one.line;
            }
        }
    }
    if (line > 0) {
        ending.place = shown(path) + ":" + std::to_string(line) + ": ";
    }
    return ending;
}

tl::expected<ConfiguredArguments, Ending>
withConfiguration(const std::vector<std::string>& arguments, const CLI::App& command)
{
    ConfiguredArguments configured{arguments, {}, {}};
    if (isGiven(command, "no-config")) {
        return configured;
    }
    const auto configuration = readConfiguration(configurationPath());
    if (!configuration) {
        return tl::unexpected<Ending>(refusal(configuration.error()));
    }
    configured.path = configuration->path;
    const Profile* profile = nullptr;
    if (isGiven(command, "profile")) {
        const auto named =
            profileNamed(*configuration, optionOf(command, profileName)->results().front());
        if (!named) {
            return tl::unexpected<Ending>(refusal(named.error()));
        }
        profile = *named;
    }
    auto place = std::find(arguments.begin(), arguments.end(), command.get_name());
    const auto at = static_cast<std::size_t>(place - arguments.begin()) + 1;
    std::vector<std::string> more;
    for (const HeldOption& one : effective(*configuration, profile, command)) {
        const std::string name = "--" + std::string(one.configured->option->name);
        if (one.configured->option->kind == ValueKind::Flag) {
            more.push_back(name);
        }
        for (const std::string& value : one.configured->values) {
            more.push_back(name + "=" + value);
        }
        configured.added.push_back({namesOf(*optionOf(command, name)), one.configured->line});
    }
    configured.arguments.insert(configured.arguments.begin() + static_cast<std::ptrdiff_t>(at),
                                more.begin(), more.end());
    return configured;
}

} // namespace vantora::cli
