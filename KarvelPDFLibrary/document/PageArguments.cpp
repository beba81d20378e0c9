#include "KarvelPDFLibrary/document/PageArguments.h"

#include <string>

namespace karvel {

namespace {

Error missing(Document& document, const std::string& pages)
{
    return {ErrorCode::BadPageList, document.name() + ": has no " + pages + "; it has " +
                                        std::to_string(document.pageCount())};
}

} // namespace

Outcome hasPage(Document& document, int page)
{
    if (page < 1 || page > document.pageCount()) {
        return tl::unexpected<Error>(missing(document, "page " + std::to_string(page)));
    }
    return {};
}

Outcome hasPages(Document& document, PageRun run)
{
    const auto last = static_cast<long long>(run.first) + run.count - 1;
    if (run.count < 1 || run.first < 1 || last > document.pageCount()) {
        return tl::unexpected<Error>(missing(document, "pages " + std::to_string(run.first) +
                                                           " to " + std::to_string(last)));
    }
    return {};
}

Outcome hasPlaceBefore(Document& document, int page)
{
    return page == document.pageCount() + 1 ? Outcome() : hasPage(document, page);
}

} // namespace karvel
