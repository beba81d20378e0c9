#pragma once

#include "VantoraHost/desktop/documents/DocumentList.h"
#include "VantoraHost/desktop/pages/Marks.h"
#include "VantoraHost/desktop/recovery/KeptWork.h"
#include "VantoraHost/desktop/sequence/InstalledActions.h"
#include "VantoraHost/desktop/sequence/StepList.h"

#include <optional>
#include <vector>

class QUndoStack;

namespace vantora::desktop {

/// Where work stands in a window; all outlive this.
struct WorkPlaces {
    DocumentList& list;
    Marks& marks;
    StepList& steps;
    QUndoStack& undo;
    const std::vector<InstalledAction>& actions;
};

/// What is in the list, the marks and the steps, to be kept.
KeptWork workIn(const DocumentList& list, const Marks& marks, const StepList& steps);

/// What came of bringing work back.
struct BroughtBack {
    std::vector<DocumentId> ids;     ///< one for each of its documents
    std::optional<Error> stepsFault; ///< why the steps stay as they were
};

/// Adds the documents that aren't listed, gives all of them their marks, and puts the steps in the
/// place of those that are there, as one step of undo.
BroughtBack bringBack(const KeptWork& work, const WorkPlaces& places);

} // namespace vantora::desktop
