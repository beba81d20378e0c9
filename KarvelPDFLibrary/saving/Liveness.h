#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <vector>

namespace karvel::saving {

/// Which objects a document still uses: everything that can be reached from the trailer through the
/// objects as they are now. Objects that were taken out are not entered.
class Liveness {
public:
    /// The document must be synchronized.
    explicit Liveness(Document& document);

    bool isLive(std::uint32_t object) const { return object < live_.size() && live_[object]; }

    /// Fails when the walk came upon a page that was cut: then something still leads to it that
    /// deletion did not put right. The sentence names the path.
    Outcome nothingLeadsToCutPages();

    /// One more than the highest object number in use, unchanged, changed or added.
    std::uint32_t size() const { return static_cast<std::uint32_t>(live_.size()); }

private:
    void makeRoomFor(std::uint32_t object);
    void reach(ObjectView::Numbers objects);
    void reach(std::uint32_t object);

    Document& document_;
    const index::ReferenceIndex* index_; // null when it does not hold
    ObjectView objects_;
    std::vector<bool> live_;
    std::vector<bool> cut_;
    std::vector<std::uint32_t> pending_;
    int reachedCutPage_ = 0;
};

} // namespace karvel::saving
