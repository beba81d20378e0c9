#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/verify/VerifyCommand.h"
#include "VantoraHost/core/Error.h"

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantora::cli {

/// A document before and after, and the pages that went: runs of first and last page.
struct RemovalToVerify {
    std::string before;
    std::string after;
    std::vector<std::pair<int, int>> pages;
    std::optional<Error> error; ///< why it can't be verified
};

/// The removals that the command line, a list of ranges or a report names.
Result<std::vector<RemovalToVerify>> removalsToVerify(const VerifyOptions& options,
                                                      const Streams& streams);

} // namespace vantora::cli
