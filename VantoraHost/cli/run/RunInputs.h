#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/run/RunOptions.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/reports/EarlierReports.h"

#include <cstddef>
#include <map>
#include <vector>

namespace vantora::cli {

/// The documents that a run is about.
struct RunInputs {
    std::vector<Input> all;                     ///< in their order; those left alone are among them
    std::map<SinceReport, std::size_t> changed; ///< to be done, though an earlier run did them
    std::size_t doneBefore = 0;                 ///< left alone, because an earlier run did them
    std::size_t outputThere = 0; ///< left alone, because their outputs are there already
    std::size_t notNamed = 0;    ///< left alone, because the list of ranges doesn't name them
    std::size_t elsewhere = 0;   ///< left alone, because they belong to other shares
    std::size_t outputs = 0;     ///< not among them, because they are outputs of such a run

    std::size_t toDo() const
    {
        return all.size() - doneBefore - outputThere - notNamed - elsewhere;
    }
};

/// Those that the options name: on the command line, in a list, in folders, or else in the list of
/// ranges, which all of them get theirs from. What is left alone
/// depends on which run this is. Says on the error stream which folders hold no document.
Result<RunInputs> inputsOf(const RunOptions& options, const RunIdentity& run,
                           const Streams& streams);

} // namespace vantora::cli
