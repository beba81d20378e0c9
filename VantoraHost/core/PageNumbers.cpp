#include "VantoraHost/core/PageNumbers.h"

namespace vantora {

std::vector<std::pair<int, int>> pageRuns(const std::vector<int>& ascending)
{
    std::vector<std::pair<int, int>> runs;
    for (const int page : ascending) {
        if (runs.empty() || runs.back().second + 1 != page) {
            runs.emplace_back(page, page);
        }
        runs.back().second = page;
    }
    return runs;
}

namespace {

// Each run as "4" or "4-6".
std::vector<std::string> runTexts(const std::vector<int>& ascending)
{
    std::vector<std::string> texts;
    for (const auto& [first, last] : pageRuns(ascending)) {
        texts.push_back(std::to_string(first));
        if (last > first) {
            texts.back() += "-" + std::to_string(last);
        }
    }
    return texts;
}

} // namespace

std::string pageNumbersText(const std::vector<int>& ascending, int runs)
{
    std::string text;
    for (const std::string& run : runTexts(ascending)) {
        text += text.empty() ? "" : ", ";
        if (runs-- == 0) {
            return text + "...";
        }
        text += run;
    }
    return text;
}

std::string pageRangeText(const std::vector<int>& ascending)
{
    std::string text;
    for (const std::string& run : runTexts(ascending)) {
        text += (text.empty() ? "" : ",") + run;
    }
    return text;
}

} // namespace vantora
