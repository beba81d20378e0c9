#include "VantoraHost/cli/configuration/Configuration.h"

#include "VantoraHost/core/NearestName.h"
#include "VantoraHost/core/ShownText.h"

#include <algorithm>
#include <cstdlib>

namespace vantora::cli {

namespace {

std::string environmentPath(const char* variable)
{
    const char* path = std::getenv(variable);
    return path && path[0] == '/' ? path : "";
}

bool isAmong(const std::vector<HeldOption>& held, const std::string& name)
{
    return std::any_of(held.begin(), held.end(), [&](const HeldOption& one) {
        return one.configured->on && one.configured->option->name == name;
    });
}

bool isDecided(const std::vector<HeldOption>& held, const ConfigurableOption* option)
{
    return std::any_of(held.begin(), held.end(),
                       [&](const HeldOption& one) { return one.configured->option == option; });
}

} // namespace

// As for all folders of this kind, a path that isn't absolute is passed over.
std::string configurationPath()
{
    std::string folder = environmentPath("XDG_CONFIG_HOME");
    if (folder.empty()) {
        const std::string home = environmentPath("HOME");
        folder = home.empty() ? "" : home + "/.config";
    }
    return folder.empty() ? "" : folder + "/vantora/vantora.toml";
}

Result<const Profile*> profileNamed(const Configuration& configuration, const std::string& name)
{
    std::vector<std::string> names;
    for (const Profile& profile : configuration.profiles) {
        if (profile.name == name) {
            return &profile;
        }
        names.push_back(profile.name);
    }
    if (!configuration.isThere) {
        return fail(Reason::WrongUsage, configuration.path,
                    "there is no such file, and so no profile \"" + shown(name) +
                        "\"; vantora config --example prints one to begin with");
    }
    const std::string nearest = nearestName(name, names);
    return fail(Reason::WrongUsage, configuration.path,
                "it has no profile \"" + shown(name) + "\"" +
                    (nearest.empty() ? "; vantora config lists those that it has"
                                     : "; did you mean " + shown(nearest) + "?"));
}

std::vector<HeldOption> heldOptions(const Configuration& configuration, const Profile* profile,
                                    const std::function<bool(const std::string&)>& isGiven)
{
    std::vector<HeldOption> held;
    const auto take = [&](const std::vector<ConfiguredOption>& options, const Profile* from) {
        const std::vector<HeldOption> before = held;
        for (const ConfiguredOption& one : options) {
            const auto& rivals = one.option->yieldsTo;
            const bool yields = std::any_of(rivals.begin(), rivals.end(), [&](const char* rival) {
                return isGiven(rival) || isAmong(before, rival);
            });
            const std::string name = one.option->name;
            if (!yields && !isGiven(name) && !isGiven("no-" + name) &&
                !isDecided(before, one.option)) {
                held.push_back({&one, from});
            }
        }
    };
    if (profile) {
        take(profile->options, profile);
    }
    take(configuration.defaults, nullptr);
    return held;
}

} // namespace vantora::cli
