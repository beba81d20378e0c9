#pragma once

#include <string>

namespace fuzz {

/// The document with a cross-reference table that fits the places at which its objects begin now,
/// and a trailer that names the catalog as the document's own trailer did. Without it nearly every
/// mutation of a document would only reach the repair of its table.
std::string withFittingTable(const std::string& document);

} // namespace fuzz
