#include "KarvelPDFLibrary/pages/DeletePages.h"

#include <string>

namespace karvel::pages {

Status deletePages(Document& document, PageRun run)
{
    const int total = document.pageCount();
    const auto last = static_cast<long long>(run.first) + run.count - 1;
    if (run.count < 1 || run.first < 1 || last > total) {
        return fail(ErrorCode::BadPageList,
                    document.name() + ": has no pages " + std::to_string(run.first) + " to " +
                        std::to_string(last) + "; it has " + std::to_string(total));
    }
    if (run.count == total) {
        return fail(ErrorCode::BadPageList, document.name() + ": no page would remain");
    }
    document.removePages(run);
    return {};
}

} // namespace karvel::pages
