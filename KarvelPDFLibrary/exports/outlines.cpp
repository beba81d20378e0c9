#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/outlines/Outline.h"
#include "exports.h"

using namespace karvel;
using boundary::onUpToDateDocument;

namespace {

int handleOf(OpenDocuments& documents, OpenDocument& open, QPDFObjectHandle entry)
{
    if (entry.isNull()) {
        return 0;
    }
    const auto [known, isNew] = open.outlineHandles.try_emplace(entry.getObjGen(), 0);
    if (isNew) {
        known->second = documents.nextHandle();
        open.outlineEntries.emplace(known->second, entry.getObjGen());
    }
    return known->second;
}

/// Runs `body(OpenDocument&, Document&)` on the selected document, up to date.
template <class Body>
auto onOutline(Instance& self, Body&& body)
{
    return boundary::onOpenDocument(self, [&](OpenDocument& open) {
        return onUpToDateDocument(self, [&](Document& document) { return body(open, document); });
    });
}

/// The same with the entry that has a handle.
template <class Body>
auto onEntry(Instance& self, int handle, Body&& body)
{
    return onOutline(
        self,
        [&](OpenDocument& open,
            Document& document) -> std::invoke_result_t<Body, OpenDocument&, QPDFObjectHandle> {
            const auto found = open.outlineEntries.find(handle);
            QPDFObjectHandle entry = found == open.outlineEntries.end()
                                         ? QPDFObjectHandle::newNull()
                                         : document.changes().present(found->second);
            if (!entry.isDictionary()) {
                return fail(ErrorCode::NotFound, document.name() +
                                                     ": no entry of the outline has the handle " +
                                                     std::to_string(handle));
            }
            return body(open, entry);
        });
}

} // namespace

int KPLOutlineEntryCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onUpToDateDocument(
            self, [](Document& document) -> Result<int> { return outlines::entryCount(document); });
    });
}

int KPLFirstOutlineEntry(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onOutline(self, [&](OpenDocument& open, Document& document) -> Result<int> {
            return handleOf(self.documents, open, outlines::firstEntry(document));
        });
    });
}

int KPLGetOutlineChild(int instance, int entry)
{
    return boundary::integer(instance, [=](Instance& self) {
        return onEntry(self, entry, [&](OpenDocument& open, QPDFObjectHandle found) -> Result<int> {
            return handleOf(self.documents, open, outlines::firstChild(found));
        });
    });
}

int KPLGetNextOutlineEntry(int instance, int entry)
{
    return boundary::integer(instance, [=](Instance& self) {
        return onEntry(self, entry, [&](OpenDocument& open, QPDFObjectHandle found) -> Result<int> {
            return handleOf(self.documents, open, outlines::nextEntry(found));
        });
    });
}

wchar_t* KPLGetOutlineTitle(int instance, int entry)
{
    return boundary::wideString(instance, [=](Instance& self) {
        return onEntry(self, entry,
                       [](OpenDocument&, QPDFObjectHandle found) -> Result<std::string> {
                           return outlines::titleOf(found);
                       });
    });
}

int KPLGetOutlinePage(int instance, int entry)
{
    return boundary::integer(instance, [=](Instance& self) {
        return onEntry(self, entry, [&](OpenDocument& open, QPDFObjectHandle found) -> Result<int> {
            return open.outlineTargets.pageOf(*open.document, std::move(found));
        });
    });
}
