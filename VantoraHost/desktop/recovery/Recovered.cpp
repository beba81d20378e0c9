#include "VantoraHost/desktop/recovery/Recovered.h"

#include "VantoraHost/core/reports/ReportReading.h"

#include <unordered_map>

namespace vantora::desktop {

namespace {

using Places = std::unordered_map<std::string, std::size_t>; // by input

// A report may have its line before an output gets its name.
bool isAsReported(const DocumentReport& report)
{
    if (report.status != DocumentStatus::Done || !report.bytesBefore || !report.bytesAfter) {
        return false;
    }
    const FileState before = {*report.bytesBefore, report.inputModified};
    const FileState after = {*report.bytesAfter, report.outputModified};
    return isStill(stateOf(report.output), after) &&
           (report.output == report.input || isStill(stateOf(report.input), before));
}

// A document that the run came to twice has its last line.
Outcome readReported(Recovered& found, Places& places, const std::atomic<bool>& stopped)
{
    return readReport(
        found.report, ReportWriter::Ourselves,
        [&](DocumentReport report, const QJsonObject& json, std::size_t) -> Outcome {
            if (stopped) {
                return fail(Reason::Interrupted, found.report, "is not wanted any more");
            }
            const auto [place, isNew] = places.emplace(report.input, found.reported.size());
            if (isNew) {
                found.reported.emplace_back();
            }
            ReportedDocument& document = found.reported[place->second];
            document.report = std::move(report);
            document.stepsDigest = json["run"].toObject()["steps_sha256"].toString().toStdString();
            return {};
        });
}

} // namespace

Recovered recovered(KeptWork work, const std::string& report, const std::atomic<bool>& stopped)
{
    Recovered found;
    found.work = std::move(work);
    found.report = report;
    Places places;
    if (!report.empty()) {
        if (Outcome read = readReported(found, places, stopped); !read) {
            found.reportFault = std::move(read.error());
            found.reported.clear();
            places.clear();
        }
    }
    for (ReportedDocument& document : found.reported) {
        document.isDone = !stopped && isAsReported(document.report);
    }
    for (const KeptDocument& document : found.work.documents) {
        const auto reported = places.find(document.input.path);
        const bool isDone = document.done && !stopped &&
                            (isStill(stateOf(document.input.path), *document.done) ||
                             (reported != places.end() && found.reported[reported->second].isDone));
        found.isDone.push_back(isDone);
    }
    return found;
}

} // namespace vantora::desktop
