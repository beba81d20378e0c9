#pragma once

#include <string>
#include <utility>
#include <vector>

namespace vantora {

/// Runs of consecutive numbers: the first and the last of each.
std::vector<std::pair<int, int>> pageRuns(const std::vector<int>& ascending);

/// Page numbers for people: "2, 4-6, 9", cut after `runs` runs.
std::string pageNumbersText(const std::vector<int>& ascending, int runs = 12);

/// The shortest range that names pages: "2,4-6,9"; empty for none.
std::string pageRangeText(const std::vector<int>& ascending);

} // namespace vantora
