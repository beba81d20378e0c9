#include "KarvelPDFLibrary/saving/HintTables.h"

#include <algorithm>

namespace karvel::saving {

namespace {

class BitWriter {
public:
    explicit BitWriter(std::string& out) : out_(out) {}

    /// Writes the lowest bits of a value, the highest of them first.
    void put(std::uint64_t value, int bits)
    {
        for (int bit = bits; bit-- > 0;) {
            byte_ = static_cast<unsigned>(byte_ << 1U) | static_cast<unsigned>((value >> bit) & 1U);
            if (++filled_ == 8) {
                out_ += static_cast<char>(byte_);
                byte_ = 0;
                filled_ = 0;
            }
        }
    }

    /// Rows of tables begin at bytes.
    void endRow()
    {
        if (filled_ != 0) {
            put(0, 8 - filled_);
        }
    }

private:
    std::string& out_;
    unsigned byte_ = 0;
    int filled_ = 0;
};

int bitsFor(std::uint64_t value)
{
    int bits = 0;
    for (; value != 0; value >>= 1U) {
        ++bits;
    }
    return bits;
}

/// The least of some values and how many bits the others need above it.
struct Range {
    std::uint64_t least = 0;
    int bits = 0;
};

template <class Items, class Value>
Range rangeOf(const Items& items, Value value)
{
    if (items.empty()) {
        return {};
    }
    std::uint64_t least = UINT64_MAX;
    std::uint64_t most = 0;
    for (const auto& item : items) {
        least = std::min<std::uint64_t>(least, value(item));
        most = std::max<std::uint64_t>(most, value(item));
    }
    return {least, bitsFor(most - least)};
}

template <class Items, class Value>
void putRow(BitWriter& out, const Items& items, Range range, Value value)
{
    for (const auto& item : items) {
        out.put(value(item) - range.least, range.bits);
    }
    out.endRow();
}

/// Tables F.3 and F.4. As the implementations that readers were made for have it, a page's content
/// stream begins where the page begins and is as long as the page.
void putPages(BitWriter& out, const Hints& hints)
{
    const auto objects = [](const Hints::Page& page) { return page.objects; };
    const auto length = [](const Hints::Page& page) { return page.length; };
    const auto shared = [](const Hints::Page& page) { return page.shared; };
    const Range objectRange = rangeOf(hints.pages, objects);
    const Range lengthRange = rangeOf(hints.pages, length);
    std::uint64_t mostShared = 0;
    for (const Hints::Page& page : hints.pages) {
        mostShared = std::max<std::uint64_t>(mostShared, page.shared);
    }
    const Range countRange = {0, bitsFor(mostShared)};
    const Range identifierRange = {0, bitsFor(hints.sharedLengths.size())};
    out.put(objectRange.least, 32);
    out.put(hints.firstPageOffset, 32);
    out.put(static_cast<std::uint64_t>(objectRange.bits), 16);
    out.put(lengthRange.least, 32);
    out.put(static_cast<std::uint64_t>(lengthRange.bits), 16);
    out.put(0, 32); // least offset of a content stream
    out.put(0, 16);
    out.put(lengthRange.least, 32);
    out.put(static_cast<std::uint64_t>(lengthRange.bits), 16);
    out.put(static_cast<std::uint64_t>(countRange.bits), 16);
    out.put(static_cast<std::uint64_t>(identifierRange.bits), 16);
    out.put(0, 16); // bits of the numerators of where in a page something shared is needed
    out.put(4, 16); // their denominator

    putRow(out, hints.pages, objectRange, objects);
    putRow(out, hints.pages, lengthRange, length);
    putRow(out, hints.pages, countRange, shared);
    putRow(out, hints.sharedByPages, identifierRange,
           [](std::uint32_t position) { return position; });
    putRow(out, hints.pages, lengthRange, length);
}

/// Tables F.5 and F.6: each group is one object.
void putShared(BitWriter& out, const Hints& hints)
{
    const auto length = [](std::uint64_t bytes) { return bytes; };
    const Range range = rangeOf(hints.sharedLengths, length);
    out.put(hints.firstSharedObject, 32);
    out.put(hints.firstSharedOffset, 32);
    out.put(hints.sharedOnFirstPage, 32);
    out.put(hints.sharedLengths.size(), 32);
    out.put(0, 16); // bits of the number of objects in a group, less one
    out.put(range.least, 32);
    out.put(static_cast<std::uint64_t>(range.bits), 16);

    putRow(out, hints.sharedLengths, range, length);
    putRow(out, hints.sharedLengths, {0, 1}, [](std::uint64_t) { return 0U; }); // no signatures
}

/// Table F.8.
void putOutline(BitWriter& out, const Hints& hints)
{
    out.put(hints.outlineObject, 32);
    out.put(hints.outlineOffset, 32);
    out.put(hints.outlineCount, 32);
    out.put(hints.outlineLength, 32);
}

} // namespace

HintTables hintTables(const Hints& hints)
{
    HintTables tables;
    BitWriter out(tables.data);
    putPages(out, hints);
    tables.sharedStart = tables.data.size();
    putShared(out, hints);
    if (hints.outlineCount > 0) {
        tables.outlineStart = tables.data.size();
        putOutline(out, hints);
    }
    return tables;
}

} // namespace karvel::saving
