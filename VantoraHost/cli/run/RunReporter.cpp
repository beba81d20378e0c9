#include "VantoraHost/cli/run/RunReporter.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/cli/run/Metrics.h"
#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/PageNumbers.h"
#include "VantoraHost/core/outputs/TextFile.h"

#include <algorithm>
#include <ostream>

namespace vantora::cli {

namespace {

std::string pagesText(const DocumentReport& report)
{
    const bool planned = report.status == DocumentStatus::Planned;
    const std::string before = counted(report.pagesBefore.value_or(0), "page", "pages");
    if (!report.pagesRemoved && planned) {
        return before + "; what would become of them, only the action itself knows";
    }
    if (!report.pagesRemoved) {
        return report.pagesAfter == report.pagesBefore
                   ? before
                   : before + " before, " + grouped(report.pagesAfter.value_or(0)) + " after";
    }
    const std::string left = ", " + grouped(report.pagesAfter.value_or(0)) + " left";
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
    } else if (!report.output.empty() && report.output != report.input) {
        const bool replaces =
            report.status == DocumentStatus::Planned && report.outputExisted.value_or(false);
        line += " -> " + shown(report.output) + (replaces ? " (exists, would be replaced)" : "");
    }
    if (report.status == DocumentStatus::Skipped) {
        return line + ": left out; " + counted(report.pagesBefore.value_or(0), "page", "pages");
    }
    line += ": " + pagesText(report);
    if (report.bytesBefore && report.bytesAfter) {
        line += "; " + sizeText(*report.bytesBefore) + " before, " + sizeText(*report.bytesAfter) +
                " after";
    }
    return line + (report.verified ? "; verified" : "");
}

std::string howToGoOn(const RunOptions& options)
{
    const auto& resumed = options.resumed;
    if (std::find(resumed.begin(), resumed.end(), options.reportPath) != resumed.end()) {
        return "to go on, give the same command again";
    }
    if (!options.reportPath.empty()) {
        return "to go on, give the same command with --resume " + shown(options.reportPath);
    }
    return "a run with --report FILE can be gone on with";
}

} // namespace

bool writesDocumentToOutput(const RunOptions& options)
{
    return !options.dryRun && std::holds_alternative<ToStandardOutput>(*options.destination);
}

RunReporter::RunReporter(const RunOptions& options, std::size_t total, Reporting reporting,
                         RunRecords& records, const Streams& streams)
    : options_(options), streams_(streams), documentOnOutput_(writesDocumentToOutput(options)),
      total_(total), reporting_(std::move(reporting)), records_(records),
      progress_(streams.err, streams.errIsTerminal && !options.quiet && total > 1, started_)
{
}

void RunReporter::outputsGetNames(const std::vector<DocumentReport>& reports)
{
    if (reporting_.report) {
        reporting_.report->outputsGetNames(reports, reporting_.run);
    }
}

void RunReporter::documentArrived(const DocumentReport& document)
{
    if (reporting_.report) {
        reporting_.report->documentArrived(document, reporting_.run);
    }
    summary_.add(document);
    progress_.show(summary_.finished(), summary_.failed(), total_);
}

void RunReporter::documentInTurn(const DocumentReport& report)
{
    if (saysSomething(report)) {
        progress_.clear();
    }
    if (options_.json) {
        streams_.out << toJson(report, reporting_.run) << '\n';
    } else if (report.status != DocumentStatus::Failed && !options_.quiet) {
        (documentOnOutput_ ? streams_.err : streams_.out) << resultLine(report) << '\n';
    }
    if (!options_.quiet) {
        printWarnings(report);
    }
    if (options_.verbose) {
        printWhatIsLeft(report);
    }
    if (report.error) {
        printError(streams_, *report.error);
    }
    if (const Outcome kept = records_.add(report); !kept) {
        printError(streams_, kept.error());
        recordsFailed_ = true;
    }
    streams_.out.flush();
    progress_.show(summary_.finished(), summary_.failed(), total_);
}

Outcome RunReporter::finish(bool interrupted)
{
    progress_.clear();
    printSummary(interrupted);
    const std::chrono::duration<double> taken = ProgressLine::Clock::now() - started_;
    const RunEnd end = {total_, taken.count(), nanosecondsNow(), interrupted, reporting_.notNamed};
    if (options_.json) {
        streams_.out << summary_.json(end) << '\n' << std::flush;
    }
    Outcome synced = reporting_.report ? reporting_.report->sync() : Outcome();
    if (Outcome kept = records_.finish(); synced) {
        synced = std::move(kept);
    }
    if (options_.metricsPath.empty()) {
        return synced;
    }
    const Outcome written = writeTextFile(options_.metricsPath, metricsText(summary_, end));
    return synced ? written : synced;
}

void RunReporter::printSummary(bool interrupted) const
{
    std::string documents = summary_.documentsText(total_, options_.acceptedFailures);
    if (reporting_.notNamed > 0) {
        documents += "; " + grouped(reporting_.notNamed) +
                     " not named in the list of ranges, and left as they are";
    }
    if (interrupted) {
        printNote(streams_, "interrupted: " + documents + "; nothing is half-written; " +
                                howToGoOn(options_));
    } else if ((total_ > 1 || reporting_.notNamed > 0) && !options_.quiet) {
        const std::chrono::duration<double> taken = ProgressLine::Clock::now() - started_;
        const std::string work = summary_.workText(taken.count());
        printNote(streams_, documents + (work.empty() ? "" : "; " + work));
    }
}

bool RunReporter::saysSomething(const DocumentReport& report) const
{
    return !options_.quiet || options_.json || report.error;
}

void RunReporter::printWarnings(const DocumentReport& report) const
{
    for (const std::string& warning : report.warnings) {
        printWarning(streams_, report.input, warning);
    }
    for (const PageLoss& loss : report.losses) {
        printWarning(streams_, report.input,
                     "lost of page " + grouped(static_cast<std::uint64_t>(loss.page)) + ": " +
                         loss.what);
    }
    printRepairs(streams_, report.input, report.repairs);
}

void RunReporter::printWhatIsLeft(const DocumentReport& report) const
{
    std::string things;
    for (const std::string& thing : report.leftToJudge) {
        things += (things.empty() ? "" : "; ") + thing;
    }
    if (!things.empty()) {
        printNote(streams_, inputName(report.input) + ": left, for you to judge: " + shown(things));
    }
}

} // namespace vantora::cli
