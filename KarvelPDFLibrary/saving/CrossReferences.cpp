#include "KarvelPDFLibrary/saving/CrossReferences.h"

#include <algorithm>
#include <array>
#include <qpdf/Pl_Flate.hh>
#include <qpdf/Pl_String.hh>

namespace karvel::saving {

namespace {

void appendPadded(std::string& out, std::uint64_t value, int digits)
{
    std::array<char, 24> text = {};
    std::size_t at = text.size();
    for (; value > 0 || digits > 0; value /= 10, --digits) {
        text[--at] = static_cast<char>('0' + value % 10);
    }
    out.append(text.data() + at, text.size() - at);
}

int bytesFor(std::uint64_t value)
{
    int bytes = 1;
    while (bytes < 8 && (value >> (8 * bytes)) != 0) {
        ++bytes;
    }
    return bytes;
}

/// The list of free entries, gone through in ascending order.
class FreeList {
public:
    explicit FreeList(const std::vector<CrossReference>& entries) : entries_(entries) {}

    /// The next free entry after a free one; 0 ends the list.
    std::uint32_t after(std::size_t number)
    {
        if (!isFree(number)) {
            return 0;
        }
        next_ = std::max(next_, number + 1);
        while (next_ < entries_.size() && !isFree(next_)) {
            ++next_;
        }
        return next_ < entries_.size() ? static_cast<std::uint32_t>(next_) : 0;
    }

private:
    bool isFree(std::size_t number) const
    {
        return entries_[number].kind == CrossReference::Kind::Free;
    }

    const std::vector<CrossReference>& entries_;
    std::size_t next_ = 0;
};

} // namespace

std::string deflated(const std::string& data)
{
    std::string out;
    Pl_String collect("compressed", nullptr, out);
    Pl_Flate flate("compress", &collect, Pl_Flate::a_deflate);
    flate.write(reinterpret_cast<const unsigned char*>(data.data()), data.size());
    flate.finish();
    return out;
}

void putCrossReferenceTable(const std::vector<CrossReference>& entries,
                            const std::function<void(const std::string& part)>& put)
{
    constexpr std::size_t partSize = 64 * 1024;
    FreeList free(entries);
    std::string part = "xref\n0 " + std::to_string(entries.size()) + "\n";
    for (std::size_t number = 0; number < entries.size(); ++number) {
        const CrossReference& entry = entries[number];
        if (entry.kind == CrossReference::Kind::InFile) {
            appendPadded(part, entry.first, 10);
            part += ' ';
            appendPadded(part, entry.second, 5);
            part += " n \n";
        } else {
            appendPadded(part, free.after(number), 10);
            // A number that is free must not be used again under its old generation.
            part += number == 0 ? " 65535 f \n" : " 00001 f \n";
        }
        if (part.size() >= partSize) {
            put(part);
            part.clear();
        }
    }
    put(part);
}

CrossReferenceStream crossReferenceStream(const std::vector<CrossReference>& entries)
{
    FreeList free(entries);
    std::uint64_t largestFirst = entries.size();
    std::uint64_t largestSecond = 1;
    for (const CrossReference& entry : entries) {
        largestFirst = std::max(largestFirst, entry.first);
        largestSecond = std::max<std::uint64_t>(largestSecond, entry.second);
    }
    const int firstBytes = bytesFor(largestFirst);
    const int secondBytes = bytesFor(largestSecond);
    const int columns = 1 + firstBytes + secondBytes;

    // Each row as its difference to the one before (PNG's "up"), which compresses well.
    std::string rows;
    rows.reserve(entries.size() * static_cast<std::size_t>(columns + 1));
    std::string before(static_cast<std::size_t>(columns), '\0');
    std::string row;
    for (std::size_t number = 0; number < entries.size(); ++number) {
        const CrossReference& entry = entries[number];
        const bool isFree = entry.kind == CrossReference::Kind::Free;
        const std::uint64_t first = isFree ? free.after(number) : entry.first;
        const std::uint64_t second = isFree ? (number == 0 ? 0 : 1) : entry.second;
        row.assign(1, static_cast<char>(entry.kind));
        for (int i = firstBytes; i-- > 0;) {
            row += static_cast<char>(first >> (8 * i));
        }
        for (int i = secondBytes; i-- > 0;) {
            row += static_cast<char>(second >> (8 * i));
        }
        rows += '\2';
        for (std::size_t i = 0; i < row.size(); ++i) {
            rows += static_cast<char>(row[i] - before[i]);
        }
        before = row;
    }
    return {"/W [1 " + std::to_string(firstBytes) + " " + std::to_string(secondBytes) +
                "] /Filter /FlateDecode /DecodeParms << /Predictor 12 /Columns " +
                std::to_string(columns) + " >>",
            deflated(rows)};
}

} // namespace karvel::saving
