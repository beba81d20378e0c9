#pragma once

#include <string>
#include <vector>

namespace vantora {

/// Page numbers for people: "2, 4-6, 9", cut after `runs` runs.
std::string pageNumbersText(const std::vector<int>& ascending, int runs = 12);

/// The shortest range that names pages: "2,4-6,9"; empty for none.
std::string pageRangeText(const std::vector<int>& ascending);

} // namespace vantora
