#pragma once

#include <string>
#include <vector>

namespace karvel {

/// What was noticed about a document without being a failure: texts in UTF-8, oldest first.
using Warnings = std::vector<std::string>;

} // namespace karvel
