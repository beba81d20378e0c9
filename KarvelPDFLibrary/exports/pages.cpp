#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/exports/Arguments.h"
#include "KarvelPDFLibrary/page_boxes/PaperFormats.h"
#include "KarvelPDFLibrary/pages/Arrange.h"
#include "KarvelPDFLibrary/pages/DeletePages.h"
#include "KarvelPDFLibrary/pages/PageLabels.h"
#include "KarvelPDFLibrary/pages/PageList.h"
#include "KarvelPDFLibrary/pages/TabOrder.h"
#include "KarvelPDFLibrary/rendering/PageBlankness.h"
#include "KarvelPDFLibrary/rendering/PageColor.h"
#include "exports.h"

#include <algorithm>
#include <set>

using namespace karvel;
using boundary::keepingSelection;
using boundary::onDocument;
using boundary::onOpenDocument;
using boundary::onUpToDateDocument;

namespace {

/// A page list where an empty one is refused instead of naming every page.
Result<std::vector<int>> listOf(Document& document, const std::string& ranges)
{
    if (ranges.empty()) {
        return fail(ErrorCode::BadPageList, "the page list is empty");
    }
    return pages::parsePageList(ranges, document.pageCount());
}

/// Deletes pages; the selection stays with its page, or moves to the next one when that goes.
Result<int> deleteListed(OpenDocument& open, const std::vector<int>& list)
{
    return pages::deletePages(*open.document, list).map([&](int deleted) {
        const std::set<int> gone(list.begin(), list.end());
        const auto before = std::distance(gone.begin(), gone.lower_bound(open.selectedPage));
        open.selectedPage =
            std::min(open.selectedPage - static_cast<int>(before), open.document->pageCount());
        return deleted;
    });
}

Outcome isPercentage(double value)
{
    if (!(value >= 0 && value <= 100)) {
        return fail(ErrorCode::BadArgument, "the tolerance must be 0 to 100 percent");
    }
    return {};
}

} // namespace

int KPLPageCount(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onDocument(self,
                          [](Document& document) -> Result<int> { return document.pageCount(); });
    });
}

int KPLSelectedPage(int instance)
{
    return boundary::integer(instance, [](Instance& self) -> Result<int> {
        const auto open = self.documents.selected();
        return open ? (*open)->selectedPage : 0;
    });
}

int KPLSelectPage(int instance, int page)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            Outcome status = hasPage(*open.document, page);
            if (status) {
                open.selectedPage = page;
            }
            return status;
        });
    });
}

int KPLNewPage(int instance)
{
    return boundary::integer(instance, [](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) -> Result<int> {
            open.selectedPage = pages::appendBlankPage(*open.document, self.defaultPageWidth,
                                                       self.defaultPageHeight);
            return open.selectedPage;
        });
    });
}

int KPLInsertPages(int instance, int beforePage, int pageCount)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return keepingSelection(open, [&](Document& document) {
                return pages::insertBlankPages(document, beforePage, pageCount).map([&] {
                    return beforePage;
                });
            });
        });
    });
}

int KPLSetDefaultPageFormat(int instance, int format, int orientation)
{
    return boundary::integer(instance, [&](Instance& self) -> Outcome {
        if (format < 1 || format > page_boxes::formatCount) {
            return fail(ErrorCode::BadArgument, "the paper format must be 1 to 14");
        }
        if (orientation != 1 && orientation != 2) {
            return fail(ErrorCode::BadArgument, "the orientation must be 1 or 2");
        }
        const page_boxes::Size size = page_boxes::sizeOfFormat(format);
        self.defaultPageWidth = orientation == 1 ? size.width : size.height;
        self.defaultPageHeight = orientation == 1 ? size.height : size.width;
        return {};
    });
}

int KPLDeletePages(int instance, int startPage, int pageCount)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) -> Outcome {
            Outcome status = pages::deletePages(*open.document, PageRun{startPage, pageCount});
            if (status && open.selectedPage >= startPage) {
                // The selection stays with its page; when that went, it moves to the next one.
                open.selectedPage = std::max(startPage, open.selectedPage - pageCount);
                open.selectedPage = std::min(open.selectedPage, open.document->pageCount());
            }
            return status;
        });
    });
}

