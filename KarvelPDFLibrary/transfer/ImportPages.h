#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/transfer/ObjectCopier.h"

#include <memory>
#include <utility>
#include <vector>

namespace karvel::transfer {

/// What a document took from others, so that what their pages share is taken once though the pages
/// come one by one.
class Imports {
public:
    SharedCopies& from(const std::shared_ptr<Document>& source);

    /// What was begun to be taken may not be whole.
    void forget(const std::shared_ptr<Document>& source) { from(source).clear(); }

private:
    std::vector<std::pair<std::weak_ptr<Document>, SharedCopies>> sources_;
};

enum class WithOutline { No, Yes };

/// Inserts pages of a document that is not changed any more (Frozen) before a page of another; the
/// page count plus 1 appends. The pages come with their annotations and fields, the named
/// destinations that they use and their layers; when all pages come, with all of these. Names that
/// are taken are changed. A page that is listed twice comes twice. Links to pages that do not come
/// stay behind. Fails, and changes nothing, when
/// a page is not there or its content was lost to damage.
Outcome importPages(Document& target, Imports& imports, const std::shared_ptr<Document>& source,
                    const std::vector<int>& list, int beforePage, WithOutline outline);

/// Inserts copies of a run of a document's own pages before a page. Fields get names of their own.
Outcome copyPages(Document& document, PageRun run, int beforePage);

/// Puts a page of a frozen document in the place of a page: what refers to the page refers to the
/// new one.
Outcome replacePage(Document& target, Imports& imports, int page,
                    const std::shared_ptr<Document>& source, int sourcePage);

/// Inserts a frozen document's pages after every page in turn, from the last one with `reversed`;
/// those beyond the last page follow it. Returns how many they are.
Result<int> interleave(Document& target, Imports& imports, const std::shared_ptr<Document>& source,
                       bool reversed);

} // namespace karvel::transfer
