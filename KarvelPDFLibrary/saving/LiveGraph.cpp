#include "KarvelPDFLibrary/saving/LiveGraph.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"
#include "KarvelPDFLibrary/objects/References.h"

#include <algorithm>

namespace karvel::saving {

namespace {

/// Tells a page's references apart by the entries under which they stand.
class PageReferences final : public index::ScanSink {
public:
    void reference(std::uint32_t object, std::uint32_t /*generation*/) override
    {
        if (entry_ != Entry::Parent) {
            (entry_ == Entry::Thumbnail ? thumbnail : others).push_back(object);
        }
    }
    void beforeEntry(std::string_view key) override
    {
        entry_ =
            key == "Parent" ? Entry::Parent : (key == "Thumb" ? Entry::Thumbnail : Entry::Other);
    }
    void afterEntry(std::string_view, std::string_view) override { entry_ = Entry::Other; }

    std::vector<std::uint32_t> others;
    std::vector<std::uint32_t> thumbnail;

private:
    enum class Entry { Other, Parent, Thumbnail };
    Entry entry_ = Entry::Other;
};

bool saysNull(std::string_view value)
{
    return value.substr(0, 4) == "null";
}

} // namespace

LiveGraph::LiveGraph(Document& document, const Liveness& live)
    : document_(document), index_(*document.index()), objects_(document.objects()), live_(live),
      isNull_(live.size()), isPage_(live.size())
{
    findNulls();
    findPages();
    readChanged();
    readPages();
}

void LiveGraph::findNulls()
{
    const auto look = [&](std::uint32_t object) {
        const auto number = static_cast<int>(object);
        const index::IndexedObject* entry =
            live_.isLive(object) ? objects_.unchanged(number) : nullptr;
        if (entry != nullptr && entry->kind == index::Kind::Other && entry->flags == 0 &&
            entry->referenceCount == 0) {
            isNull_[object] = saysNull(objects_.text(number));
        }
    };
    std::for_each(index_.fileOrder().begin(), index_.fileOrder().end(), look);
    for (const index::ObjectStreamMembers& stream : index_.objectStreams()) {
        std::for_each(stream.members.begin(), stream.members.end(), look);
    }
}

void LiveGraph::findPages()
{
    for (std::uint32_t object = 1; object < index_.size(); ++object) {
        isPage_[object] = index_.object(object).kind == index::Kind::Page;
    }
}

void LiveGraph::readChanged()
{
    for (const int number : document_.changes().numbers()) {
        const auto object = static_cast<std::uint32_t>(number);
        if (!live_.isLive(object)) {
            continue;
        }
        const ObjectView::Numbers references = objects_.references(number);
        changed_[object].assign(references.begin(), references.end());
        if (objects_.changedText(number) == nullptr) {
            QPDFObjectHandle value = objects_.object(number);
            isNull_[object] = value.isNull();
            isPage_[object] = value.isDictionaryOfType("/Page");
        }
    }
    for (int page = 1; page <= document_.pageCount(); ++page) {
        isPage_[static_cast<std::size_t>(document_.order().at(page).object)] = true;
    }
}

void LiveGraph::readPages()
{
    const auto count = static_cast<std::size_t>(document_.pageCount());
    parts_.reserve(2 * count + 1);
    parts_.push_back(0);
    for (int page = 1; page <= document_.pageCount(); ++page) {
        const int number = document_.order().at(page).object;
        PageReferences references;
        if (const std::string_view text = objects_.text(number); !text.empty()) {
            index::ValueScanner(text, references).scan(0);
        } else {
            for (const auto& [key, value] : objects_.object(number).getDictAsMap()) {
                references.beforeEntry(key.substr(1));
                for (const std::uint32_t target : referencesInEntry(value)) {
                    references.reference(target, 0);
                }
            }
        }
        for (const auto* found : {&references.others, &references.thumbnail}) {
            pageTargets_.insert(pageTargets_.end(), found->begin(), found->end());
            parts_.push_back(pageTargets_.size());
        }
    }
}

LiveGraph::Objects LiveGraph::of(std::uint32_t object) const
{
    if (const auto found = changed_.find(object); found != changed_.end()) {
        return {found->second.data(), found->second.size()};
    }
    if (!index_.contains(object)) {
        return {};
    }
    const index::IndexedObject& entry = index_.object(object);
    return {index_.references().data() + entry.firstReference, entry.referenceCount};
}

std::vector<std::uint32_t> referencesInEntry(QPDFObjectHandle value)
{
    if (value.isIndirect()) {
        return {static_cast<std::uint32_t>(value.getObjectID())};
    }
    std::vector<std::uint32_t> found;
    forEachReference(value, [&](const QPDFObjectHandle& reference) {
        found.push_back(static_cast<std::uint32_t>(reference.getObjectID()));
    });
    return found;
}

} // namespace karvel::saving
