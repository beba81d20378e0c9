#include "KarvelPDFLibrary/saving/LinearizedWriter.h"

#include "KarvelPDFLibrary/page_tree/PageTree.h"
#include "KarvelPDFLibrary/saving/CrossReferences.h"
#include "KarvelPDFLibrary/saving/HintTables.h"
#include "KarvelPDFLibrary/saving/LinearOrder.h"
#include "KarvelPDFLibrary/saving/ObjectText.h"
#include "KarvelPDFLibrary/saving/RenumberedObjects.h"
#include "KarvelPDFLibrary/saving/Trailer.h"
#include "KarvelPDFLibrary/saving/VersionNeeds.h"

#include <algorithm>
#include <map>
#include <numeric>
#include <stdexcept>
#include <string_view>
#include <unordered_map>

namespace karvel::saving {

namespace {

using Objects = std::vector<std::uint32_t>;

/// Texts of objects up to this much are kept from measuring to writing; others are made twice.
constexpr std::uint64_t mostKept = 64 * 1024 * 1024;

/// A number with as many places as offsets can have, so that a text's length is known before it.
std::string padded(std::uint64_t number)
{
    std::string text = std::to_string(number);
    text.resize(10, ' ');
    return text;
}

class Writer {
public:
    Writer(Document& document, const Liveness& live, io::ByteSink& sink, const SaveOptions& options)
        : document_(document), sink_(sink),
          withStreams_(document.index()->usesCrossReferenceStream()),
          order_(linearOrder(document, LiveGraph(document, live), withStreams_)),
          objects_(document, order_), identifier_(options.deterministicIdentifier),
          lengths_(order_.size), references_(order_.size)
    {
    }

    void run()
    {
        for (const Objects* part : {&order_.openDocument, &order_.firstPage, &order_.otherPages,
                                    &order_.shared, &order_.rest}) {
            measure(*part);
        }
        identifierEntry_ = identifier_.entry(document_);
        trailerEntries_ = trailerEntries(document_, &order_.numbers);
        layOut();
        putBeginning();
        putPart(order_.openDocument);
        put(hintStream_);
        for (const Objects* part :
             {&order_.firstPage, &order_.otherPages, &order_.shared, &order_.rest}) {
            putPart(*part);
        }
        putEnd();
    }

private:
    void measure(const Objects& part);
    void layOut();
    std::uint64_t place(const Objects& part, std::uint64_t offset);
    std::string hintStream(std::uint64_t offset);
    Hints hints(std::uint64_t offset) const;
    std::string parameters() const;
    std::string firstReferences() const;
    std::string firstReferenceStream() const;
    void putBeginning();
    void putPart(const Objects& part);
    void putRange(const WrittenObject& written);
    void putEnd();
    std::uint64_t length(const Objects& part) const;
    std::uint64_t lengthOf(std::uint32_t object) const
    {
        return lengths_[order_.numbers.of(object)];
    }

    void put(std::string_view text)
    {
        sink_.write(text.data(), text.size());
        written_ += text.size();
    }
    void expect(std::uint64_t offset) const
    {
        if (written_ != offset) {
            throw std::logic_error("a part of the linearised file lies elsewhere than planned");
        }
    }

    Document& document_;
    io::ByteSink& sink_;
    bool withStreams_; // cross-reference streams instead of tables
    LinearOrder order_;
    RenumberedObjects objects_;
    FileIdentifier identifier_;
    std::string identifierEntry_;
    std::string trailerEntries_;
    std::vector<std::uint64_t> lengths_; // by the number in the output
    std::vector<CrossReference> references_;

    // what measuring made already of the objects that are written first
    std::string kept_;
    std::unordered_map<std::uint32_t, WrittenObject> keptRanges_; // without their texts
    std::size_t keptObjects_ = 0;                                 // that are still to be written
    std::size_t keptDone_ = 0;
    bool isFull_ = false;

