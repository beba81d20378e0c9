#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/Inputs.h"

#include <string>
#include <vector>

namespace vantora::cli {

/// Everything on standard input. The error is Reason::Interrupted when the person stops waiting.
Result<std::string> readStandardInput(const Streams& streams);

/// The passwords of a file, one a line; no passwords when the path is empty.
Result<std::vector<std::string>> readPasswords(const std::string& path);

/// How a command line names documents.
struct InputNames {
    std::vector<std::string> names;
    std::string filesFrom;    ///< a list of more; empty: none
    bool endedByNull = false; ///< names in that list end with a zero byte
    bool recursive = false;   ///< names of folders stand for the PDF files below them
};

/// The documents that are named, in their order; what lies in the folder `outputs` is left out of
/// what is found (empty for none). Folders that hold no document are warned of unless `quiet`.
Result<std::vector<Input>> inputsNamed(InputNames named, const std::string& outputs, bool quiet,
                                       const Streams& streams);

/// The value of an option that may stand in a file, since a command line has a largest length: the
/// content of FILE, without white space around it, for "@FILE"; any other value as it is.
Result<std::string> valueOrFileContent(const std::string& value);

} // namespace vantora::cli
