#pragma once

#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Error.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// Everything on standard input. The error is Reason::Interrupted when the person stops waiting.
Result<std::string> readStandardInput(const Streams& streams);

/// The passwords of a file, one a line; no passwords when the path is empty.
Result<std::vector<std::string>> readPasswords(const std::string& path);

} // namespace vantora::cli
