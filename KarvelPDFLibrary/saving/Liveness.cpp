#include "KarvelPDFLibrary/saving/Liveness.h"

#include "KarvelPDFLibrary/saving/PathTo.h"

#include <algorithm>

namespace karvel::saving {

Liveness::Liveness(Document& document)
    : document_(document), index_(document.index()), objects_(document.objects())
{
    std::uint32_t highest = index_ != nullptr ? index_->size() - 1 : 0;
    for (const int number : document.changes().numbers()) {
        highest = std::max(highest, static_cast<std::uint32_t>(number));
    }
    makeRoomFor(highest);
    for (const std::int32_t page : document.cutPages()) {
        cut_[static_cast<std::size_t>(page)] = true;
    }
    if (const Roots* roots = document.roots()) {
        for (const Roots::Entry& entry : roots->trailer()) {
            if (entry.reference && objects_.idOf(entry.reference->getObj()) == *entry.reference) {
                reach(static_cast<std::uint32_t>(entry.reference->getObj()));
            }
        }
    } else {
        reach(objects_.referencesIn(document.file().getTrailer()));
    }
    while (!pending_.empty()) {
        const std::uint32_t number = pending_.back();
        pending_.pop_back();
        reach(objects_.references(static_cast<int>(number)));
    }
}

void Liveness::makeRoomFor(std::uint32_t object)
{
    if (object >= live_.size()) {
        live_.resize(object + 1);
        cut_.resize(object + 1);
    }
}

void Liveness::reach(ObjectView::Numbers objects)
{
    for (const std::uint32_t object : objects) {
        if (index_ == nullptr) {
            makeRoomFor(object); // only an index knows the highest one
        }
        reach(object);
    }
}

void Liveness::reach(std::uint32_t object)
{
    if (object >= live_.size() || live_[object]) {
        return;
    }
    if (cut_[object]) {
        reachedCutPage_ = static_cast<int>(object);
    }
    const auto change = document_.changes().kind(static_cast<int>(object));
    const bool there = change ? change != Changes::Kind::Removed
                              : object != 0 && (index_ == nullptr || index_->contains(object));
    if (there) {
        live_[object] = true;
        pending_.push_back(object);
    }
}

Outcome Liveness::nothingLeadsToCutPages()
{
    if (reachedCutPage_ == 0) {
        return {};
    }
    return fail(ErrorCode::FeatureUnsupported, document_.name() + ": not saved, since " +
                                                   pathTo(document_, reachedCutPage_) +
                                                   " still leads to a removed page");
}

} // namespace karvel::saving
