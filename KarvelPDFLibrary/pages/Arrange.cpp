#include "KarvelPDFLibrary/pages/Arrange.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"

#include <algorithm>
#include <string>

namespace karvel::pages {

namespace {

/// More pages than this are not meant; each costs memory.
constexpr int mostBlankPages = 1'000'000;

QPDFObjectHandle blankPage(Document& document, page_boxes::Size size)
{
    QPDFObjectHandle page = QPDFObjectHandle::newDictionary();
    page.replaceKey("/Type", QPDFObjectHandle::newName("/Page"));
    page.replaceKey("/MediaBox", QPDFObjectHandle::newArray(
                                     QPDFObjectHandle::Rectangle(0, 0, size.width, size.height)));
    page.replaceKey("/Resources", QPDFObjectHandle::newDictionary());
    return document.changes().add(page);
}

std::vector<PageEntry>::iterator place(std::vector<PageEntry>& entries, int page)
{
    return entries.begin() + (page - 1);
}

} // namespace

Outcome insertBlankPages(Document& document, int beforePage, int count)
{
    if (Outcome status = hasPlaceBefore(document, beforePage); !status) {
        return status;
    }
    if (count < 1 || count > mostBlankPages) {
        return fail(ErrorCode::BadArgument, "the number of pages must be 1 to 1000000");
    }
    const page_boxes::Size size =
        page_boxes::shownSize(document, std::min(beforePage, document.pageCount()));
    std::vector<QPDFObjectHandle> pages;
    pages.reserve(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i) {
        pages.push_back(blankPage(document, size));
    }
    document.insertPages(beforePage, pages);
    return {};
}

int appendBlankPage(Document& document, double width, double height)
{
    document.insertPages(document.pageCount() + 1, {blankPage(document, {width, height})});
    return document.pageCount();
}

Result<int> deletePages(Document& document, const std::vector<int>& list)
{
    std::vector<bool> listed(static_cast<std::size_t>(document.pageCount()) + 1);
    for (const int page : list) {
        if (Outcome status = hasPage(document, page); !status) {
            return tl::unexpected<Error>(status.error());
        }
        listed[static_cast<std::size_t>(page)] = true;
    }
    const auto count = static_cast<int>(std::count(listed.begin(), listed.end(), true));
    if (count == document.pageCount()) {
        return fail(ErrorCode::BadPageList, document.name() + ": no page would remain");
    }
    // From the back, so that the numbers of what is still to go stay as they are.
    for (int last = document.pageCount(); last > 0; --last) {
        int first = last;
        while (first > 0 && listed[static_cast<std::size_t>(first)]) {
            --first;
        }
        if (first < last) {
            document.removePages({first + 1, last - first});
            last = first;
        }
    }
    return count;
}

Outcome movePages(Document& document, PageRun run, int beforePage)
{
    if (Outcome status = hasPages(document, run); !status) {
        return status;
    }
    if (Outcome status = hasPlaceBefore(document, beforePage); !status) {
        return status;
    }
    const int end = run.first + run.count;
    if (beforePage >= run.first && beforePage < end) {
        return fail(ErrorCode::BadArgument, "the page to move before is among the pages to move");
    }
    std::vector<PageEntry> entries = document.order().toVector();
    if (beforePage < run.first) {
        std::rotate(place(entries, beforePage), place(entries, run.first), place(entries, end));
    } else {
        std::rotate(place(entries, run.first), place(entries, end), place(entries, beforePage));
    }
    document.reorderPages(std::move(entries));
    return {};
}

Outcome reversePages(Document& document, PageRun run)
{
    if (Outcome status = hasPages(document, run); !status) {
        return status;
    }
    std::vector<PageEntry> entries = document.order().toVector();
    std::reverse(place(entries, run.first), place(entries, run.first + run.count));
    document.reorderPages(std::move(entries));
    return {};
}

Outcome reorderPages(Document& document, const std::vector<int>& list)
{
    const auto total = static_cast<std::size_t>(document.pageCount());
    std::vector<bool> listed(total + 1);
    std::vector<PageEntry> entries;
    for (const int page : list) {
        if (Outcome status = hasPage(document, page); !status) {
            return status;
        }
        if (listed[static_cast<std::size_t>(page)]) {
            return fail(ErrorCode::BadPageList, document.name() + ": the list names page " +
                                                    std::to_string(page) + " twice");
        }
        listed[static_cast<std::size_t>(page)] = true;
        entries.push_back(document.order().at(page));
    }
    if (entries.size() != total) {
        return fail(ErrorCode::BadPageList, document.name() + ": the list names " +
                                                std::to_string(entries.size()) + " of " +
                                                std::to_string(total) + " pages");
    }
    document.reorderPages(std::move(entries));
    return {};
}

} // namespace karvel::pages
