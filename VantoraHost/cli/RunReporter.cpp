#include "VantoraHost/cli/RunReporter.h"

#include "VantoraHost/cli/Messages.h"
#include "VantoraHost/core/PageForecast.h"

#include <ostream>

namespace vantora::cli {

namespace {

std::string pagesText(const DocumentReport& report)
{
    const bool planned = report.status == DocumentStatus::Planned;
    const std::string before = grouped(report.pagesBefore.value_or(0)) + " pages";
    const std::string left = ", " + grouped(report.pagesAfter.value_or(0)) + " left";
    if (!report.pagesRemoved) {
        return planned ? before + ", only the action itself knows which would go" : before + left;
    }
    const std::size_t removed = report.pagesRemoved->size();
    return (removed == 0 ? "none" : grouped(removed)) + " of " + before +
           (planned ? " would go" : " removed") +
           (removed == 0 ? "" : " (" + pageNumbersText(*report.pagesRemoved) + ")") + left;
}

std::string resultLine(const DocumentReport& report)
{
    std::string line = inputName(report.input);
    if (report.output == standardStream) {
        line += " -> standard output";
    } else if (report.status == DocumentStatus::Done && report.output != report.input) {
        line += " -> " + shown(report.output);
    }
    line += ": " + pagesText(report);
    if (report.bytesBefore && report.bytesAfter) {
        line += "; " + sizeText(*report.bytesBefore) + " before, " + sizeText(*report.bytesAfter) +
                " after";
    }
    return line;
}

} // namespace

bool writesDocumentToOutput(const RunOptions& options)
{
    return !options.dryRun && std::holds_alternative<ToStandardOutput>(*options.destination);
}

RunReporter::RunReporter(const RunOptions& options, const Streams& streams)
    : options(options), streams(streams), documentOnOutput(writesDocumentToOutput(options)),
      progress(streams.err, streams.errIsTerminal && !options.quiet && options.inputs.size() > 1)
{
}

void RunReporter::documentArrived(const DocumentReport& report)
{
    ++finished;
    failed += report.status == DocumentStatus::Failed ? 1 : 0;
    progress.show(finished, failed, options.inputs.size());
}

void RunReporter::documentInTurn(const DocumentReport& report)
{
    if (saysSomething(report)) {
        progress.clear();
    }
    if (options.json) {
        streams.out << toJson(report) << '\n';
    } else if (report.status != DocumentStatus::Failed && !options.quiet) {
        (documentOnOutput ? streams.err : streams.out) << resultLine(report) << '\n';
    }
    if (!options.quiet) {
        printWarnings(report);
    }
    if (report.error) {
        printError(streams, *report.error);
    }
    streams.out.flush();
    progress.show(finished, failed, options.inputs.size());
}

void RunReporter::finish(const BatchResult& result)
{
    progress.clear();
    const std::string count = grouped(result.finished - result.failed) + " of " +
                              grouped(options.inputs.size()) + " documents done";
    const std::string failures = result.failed > 0 ? ", " + grouped(result.failed) + " failed" : "";
    if (result.interrupted) {
        printNote(streams, "interrupted: " + count + failures + "; nothing is half-written");
    } else if (options.inputs.size() > 1 && !options.quiet) {
        printNote(streams, count + failures);
    }
}

bool RunReporter::saysSomething(const DocumentReport& report) const
{
    return !options.quiet || options.json || report.error;
}

void RunReporter::printWarnings(const DocumentReport& report) const
{
    for (const std::string& warning : report.warnings) {
        printWarning(streams, report.input, warning);
    }
    printRepairs(streams, report.input, report.repairs);
}

} // namespace vantora::cli
