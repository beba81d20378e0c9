#include "KarvelPDFLibrary/content/LostContent.h"

#include "KarvelPDFLibrary/base/InventedKeys.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <qpdf/Pl_Discard.hh>
#include <string>
#include <unordered_set>
#include <vector>

namespace karvel::content {

namespace {

bool wasEmptied(QPDFObjectHandle stream)
{
    if (!stream.isStream() || stream.getRawStreamData()->getSize() > 0) {
        return false;
    }
    QPDFObjectHandle length = stream.getDict().getKey("/Length");
    return !length.isInteger() || length.getIntValue() != 0;
}

std::vector<QPDFObjectHandle> partsOf(QPDFObjectHandle contents)
{
    if (!contents.isInitialized()) {
        return {};
    }
    return contents.isArray() ? contents.getArrayAsVector()
                              : std::vector<QPDFObjectHandle>{contents};
}

} // namespace

LostContent::LostContent(Document& document) : document_(document)
{
    const Warnings& warnings = document.warnings();
    streamsEmptied_ = std::any_of(warnings.begin(), warnings.end(), [](const std::string& text) {
        return text.find("unable to recover stream data") != std::string::npos;
    });
}

bool LostContent::isLost(int page)
{
    // The reference itself is looked at: a lost object reads as if the key were absent.
    auto entries = document_.page(page).getDictAsMap();
    const std::vector<QPDFObjectHandle> parts = partsOf(entries["/Contents"]);
    QPDFObjectHandle resources = entries["/Resources"];
    const bool hasLostResources =
        resources.isInitialized() && resources.isIndirect() && isLostResource(resources);
    return hasInventedKey(entries) || hasLostResources ||
           std::any_of(parts.begin(), parts.end(),
                       [this](const QPDFObjectHandle& part) { return isLost(part); }) ||
           losesResources(document_.pageAttribute(page, "/Resources"));
}

bool LostContent::isBroken(int page)
{
    const std::vector<QPDFObjectHandle> parts = partsOf(document_.page(page).getKey("/Contents"));
    return std::any_of(parts.begin(), parts.end(), [this](QPDFObjectHandle part) {
        return part.isStream() && (breaksOff(part) || !canBeDecoded(part));
    });
}

/// Whether something is lost that these resources have, those of forms included.
bool LostContent::losesResources(const QPDFObjectHandle& resources)
{
    std::vector<QPDFObjectHandle> open = {resources};
    std::unordered_set<int> seen;
    while (!open.empty()) {
        QPDFObjectHandle categories = open.back();
        open.pop_back();
        if (!categories.isDictionary()) {
            continue;
        }
        for (auto& [name, category] : categories.getDictAsMap()) {
            if (!category.isDictionary()) {
                continue;
            }
            for (auto& [key, resource] : category.getDictAsMap()) {
                if (!resource.isIndirect() || !seen.insert(resource.getObjectID()).second) {
                    continue;
                }
                if (isLostResource(resource)) {
                    return true;
                }
                if (resource.isStream()) {
                    open.push_back(resource.getDict().getKey("/Resources"));
                }
            }
        }
    }
    return false;
}

/// Where the table was rebuilt, references may lead to what was never there: nothing is lost.
bool LostContent::isLostResource(QPDFObjectHandle resource)
{
    const auto [known, isNew] = lostResources_.try_emplace(resource.getObjectID(), false);
    if (isNew) {
        const bool mayBeLost = resource.isNull() || resource.isStream();
        known->second = mayBeLost && isInTable(resource) && isLost(resource);
    }
    return known->second;
}

bool LostContent::isInTable(const QPDFObjectHandle& object)
{
    return document_.file().getXRefTable().count(object.getObjGen()) > 0;
}

/// Whether the file ended before the stream did.
bool LostContent::breaksOff(QPDFObjectHandle stream)
{
    const auto length = static_cast<std::int64_t>(stream.getRawStreamData()->getSize());
    return stream.getParsedOffset() + length >= document_.originalSize();
}

/// libqpdf tells of data that break off by a warning only.
bool LostContent::canBeDecoded(QPDFObjectHandle part)
{
    const std::size_t before = document_.warnings().size();
    Pl_Discard nowhere;
    bool filtered = false;
    bool decoded = false;
    try {
        decoded = part.pipeStreamData(&nowhere, &filtered, 0, qpdf_dl_generalized, false, false);
    } catch (const std::exception&) {
        return false; // enciphered data that can't be deciphered
    }
    const bool warned = document_.warnings().size() > before;
    document_.warnings().resize(before);
    return !filtered || (decoded && !warned);
}

bool LostContent::isLost(QPDFObjectHandle part)
{
    if (!part.isNull() && !part.isStream()) {
        return true;
    }
    if (part.isNull() && part.isIndirect()) {
        return document_.wasReconstructed() || isInTable(part);
    }
    return streamsEmptied_ && wasEmptied(part);
}

namespace {

/// The references in a page's content.
class ContentReferences final : public index::ScanSink {
public:
    void reference(std::uint32_t object, std::uint32_t /*generation*/) override
    {
        if (isContent_) {
            found.push_back(object);
        }
    }
    void beforeEntry(std::string_view key) override { isContent_ = key == "Contents"; }
    void afterEntry(std::string_view key, std::string_view value) override
    {
        isContent_ = false;
        if (key == "Contents") {
            const std::string_view text = index::trimmed(value);
            isUsual = text.front() == '[' || (text.back() == 'R' && found.size() == 1);
        }
    }

