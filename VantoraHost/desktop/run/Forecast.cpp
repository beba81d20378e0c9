#include "VantoraHost/desktop/run/Forecast.h"

#include "VantoraHost/core/actions/StepsIdentity.h"
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

std::shared_ptr<const Sequence> Forecast::sequenceFor(const QString& range) const
{
    if (!sequences_.contains(range)) {
        auto made = Sequence::of(steps_.requests(range), catalog_);
        sequences_.insert(range,
                          made ? std::make_shared<const Sequence>(std::move(*made)) : nullptr);
    }
    return sequences_.value(range);
}

std::string Forecast::stepsDigestFor(DocumentId id) const
{
    const auto sequence = sequenceFor(marks_.of(id).pages.text());
    return sequence ? stepsDigest(sequence->steps()) : std::string();
}

std::optional<int> Forecast::goingFrom(const Document& document) const
{
    const RangeMarks& marks = marks_.of(document.id);
    if (steps_.rowCount() == 1 && steps_.marksRow() == 0) {
        return marks.pages.countIn(document.pages);
    }
    const auto sequence = sequenceFor(marks.pages.text());
    const auto forecast = sequence ? forecastPages(*sequence, document.pages) : std::nullopt;
    return forecast ? std::optional(static_cast<int>(forecast->removed.size())) : std::nullopt;
}

} // namespace vantora::desktop
