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
    std::vector<std::string> warnings; ///< pages that aren't there, a document left without any
};

/// The forecast for a document of `pageCount` pages; none when the sequence has an action whose
/// effect on pages only the action knows.
std::optional<PageForecast> forecastPages(const Sequence& sequence, int pageCount);

/// Page numbers for people: "2, 4-6, 9", cut after `runs` runs.
std::string pageNumbersText(const std::vector<int>& ascending, int runs = 12);

} // namespace vantora
