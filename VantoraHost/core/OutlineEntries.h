#pragma once

#include <cstddef>
#include <string>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// An entry of a document's outline.
struct OutlineEntry {
    int level = 1; ///< from 1
    std::wstring title;
    int page = 0; ///< where it leads; 0 for nowhere in the document
};

/// The entries of the outline of the document that is open and selected, in the order in which they
/// are read, each once, whatever loops there are; not more than `most`.
std::vector<OutlineEntry> outlineEntries(KarvelPDFLibraryCPDylibCPP1311& library, std::size_t most);

} // namespace vantora
