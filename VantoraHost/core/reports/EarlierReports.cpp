#include "VantoraHost/core/reports/EarlierReports.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/reports/JsonReading.h"
#include "VantoraHost/core/reports/ReportLines.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace vantora {

namespace {

std::optional<DocumentReport> reportIn(const std::string& line)
{
    const auto json = jsonObjectOf(line);
    return json ? reportOf(*json) : std::nullopt;
}

tl::unexpected<Error> unreadable(const std::string& path, int why)
{
    return fail(why == ENOENT ? Reason::InputMissing : Reason::InputUnreadable, path,
                "the report can't be read: " + systemMessage(why));
}

} // namespace

Result<EarlierReports> EarlierReports::read(const std::vector<std::string>& paths)
{
    EarlierReports reports;
    for (const std::string& path : paths) {
        if (Outcome one = reports.readOne(path); !one) {
            return tl::unexpected<Error>(std::move(one.error()));
        }
    }
    return reports;
}

Outcome EarlierReports::readOne(const std::string& path)
{
    // A named pipe must not wait for a writer before it can be refused.
    const karvel::io::FileDescriptor file(
        ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return unreadable(path, errno);
    }
    if (S_ISDIR(status.st_mode)) {
        return unreadable(path, EISDIR);
    }
    if (!S_ISREG(status.st_mode)) {
        return fail(Reason::NotAReport, path, "is a device or pipe, not a report");
    }
    ReportLines lines(file.get());
    while (auto line = lines.next()) {
        std::optional<DocumentReport> report =
            line->mayBeOurs() && line->complete ? reportIn(line->text) : std::nullopt;
        if (report) {
            take(std::move(*report));
        } else if ((!line->mayBeOurs() || line->complete) && !line->isSummary()) {
            return fail(Reason::NotAReport, path,
                        "line " + std::to_string(line->number) + " is no report of a document");
        }
    }
    return lines.error() == 0 ? Outcome() : unreadable(path, lines.error());
}

void EarlierReports::take(DocumentReport report)
{
    if (report.status == DocumentStatus::Done && report.bytesAfter) {
        if (report.output != report.input) {
            outputs.insert(normalPath(report.output));
        }
        done[std::move(report.input)] = {std::move(report.output),
                                         {*report.bytesAfter, std::move(report.outputModified)}};
    } else {
        noteFailure(report.input);
    }
}

void EarlierReports::noteFailure(const std::string& input)
{
    // A document that was replaced by its own output is that output, as long as its state says so:
    // it was done when its worker died or its folder was moved away, and nobody could tell.
    const auto before = done.find(input);
    if (before != done.end() && before->second.output != input) {
        done.erase(before);
    }
}

bool EarlierReports::stillDone(const std::string& input, const IsPlanned& isPlanned) const
{
    const auto found = done.find(input);
    if (found == done.end() || found->second.state.changed.empty() ||
        !isPlanned(found->second.output)) {
        return false;
    }
    const auto now = stateOf(found->second.output);
    return now && now->size == found->second.state.size &&
           now->changed == found->second.state.changed;
}

} // namespace vantora