    std::string header_;
    std::string hintStream_;
    std::string end_; // the main cross-reference section and what follows it
    std::uint64_t firstReferencesOffset_ = 0;
    std::uint64_t hintOffset_ = 0;
    std::uint64_t firstPageEnd_ = 0;
    std::uint64_t mainReferencesOffset_ = 0;
    std::uint64_t fileSize_ = 0;
    std::uint64_t written_ = 0;
};

void Writer::measure(const Objects& part)
{
    for (const std::uint32_t object : part) {
        const WrittenObject written = objects_.written(object);
        lengths_[order_.numbers.of(object)] = written.length();
        if (written.end > written.start) {
            identifier_.copied(written.start, written.end);
        } else {
            identifier_.written(written.text);
        }
        // All that is kept is written before the rest, in the same order.
        isFull_ = isFull_ || kept_.size() + written.text.size() > mostKept;
        if (!isFull_) {
            kept_ += written.text;
            ++keptObjects_;
            if (written.copied > 0) {
                keptRanges_[object] = {{}, written.from, written.copied, 0, 0};
            }
        }
    }
}

std::uint64_t Writer::length(const Objects& part) const
{
    return std::accumulate(
        part.begin(), part.end(), std::uint64_t{0},
        [this](std::uint64_t sum, std::uint32_t object) { return sum + lengthOf(object); });
}

/// Enters where the objects of a part lie, the first one at an offset; returns where they end.
std::uint64_t Writer::place(const Objects& part, std::uint64_t offset)
{
    for (const std::uint32_t object : part) {
        const std::uint32_t number = order_.numbers.of(object);
        references_[number] = {CrossReference::Kind::InFile, 0, offset};
        offset += lengths_[number];
        if (const PackedStream* stream = order_.stream(object)) {
            for (std::uint32_t i = 0; i < stream->members.size(); ++i) {
                references_[order_.numbers.of(stream->members[i])] = {
                    CrossReference::Kind::InObjectStream, i, number};
            }
        }
    }
    return offset;
}

/// Decides where everything lies. What is written before its place is known has a fixed length.
void Writer::layOut()
{
    header_ = "%PDF-" + versionToCopy(document_) + "\n%\xe2\xe3\xcf\xd3\n";
    references_[order_.parameters] = {CrossReference::Kind::InFile, 0, header_.size()};
    firstReferencesOffset_ = header_.size() + parameters().size();
    if (withStreams_) {
        references_[order_.firstReferences] = {CrossReference::Kind::InFile, 0,
                                               firstReferencesOffset_};
    }
    std::uint64_t offset = firstReferencesOffset_ + firstReferences().size();
    offset = place(order_.openDocument, offset);
    hintOffset_ = offset;
    hintStream_ = hintStream(offset);
    references_[order_.hints] = {CrossReference::Kind::InFile, 0, offset};
    firstPageEnd_ = offset = place(order_.firstPage, offset + hintStream_.size());
    for (const Objects* part : {&order_.otherPages, &order_.shared, &order_.rest}) {
        offset = place(*part, offset);
    }
    mainReferencesOffset_ = offset;
    if (withStreams_) {
        references_[order_.mainReferences] = {CrossReference::Kind::InFile, 0, offset};
    }
}

Hints Writer::hints(std::uint64_t offset) const
{
    Hints hints;
    hints.firstPageOffset = offset;
    auto next = order_.otherPages.begin();
    for (std::size_t page = 0; page < order_.objectsOfPage.size(); ++page) {
        const std::uint32_t count = order_.objectsOfPage[page];
        std::uint64_t bytes = page == 0 ? length(order_.firstPage) : 0;
        for (std::uint32_t i = 0; page > 0 && i < count; ++i) {
            bytes += lengthOf(*next++);
        }
        hints.pages.push_back({count, bytes, order_.sharedCounts[page]});
    }
    hints.sharedByPages = order_.sharedByPages;
    for (const Objects* part : {&order_.firstPage, &order_.shared}) {
        for (const std::uint32_t object : *part) {
            hints.sharedLengths.push_back(lengthOf(object));
        }
    }
    hints.sharedOnFirstPage = static_cast<std::uint32_t>(order_.firstPage.size());
    const std::uint64_t sharedOffset =
        offset + length(order_.firstPage) + length(order_.otherPages);
    if (!order_.shared.empty()) {
        hints.firstSharedObject = order_.numbers.of(order_.shared.front());
        hints.firstSharedOffset = sharedOffset;
    }
    if (order_.outlineCount > 0) {
        hints.outlineObject = order_.numbers.of(order_.outlineStart);
        hints.outlineCount = order_.outlineCount;
        const auto inFirst =
            std::find(order_.firstPage.begin(), order_.firstPage.end(), order_.outlineStart);
        const bool isFirst = inFirst != order_.firstPage.end();
        const Objects& part = isFirst ? order_.firstPage : order_.rest;
        const auto start = std::find(part.begin(), part.end(), order_.outlineStart);
        const Objects before(part.begin(), start);
        const Objects outline(start, start + static_cast<std::ptrdiff_t>(order_.outlineCount));
        hints.outlineOffset =
            (isFirst ? offset : sharedOffset + length(order_.shared)) + length(before);
        hints.outlineLength = length(outline);
    }
    return hints;
}

std::string Writer::hintStream(std::uint64_t offset)
{
    const HintTables tables = hintTables(hints(offset));
    std::string entries = "/S " + std::to_string(tables.sharedStart);
    if (tables.outlineStart != 0) {
        entries += " /O " + std::to_string(tables.outlineStart);
    }
    return objects_.stream(order_.hints, entries, tables.data);
}

/// Table F.1.
std::string Writer::parameters() const
{
    // In a table, the white space before the entry of object 0.
    const std::string tableStart = "xref\n0 " + std::to_string(order_.parameters);
    const std::uint64_t mainEntries =
        mainReferencesOffset_ + (withStreams_ ? 0 : tableStart.size());
    return numbered(static_cast<int>(order_.parameters), 0,
                    "<< /Linearized 1 /L " + padded(fileSize_) + " /H [ " + padded(hintOffset_) +
                        " " + padded(hintStream_.size()) + " ] /O " +
                        std::to_string(order_.numbers.of(order_.firstPage.front())) + " /E " +
                        padded(firstPageEnd_) + " /N " +
                        std::to_string(order_.objectsOfPage.size()) + " /T " + padded(mainEntries) +
                        " >>");
}

std::string Writer::firstReferences() const
{
    if (withStreams_) {
        return firstReferenceStream() + "startxref\n0\n%%EOF\n";
    }
    std::string text = "xref\n" + std::to_string(order_.parameters) + " " +
                       std::to_string(order_.size - order_.parameters) + "\n";
    for (std::uint32_t number = order_.parameters; number < order_.size; ++number) {
        const std::string offset = std::to_string(references_[number].first);
        text.append(10 - offset.size(), '0').append(offset).append(" 00000 n \n");
    }
    return text + "trailer\n<< /Size " + std::to_string(order_.size) + " /Prev " +
           padded(mainReferencesOffset_) + trailerEntries_ + " " + identifierEntry_ +
           " >>\nstartxref\n0\n%%EOF\n";
}

/// Not compressed, so that its length is known before the offsets in it.
std::string Writer::firstReferenceStream() const
{
    std::string rows;
    const auto append = [&rows](std::uint64_t value, int bytes) {
        for (int i = bytes; i-- > 0;) {
            rows += static_cast<char>(value >> (8 * i));
        }
    };
    for (std::uint32_t number = order_.parameters; number < order_.size; ++number) {
        const CrossReference& reference = references_[number];
        append(static_cast<std::uint64_t>(reference.kind), 1);
        append(reference.first, 4);
        append(reference.second, 4);
    }
    return numbered(static_cast<int>(order_.firstReferences), 0,
                    "<< /Type /XRef /Size " + std::to_string(order_.size) + " /Index [" +
                        std::to_string(order_.parameters) + " " +
                        std::to_string(order_.size - order_.parameters) + "] /W [1 4 4] /Prev " +
                        padded(mainReferencesOffset_) + trailerEntries_ + " " + identifierEntry_ +
                        " /Length " + std::to_string(rows.size()) + " >>\nstream\n" + rows +
                        "\nendstream");
}

void Writer::putBeginning()
{
    const std::vector<CrossReference> entries(references_.begin(),
                                              references_.begin() + order_.parameters);
    std::string end;
    if (withStreams_) {
        const CrossReferenceStream stream = crossReferenceStream(entries);
        end = numbered(static_cast<int>(order_.mainReferences), 0,
                       "<< /Type /XRef /Size " + std::to_string(entries.size()) + " " +
                           identifierEntry_ + " " + stream.dictionaryEntries + " /Length " +
                           std::to_string(stream.data.size()) + " >>\nstream\n" + stream.data +
                           "\nendstream");
    } else {
        putCrossReferenceTable(entries, [&end](const std::string& part) { end += part; });
        end += "trailer\n<< /Size " + std::to_string(entries.size()) + " " + identifierEntry_ +
               " >>\n";
    }
    end_ = end + "startxref\n" + std::to_string(firstReferencesOffset_) + "\n%%EOF\n";
    fileSize_ = mainReferencesOffset_ + end_.size();
    if (fileSize_ > UINT32_MAX) {
        throw std::runtime_error("the document is too large to be linearised");
    }
    put(header_);
    put(parameters());
    put(firstReferences());
    expect(references_[order_.numbers.of(order_.openDocument.front())].first);
}

void Writer::putPart(const Objects& part)
{
    for (const std::uint32_t object : part) {
        expect(references_[order_.numbers.of(object)].first);
        if (keptObjects_ == 0) {
            const WrittenObject written = objects_.written(object);
            put(written.text);
            putRange(written);
            continue;
        }
        --keptObjects_;
        const auto range = keptRanges_.find(object);
        const WrittenObject copied = range == keptRanges_.end() ? WrittenObject() : range->second;
        const auto length = static_cast<std::size_t>(lengthOf(object) - copied.length());
        put(std::string_view(kept_).substr(keptDone_, length));
        keptDone_ += length;
        putRange(copied);
    }
}

void Writer::putRange(const WrittenObject& written)
{
    if (written.copied > 0) {
        sink_.copy(*document_.source(), static_cast<std::int64_t>(written.from), written.copied);
        written_ += written.copied;
        put("\n");
    }
}

void Writer::putEnd()
{
    expect(mainReferencesOffset_);
    put(end_);
}

/// The nodes of page trees that hold attributes for the pages below.
std::vector<int> nodesWithAttributes(Document& document)
{
    std::vector<int> nodes;
    const index::ReferenceIndex& index = *document.index();
    ObjectView objects = document.objects();
    for (std::uint32_t object = 1; object < index.size(); ++object) {
        const index::IndexedObject& entry = index.object(object);
        if (entry.kind == index::Kind::PageNode && (entry.flags & index::HasInheritable) != 0) {
            nodes.push_back(static_cast<int>(object));
        }
    }
    for (const int number : document.changes().numbers()) {
        if (document.changes().kind(number) == Changes::Kind::Added) {
            nodes.push_back(number);
        }
    }
    const auto hasNone = [&](int number) {
        QPDFObjectHandle node = objects.object(number);
        return !node.isDictionaryOfType("/Pages") ||
               std::none_of(inheritableKeys.begin(), inheritableKeys.end(),
                            [&](const char* key) { return node.hasKey(key); });
    };
    nodes.erase(std::remove_if(nodes.begin(), nodes.end(), hasNone), nodes.end());
    return nodes;
}

/// Gives each page what it inherits. Dictionaries get numbers, so that pages share them.
void giveInherited(Document& document)
{
    std::map<std::pair<std::uint32_t, std::string>, QPDFObjectHandle> numbered;
    for (int page = 1; page <= document.pageCount(); ++page) {
        for (const char* key : inheritableKeys) {
            if (!document.inheritsAttribute(page, key)) {
                continue;
            }
            QPDFObjectHandle value = document.inheritedAttribute(page, key);
            if (value.isDictionary() && !value.isIndirect()) {
                QPDFObjectHandle& known = numbered[{document.order().at(page).inherited, key}];
                if (!known.isInitialized()) {
                    known = document.changes().add(value);
                }
                value = known;
            }
            document.editPage(page).replaceKey(key, value);
        }
    }
}

} // namespace

void prepareForLinearizing(Document& document)
{
    // Readers find the pages for the hint tables by their type.
    for (int page = 1; page <= document.pageCount(); ++page) {
        const auto object = static_cast<std::uint32_t>(document.order().at(page).object);
        const bool isPage = document.index()->contains(object) &&
                            document.index()->object(object).kind == index::Kind::Page;
        if (!isPage && !document.page(page).isDictionaryOfType("/Page")) {
            document.editPage(page).replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
        }
    }
    QPDFObjectHandle catalog = document.changes().present(document.catalog().getObjGen());
    QPDFObjectHandle outline = catalog.getKey("/Outlines");
    if (outline.isDictionary() && !outline.isIndirect()) {
        document.changes().edit(catalog).replaceKey("/Outlines", document.changes().add(outline));
    }
    const std::vector<int> nodes = nodesWithAttributes(document);
    if (nodes.empty()) {
        return;
    }
    giveInherited(document);
    for (const int number : nodes) {
        QPDFObjectHandle node = document.changes().edit(document.objects().object(number));
        for (const char* key : inheritableKeys) {
            node.removeKey(key);
        }
    }
}

void writeLinearized(Document& document, const Liveness& live, io::ByteSink& sink,
                     const SaveOptions& options)
{
    Writer(document, live, sink, options).run();
}

} // namespace karvel::saving
