#include "VantoraHost/cli/watch/GroupReporter.h"

#include "VantoraHost/core/FileIdentity.h"

namespace vantora::cli {

namespace {

bool concernsThePlace(Reason reason)
{
    switch (reason) {
    case Reason::OutputNotWritable:
    case Reason::OutputFolderMissing:
    case Reason::OutputFolderIsLink:
    case Reason::WorkerFailed:
    case Reason::NotReached:
        return true;
    default:
        return false;
    }
}

bool saysNothing(Reason reason)
{
    return reason == Reason::Interrupted || reason == Reason::InputMissing ||
           reason == Reason::ChangedMeanwhile;
}

} // namespace

GroupReporter::GroupReporter(const std::vector<WatchedDocument>& documents, RunReporter& printer,
                             ReportFile& report, const RunIdentity& run, WatchState& state,
                             IsToBlame isToBlame)
    : printer_(printer), report_(report), run_(run), state_(state), isToBlame_(std::move(isToBlame))
{
    for (const WatchedDocument& document : documents) {
        open_.emplace(document.path, &document);
    }
}

// On the disk before any output has its name: what is cut off after that is known to be done by
// the output that is there.
void GroupReporter::outputsGetNames(const std::vector<DocumentReport>& reports)
{
    for (DocumentReport announced : reports) {
        announced.status = DocumentStatus::Planned;
        report_.add(announced, run_);
    }
    unreported_ = unreported_ || !report_.sync();
}

// A failure over a file that is another one by now says nothing of either.
Fate GroupReporter::fateOf(const DocumentReport& report, const WatchedDocument& document) const
{
    if (report.status != DocumentStatus::Failed || !report.error) {
        return Fate::Settled;
    }
    const Reason reason = report.error->reason;
    if (saysNothing(reason) || versionAt(document.path) != document.version) {
        return Fate::Again;
    }
    return concernsThePlace(reason) && !isToBlame_(document.path) ? Fate::Trouble : Fate::Settled;
}

void GroupReporter::documentArrived(const DocumentReport& report)
{
    const auto found = open_.find(report.input);
    if (found == open_.end()) {
        return;
    }
    const WatchedDocument& document = *found->second;
    const Fate fate = fateOf(report, document);
    if (fate != Fate::Settled) {
        silent_.insert(report.input);
        if (fate == Fate::Trouble && !trouble_) {
            trouble_ = report.error;
        }
        return;
    }
    DocumentReport line = report;
    if (line.inputModified.empty()) { // it could not even be opened
        line.bytesBefore = static_cast<std::uint64_t>(document.version.size);
        line.inputModified = stateOf(document.version).changed;
    }
    report_.add(line, run_);
    state_.note(line, document.version);
    settled_.push_back({&document, report.status});
    open_.erase(found);
    printer_.documentArrived(report);
}

void GroupReporter::documentInTurn(const DocumentReport& report)
{
    if (silent_.count(report.input) == 0) {
        printer_.documentInTurn(report);
    }
}

bool GroupReporter::cancelled() const
{
    return unreported_ || printer_.cancelled();
}

std::vector<const WatchedDocument*> GroupReporter::left() const
{
    std::vector<const WatchedDocument*> documents;
    for (const auto& [path, document] : open_) {
        documents.push_back(document);
    }
    return documents;
}

} // namespace vantora::cli
