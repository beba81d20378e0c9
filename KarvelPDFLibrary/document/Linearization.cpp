#include "KarvelPDFLibrary/document/Linearization.h"

#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <string_view>

namespace karvel {

namespace {

/// Whether the first object is plainly none that says so. libqpdf takes the first dictionary with a
/// number in the first 1024 bytes.
bool beginsWithOther(const index::ReferenceIndex& index, io::ByteSource& source)
{
    constexpr std::uint64_t lastStart = 1000;
    constexpr std::uint64_t longest = 64 * 1024;
    if (index.fileOrder().empty()) {
        return false;
    }
    const index::IndexedObject& first = index.object(index.fileOrder().front());
    index::FileText file(source);
    const bool isAtHand = (first.flags & index::IsDictionary) != 0 && first.start > 0 &&
                          first.start <= lastStart && first.end <= longest &&
                          file.open(0, first.end) && file.view().size() >= first.end;
    if (!isAtHand) {
        return false;
    }
    const std::string_view text = file.view().substr(0, first.end);
    const std::string_view object = text.substr(first.start);
    return index::isWhiteSpace(text[first.start - 1]) &&
           text.substr(0, first.start).find("obj") == std::string_view::npos &&
           object.find("Linearized") == std::string_view::npos &&
           object.find('#') == std::string_view::npos;
}

} // namespace

bool isLinearized(Document& document)
{
    const bool isOther =
        document.roots() != nullptr && beginsWithOther(*document.index(), *document.source());
    return !isOther && document.file().isLinearized();
}

} // namespace karvel
