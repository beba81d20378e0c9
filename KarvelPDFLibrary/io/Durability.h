#pragma once

#include <vector>

/// Waiting until the disk has what was written, so that it survives a breakdown of the machine.
namespace karvel::io {

/// Waits until the disk has all of these open files, which together takes much less than one after
/// the other: most of the time goes into what the file system does once for all of them. Returns 0
/// or an errno value for each.
std::vector<int> syncTogether(const std::vector<int>& descriptors);

} // namespace karvel::io