int KPLDeletePageRanges(int instance, const wchar_t* pageRanges)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string ranges = boundary::takeWide(self, pageRanges);
        return onOpenDocument(self, [&](OpenDocument& open) {
            return listOf(*open.document, ranges).and_then([&](const std::vector<int>& list) {
                return deleteListed(open, list);
            });
        });
    });
}

int KPLDeleteBlankPages(int instance, int firstPage, int pageCount)
{
    const auto body = [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return rendering::blankPages(*open.document, open.view, {firstPage, pageCount})
                .and_then([&](const std::vector<int>& list) { return deleteListed(open, list); });
        });
    };
    return boundary::integer(instance, body, -1);
}

int KPLIsPageBlank(int instance, int page, double tolerance)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return isPercentage(tolerance < 0 ? -1 - tolerance : tolerance).and_then([&] {
                return rendering::isBlank(*open.document, open.view, open.lastJudgement, page,
                                          tolerance);
            });
        });
    });
}

int KPLHasPageColor(int instance, int page, double tolerance)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return isPercentage(tolerance).and_then([&] {
                return rendering::colouredPercentage(*open.document, open.view, page)
                    .map([&](double coloured) { return coloured > tolerance; });
            });
        });
    });
}

int KPLMovePages(int instance, int firstPage, int pageCount, int beforePage)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return keepingSelection(open, [&](Document& document) {
                return pages::movePages(document, {firstPage, pageCount}, beforePage);
            });
        });
    });
}

int KPLReversePages(int instance, int firstPage, int pageCount)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onOpenDocument(self, [&](OpenDocument& open) {
            return keepingSelection(open, [&](Document& document) {
                return pages::reversePages(document, {firstPage, pageCount});
            });
        });
    });
}

int KPLReorderPages(int instance, const wchar_t* pageRanges)
{
    return boundary::integer(instance, [&](Instance& self) {
        const std::string ranges = boundary::takeWide(self, pageRanges);
        return onOpenDocument(self, [&](OpenDocument& open) {
            return listOf(*open.document, ranges).and_then([&](const std::vector<int>& list) {
                return keepingSelection(
                    open, [&](Document& document) { return pages::reorderPages(document, list); });
            });
        });
    });
}

wchar_t* KPLExpandPageRanges(int instance, const wchar_t* pageRanges)
{
    return boundary::wideString(instance, [&](Instance& self) {
        const std::string ranges = boundary::takeWide(self, pageRanges);
        return onDocument(self, [&](Document& document) {
            const auto print = [](const std::vector<int>& list) {
                std::string text;
                for (const int page : list) {
                    text += (text.empty() ? "" : ",") + std::to_string(page);
                }
                return text;
            };
            return pages::parsePageList(ranges, document.pageCount()).map(print);
        });
    });
}

int KPLGetPageObject(int instance, int page)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return hasPage(document, page).map([&] {
                return static_cast<int>(document.order().at(page).object);
            });
        });
    });
}

int KPLGetPageOfObject(int instance, int object)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(
            self, [&](Document& document) -> Result<int> { return document.pageOfObject(object); });
    });
}

int KPLGetTabOrder(int instance, int page)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) {
            return hasPage(document, page).map([&] {
                return static_cast<int>(pages::tabOrder(document, page));
            });
        });
    });
}

int KPLSetTabOrder(int instance, int page, int order)
{
    return boundary::integer(instance, [&](Instance& self) {
        return onDocument(self, [&](Document& document) -> Outcome {
            if (order < 0 || order > pages::largestTabOrder) {
                return fail(ErrorCode::BadArgument, "the tab order must be 0 to 5");
            }
            return hasPage(document, page).map([&] {
                pages::setTabOrder(document, page, static_cast<pages::TabOrder>(order));
            });
        });
    });
}

wchar_t* KPLGetPageLabel(int instance, int page)
{
    return boundary::wideString(instance, [&](Instance& self) {
        return onUpToDateDocument(
            self, [&](Document& document) { return pages::pageLabel(document, page); });
    });
}
