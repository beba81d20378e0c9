#pragma once

#include "VantoraHost/core/reports/DocumentReport.h"
#include "VantoraHost/desktop/recovery/KeptWork.h"

#include <atomic>
#include <functional>
#include <vector>

namespace vantora::desktop {

/// What the report of a run says of a document, and whether that still holds.
struct ReportedDocument {
    DocumentReport report;
    std::string stepsDigest;
    bool isDone = false; ///< its output is as the report says, and in place it is that output
};

/// Work that a window has left behind, compared with what is on the disk now.
struct Recovered {
    KeptWork work;
    std::vector<bool> isDone; ///< of each document: a run has done it, and it is as it was then
    std::string report;       ///< the file; empty where no run has results
    std::vector<ReportedDocument> reported;
    std::optional<Error> reportFault; ///< why the report can't be read
};

/// Looks at the disk; `report` is the file of the work's report, empty for none.
Recovered recovered(KeptWork work, const std::string& report, const std::atomic<bool>& stopped);

} // namespace vantora::desktop
