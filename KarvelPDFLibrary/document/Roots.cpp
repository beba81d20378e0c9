#include "KarvelPDFLibrary/document/Roots.h"

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/FileText.h"
#include "KarvelPDFLibrary/index/ObjectHeader.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>

namespace karvel {

namespace {

QPDFObjGen idOf(const index::Reference& reference)
{
    return QPDFObjGen(static_cast<int>(reference.object), static_cast<int>(reference.generation));
}

/// A reference that is all of a value; nothing for other values.
std::optional<QPDFObjGen> referenceThatIs(std::string_view value)
{
    const auto reference = index::readReference(value);
    return reference ? std::optional(idOf(*reference)) : std::nullopt;
}

} // namespace

std::optional<Roots> Roots::read(const index::CrossReferences& read,
                                 const index::ReferenceIndex& index, io::ByteSource& source)
{
    Roots roots;
    roots.version_ = read.version;
    const bool isPlain = roots.readTrailer(read.trailer) && roots.readCatalog(index, source);
    return isPlain ? std::optional(std::move(roots)) : std::nullopt;
}

bool Roots::readTrailer(const std::string& text)
{
    const auto dictionary = index::DictionaryText::read(text);
    if (!dictionary) {
        return false;
    }
    for (const auto& [key, value] : dictionary->entries()) {
        const std::string whole(index::trimmed(value));
        Entry entry = {"/" + key, referenceThatIs(whole), {}};
        if (!entry.reference && !index::referencesIn(whole).empty()) {
            return false;
        }
        if (!entry.reference) {
            entry.direct = QPDFObjectHandle::parse(whole);
        } else if (key == "Root") {
            catalog_ = *entry.reference;
        }
        trailer_.push_back(std::move(entry));
    }
    std::sort(trailer_.begin(), trailer_.end(),
              [](const Entry& a, const Entry& b) { return a.key < b.key; });
    return true;
}

bool Roots::readCatalog(const index::ReferenceIndex& index, io::ByteSource& source)
{
    const std::uint32_t number = index.targetOf({static_cast<std::uint32_t>(catalog_.getObj()),
                                                 static_cast<std::uint32_t>(catalog_.getGen())});
    if (number == 0 || index.object(number).container != 0 ||
        (index.object(number).flags & index::IsStream) != 0) {
        return false;
    }
    const index::IndexedObject& object = index.object(number);
    index::FileText file(source);
    const std::size_t length = object.end - object.start;
    if (!file.open(object.start, length) || file.view().size() < length) {
        return false;
    }
    const std::string_view text = file.view().substr(0, length);
    const auto header = index::readObjectHeader(text, number, object.generation);
    const auto dictionary =
        header ? index::DictionaryText::readPlainly(text.substr(header->end)) : std::nullopt;
    if (!dictionary) {
        return false;
    }
    for (const auto& [key, value] : dictionary->entries()) {
        catalogKeys_.push_back(key);
    }
    std::sort(catalogKeys_.begin(), catalogKeys_.end());
    const auto pages = referenceThatIs(dictionary->value("Pages"));
    pages_ = pages.value_or(QPDFObjGen());
    return pages.has_value();
}

bool Roots::catalogHas(std::string_view key) const
{
    return std::binary_search(catalogKeys_.begin(), catalogKeys_.end(), key);
}

const Roots::Entry* Roots::inTrailer(std::string_view key) const
{
    const auto entry = std::find_if(trailer_.begin(), trailer_.end(),
                                    [&](const Entry& candidate) { return candidate.key == key; });
    return entry == trailer_.end() ? nullptr : &*entry;
}

QPDFObjectHandle Document::catalogEntry(const char* key)
{
    const bool isMissing = roots() != nullptr && !roots()->catalogHas(key + 1);
    return isMissing ? QPDFObjectHandle::newNull() : catalog().getKey(key);
}

QPDFObjectHandle Document::trailerEntry(const char* key)
{
    const bool isMissing = roots() != nullptr && !roots()->trailerHas(key);
    return isMissing ? QPDFObjectHandle::newNull() : file().getTrailer().getKey(key);
}

QPDFObjGen Document::catalogId()
{
    return roots() != nullptr ? roots()->catalog() : catalog().getObjGen();
}

} // namespace karvel
