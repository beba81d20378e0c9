#include "KarvelPDFLibrary/deletion/Usage.h"

#include "KarvelPDFLibrary/objects/References.h"

namespace karvel::deletion {

Usage::Usage(Removal& removal) : removal_(removal)
{
    QPDFObjectHandle names = removal.catalog().getKey("/Names");
    hasLists_ = removal.catalog().hasKey("/OCProperties") ||
                (names.isDictionary() && (names.hasKey("/IDS") || names.hasKey("/URLS")));
    if (hasLists_) {
        before_ = reached(true);
    }
}

void Usage::look()
{
    if (hasLists_) {
        now_ = reached(false);
    }
}

NumberSet Usage::reached(bool withGone)
{
    NumberSet seen;
    std::vector<int> open;
    const auto reach = [&](int number) {
        if (number > 0 && (withGone || !removal_.isGone(number)) && seen.insert(number)) {
            open.push_back(number);
        }
    };
    const auto reachFrom = [&](const QPDFObjectHandle& value) {
        if (value.isIndirect()) {
            reach(value.getObjectID());
            return;
        }
        forEachReference(
            value, [&](const QPDFObjectHandle& reference) { reach(reference.getObjectID()); });
    };
    // The objects in which the lists stand are gone through here, and entered by no other way.
    QPDFObjectHandle names = removal_.catalog().getKey("/Names");
    seen.insert(removal_.catalog().getObjectID());
    seen.insert(names.getObjectID());
    for (const auto& [key, value] : removal_.catalog().getDictAsMap()) {
        if (key != "/OCProperties" && key != "/Names") {
            reachFrom(value);
        }
    }
    if (names.isDictionary()) {
        for (const auto& [key, value] : names.getDictAsMap()) {
            if (key != "/IDS" && key != "/URLS") {
                reachFrom(value);
            }
        }
    }
    reachFrom(removal_.file().getTrailer());
    while (!open.empty()) {
        const int number = open.back();
        open.pop_back();
        if (const auto references = removal_.indexedReferencesOf(number)) {
            for (const std::uint32_t target : *references) {
                reach(static_cast<int>(target));
            }
        } else {
            forEachReference(removal_.object(number), [&](const QPDFObjectHandle& reference) {
                reach(reference.getObjectID());
            });
        }
    }
    return seen;
}

} // namespace karvel::deletion
