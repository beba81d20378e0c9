#include "VantoraHost/cli/configuration/ConfigCommand.h"

#include "VantoraHost/cli/configuration/Configuration.h"
#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/reports/Json.h"

#include <algorithm>
#include <ostream>

namespace vantora::cli {

namespace {

// What holds of an option; null where nothing is said about it.
const HeldOption* heldOf(const ConfigurableOption& option, const std::vector<HeldOption>& held)
{
    const auto found = std::find_if(held.begin(), held.end(), [&](const HeldOption& one) {
        return one.configured->option == &option;
    });
    return found == held.end() ? nullptr : &*found;
}

std::string valueOf(const ConfigurableOption& option, const HeldOption* held)
{
    if (option.kind == ValueKind::Flag) {
        return held && held->configured->on ? "true" : "false";
    }
    if (!held) {
        return option.byDefault ? option.byDefault : "-";
    }
    std::string values;
    for (const std::string& value : held->configured->values) {
        values += (values.empty() ? "" : ", ") + shown(value);
    }
    return values;
}

std::string originOf(const HeldOption* held, const Language& language)
{
    if (!held) {
        return language.text("default");
    }
    const std::string line = std::to_string(held->configured->line);
    return held->profile ? language.text("profile %1, line %2", {shown(held->profile->name), line})
                         : language.text("line %1", {line});
}

void printTable(const Configuration& configuration, const std::vector<HeldOption>& held,
                const Streams& streams)
{
    const Language& language = streams.language;
    const std::string file = configuration.path.empty() ? "-" : shown(configuration.path);
    streams.out << (configuration.isThere ? language.text("file: %1", {file})
                                          : language.text("file: %1 (not there)", {file}))
                << '\n';
    std::string profiles;
    for (const Profile& profile : configuration.profiles) {
        profiles += (profiles.empty() ? "" : ", ") + shown(profile.name);
    }
    streams.out << language.text("profiles: %1", {profiles.empty() ? "-" : profiles}) << "\n\n";
    for (const ConfigurableOption& option : configurableOptions()) {
        const HeldOption* one = heldOf(option, held);
        streams.out << padded(option.name, 17) << padded(valueOf(option, one), 22) << "  "
                    << originOf(one, language) << '\n';
    }
}

JsonObject jsonOf(const ConfigurableOption& option, const HeldOption* held)
{
    JsonObject object;
    object.add("option", option.name);
    if (option.kind == ValueKind::Flag) {
        object.add("value", held && held->configured->on);
    } else if (held && (option.kind == ValueKind::Texts || option.kind == ValueKind::Paths)) {
        object.add("value", held->configured->values);
    } else if (held) {
        object.add("value", held->configured->values.front());
    } else if (option.byDefault) {
        object.add("value", option.byDefault);
    } else {
        object.addNull("value");
    }
    object.add("origin", !held ? "default" : held->profile ? "profile" : "file");
    object.add("line", held ? std::optional(std::uint64_t{held->configured->line}) : std::nullopt);
    return object;
}

void printJson(const ConfigOptions& options, const Configuration& configuration,
               const std::vector<HeldOption>& held, std::ostream& out)
{
    std::vector<std::string> profiles;
    for (const Profile& profile : configuration.profiles) {
        profiles.push_back(profile.name);
    }
    std::vector<JsonObject> rows;
    for (const ConfigurableOption& option : configurableOptions()) {
        rows.push_back(jsonOf(option, heldOf(option, held)));
    }
    JsonObject object;
    object.add("schema", 1)
        .add("file", configuration.path)
        .add("file_exists", configuration.isThere)
        .add("profiles", profiles)
        .add("profile", options.profile)
        .add("options", rows);
    out << object.text() << '\n';
}

} // namespace

int showConfiguration(const ConfigOptions& options, const Streams& streams)
{
    const auto configuration = readConfiguration(configurationPath());
    if (!configuration) {
        return failedWith(streams, options.json, configuration.error());
    }
    const Profile* profile = nullptr;
    if (options.profile) {
        const auto named = profileNamed(*configuration, *options.profile);
        if (!named) {
            return failedWith(streams, options.json, named.error());
        }
        profile = *named;
    }
    const auto held =
        heldOptions(*configuration, profile, [](const std::string&) { return false; });
    if (options.json) {
        printJson(options, *configuration, held, streams.out);
    } else {
        printTable(*configuration, held, streams);
    }
    return AllDone;
}

} // namespace vantora::cli
