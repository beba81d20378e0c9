#include "VantoraHost/core/DocumentReport.h"

#include "VantoraHost/core/Json.h"

#include <cmath>

namespace vantora {

namespace {

constexpr int schema = 1;

const char* statusName(DocumentStatus status)
{
    switch (status) {
    case DocumentStatus::Done:
        return "done";
    case DocumentStatus::Planned:
        return "planned";
    case DocumentStatus::Failed:
        break;
    }
    return "failed";
}

} // namespace

std::vector<std::string> withRepairs(std::vector<std::string> warnings,
                                     const std::vector<std::string>& repairs)
{
    for (const std::string& repair : repairs) {
        warnings.push_back("repaired: " + repair);
    }
    return warnings;
}

std::string toJson(const DocumentReport& report)
{
    JsonObject json;
    json.add("schema", schema).add("input", report.input);
    if (report.output.empty()) {
        json.addNull("output");
    } else {
        json.add("output", report.output);
    }
    json.add("pages_before", report.pagesBefore)
        .add("pages_after", report.pagesAfter)
        .add("pages_removed", report.pagesRemoved)
        .add("bytes_before", report.bytesBefore)
        .add("bytes_after", report.bytesAfter)
        .add("status", statusName(report.status))
        .add("warnings", withRepairs(report.warnings, report.repairs));
    std::vector<JsonObject> errors;
    if (report.error) {
        errors.emplace_back();
        errors.back()
            .add("reason", reasonName(report.error->reason))
            .add("text", report.error->sentence);
    }
    json.add("errors", errors).add("seconds", std::round(report.seconds * 1e6) / 1e6);
    return json.text();
}

} // namespace vantora
