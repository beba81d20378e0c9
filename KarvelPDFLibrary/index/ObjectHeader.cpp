#include "KarvelPDFLibrary/index/ObjectHeader.h"

#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

namespace karvel::index {

std::optional<ObjectHeader> readObjectHeader(std::string_view text, std::uint32_t number,
                                             std::uint32_t generation)
{
    std::size_t at = 0;
    while (at < text.size() && isWhiteSpace(text[at])) {
        ++at;
    }
    const std::size_t start = at;
    std::uint64_t writtenNumber = 0;
    std::uint64_t writtenGeneration = 0;
    const bool numbered = readUnsigned(text, at, writtenNumber) && (at = skipSpace(text, at)) > 0 &&
                          readUnsigned(text, at, writtenGeneration);
    at = skipSpace(text, at);
    if (!numbered || text.substr(std::min(at, text.size()), 3) != "obj" ||
        writtenNumber != number || writtenGeneration != generation) {
        return std::nullopt;
    }
    return ObjectHeader{start, at + 3};
}

std::vector<QPDFObjGen> misplacedObjects(const CrossReferenceTable& table, io::ByteSource& source)
{
    constexpr std::size_t longestHeader = 256;
    FileText text(source);
    std::vector<QPDFObjGen> misplaced;
    for (const auto& [id, entry] : table) {
        if (entry.getType() != 1 || entry.getOffset() == 0) {
            continue;
        }
        const bool isInside =
            text.open(static_cast<std::uint64_t>(entry.getOffset()), longestHeader);
        if (!isInside || !readObjectHeader(text.view(), static_cast<std::uint32_t>(id.getObj()),
                                           static_cast<std::uint32_t>(id.getGen()))) {
            misplaced.push_back(id);
        }
    }
    return misplaced;
}

bool agreesButFor(const std::vector<QPDFObjGen>& misplaced, const CrossReferenceTable& before,
                  const CrossReferenceTable& rebuilt)
{
    return std::all_of(before.begin(), before.end(), [&](const auto& known) {
        const auto& [id, entry] = known;
        const bool isInFile = entry.getType() == 1;
        if ((isInFile && entry.getOffset() == 0) ||
            std::binary_search(misplaced.begin(), misplaced.end(), id)) {
            return true;
        }
        const auto found = rebuilt.find(id);
        return found != rebuilt.end() && found->second.getType() == entry.getType() &&
               (isInFile ? found->second.getOffset() == entry.getOffset()
                         : found->second.getObjStreamNumber() == entry.getObjStreamNumber());
    });
}

} // namespace karvel::index
