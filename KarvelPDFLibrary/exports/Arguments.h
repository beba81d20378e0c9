#pragma once

#include "KarvelPDFLibrary/deletion/Synchronize.h"
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

/// Runs `body(Document&)` on the selected document after putting right what refers to pages that
/// were removed.
template <class Body>
auto onUpToDateDocument(Instance& instance, Body&& body) -> std::invoke_result_t<Body, Document&>
{
    return onDocument(instance, [&](Document& document) -> std::invoke_result_t<Body, Document&> {
        if (Outcome status = deletion::synchronize(document); !status) {
            return tl::unexpected<Error>(status.error());
        }
        return body(document);
    });
}

/// Runs `body(Document&)`, which changes the order of pages but removes none, on an open document.
/// The selection stays with its page.
template <class Body>
auto keepingSelection(OpenDocument& open, Body&& body) -> std::invoke_result_t<Body, Document&>
{
    const int selected = open.document->order().at(open.selectedPage).object;
    auto result = body(*open.document);
    if (open.document->order().at(open.selectedPage).object != selected) {
        open.selectedPage = open.document->pageOfObject(selected);
    }
    return result;
}

} // namespace karvel::boundary
