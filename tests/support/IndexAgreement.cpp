#include "tests/support/IndexAgreement.h"

#include "KarvelPDFLibrary/index/CrossReferenceReader.h"
#include "KarvelPDFLibrary/index/KnownReferences.h"
#include "KarvelPDFLibrary/index/ObjectHeader.h"

#include <algorithm>
#include <cstdint>

namespace support {

namespace {

/// What libqpdf takes an object for that the index has, unless it is the same.
std::string disagreementOn(QPDFObjectHandle object, const karvel::index::IndexedObject& entry)
{
    const bool isStream = (entry.flags & karvel::index::IsStream) != 0;
    const bool isDictionary = !isStream && (entry.flags & karvel::index::IsDictionary) != 0;
    auto last = static_cast<std::uint64_t>(object.getParsedOffset());
    if (object.isStream() != isStream || object.isDictionary() != isDictionary) {
        return "is something else";
    }
    if (entry.container != 0 && last > static_cast<std::uint64_t>(INT64_MAX) / 4) {
        return {}; // it stands apart: crossReferenceDisagreement() looks at that
    }
    if (isStream) {
        last += object.getRawStreamData()->getSize();
    }
    return last < entry.start || last > entry.end
               ? "ends at " + std::to_string(last) + ", not between " +
                     std::to_string(entry.start) + " and " + std::to_string(entry.end)
               : "";
}

using karvel::index::CrossReference;
using karvel::index::CrossReferenceTable;

/// "12 0" and where libqpdf has it.
std::string told(const QPDFObjGen& id, const QPDFXRefEntry& entry)
{
    return "object " + id.unparse(' ') +
           (entry.getType() == 1 ? " at " + std::to_string(entry.getOffset())
                                 : " in " + std::to_string(entry.getObjStreamNumber()) + " at " +
                                       std::to_string(entry.getObjStreamIndex()));
}

std::string told(std::uint32_t number, const CrossReference& entry)
{
    const QPDFObjGen id(static_cast<int>(number), entry.generation);
    return entry.kind == CrossReference::Kind::InFile
               ? told(id, QPDFXRefEntry(static_cast<qpdf_offset_t>(entry.place)))
               : told(id, QPDFXRefEntry(static_cast<int>(entry.place >> 32U),
                                        static_cast<int>(entry.place & 0xFFFFFFFFU)));
}

std::vector<std::string> told(const CrossReferenceTable& table)
{
    std::vector<std::string> all;
    for (const auto& [id, entry] : table) {
        all.push_back(told(id, entry));
    }
    return all;
}

std::vector<std::string> told(const karvel::index::CrossReferences& read)
{
    std::vector<std::string> all;
    for (std::uint32_t number = 0; number < read.entries.size(); ++number) {
        if (read.entries[number].kind != CrossReference::Kind::None) {
            all.push_back(told(number, read.entries[number]));
        }
    }
    return all;
}

std::string firstOnlyInOne(const std::vector<std::string>& a, const std::vector<std::string>& b)
{
    const auto [one, other] = std::mismatch(a.begin(), a.end(), b.begin(), b.end());
    return (one == a.end() ? "nothing" : *one) + " instead of " +
           (other == b.end() ? "nothing" : *other);
}

/// What differs in objects when members of object streams stand apart for libqpdf.
std::string disagreementOfMembersApart(QPDF& alone,
                                       const std::shared_ptr<karvel::io::ByteSource>& source,
                                       const karvel::index::CrossReferences& read)
{
    karvel::io::ObjectFile file;
    file.openWhenNeeded(
        [&](QPDF& opened) { karvel::index::openWithKnownReferences(opened, source, read, {}); });
    karvel::index::DecodedStreams streams(file, *source);
    std::string reason;
    const auto index = karvel::index::ReferenceIndex::build(
        file, *source, streams, &read, karvel::index::FileState::Whole, reason);
    if (!index || index->objectStreams().empty() || file.isOpen()) {
        return {}; // nothing that would stand apart
    }
    QPDF apart;
    apart.setSuppressWarnings(true);
    karvel::index::openWithKnownReferences(apart, source, read, {index.get(), &streams});
    for (const auto& [id, entry] : alone.getXRefTable()) {
        const std::string one = alone.getObject(id).unparseResolved();
        const std::string other = apart.getObject(id).unparseResolved();
        if (one != other) {
            return "apart, object " + std::to_string(id.getObj()) + " is " + other +
                   " instead of " + one;
        }
    }
    return apart.numWarnings() == alone.numWarnings() ? "" : "apart, libqpdf warns otherwise";
}

} // namespace

std::string crossReferenceDisagreement(const std::string& pdf)
{
    const auto source = karvel::io::fromMemory(pdf);
    const auto read = karvel::index::readCrossReferences(*source);
    if (!read) {
        return {};
    }
    try {
        QPDF alone;
        alone.setSuppressWarnings(true);
        alone.processMemoryFile("alone", pdf.data(), pdf.size());
        QPDF given;
        given.setSuppressWarnings(true);
        karvel::index::openWithKnownReferences(given, source, *read, {});
        for (QPDF* file : {&alone, &given}) {
            if (file->anyWarnings() || file->isEncrypted()) {
                return "libqpdf warns, or finds it encrypted";
            }
        }
        const std::vector<std::string> expected = told(alone.getXRefTable());
        if (told(*read) != expected || read->count != expected.size()) {
            return "read: " + firstOnlyInOne(told(*read), expected);
        }
        if (told(given.getXRefTable()) != expected) {
            return "given: " + firstOnlyInOne(told(given.getXRefTable()), expected);
        }
        if (alone.getTrailer().unparse() != given.getTrailer().unparse() ||
            alone.getPDFVersion() != given.getPDFVersion()) {
            return "another trailer: " + given.getTrailer().unparse();
        }
        return disagreementOfMembersApart(alone, source, *read);
    } catch (const std::exception& failure) {
        return std::string("libqpdf doesn't open it: ") + failure.what();
    }
}

std::string indexDisagreement(karvel::Document& document)
{
    const karvel::index::ReferenceIndex* index = document.index();
    for (std::uint32_t number = 1; index != nullptr && number < index->size(); ++number) {
        const karvel::index::IndexedObject* entry =
            document.objects().unchanged(static_cast<int>(number));
        if (entry == nullptr) {
            continue; // not there, or taken from libqpdf
        }
        const std::string how = disagreementOn(
            document.file().getObject(static_cast<int>(number), entry->generation), *entry);
        if (!how.empty()) {
            return "object " + std::to_string(number) + " " + how;
        }
    }
    return {};
}

} // namespace support