    std::vector<std::uint32_t> found;
    bool isUsual = true; // references, or an array of some

private:
    bool isContent_ = false;
};

bool isStream(Document& document, std::uint32_t object)
{
    const auto number = static_cast<int>(object);
    const index::IndexedObject* entry = document.objects().unchanged(number);
    return entry != nullptr ? (entry->flags & index::IsStream) != 0
                            : document.objects().object(number).isStream();
}

bool hasOnlyStreamsAsContent(Document& document, int page)
{
    const int number = document.order().at(page).object;
    ObjectView objects = document.objects();
    if (const std::string_view text = objects.text(number); !text.empty()) {
        ContentReferences content;
        index::ValueScanner(text, content).scan(0);
        return content.isUsual &&
               std::all_of(content.found.begin(), content.found.end(),
                           [&](std::uint32_t part) { return isStream(document, part); });
    }
    const std::vector<QPDFObjectHandle> parts =
        partsOf(objects.object(number).getDictAsMap()["/Contents"]);
    return std::all_of(parts.begin(), parts.end(),
                       [](QPDFObjectHandle part) { return part.isStream(); });
}

/// Whether a reference leads nowhere or to null.
bool leadsToNothing(Document& document)
{
    const index::ReferenceIndex& index = *document.index();
    const std::vector<std::uint32_t>& references = index.references();
    if (std::find(references.begin(), references.end(), 0U) != references.end()) {
        return true;
    }
    ObjectView objects = document.objects();
    for (std::uint32_t object = 1; object < index.size(); ++object) {
        const index::IndexedObject& entry = index.object(object);
        const bool mayBeNull =
            entry.kind == index::Kind::Other && entry.flags == 0 && entry.referenceCount == 0;
        if (mayBeNull &&
            index::trimmed(objects.text(static_cast<int>(object))).substr(0, 4) == "null") {
            return true;
        }
    }
    return false;
}

} // namespace

bool mayHaveLostContent(Document& document)
{
    if (document.index()->fileState() == index::FileState::Whole) {
        return false;
    }
    if (leadsToNothing(document)) {
        return true;
    }
    for (int page = 1; page <= document.pageCount(); ++page) {
        if (!hasOnlyStreamsAsContent(document, page)) {
            return true;
        }
    }
    return false;
}

} // namespace karvel::content
