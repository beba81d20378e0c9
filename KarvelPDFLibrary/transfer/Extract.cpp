#include "KarvelPDFLibrary/transfer/Extract.h"

#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/pages/Arrange.h"
#include "KarvelPDFLibrary/transfer/Frozen.h"
#include "KarvelPDFLibrary/transfer/ImportPages.h"

namespace karvel::transfer {

namespace {

/// Each repeated page is copied by itself.
constexpr int mostRepeats = 1000;

/// The places of the listed pages in the order; those that come again are copied to its end.
Result<std::vector<PageEntry>> listed(Document& document, const std::vector<int>& list,
                                      std::vector<bool>& used)
{
    std::vector<PageEntry> entries;
    int repeats = 0;
    for (const int page : list) {
        int number = page;
        if (used[static_cast<std::size_t>(page)]) {
            if (++repeats > mostRepeats) {
                return fail(ErrorCode::OutOfMemory, "the page list repeats too many pages");
            }
            number = document.pageCount() + 1;
            if (Outcome status = copyPages(document, {page, 1}, number); !status) {
                return tl::unexpected<Error>(status.error());
            }
        }
        used[static_cast<std::size_t>(page)] = true;
        entries.push_back(document.order().at(number));
    }
    return entries;
}

} // namespace

Result<std::unique_ptr<Document>> extract(Document& document, const std::vector<int>& list)
{
    for (const int page : list) {
        if (Outcome status = hasPage(document, page); !status) {
            return tl::unexpected<Error>(status.error());
        }
    }
    auto part = duplicate(document);
    if (!part) {
        return part;
    }
    const int total = (*part)->pageCount();
    std::vector<bool> used(static_cast<std::size_t>(total) + 1);
    Result<std::vector<PageEntry>> entries = listed(**part, list, used);
    if (!entries) {
        return tl::unexpected<Error>(entries.error());
    }
    std::vector<int> rest;
    for (int page = 1; page <= total; ++page) {
        if (!used[static_cast<std::size_t>(page)]) {
            rest.push_back(page);
        }
    }
    if (const Result<int> deleted = pages::deletePages(**part, rest); !deleted) {
        return tl::unexpected<Error>(deleted.error());
    }
    (*part)->reorderPages(std::move(*entries));
    return part;
}

} // namespace karvel::transfer
