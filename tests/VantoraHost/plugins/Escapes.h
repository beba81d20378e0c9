#pragma once

#include <string>
#include <vector>

/// Ways out of a worker, for code that has taken it over.
namespace escapes {

/// Where they aim at.
struct Aim {
    std::string foreignFile;   ///< a file of the user's that is no part of the run
    std::string foreignFolder; ///< an empty folder of the user's
    std::string outputFolder;  ///< where the worker may write
};

/// Their names.
std::vector<std::string> names();

/// Whether the way of this name leads out. One that is guarded well ends the process.
bool leadsOut(const std::string& name, const Aim& aim);

} // namespace escapes
