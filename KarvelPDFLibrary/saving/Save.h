#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/saving/SaveOptions.h"

#include <string>

namespace karvel::saving {

/// Saves a document to a temporary file beside the path and renames it over the path. After a
/// failure the path is as it was. Fails when a page that stays lost its content to damage. A path
/// that names an open descriptor of this process, such as "/dev/fd/7" (io::descriptorNamed), gets
/// the bytes as they come, in the place of what the file holds; naming and syncing it is left to
/// its owner.
Outcome toFile(Document& document, const std::string& path, const SaveOptions& options);

/// The document's bytes as saving would write them, without counting as saving.
Result<std::string> copyToString(Document& document, const SaveOptions& options);

/// The saved document's bytes.
Result<std::string> toString(Document& document, const SaveOptions& options);

} // namespace karvel::saving
