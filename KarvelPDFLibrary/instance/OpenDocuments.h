#pragma once

#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/outlines/Targets.h"
#include "KarvelPDFLibrary/rendering/PageBlankness.h"
#include "KarvelPDFLibrary/transfer/Frozen.h"
#include "KarvelPDFLibrary/transfer/ImportPages.h"
#include "KarvelPDFLibrary/viewer/View.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace karvel {

/// An open document of an instance.
struct OpenDocument {
    /// Positive and never used twice within the instance.
    int handle = 0;
    std::unique_ptr<Document> document;
    int selectedPage = 1;

    /// The entries of its outline that have handles, and the handles of these.
    std::map<int, QPDFObjGen> outlineEntries = {};
    std::map<QPDFObjGen, int> outlineHandles = {};
    outlines::Targets outlineTargets = {};

    /// For rendering and reading text.
    viewer::View view = {};
    rendering::LastJudgement lastJudgement = {};

    /// For taking pages from it, and for what it took from others.
    transfer::Frozen frozen = {};
    transfer::Imports imports = {};
};

/// The open documents of an instance in opening order, one of them selected.
class OpenDocuments {
public:
    /// Adds a document, selects it and its first page, and returns its handle.
    int add(std::unique_ptr<Document> document);

    /// A number for another kind of thing: handles are unique over all kinds.
    int nextHandle() { return ++lastHandle_; }

    /// The selected document, or the error that there is none.
    Result<OpenDocument*> selected();

    /// An open document by its handle, or the error that there is none.
    Result<OpenDocument*> find(int handle);

    Outcome select(int handle);

    /// Closes the selected document and selects the one opened before it, if any.
    Outcome closeSelected();

    /// Closes all and returns how many there were.
    int closeAll();

    const std::vector<OpenDocument>& all() const { return documents_; }

private:
    std::vector<OpenDocument> documents_;
    int selected_ = 0;
    int lastHandle_ = 0;
};

} // namespace karvel
