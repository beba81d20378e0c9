#include "KarvelPDFLibrary/document/IndexDoubts.h"

#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ObjectHeader.h"

#include <algorithm>
#include <string_view>

namespace karvel {

namespace {

using index::Doubt;

/// What libqpdf says where it lost nothing.
bool isHarmless(const std::string& warning)
{
    static constexpr std::string_view beginnings[] = {"expected endstream",
                                                      "stream dictionary lacks /Length key",
                                                      "/Length key in stream dictionary is not an",
                                                      "attempting to recover stream length",
                                                      "recovered stream length: ",
                                                      "object has offset 0",
                                                      "dictionary has duplicated key ",
                                                      "name with stray # "};
    return std::any_of(std::begin(beginnings), std::end(beginnings), [&](std::string_view text) {
        return warning.compare(0, text.size(), text) == 0;
    });
}

/// Whether the word is there, and ends there; moves behind it and the white space that follows.
bool passWord(index::FileText& text, std::size_t& at, std::string_view word)
{
    text.require(at + 64);
    at = index::skipSpace(text.view(), at);
    if (!text.require(at + word.size() + 1) || text.view().substr(at, word.size()) != word) {
        return false;
    }
    at += word.size();
    const char next = text.view()[at];
    return index::isWhiteSpace(next) || index::isDelimiter(next);
}

class Asking {
public:
    Asking(Document& document, const index::ReferenceIndex& index)
        : document_(document), index_(index), text_(*document.source())
    {
    }

    bool isSettled(const Doubt& doubt)
    {
        const std::size_t before = document_.warnings().size();
        QPDFObjectHandle object =
            document_.file().getObject(static_cast<int>(doubt.object), doubt.generation);
        object.getTypeCode(); // reads it
        const Warnings& warnings = document_.warnings();
        return std::all_of(warnings.begin() + static_cast<std::ptrdiff_t>(before), warnings.end(),
                           isHarmless) &&
               agrees(doubt, object);
    }

    /// When all is settled. Streams get the length that they have.
    void takeFromLibqpdf()
    {
        for (const QPDFObjectHandle& object : readOtherwise_) {
            QPDFObjectHandle changed = document_.changes().edit(object);
            if (changed.isStream()) {
                const auto length = static_cast<long long>(changed.getRawStreamData()->getSize());
                changed.getDict().replaceKey("/Length", QPDFObjectHandle::newInteger(length));
            }
        }
    }

private:
    bool agrees(const Doubt& doubt, QPDFObjectHandle object)
    {
        switch (doubt.kind) {
        case Doubt::Kind::Nowhere:
            return object.isNull();
        case Doubt::Kind::Place: {
            const qpdf_offset_t offset = object.getParsedOffset();
            return offset > static_cast<qpdf_offset_t>(doubt.start) &&
                   offset < static_cast<qpdf_offset_t>(doubt.end);
        }
        case Doubt::Kind::Length:
            if (!endsBefore(doubt, object)) {
                return false;
            }
            break;
        case Doubt::Kind::Reading:
            if (!isOfTheKind(doubt, object)) {
                return false;
            }
            break;
        }
        readOtherwise_.push_back(object);
        return true;
    }

    /// Whether the data end at "endstream", which ends the object, before the next one begins.
    bool endsBefore(const Doubt& doubt, QPDFObjectHandle object)
    {
        if (!object.isStream() ||
            object.getParsedOffset() != static_cast<qpdf_offset_t>(doubt.start)) {
            return false;
        }
        const std::uint64_t length = object.getRawStreamData()->getSize();
        std::size_t at = 0;
        return length > 0 && text_.open(doubt.start + length, 64) &&
               passWord(text_, at, "endstream") && passWord(text_, at, "endobj") &&
               text_.offset() + at <= doubt.end;
    }

    bool isOfTheKind(const Doubt& doubt, QPDFObjectHandle object) const
    {
        const int flags = index_.object(doubt.object).flags;
        const bool isStream = (flags & index::IsStream) != 0;
        return object.isStream() == isStream &&
               (isStream || object.isDictionary() == ((flags & index::IsDictionary) != 0));
    }

    Document& document_;
    const index::ReferenceIndex& index_;
    index::FileText text_;
    std::vector<QPDFObjectHandle> readOtherwise_;
};

} // namespace

std::string settleIndexDoubts(Document& document, const index::ReferenceIndex& index)
{
    Asking asking(document, index);
    for (const Doubt& doubt : index.doubts()) {
        if (!asking.isSettled(doubt)) {
            return "object " + std::to_string(doubt.object) + ": is damaged in another way";
        }
    }
    asking.takeFromLibqpdf();
    return {};
}

bool settleWrongOffsets(Document& document)
{
    const auto isRebuilt = [&document] {
        document.warnings();
        return document.wasReconstructed();
    };
    if (isRebuilt()) {
        return false; // nobody knows what the table was before
    }
    const index::CrossReferenceTable table = document.file().getXRefTable();
    const std::vector<QPDFObjGen> misplaced = index::misplacedObjects(table, *document.source());
    for (const QPDFObjGen& id : misplaced) {
        document.file().getObject(id).getTypeCode(); // the first that libqpdf doesn't find suffices
        if (isRebuilt()) {
            return index::agreesButFor(misplaced, table, document.file().getXRefTable());
        }
    }
    return true;
}

} // namespace karvel
