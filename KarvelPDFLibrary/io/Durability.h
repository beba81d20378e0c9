#pragma once

#include <string>
#include <vector>

/// Waiting until the disk has what was written, so that it survives a breakdown of the machine.
namespace karvel::io {

/// The folder that a path names a file in.
std::string folderOf(const std::string& path);

/// Waits until the disk has the names in a folder. One that cannot be synced (on some network file
/// systems) is no failure.
void syncFolder(const std::string& folder);

/// Waits until the disk has all of these open files, which together takes much less than one after
/// the other: most of the time goes into what the file system does once for all of them. Returns 0
/// or an errno value for each.
std::vector<int> syncTogether(const std::vector<int>& descriptors);

} // namespace karvel::io
