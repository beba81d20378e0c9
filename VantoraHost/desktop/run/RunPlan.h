#pragma once

#include "VantoraHost/core/documents/Batch.h"
#include "VantoraHost/desktop/pages/Marks.h"
#include "VantoraHost/desktop/run/RunSettings.h"

#include <QtCore/QStringList>

#include <string>
#include <vector>

namespace vantora::desktop {

/// A document that a run is to do.
struct RunDocument {
    DocumentId id = 0;
    Input input;
    int going = 0;                  ///< pages of it
    std::vector<StepRequest> steps; ///< none when it is left as it is
    bool salvages = false;          ///< it may be done with losses
};

/// Documents of a run that get the same steps.
struct RunGroup {
    std::vector<DocumentId> ids; ///< one for each input of the batch
    std::vector<StepRequest> steps;
    Batch batch;
    bool verifies = false; ///< outputs before they get their names
};

/// What a run is going to do, worked out before it starts and without touching anything.
struct RunPlan {
    std::vector<RunGroup> groups;
    std::size_t documents = 0; ///< that are done; others are refused
    std::size_t untouched = 0; ///< that no step is for
    std::uint64_t pages = 0;   ///< that go
    std::size_t replaced = 0;  ///< files that exist and are replaced, but for originals
    std::vector<Error> refused;
};

/// Plans a run. The error is what is wrong with the settings.
Result<RunPlan> planRun(const std::vector<RunDocument>& documents, const RunSettings& settings);

/// The commands of the program that do what the plan does, one a line, for a shell. Passwords are
/// not in them.
QString commandsOf(const RunPlan& plan, const RunSettings& settings);

} // namespace vantora::desktop
