#include "VantoraHost/core/documents/PageForecast.h"

#include "VantoraHost/core/actions/KnownAction.h"

#include <algorithm>
#include <numeric>

namespace vantora {

namespace {

constexpr int blankPage = 0; // a page that the input doesn't have

// Takes the step's pages out of `remaining`, which holds the input's page numbers.
void takePages(const std::vector<int>& taken, std::vector<int>& remaining, PageForecast& forecast)
{
    for (const int page : taken) {
        int& number = remaining[static_cast<std::size_t>(page) - 1];
        if (number != blankPage) {
            forecast.removed.push_back(number);
        }
        number = -1;
    }
    remaining.erase(std::remove(remaining.begin(), remaining.end(), -1), remaining.end());
}

} // namespace

std::optional<PageForecast> forecastPages(const Sequence& sequence, int pageCount)
{
    std::vector<int> remaining(static_cast<std::size_t>(std::max(pageCount, 0)));
    std::iota(remaining.begin(), remaining.end(), 1);
    PageForecast forecast;
    const std::vector<Step>& steps = sequence.steps();
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const KnownAction* known = knownAction(steps[i].action.name);
        if (!known) {
            return std::nullopt;
        }
        const std::string where =
            steps.size() == 1 ? "" : "in step " + std::to_string(i + 1) + ", ";
        const auto effect = known->effect(steps[i].preferences, static_cast<int>(remaining.size()));
        for (const std::string& unmet : effect.unmet) {
            forecast.unmet.push_back(where + unmet);
        }
        takePages(effect.taken, remaining, forecast);
        if (effect.emptied) {
            remaining.push_back(blankPage);
            forecast.emptied.push_back(where + known->emptiedText(steps[i].preferences));
        }
    }
    std::sort(forecast.removed.begin(), forecast.removed.end());
    forecast.pagesAfter = static_cast<int>(remaining.size());
    return forecast;
}

} // namespace vantora
