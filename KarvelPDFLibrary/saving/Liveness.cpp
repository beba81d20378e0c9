#include "KarvelPDFLibrary/saving/Liveness.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

namespace karvel::saving {

Liveness::Liveness(Document& document) : document_(document)
{
    const index::ReferenceIndex& index = *document.index();
    std::uint32_t size = index.size();
    for (const auto& [number, kind] : document.changes().objects()) {
        size = std::max(size, static_cast<std::uint32_t>(number) + 1);
    }
    live_.resize(size);
    changes_.resize(size, -1);
    for (const auto& [number, kind] : document.changes().objects()) {
        changes_[static_cast<std::size_t>(number)] = static_cast<std::int8_t>(kind);
    }

    reachFrom(document.file().getTrailer());
    while (!pending_.empty()) {
        const std::uint32_t number = pending_.back();
        pending_.pop_back();
        if (const std::string* text = document.changes().text(static_cast<int>(number))) {
            reachFromText(*text);
            continue;
        }
        if (changes_[number] >= 0) {
            const int generation = index.contains(number) ? index.object(number).generation : 0;
            reachFrom(document.file().getObject(static_cast<int>(number), generation));
            continue;
        }
        const index::IndexedObject& object = index.object(number);
        const std::uint32_t* references = index.references().data() + object.firstReference;
        std::for_each(references, references + object.referenceCount,
                      [this](std::uint32_t target) { reach(target); });
    }
}

void Liveness::reach(std::uint32_t object)
{
    if (object >= live_.size() || live_[object]) {
        return;
    }
    const std::int8_t change = changes_[object];
    const bool there = change < 0 ? document_.index()->contains(object)
                                  : static_cast<Changes::Kind>(change) != Changes::Kind::Removed;
    if (there) {
        live_[object] = true;
        pending_.push_back(object);
    }
}

void Liveness::reachFromText(const std::string& text)
{
    class Collector final : public index::ScanSink {
    public:
        explicit Collector(std::vector<std::uint32_t>& found) : found_(found) {}
        void reference(std::uint32_t object, std::uint32_t) override { found_.push_back(object); }
        void beforeEntry(std::string_view) override {}
        void afterEntry(std::string_view, std::string_view) override {}

    private:
        std::vector<std::uint32_t>& found_;
    };
    std::vector<std::uint32_t> found;
    Collector collector(found);
    const std::string ended = text + " endobj ";
    index::ValueScanner(ended, collector).scan(0);
    for (const std::uint32_t object : found) {
        reach(object);
    }
}

void Liveness::reachFrom(const QPDFObjectHandle& value)
{
    forEachReference(value, [this](const QPDFObjectHandle& reference) {
        const auto number = static_cast<std::uint32_t>(reference.getObjectID());
        const index::ReferenceIndex& index = *document_.index();
        const bool otherGeneration =
            index.contains(number) && index.object(number).generation != reference.getGeneration();
        if (!otherGeneration) {
            reach(number);
        }
    });
}

} // namespace karvel::saving
