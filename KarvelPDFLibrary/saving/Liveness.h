#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace karvel::saving {

/// Which objects a document still uses: everything that can be reached from the trailer, through
/// unchanged objects by the index, where the document has one that holds, and through all others by
/// their present values. Objects that were taken out are not entered.
class Liveness {
public:
    /// The document must be synchronized.
    explicit Liveness(Document& document);

    bool isLive(std::uint32_t object) const { return object < live_.size() && live_[object]; }

    /// Fails when the walk came upon a page that was cut: then something still leads to it that
    /// deletion did not put right. The sentence names the path.
    Status nothingLeadsToCutPages();

    /// How an object differs from the file: nothing for an unchanged one.
    std::optional<Changes::Kind> change(std::uint32_t object) const
    {
        if (object >= changes_.size() || changes_[object] < 0) {
            return std::nullopt;
        }
        return static_cast<Changes::Kind>(changes_[object]);
    }

    /// One more than the highest object number in use, unchanged, changed or added.
    std::uint32_t size() const { return static_cast<std::uint32_t>(live_.size()); }

private:
    void makeRoomFor(std::uint32_t object);
    void enter(std::uint32_t object);
    void reach(std::uint32_t object);
    void reachFrom(const QPDFObjectHandle& value);

    Document& document_;
    const index::ReferenceIndex* index_; // null when it does not hold
    std::vector<bool> live_;
    std::vector<bool> cut_;
    std::vector<std::int8_t> changes_;
    std::vector<std::uint32_t> pending_;
    std::vector<int> generations_; // without an index: of what was reached
    int reachedCutPage_ = 0;
};

} // namespace karvel::saving
