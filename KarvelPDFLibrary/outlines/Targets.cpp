#include "KarvelPDFLibrary/outlines/Targets.h"

#include "KarvelPDFLibrary/objects/NameTree.h"

#include <utility>

namespace karvel::outlines {

void Targets::refresh(Document& document)
{
    if (revision_ == document.revision()) {
        return;
    }
    pageCount_ = document.pageCount();
    pages_.clear();
    strings_.clear();
    names_.clear();
    for (int page = 1; page <= pageCount_; ++page) {
        pages_.emplace(document.order().at(page).object, page);
    }
    QPDFObjectHandle names = document.catalogEntry("/Names");
    if (names.isDictionary()) {
        for (auto& [name, value] : readNameTree(names.getKey("/Dests"))) {
            strings_.emplace(std::move(name), value);
        }
    }
    QPDFObjectHandle old = document.catalogEntry("/Dests");
    if (old.isDictionary()) {
        names_ = old.getDictAsMap();
    }
    revision_ = document.revision();
}

int Targets::pageOf(Document& document, QPDFObjectHandle entry)
{
    refresh(document);
    QPDFObjectHandle destination = entry.getKey("/Dest");
    QPDFObjectHandle action = entry.getKey("/A");
    if (destination.isNull() && action.isDictionary() &&
        action.getKey("/S").isNameAndEquals("/GoTo")) {
        destination = action.getKey("/D");
    }
    if (destination.isString() || destination.isName()) {
        const auto& all = destination.isName() ? names_ : strings_;
        const auto found =
            all.find(destination.isName() ? destination.getName() : destination.getStringValue());
        destination = found == all.end() ? QPDFObjectHandle::newNull() : found->second;
    }
    return pageOfDestination(destination.isDictionary() ? destination.getKey("/D") : destination);
}

int Targets::pageOfDestination(QPDFObjectHandle destination) const
{
    if (!destination.isArray() || destination.getArrayNItems() == 0) {
        return 0;
    }
    QPDFObjectHandle leadsTo = destination.getArrayItem(0);
    // Some writers give the page's number, from 0, as in destinations in other files.
    if (leadsTo.isInteger()) {
        const long long index = leadsTo.getIntValue();
        return index >= 0 && index < pageCount_ ? static_cast<int>(index) + 1 : 0;
    }
    // A structure element's page is in its entry (ISO 32000-2, 12.3.2.3 and table 355).
    if (leadsTo.isDictionary() && pages_.count(leadsTo.getObjectID()) == 0) {
        leadsTo = leadsTo.getKey("/Pg");
    }
    const auto found = pages_.find(leadsTo.isIndirect() ? leadsTo.getObjectID() : 0);
    return found == pages_.end() ? 0 : found->second;
}

} // namespace karvel::outlines
