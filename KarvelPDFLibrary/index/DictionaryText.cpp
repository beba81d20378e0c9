#include "KarvelPDFLibrary/index/DictionaryText.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

namespace karvel::index {

std::optional<DictionaryText> DictionaryText::read(std::string_view from, ReadingDoubts* doubts)
{
    class Places final : public ScanSink {
    public:
        explicit Places(std::vector<Place>& places) : places_(places) {}
        void reference(std::uint32_t, std::uint32_t) override {}
        void beforeEntry(std::string_view) override {}
        void afterEntry(std::string_view key, std::string_view value) override
        {
            hasTwins = hasTwins || std::any_of(places_.begin(), places_.end(),
                                               [&](auto& place) { return place.key == key; });
            places_.push_back({std::string(key), value});
        }
        bool hasTwins = false;

    private:
        std::vector<Place>& places_;
    };
    DictionaryText dictionary;
    Places places(dictionary.places_);
    ValueScanner scanner(from, places, doubts);
    if (scanner.scan(0) != ScanResult::Complete || !scanner.isDictionary() || places.hasTwins) {
        return std::nullopt;
    }
    dictionary.text_ = from.substr(0, scanner.position());
    return dictionary;
}

std::optional<DictionaryText> DictionaryText::read(std::string_view from)
{
    return read(from, nullptr);
}

std::optional<DictionaryText> DictionaryText::readPlainly(std::string_view from)
{
    ReadingDoubts doubts;
    auto dictionary = read(from, &doubts);
    return doubts.any() ? std::nullopt : std::move(dictionary);
}

std::string_view DictionaryText::value(std::string_view key) const
{
    for (const Place& place : places_) {
        if (place.key == key) {
            return place.value;
        }
    }
    return {};
}

std::string DictionaryText::with(const std::vector<Entry>& changes) const
{
    std::size_t done = skipSpace(text_, 0) + 2; // past "<<"
    std::size_t endOfLast = done;
    std::string text(text_.substr(0, done));
    for (const Entry& change : changes) {
        if (value(change.key).data() == nullptr && !change.value.empty()) {
            text.append(" /").append(change.key).append(" ").append(change.value);
        }
    }
    for (const Place& place : places_) {
        const auto at = static_cast<std::size_t>(place.value.data() - text_.data());
        const std::size_t end = at + place.value.size();
        for (const Entry& change : changes) {
            if (place.key != change.key) {
                continue;
            }
            if (change.value.empty()) {
                text.append(text_, done, endOfLast - done);
            } else {
                text.append(text_, done, at - done).append(" ").append(change.value);
            }
            done = end;
        }
        endOfLast = end;
    }
    return text.append(text_.substr(done));
}

} // namespace karvel::index
