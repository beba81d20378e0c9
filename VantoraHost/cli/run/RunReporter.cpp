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

// What became of the pages of a document, or would become of them.
std::string removedText(const DocumentReport& report, const std::string& before,
                        const Language& language)
{
    const bool planned = report.status == DocumentStatus::Planned;
    const std::string left = language.number(report.pagesAfter.value_or(0));
    if (report.pagesRemoved->empty()) {
        return planned ? language.text("none of %1 would go, %2 left", {before, left})
                       : language.text("none of %1 removed, %2 left", {before, left});
    }
    const TextValues values = {language.number(report.pagesRemoved->size()), before,
                               pageNumbersText(*report.pagesRemoved), left};
    return planned ? language.text("%1 of %2 would go (%3), %4 left", values)
                   : language.text("%1 of %2 removed (%3), %4 left", values);
}

std::string pagesText(const DocumentReport& report, const Language& language)
{
    const std::string before = language.counted(report.pagesBefore.value_or(0), "page", "pages");
    if (report.pagesRemoved) {
        return removedText(report, before, language);
    }
    if (report.status == DocumentStatus::Planned) {
        return language.text("%1; what would become of them, only the action itself knows",
                             {before});
    }
    return report.pagesAfter == report.pagesBefore
               ? before
               : language.text("%1 before, %2 after",
                               {before, language.number(report.pagesAfter.value_or(0))});
}

std::string resultLine(const DocumentReport& report, const Language& language)
{
    std::string line = inputName(report.input, language);
    if (report.output == standardStream) {
        line += " -> " + language.text("standard output");
    } else if (!report.output.empty() && report.output != report.input) {
        const bool replaces =
            report.status == DocumentStatus::Planned && report.outputExisted.value_or(false);
        line += " -> " + shown(report.output) +
                (replaces ? " (" + language.text("exists, would be replaced") + ")" : "");
    }
    line += ": ";
    if (report.status == DocumentStatus::Skipped) {
        return line +
               language.text("left out; %1",
                             {language.counted(report.pagesBefore.value_or(0), "page", "pages")});
    }
    line += pagesText(report, language);
    if (report.bytesBefore && report.bytesAfter) {
        line += "; " + language.text("%1 before, %2 after", {language.size(*report.bytesBefore),
                                                             language.size(*report.bytesAfter)});
    }
    return line + (report.verified ? "; " + language.text("verified") : "");
}

std::string howToGoOn(const RunOptions& options, const Language& language)
{
    const auto& resumed = options.resumed;
    if (std::find(resumed.begin(), resumed.end(), options.reportPath) != resumed.end()) {
        return language.text("to go on, give the same command again");
    }
    if (!options.reportPath.empty()) {
        return language.text("to go on, give the same command with --resume %1",
                             {shown(options.reportPath)});
    }
    return language.text("a run with --report FILE can be gone on with");
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
      progress_(streams.err, streams.errIsTerminal && !options.quiet && total > 1, started_,
                streams.language)
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
        (documentOnOutput_ ? streams_.err : streams_.out)
            << resultLine(report, streams_.language) << '\n';
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
    const Language& language = streams_.language;
    std::string documents = summary_.documentsText(total_, options_.acceptedFailures, language);
    if (reporting_.notNamed > 0) {
        documents +=
            "; " + language.text("%1 not named in the list of ranges, and left as they are",
                                 {language.number(reporting_.notNamed)});
    }
    if (interrupted) {
        printNote(streams_, language.text("interrupted: %1; nothing is half-written; %2",
                                          {documents, howToGoOn(options_, language)}));
    } else if ((total_ > 1 || reporting_.notNamed > 0) && !options_.quiet) {
        const std::chrono::duration<double> taken = ProgressLine::Clock::now() - started_;
        const std::string work = summary_.workText(taken.count(), language);
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
        things += (things.empty() ? "" : "; ") + streams_.language.sentence(shown(thing));
    }
    if (!things.empty()) {
        printNote(streams_, inputName(report.input, streams_.language) + ": " +
                                streams_.language.text("left, for you to judge: %1", {things}));
    }
}

} // namespace vantora::cli
