#include "KarvelPDFLibrary/deletion/Referrers.h"

#include "KarvelPDFLibrary/objects/References.h"

#include <algorithm>
#include <functional>

namespace karvel::deletion {

namespace {

/// Calls `found` with the number of every object that an object refers to.
void referencesOf(Document& document, QPDFObjGen id,
                  const std::function<void(std::uint32_t)>& found)
{
    const index::ReferenceIndex* index = document.index();
    const auto number = static_cast<std::uint32_t>(id.getObj());
    if (index != nullptr && index->contains(number) &&
        document.changes().objects().count(id.getObj()) == 0) {
        const index::IndexedObject& object = index->object(number);
        const std::uint32_t* references = index->references().data() + object.firstReference;
        std::for_each(references, references + object.referenceCount, found);
        return;
    }
    forEachReference(document.file().getObject(id), [&](const QPDFObjectHandle& reference) {
        found(static_cast<std::uint32_t>(reference.getObjectID()));
    });
}

} // namespace

Referrers::Referrers(Document& document)
{
    listObjects(document);
    // Counted first and put in their places then, so that they take no more room than they need.
    start_.resize(generations_.size() + 1, 0);
    for (const QPDFObjGen& id : objects_) {
        referencesOf(document, id, [this](std::uint32_t target) {
            if (target < generations_.size()) {
                ++start_[target + 1];
            }
        });
    }
    for (std::size_t i = 1; i < start_.size(); ++i) {
        start_[i] += start_[i - 1];
    }
    referrers_.resize(start_.back());
    std::vector<std::uint32_t> next(start_.begin(), start_.end() - 1);
    for (const QPDFObjGen& id : objects_) {
        referencesOf(document, id, [&](std::uint32_t target) {
            if (target < generations_.size()) {
                referrers_[next[target]++] = static_cast<std::uint32_t>(id.getObj());
            }
        });
    }
}

void Referrers::listObjects(Document& document)
{
    if (const index::ReferenceIndex* index = document.index()) {
        generations_.resize(index->size(), 0);
        for (std::uint32_t number = 1; number < index->size(); ++number) {
            if (index->contains(number)) {
                generations_[number] = index->object(number).generation;
                objects_.emplace_back(static_cast<int>(number), generations_[number]);
            }
        }
        for (const auto& [number, kind] : document.changes().objects()) {
            if (!index->contains(static_cast<std::uint32_t>(number)) &&
                kind != Changes::Kind::Removed) {
                objects_.emplace_back(number, 0);
            }
        }
    } else {
        for (const QPDFObjectHandle& object : document.file().getAllObjects()) {
            objects_.push_back(object.getObjGen());
        }
    }
    for (const QPDFObjGen& id : objects_) {
        const auto number = static_cast<std::size_t>(id.getObj());
        if (number >= generations_.size()) {
            generations_.resize(number + 1, 0);
        }
        generations_[number] = static_cast<std::uint16_t>(id.getGen());
    }
}

Referrers::Range Referrers::of(int object) const
{
    const auto number = static_cast<std::size_t>(object);
    if (object < 0 || number >= generations_.size()) {
        return {nullptr, nullptr};
    }
    return {referrers_.data() + start_[number], referrers_.data() + start_[number + 1]};
}

} // namespace karvel::deletion
