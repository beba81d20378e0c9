#include "VantoraHost/core/PageNumbers.h"

namespace vantora {

namespace {

// Each run of consecutive numbers as "4" or "4-6".
std::vector<std::string> runTexts(const std::vector<int>& ascending)
{
    std::vector<std::string> texts;
    for (std::size_t first = 0; first < ascending.size();) {
        std::size_t last = first;
        while (last + 1 < ascending.size() && ascending[last + 1] == ascending[last] + 1) {
            ++last;
        }
        texts.push_back(std::to_string(ascending[first]));
        if (last > first) {
            texts.back() += "-" + std::to_string(ascending[last]);
        }
        first = last + 1;
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
