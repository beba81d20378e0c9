#pragma once

#include "VantoraHost/core/language/Language.h"

#include <string>

namespace vantora::cli {

/// A command line that ends here: help or version, to be printed on standard output with status 0,
/// or a mistake, one English sentence for standard error with status 2.
struct Ending {
    int status;
    std::string text;
    /// For a mistake: the arguments that print the help, such as "run --help".
    std::string help = {};
    /// Where in the configuration a mistake is, as "FILE:LINE: ".
    std::string place = {};
};

/// A mistake as one line in a person's language, with its place and where there is help.
std::string mistakeText(const Ending& mistake, const Language& language);

} // namespace vantora::cli
