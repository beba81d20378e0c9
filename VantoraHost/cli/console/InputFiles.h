#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Error.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// Everything on standard input. The error is Reason::Interrupted when the person stops waiting.
Result<std::string> readStandardInput(const Streams& streams);

/// The passwords of a file, one a line; no passwords when the path is empty.
Result<std::vector<std::string>> readPasswords(const std::string& path);

/// The file names that a list names, one a line or each ended by a zero byte; "-" is the list on
/// standard input. A name "-" in it is that of a file. Fails when it names none.
Result<std::vector<std::string>> readFileList(const std::string& path, bool endedByNull,
                                              const Streams& streams);

/// The value of an option that may stand in a file, since a command line has a largest length: the
/// content of FILE, without white space around it, for "@FILE"; any other value as it is.
Result<std::string> valueOrFileContent(const std::string& value);

} // namespace vantora::cli
