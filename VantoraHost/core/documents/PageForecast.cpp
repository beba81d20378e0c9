#include "VantoraHost/core/documents/PageForecast.h"

#include "VantoraHost/core/actions/DeletePagesOptions.h"

#include <algorithm>
#include <numeric>

namespace vantora {

namespace {

constexpr int blankPage = 0; // a page that the input doesn't have

std::string countOf(std::size_t pages)
{
    return std::to_string(pages) + (pages == 1 ? " page" : " pages");
}

// Takes the step's pages out of `remaining`, which holds the input's page numbers.
void takePages(const PreferencesMap& preferences, std::vector<int>& remaining,
               PageForecast& forecast)
{
    const auto count = remaining.size();
    const std::vector<int> taken = deletepages::pagesTaken(preferences, static_cast<int>(count));
    const int highest = deletepages::highestPageNamed(preferences);
    if (highest > static_cast<int>(count)) {
        forecast.warnings.push_back("the range " + deletepages::shownRange(preferences) +
                                    " names pages up to " + std::to_string(highest) +
                                    ", but the document has " + countOf(count) +
                                    (taken.empty() ? "; none was taken out" : ""));
    }
    for (const int page : taken) {
        int& number = remaining[static_cast<std::size_t>(page) - 1];
        if (number != blankPage) {
            forecast.removed.push_back(number);
        }
        number = -1;
    }
    remaining.erase(std::remove(remaining.begin(), remaining.end(), -1), remaining.end());
    if (remaining.empty()) {
        remaining.push_back(blankPage);
        forecast.warnings.push_back("the range " + deletepages::shownRange(preferences) +
                                    " names every page; one blank page is left");
    }
}

} // namespace

std::optional<PageForecast> forecastPages(const Sequence& sequence, int pageCount)
{
    std::vector<int> remaining(static_cast<std::size_t>(std::max(pageCount, 0)));
    std::iota(remaining.begin(), remaining.end(), 1);
    PageForecast forecast;
    for (const Step& step : sequence.steps()) {
        if (step.action.name != deletepages::actionName) {
            return std::nullopt;
        }
        takePages(step.preferences, remaining, forecast);
    }
    std::sort(forecast.removed.begin(), forecast.removed.end());
    forecast.pagesAfter = static_cast<int>(remaining.size());
    return forecast;
}

std::string pageNumbersText(const std::vector<int>& ascending, int runs)
{
    std::string text;
    for (std::size_t first = 0; first < ascending.size();) {
        std::size_t last = first;
        while (last + 1 < ascending.size() && ascending[last + 1] == ascending[last] + 1) {
            ++last;
        }
        text += text.empty() ? "" : ", ";
        if (runs-- == 0) {
            return text + "...";
        }
        text += std::to_string(ascending[first]);
        if (last > first) {
            text += "-" + std::to_string(ascending[last]);
        }
        first = last + 1;
    }
    return text;
}

} // namespace vantora
