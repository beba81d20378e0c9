#pragma once

#include "VantoraHost/core/reports/ReportFile.h"

#include <map>
#include <string>
#include <utility>
#include <vector>

namespace vantora {

/// The report of a run that is going on. A document that is reported before its output gets its
/// name, so that a run which is killed leaves none that is done and not reported, has no second
/// line once it is done.
class RunReport {
public:
    explicit RunReport(ReportFile file) : file_(std::move(file)) {}

    /// Outputs are about to get their names; returns once the disk has the lines about them.
    void outputsGetNames(const std::vector<DocumentReport>& reports, const RunIdentity& run);

    void documentArrived(const DocumentReport& report, const RunIdentity& run);

    /// As of ReportFile.
    Outcome sync() { return file_.sync(); }

private:
    ReportFile file_;
    std::map<std::string, std::string> reportedFirst_; ///< what it says already, by input
};

} // namespace vantora
