#pragma once

#include "VantoraHost/cli/configuration/ConfigurableOptions.h"
#include "VantoraHost/core/Error.h"

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace vantora::cli {

/// An option as a configuration file gives it.
struct ConfiguredOption {
    const ConfigurableOption* option = nullptr;
    bool on = true;                  ///< of a flag
    std::vector<std::string> values; ///< of any other
    std::size_t line = 0;            ///< from 1
};

struct Profile {
    std::string name;
    std::vector<ConfiguredOption> options; ///< as they follow each other in the file
};

/// What a configuration file says.
struct Configuration {
    std::string path; ///< empty where there is no home folder
    bool isThere = false;
    std::vector<ConfiguredOption> defaults;
    std::vector<Profile> profiles;
};

/// Where the user's file is, whether there is one or not: vantora/vantora.toml in $XDG_CONFIG_HOME
/// or ~/.config.
std::string configurationPath();

/// Reads the file at a path, in TOML 1.0 (https://toml.io); none is an empty configuration. It must
/// be a regular file of 64 KiB at most that belongs to the user or the administrator and that
/// nobody else may write to. An error's file is the path, with the line where it is about one.
Result<Configuration> readConfiguration(const std::string& path);

/// The profile of that name, or an error that names the nearest.
Result<const Profile*> profileNamed(const Configuration& configuration, const std::string& name);

/// An option that holds, and where it comes from.
struct HeldOption {
    const ConfiguredOption* configured = nullptr;
    const Profile* profile = nullptr; ///< null where it stands outside of all
};

/// What holds of a configuration and one of its profiles (null: none) beside what is given on the
/// command line, where "no-verify" is the name of what switches "verify" off: a profile's options
/// take the place of those outside, and either yield to what their descriptions say.
std::vector<HeldOption> heldOptions(const Configuration& configuration, const Profile* profile,
                                    const std::function<bool(const std::string&)>& isGiven);

} // namespace vantora::cli
