#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/viewer/Viewer.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace karvel::viewer {

/// A document as the viewer sees it, for rendering and reading text: the document as it is now,
/// read again only after a change. One view serves one document and lives no longer than it.
class View {
public:
    /// The document open for being looked at, which has the page; valid until the document changes
    /// or the view goes.
    Result<viewer::Viewed*> seen(Document& document, int page);

private:
    Outcome refresh(Document& document);

    std::unique_ptr<viewer::Viewed> seen_;
    std::optional<std::uint64_t> revision_;
};

} // namespace karvel::viewer
