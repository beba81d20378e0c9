#include "VantoraHost/core/reports/RunReport.h"

namespace vantora {

void RunReport::outputsGetNames(const std::vector<DocumentReport>& reports, const RunIdentity& run)
{
    for (const DocumentReport& document : reports) {
        file_.add(document, run);
        reportedFirst_[document.input] = toJson(document);
    }
    static_cast<void>(file_.sync()); // the end of the run says what went wrong
}

void RunReport::documentArrived(const DocumentReport& report, const RunIdentity& run)
{
    const auto first = reportedFirst_.find(report.input);
    const bool isKnown = first != reportedFirst_.end() && first->second == toJson(report);
    if (first != reportedFirst_.end()) {
        reportedFirst_.erase(first);
    }
    if (!isKnown) {
        file_.add(report, run);
    }
}

} // namespace vantora
