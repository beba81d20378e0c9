#include "KarvelPDFLibrary/content/LostContent.h"

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
    const std::vector<QPDFObjectHandle> parts =
        partsOf(document_.page(page).getDictAsMap()["/Contents"]);
    return std::any_of(parts.begin(), parts.end(),
                       [this](const QPDFObjectHandle& part) { return isLost(part); }) ||
           losesPictures(document_.pageAttribute(page, "/Resources"));
}

bool LostContent::isBroken(int page)
{
    const std::vector<QPDFObjectHandle> parts = partsOf(document_.page(page).getKey("/Contents"));
    return std::any_of(parts.begin(), parts.end(), [this](QPDFObjectHandle part) {
        return part.isStream() && (breaksOff(part) || !canBeDecoded(part));
    });
}

/// Whether an image or form is lost that these resources have, those of forms included.
bool LostContent::losesPictures(const QPDFObjectHandle& resources)
{
    std::vector<QPDFObjectHandle> open = {resources};
    std::unordered_set<int> seen;
    while (!open.empty()) {
        QPDFObjectHandle category = open.back();
        open.pop_back();
        category = category.isDictionary() ? category.getKey("/XObject") : category;
        if (!category.isDictionary()) {
            continue;
        }
        for (auto& [key, picture] : category.getDictAsMap()) {
            if (!picture.isIndirect() || !seen.insert(picture.getObjectID()).second) {
                continue;
            }
            if (isLostPicture(picture)) {
                return true;
            }
            if (picture.isStream()) {
                open.push_back(picture.getDict().getKey("/Resources"));
            }
        }
    }
    return false;
}

/// Where the table was rebuilt, references may lead to what was never there: nothing is lost.
bool LostContent::isLostPicture(const QPDFObjectHandle& picture)
{
    const auto [known, isNew] = lostPictures_.try_emplace(picture.getObjectID(), false);
    if (isNew) {
        const bool isThere = document_.file().getXRefTable().count(picture.getObjGen()) > 0;
        known->second = isThere && isLost(picture);
    }
    return known->second;
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
    if (part.isNull() && part.isIndirect()) {
        return document_.wasReconstructed() ||
               document_.file().getXRefTable().count(part.getObjGen()) > 0;
    }
    return streamsEmptied_ && wasEmptied(part);
}

} // namespace karvel::content
