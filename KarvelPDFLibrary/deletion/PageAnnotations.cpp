#include "KarvelPDFLibrary/deletion/PageAnnotations.h"

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

} // namespace karvel::deletion
