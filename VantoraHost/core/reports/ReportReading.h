#pragma once

#include "VantoraHost/core/reports/DocumentReport.h"

#include <cstddef>
#include <functional>
#include <string>

namespace vantora {

/// Whose word a report is.
enum class ReportWriter {
    Anybody,
    Ourselves, ///< it is this user's or the administrator's, and nobody else may write to it
};

/// Takes the report of one document, with the JSON object and the number of its line.
using TakeReport = std::function<Outcome(DocumentReport, const QJsonObject&, std::size_t)>;

/// Hands on what a file says that ReportFile wrote, line by line. An incomplete line at the end,
/// which a stopped machine leaves, and summaries are passed over; anything else that is no report
/// of a document is an error.
Outcome readReport(const std::string& path, ReportWriter writer, const TakeReport& take);

} // namespace vantora
