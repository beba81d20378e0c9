#include "KarvelPDFLibrary/deletion/Synchronize.h"

#include "KarvelPDFLibrary/deletion/Removal.h"
#include "KarvelPDFLibrary/deletion/Usage.h"
#include "KarvelPDFLibrary/deletion/modules.h"

namespace karvel::deletion {

namespace {

void putReferencesRight(Document& document)
{
    document.changes().settle(); // what an earlier removal left as texts
    document.handOverToCopies();
    Removal removal(document);
    Usage usage(removal);
    // What goes with the pages first, then what leads to them, then what only they used.
    removeAnnotations(removal);
    removeFormFields(removal);
    removeSignatures(removal);
    removeArticleBeads(removal);
    removeNamedDestinations(removal);
    removeActions(removal);
    removeStructure(removal);
    removeOutlineEntries(removal);
    renumberDestinations(removal);
    keepPageLabels(removal);
    removePreviews(removal);
    removeDocumentParts(removal);
    removeSharedResources(removal);
    usage.look();
    removeLayers(removal, usage);
    removeCollectedThings(removal, usage);
    noteWhatIsLeft(removal);
    removal.takeOutDropped();
    document.cutAndWriteTree();
    removal.cutLeftovers();
}

} // namespace

Outcome synchronize(Document& document, Degree degree)
{
    try {
        if (!document.removedPages().empty()) {
            putReferencesRight(document);
        }
        document.cutAndWriteTree();
        if (degree == Degree::Whole) {
            document.changes().settle();
        }
    } catch (...) {
        Error error = currentExceptionAsError(document.name());
        const Outcome status = document.source() ? document.source()->intact() : Outcome();
        return status ? tl::unexpected<Error>(std::move(error)) : status;
    }
    return document.source() ? document.source()->intact() : Outcome();
}

} // namespace karvel::deletion
