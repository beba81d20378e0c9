#pragma once

#include "VantoraHost/core/language/Language.h"

#include <cstddef>
#include <string>

namespace vantora::cli {

/// A command line that ends here: help or version, to be printed on standard output with status 0,
/// or a mistake, one English line for standard error with status 2.
struct Ending {
    int status;
    std::string text;
    /// How many bytes at the beginning of a mistake say where in the configuration it is.
    std::size_t place = 0;
};

/// A mistake, which is English, in a person's language.
std::string mistakeText(const Ending& mistake, const Language& language);

} // namespace vantora::cli
