#include "KarvelPDFLibrary/saving/DisguisedPages.h"

#include "KarvelPDFLibrary/objects/References.h"

#include <set>

namespace karvel::saving {

namespace {

/// "/Page" with an escape, as libqpdf writes it: it leaves "#" in names as it is.
const char* const disguise = "/#50age";

} // namespace

DisguisedPages::DisguisedPages(QPDF& file)
{
    std::set<QPDFObjGen> pages;
    for (const QPDFObjectHandle& page : file.getAllPages()) {
        pages.insert(page.getObjGen());
    }
    try {
        for (const QPDFObjectHandle& object : file.getAllObjects()) {
            forEachDirectPart(object, [&](QPDFObjectHandle part) {
                const bool isOfTree = part.isIndirect() && pages.count(part.getObjGen()) != 0;
                if (part.isDictionaryOfType("/Page") && !isOfTree) {
                    types_.emplace_back(part, part.getKey("/Type"));
                    part.replaceKey("/Type", QPDFObjectHandle::newName(disguise));
                }
            });
        }
    } catch (...) {
        undo();
        throw;
    }
}

DisguisedPages::~DisguisedPages()
{
    undo();
}

void DisguisedPages::undo()
{
    for (auto& [dictionary, type] : types_) {
        dictionary.replaceKey("/Type", type);
    }
    types_.clear();
}

} // namespace karvel::saving
