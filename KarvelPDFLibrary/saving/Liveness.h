#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/document/References.h"

#include <cstdint>
#include <optional>
#include <vector>

namespace karvel::saving {

/// Which objects a document still uses: everything that can be reached from the trailer, through
/// unchanged objects by the index and through changed ones by their present values. Objects that
/// were taken out are not entered.
class Liveness {
public:
    /// The document must have an index and be synchronized.
    explicit Liveness(Document& document);

    bool isLive(std::uint32_t object) const { return object < live_.size() && live_[object]; }

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
    void reach(std::uint32_t object);
    void reachFromText(const std::string& text);
    void reachFrom(const QPDFObjectHandle& value);

    Document& document_;
    std::vector<bool> live_;
    std::vector<std::int8_t> changes_;
    std::vector<std::uint32_t> pending_;
};

} // namespace karvel::saving
