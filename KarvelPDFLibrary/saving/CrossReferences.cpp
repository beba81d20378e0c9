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

/// The number of the next free entry after `number`; 0 ends the list.
std::vector<std::uint32_t> freeList(const std::vector<CrossReference>& entries)
{
    std::vector<std::uint32_t> next(entries.size(), 0);
    std::uint32_t following = 0;
    for (std::size_t number = entries.size(); number-- > 0;) {
        if (entries[number].kind == CrossReference::Kind::Free) {
            next[number] = following;
            following = static_cast<std::uint32_t>(number);
        }
    }
    return next;
}

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

std::string crossReferenceTable(const std::vector<CrossReference>& entries)
{
    const std::vector<std::uint32_t> nextFree = freeList(entries);
    std::string table = "xref\n0 " + std::to_string(entries.size()) + "\n";
    table.reserve(table.size() + 20 * entries.size());
    for (std::size_t number = 0; number < entries.size(); ++number) {
        const CrossReference& entry = entries[number];
        if (entry.kind == CrossReference::Kind::InFile) {
            appendPadded(table, entry.first, 10);
            table += ' ';
            appendPadded(table, entry.second, 5);
            table += " n \n";
        } else {
            appendPadded(table, nextFree[number], 10);
            // A number that is free must not be used again under its old generation.
            table += number == 0 ? " 65535 f \n" : " 00001 f \n";
        }
    }
    return table;
}

CrossReferenceStream crossReferenceStream(const std::vector<CrossReference>& entries)
{
    const std::vector<std::uint32_t> nextFree = freeList(entries);
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
        const std::uint64_t first = isFree ? nextFree[number] : entry.first;
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
