#include "VantoraHost/core/documents/SurveyShares.h"

#include "VantoraHost/core/choices/LibraryFacts.h"

#include <algorithm>
#include <iterator>

namespace vantora {

namespace {

constexpr int leastShared = 32; // pages of a part; of fewer, starting a process takes longer

} // namespace

std::size_t furtherParts(int pages, std::size_t processes)
{
    const int rest = std::max(0, pages - leastShared);
    const auto most = static_cast<std::size_t>((rest + leastShared - 1) / leastShared);
    // Twice as many as processes, since parts take differently long.
    return std::min(most, 2 * processes);
}

PageSpan spanOfPart(std::size_t part, int pages, std::size_t further)
{
    if (part == 0) {
        return {1, leastShared};
    }
    const auto end = [&](std::size_t parts) {
        const auto rest = static_cast<std::size_t>(std::max(0, pages - leastShared));
        return leastShared + static_cast<int>(rest * parts / further);
    };
    return {end(part - 1) + 1, end(part)};
}

Result<PageSurvey> joined(std::vector<PageSurvey> parts)
{
    PageSurvey whole = parts.empty() ? PageSurvey() : std::move(parts.front());
    bool fits = !parts.empty() && whole.span.first == 1;
    for (std::size_t i = 1; i < parts.size(); ++i) {
        PageSurvey& part = parts[i];
        fits = fits && part.pages == whole.pages && part.version == whole.version &&
               part.span.first == whole.span.last + 1;
        whole.span.last = part.span.last;
        whole.chosen.insert(whole.chosen.end(), std::make_move_iterator(part.chosen.begin()),
                            std::make_move_iterator(part.chosen.end()));
        whole.pictures.merge(part.pictures);
        whole.unreadable.merge(part.unreadable);
    }
    if (!fits || whole.span.last != whole.pages) {
        return fail(Reason::ChangedMeanwhile, whole.input, "was changed while it was looked at");
    }
    if (whole.pictures.size() > mostPictures) {
        whole.pictures.erase(std::next(whole.pictures.begin(), mostPictures), whole.pictures.end());
    }
    if (parts.size() > 1) {
        whole.warnings = unreadableTextRemarks(whole.unreadable);
    }
    return whole;
}

PageSpan SurveyShares::spanOf(const std::string& input, std::size_t part) const
{
    const Shared shared = part == 0 ? Shared() : shared_.at(input);
    return spanOfPart(part, shared.pages, shared.further);
}

std::size_t SurveyShares::furtherParts(const std::string& input, const std::string& first,
                                       std::size_t processes)
{
    const Result<PageSurvey> survey = pageSurveyOf(first);
    if (!survey) {
        return 0;
    }
    const std::size_t further = vantora::furtherParts(survey->pages, processes);
    shared_[input] = {survey->pages, further};
    return further;
}

Result<PageSurvey> SurveyShares::join(const std::vector<std::string>& found)
{
    std::vector<PageSurvey> parts;
    for (const std::string& text : found) {
        Result<PageSurvey> part = pageSurveyOf(text);
        if (!part) {
            return part;
        }
        parts.push_back(std::move(*part));
    }
    return joined(std::move(parts));
}

} // namespace vantora
