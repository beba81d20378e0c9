#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/choices/RangesFile.h"

#include <functional>
#include <string>
#include <vector>

namespace vantora {

/// A list of ranges that was read.
struct RangesList {
    std::string file;   ///< as it was named, for messages; "-" for standard input
    std::string folder; ///< what its paths are relative to; empty for the current one
    std::vector<DocumentRange> ranges;
};

/// Reads a list of ranges; paths in what is no file (a pipe) are relative to the current folder.
/// The error names the file and, where it is wrong, the line; or it is Reason::Interrupted, when
/// `cancelled` says so after a signal.
Result<RangesList> readRangesList(const std::string& path, const std::function<bool()>& cancelled);

/// The same for a descriptor that is standard input.
Result<RangesList> readRangesList(int standardInput, const std::function<bool()>& cancelled);

/// The documents that a list names, in its order, with their ranges. The error names the line of
/// one that isn't there, or that another line has named.
Result<std::vector<Input>> inputsOf(const RangesList& list);

/// Gives the inputs the ranges of a list; those that it doesn't name are left without. A path of
/// the list is an input where both lead to the same name in the same folder, however spelled. The
/// error names the line of a document that is no input, or that another line has named.
Outcome assignRanges(const RangesList& list, std::vector<Input>& inputs);

} // namespace vantora
