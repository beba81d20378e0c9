#pragma once

#include <string>

namespace vantora::cli {

/// A command line that ends here: help or version, to be printed on standard output with status 0,
/// or a mistake, one line for standard error with status 2.
struct Ending {
    int status;
    std::string text;
};

} // namespace vantora::cli
