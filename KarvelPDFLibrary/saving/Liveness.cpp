#include "KarvelPDFLibrary/saving/Liveness.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"
#include "KarvelPDFLibrary/objects/References.h"
#include "KarvelPDFLibrary/saving/PathTo.h"

#include <algorithm>

namespace karvel::saving {

Liveness::Liveness(Document& document) : document_(document), index_(document.index())
{
    const auto& changed = document.changes().objects();
    std::uint32_t highest = index_ != nullptr ? index_->size() - 1 : 0;
    for (const auto& [number, kind] : changed) {
        highest = std::max(highest, static_cast<std::uint32_t>(number));
    }
    makeRoomFor(highest);
    for (const auto& [number, kind] : changed) {
        changes_[static_cast<std::size_t>(number)] = static_cast<std::int8_t>(kind);
    }
    for (const std::int32_t page : document.cutPages()) {
        cut_[static_cast<std::size_t>(page)] = true;
    }
    reachFrom(document.file().getTrailer());
    while (!pending_.empty()) {
        const std::uint32_t number = pending_.back();
        pending_.pop_back();
        enter(number);
    }
}

void Liveness::makeRoomFor(std::uint32_t object)
{
    if (object >= live_.size()) {
        live_.resize(object + 1);
        cut_.resize(object + 1);
        changes_.resize(object + 1, -1);
        generations_.resize(index_ == nullptr ? object + 1 : 0);
    }
}

void Liveness::enter(std::uint32_t object)
{
    if (const std::string* text = document_.changes().text(static_cast<int>(object))) {
        for (const std::uint32_t target : index::referencesIn(*text)) {
            reach(target);
        }
    } else if (index_ == nullptr) {
        reachFrom(document_.file().getObject(static_cast<int>(object), generations_[object]));
    } else if (changes_[object] >= 0) {
        const int generation = index_->contains(object) ? index_->object(object).generation : 0;
        reachFrom(document_.file().getObject(static_cast<int>(object), generation));
    } else {
        const index::IndexedObject& entry = index_->object(object);
        const std::uint32_t* references = index_->references().data() + entry.firstReference;
        std::for_each(references, references + entry.referenceCount,
                      [this](std::uint32_t target) { reach(target); });
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
    const std::int8_t change = changes_[object];
    const bool there = change < 0 ? index_ == nullptr || index_->contains(object)
                                  : static_cast<Changes::Kind>(change) != Changes::Kind::Removed;
    if (there) {
        live_[object] = true;
        pending_.push_back(object);
    }
}

void Liveness::reachFrom(const QPDFObjectHandle& value)
{
    forEachReference(value, [this](const QPDFObjectHandle& reference) {
        const auto number = static_cast<std::uint32_t>(reference.getObjectID());
        if (index_ == nullptr) {
            makeRoomFor(number);
            generations_[number] = reference.getGeneration();
            reach(number);
            return;
        }
        const bool otherGeneration = index_->contains(number) &&
                                     index_->object(number).generation != reference.getGeneration();
        if (!otherGeneration) {
            reach(number);
        }
    });
}

Status Liveness::nothingLeadsToCutPages()
{
    if (reachedCutPage_ == 0) {
        return {};
    }
    return fail(ErrorCode::FeatureUnsupported, document_.name() + ": not saved, since " +
                                                   pathTo(document_, reachedCutPage_) +
                                                   " still leads to a removed page");
}

} // namespace karvel::saving
