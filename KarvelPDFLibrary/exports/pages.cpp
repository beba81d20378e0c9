#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "exports.h"

#include <algorithm>

using namespace karvel;
using boundary::onDocument;
using boundary::onOpenDocument;

int KPLPageCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self,
                          [](Document& document) -> Result<int> { return document.pageCount(); });
    });
}

int KPLNewPage(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) -> Result<int> {
            Document& document = *open.document;
            QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
            page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
            page.replaceKey("/MediaBox", QPDFObjectHandle::newArray(QPDFObjectHandle::Rectangle(
                                             0, 0, self.defaultPageWidth, self.defaultPageHeight)));
            page.replaceKey("/Resources", QPDFObjectHandle::newDictionary());
            document.insertPages(document.pageCount() + 1, {document.changes().add(page)});
            open.selectedPage = document.pageCount();
            return open.selectedPage;
        });
    });
}

int KPLDeletePages(int instance, int startPage, int pageCount)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) -> Status {
            Status status = pages::deletePages(*open.document, {startPage, pageCount});
            if (status && open.selectedPage >= startPage) {
                // The selection stays with its page; when that went, it moves to the next one.
                open.selectedPage = std::max(startPage, open.selectedPage - pageCount);
                open.selectedPage = std::min(open.selectedPage, open.document->pageCount());
            }
            return status;
        });
    });
}
