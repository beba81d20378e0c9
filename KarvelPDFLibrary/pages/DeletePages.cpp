#include "KarvelPDFLibrary/pages/DeletePages.h"

#include "KarvelPDFLibrary/document/PageArguments.h"

namespace karvel::pages {

Outcome deletePages(Document& document, PageRun run)
{
    if (Outcome status = hasPages(document, run); !status) {
        return status;
    }
    if (run.count == document.pageCount()) {
        return fail(ErrorCode::BadPageList, document.name() + ": no page would remain");
    }
    document.removePages(run);
    return {};
}

} // namespace karvel::pages
