#include "VantoraHost/verification/Split.h"

#include <algorithm>

namespace vantora::verification {

Split::Split(PdfFile& file, const std::vector<std::pair<int, int>>& removed)
    : file_(file), goes_(file.pages().size())
{
    const int count = static_cast<int>(goes_.size());
    for (const auto& [first, last] : removed) {
        for (int page = std::max(first, 1); page <= std::min(last, count); ++page) {
            goes_[static_cast<std::size_t>(page - 1)] = true;
        }
    }
    for (int place = 0; place < count; ++place) {
        placeAfter_.push_back(static_cast<int>(kept_.size()));
        (goes(place) ? removed_ : kept_).push_back(place);
    }
}

bool Split::isRemoved(const QPDFObjectHandle& object) const
{
    const std::vector<int>& places = file_.placesOf(object);
    return !places.empty() &&
           std::all_of(places.begin(), places.end(), [&](int place) { return goes(place); });
}

bool Split::isKept(const QPDFObjectHandle& object) const
{
    return file_.isPage(object) && !isRemoved(object);
}

int Split::numberOf(const QPDFObjectHandle& object) const
{
    const std::vector<int>& places = file_.placesOf(object);
    return places.empty() ? 0 : places.front() + 1;
}

Target Split::afterwards(Target target) const
{
    if (target.where == Target::Where::Page) {
        target.place = placeAfter_[static_cast<std::size_t>(target.place)];
    }
    return target;
}

} // namespace vantora::verification
