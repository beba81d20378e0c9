#pragma once

#include "KarvelPDFLibrary/io/Folder.h"
#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/FileIdentity.h"

#include <string>

namespace vantora {

/// Moves a document into the folder at another path of its file system, under its name or the
/// first copy name that is free there; returns that. Only that very version is moved: another file
/// that somebody puts in its place meanwhile is given back. The file is neither opened nor changed.
/// The disk isn't waited for: what a machine that stops had moved may be found where it was.
/// The error is why it stays.
Result<std::string> putAside(const karvel::io::Folder& from, const std::string& name,
                             const FileVersion& version, const std::string& folder);

} // namespace vantora
