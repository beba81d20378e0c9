#include "VantoraHost/desktop/run/Forecast.h"

#include "VantoraHost/core/documents/PageForecast.h"

namespace vantora::desktop {

Forecast::Forecast(const StepList& steps, const Marks& marks,
                   const std::vector<std::filesystem::path>& actionFolders)
    : steps_(steps), marks_(marks), catalog_(ActionCatalog::of(actionFolders))
{
}

Forecast::~Forecast() = default;

std::vector<StepRequest> Forecast::stepsFor(DocumentId id) const
{
    return steps_.requests(marks_.of(id).pages.text());
}

std::optional<int> Forecast::goingFrom(const Document& document) const
{
    const RangeMarks& marks = marks_.of(document.id);
    if (steps_.rowCount() == 1 && steps_.marksRow() == 0) {
        return marks.pages.countIn(document.pages);
    }
    const QString range = marks.pages.text();
    if (!sequences_.contains(range)) {
        auto made = Sequence::of(steps_.requests(range), catalog_);
        sequences_.insert(range,
                          made ? std::make_shared<const Sequence>(std::move(*made)) : nullptr);
    }
    const auto sequence = sequences_.value(range);
    const auto forecast = sequence ? forecastPages(*sequence, document.pages) : std::nullopt;
    return forecast ? std::optional(static_cast<int>(forecast->removed.size())) : std::nullopt;
}

} // namespace vantora::desktop
