#include "KarvelPDFLibrary/deletion/Referrers.h"

#include "KarvelPDFLibrary/base/LargeVectors.h"

#include <algorithm>

namespace karvel::deletion {

Referrers::Referrers(Document& document, ObjectView& view)
{
    listObjects(document, view);
    const int highest = objects_.empty() ? 0 : *std::max_element(objects_.begin(), objects_.end());
    resizeLarge(start_, static_cast<std::size_t>(highest) + 2);
    // Counted first and put in their places then, so that they take no more room than they need.
    const auto forEachTarget = [&](int object, const auto& found) {
        for (const std::uint32_t target : view.references(object)) {
            if (target <= static_cast<std::uint32_t>(highest)) {
                found(target);
            }
        }
    };
    for (const int object : objects_) {
        forEachTarget(object, [this](std::uint32_t target) { ++start_[target + 1]; });
    }
    for (std::size_t i = 1; i < start_.size(); ++i) {
        start_[i] += start_[i - 1];
    }
    resizeLarge(referrers_, start_.back());
    std::vector<std::uint32_t> next;
    reserveLarge(next, start_.size() - 1);
    next.assign(start_.begin(), start_.end() - 1);
    for (const int object : objects_) {
        forEachTarget(object, [&](std::uint32_t target) {
            referrers_[next[target]++] = static_cast<std::uint32_t>(object);
        });
    }
}

void Referrers::listObjects(Document& document, ObjectView& view)
{
    if (const index::ReferenceIndex* index = document.index()) {
        reserveLarge(objects_, index->size());
        for (std::uint32_t number = 1; number < index->size(); ++number) {
            if (index->contains(number)) {
                objects_.push_back(static_cast<int>(number));
            }
        }
        for (const int number : document.changes().numbers()) {
            if (!index->contains(static_cast<std::uint32_t>(number))) {
                objects_.push_back(number);
            }
        }
    } else {
        for (const QPDFObjectHandle& object : document.file().getAllObjects()) {
            view.note(object.getObjGen());
            objects_.push_back(object.getObjectID());
        }
    }
}

ObjectView::Numbers Referrers::of(int object) const
{
    const auto number = static_cast<std::size_t>(object);
    if (object < 0 || number + 1 >= start_.size()) {
        return {};
    }
    return {referrers_.data() + start_[number], referrers_.data() + start_[number + 1]};
}

} // namespace karvel::deletion
