#pragma once

#include "KarvelPDFLibrary/io/FileVersion.h"
#include "KarvelPDFLibrary/io/Folder.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

/// The temporary files that outputs are written to before they take their names.
namespace karvel::io {

/// A new name, such as ".karvel-save-4711-00ff00ff00ff00ff.tmp", with the number of this process.
std::string temporaryName();

/// Whether a file name is exactly as temporaryName makes them; `process` gets the number of the
/// process that made it.
bool isTemporaryName(std::string_view fileName, int& process);

/// Says that a temporary file that has just been made is in use until its descriptor is closed,
/// also when its process is killed, and to other machines that share the folder. Returns which file
/// it is, with its owner; none when it was taken for an abandoned one first, and is gone or about
/// to be.
std::optional<struct stat> claimTemporary(int descriptor);

/// The same for a file that has stood there for long and is going to have such a name for a moment.
void claimForAMoment(int descriptor);

/// Removes the temporary files of a folder that nobody uses any more; returns their number. Only
/// what has exactly such a name, is this user's, and is claimed by nobody counts as one. A folder
/// that can't be read has none.
std::size_t removeAbandoned(const Folder& folder);

} // namespace karvel::io
