#pragma once

#include "VantoraHost/core/actions/Sequence.h"

#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// What a sequence does to the pages of one document, worked out without touching it.
struct PageForecast {
    std::vector<int> removed; ///< 1-based page numbers of the input, ascending
    int pagesAfter = 0;
    std::vector<std::string> unmet;   ///< what was asked for and this document can't give
    std::vector<std::string> emptied; ///< that a step leaves none of the document's pages
};

/// The forecast for a document of `pageCount` pages; none when the sequence has an action whose
/// effect on pages only the action knows. Where there are several steps, its sentences say which
/// one they are about, since pages that a step counts are those that the steps before it left.
std::optional<PageForecast> forecastPages(const Sequence& sequence, int pageCount);

} // namespace vantora
