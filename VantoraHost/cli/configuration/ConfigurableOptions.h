#pragma once

#include <string>
#include <vector>

namespace vantora::cli {

/// What an option of `vantora run` takes in a configuration file.
enum class ValueKind {
    Flag,   ///< true or false
    Amount, ///< a number, or a text such as "5m"; never 0, which lifts a limit
    Text,
    Path,  ///< a text, where ~/ at the beginning is the home folder
    Texts, ///< a text or a list of them: the option given as often
    Paths,
};

/// Where in the file an option may stand.
enum class Place {
    Anywhere,
    Profiles, ///< in what somebody names on the command line
};

/// An option of `vantora run` that a configuration file may give; `vantora watch` has some of them.
struct ConfigurableOption {
    const char* name; ///< the long name without its dashes
    ValueKind kind;
    Place place;
    const char* sample; ///< a value, as in the file
    /// What it gives way to without a word: options of the command line, or those of a profile if
    /// it stands outside. What is no option's name stands below.
    std::vector<const char*> yieldsTo = {};
    const char* goesWith = nullptr; ///< an option without which it says nothing
    bool protects = false;          ///< a flag that no profile may switch off
    const char* byDefault = nullptr;
};

/// Names in ConfigurableOption::yieldsTo for what is no option's name.
constexpr char fromStandardInput[] = "-";
constexpr char toStandardOutput[] = "-o -";
constexpr char withoutWorkers[] = "-j 0";

/// All of them, in the order of the help.
const std::vector<ConfigurableOption>& configurableOptions();

/// The one of that name; null when there is none.
const ConfigurableOption* configurableOption(const std::string& name);

/// The names of all of them.
std::vector<std::string> configurableNames();

/// Why an option of that name is for the command line only; null when it isn't one of these.
const char* whyNotConfigurable(const std::string& name);

} // namespace vantora::cli
