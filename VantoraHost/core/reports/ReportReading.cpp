#include "VantoraHost/core/reports/ReportReading.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/reports/JsonReading.h"
#include "VantoraHost/core/reports/ReportLines.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>

namespace vantora {

namespace {

tl::unexpected<Error> unreadable(const std::string& path, int why)
{
    return fail(why == ENOENT ? Reason::InputMissing : Reason::InputUnreadable, path,
                "the report can't be read: " + systemMessage(why));
}

bool isOursAlone(const struct stat& status)
{
    return !isOwnedByOthers(status) && !othersMayWriteTo(status);
}

Outcome takeLine(const std::string& path, const ReportLines::Line& line, const TakeReport& take)
{
    const bool isTorn = line.mayBeOurs() && !line.complete;
    if (isTorn || line.isSummary()) {
        return {};
    }
    const auto json = line.mayBeOurs() ? jsonObjectOf(line.text) : std::nullopt;
    auto report = json ? reportOf(*json) : std::nullopt;
    if (!report) {
        return fail(Reason::NotAReport, path,
                    "line " + std::to_string(line.number) + " is no report of a document");
    }
    return take(std::move(*report), *json, line.number);
}

} // namespace

Outcome readReport(const std::string& path, ReportWriter writer, const TakeReport& take)
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
    if (writer == ReportWriter::Ourselves && !isOursAlone(status)) {
        return fail(Reason::ReportUntrusted, path, "others can write to this report");
    }
    ReportLines lines(file.get());
    while (const auto line = lines.next()) {
        if (Outcome taken = takeLine(path, *line, take); !taken) {
            return taken;
        }
    }
    return lines.error() == 0 ? Outcome() : unreadable(path, lines.error());
}

} // namespace vantora
