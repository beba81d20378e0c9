#pragma once

#include "KarvelPDFLibrary/exports/Boundary.h"

/// What most exports begin with: the selected document or page.
namespace karvel::boundary {

/// Runs `body(Document&)` on the selected document.
template <class Body>
auto onDocument(Instance& instance, Body&& body) -> std::invoke_result_t<Body, Document&>
{
    Result<OpenDocument*> open = instance.documents.selected();
    if (!open) {
        return tl::unexpected<Error>(open.error());
    }
    return body(*(*open)->document);
}

/// Runs `body(OpenDocument&)` on the selected document and what the instance knows of it.
template <class Body>
auto onOpenDocument(Instance& instance, Body&& body) -> std::invoke_result_t<Body, OpenDocument&>
{
    Result<OpenDocument*> open = instance.documents.selected();
    if (!open) {
        return tl::unexpected<Error>(open.error());
    }
    return body(**open);
}

} // namespace karvel::boundary
