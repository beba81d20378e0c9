#include "KarvelPDFLibrary/deletion/PageAnnotations.h"

#include <algorithm>

namespace karvel::deletion {

std::vector<QPDFObjectHandle> annotationsIn(QPDFObjectHandle pageOrArray)
{
    QPDFObjectHandle array =
        pageOrArray.isDictionary() ? pageOrArray.getKey("/Annots") : pageOrArray;
    return array.isArray() ? array.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

bool PageAnnotations::lists(const QPDFObjectHandle& page, int annotation)
{
    const auto [entry, isNew] = listed_.try_emplace(page.getObjectID());
    if (isNew) {
        for (const QPDFObjectHandle& item : annotationsIn(page)) {
            entry->second.insert(item.getObjectID());
        }
    }
    return entry->second.count(annotation) > 0;
}

QPDFObjectHandle PageAnnotations::remainingPageOf(const QPDFObjectHandle& annotation)
{
    const int number = annotation.getObjectID();
    for (const QPDFObjectHandle& referrer : removal_.referrersOf(number)) {
        if (removal_.isRemainingPage(referrer)) {
            if (lists(referrer, number)) {
                return referrer;
            }
            continue;
        }
        QPDFObjectHandle array = referrer;
        if (!removal_.mayBeArray(array) || !array.isArray()) {
            continue;
        }
        for (const QPDFObjectHandle& holder : removal_.referrersOf(array.getObjectID())) {
            if (removal_.isRemainingPage(holder) && lists(holder, number)) {
                return holder;
            }
        }
    }
    return QPDFObjectHandle::newNull();
}

bool shortenAnnotations(Removal& removal, int page)
{
    const auto list = removal.indexedAnnotationsOf(page);
    if (!list || !removal.isRemainingPage(page)) {
        return false;
    }
    const auto isGone = [&](std::uint32_t object) {
        return removal.isGone(static_cast<int>(object));
    };
    const auto all = removal.indexedReferencesOf(page);
    if (std::any_of(all->begin(), list->begin(), isGone) ||
        std::any_of(list->end(), all->end(), isGone) ||
        std::find(list->begin(), list->end(), 0) != list->end()) {
        return false;
    }
    std::string left;
    for (const std::uint32_t annotation : *list) {
        if (!isGone(annotation)) {
            left += removal.idOf(static_cast<int>(annotation)).unparse(' ') + " R ";
        }
    }
    removal.objects().edit(removal.idOf(page), {{"Annots", "[" + left + "]"}});
    return true;
}

} // namespace karvel::deletion
