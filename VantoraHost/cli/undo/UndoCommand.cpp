#include "VantoraHost/cli/undo/UndoCommand.h"

#include "VantoraHost/cli/console/Messages.h"
#include "VantoraHost/core/outputs/RunUndo.h"
#include "VantoraHost/core/reports/FailureJson.h"
#include "VantoraHost/core/reports/Json.h"

#include <array>
#include <ostream>

namespace vantora::cli {

namespace {

std::string whatHappened(UndoStatus status, bool dryRun, const Language& language)
{
    switch (status) {
    case UndoStatus::GivenBack:
        return dryRun ? language.text("would be given back") : language.text("given back");
    case UndoStatus::Removed:
        return dryRun ? language.text("would be removed") : language.text("removed");
    case UndoStatus::Already:
        return language.text("is undone already");
    case UndoStatus::LeftAlone:
        break;
    }
    return language.text("left alone");
}

std::string jsonOf(const Undone& undone, bool dryRun)
{
    JsonObject json;
    json.add("schema", reportSchema)
        .add("input", undone.input)
        .add("output", undone.output)
        .add("undo", statusName(undone.status))
        .add("dry_run", dryRun);
    std::vector<JsonObject> errors;
    if (undone.why) {
        errors.push_back(errorJson(*undone.why));
    }
    return json.add("errors", errors).text();
}

/// Says what came of each document, and counts.
class UndoReporter {
public:
    UndoReporter(const UndoOptions& options, const Streams& streams)
        : options_(options), streams_(streams)
    {
    }

    void take(const Undone& undone)
    {
        ++counts_.at(static_cast<std::size_t>(undone.status));
        if (options_.json) {
            streams_.out << jsonOf(undone, options_.dryRun) << '\n';
        } else if (undone.status != UndoStatus::LeftAlone && !options_.quiet) {
            streams_.out << shown(undone.output) << ": "
                         << whatHappened(undone.status, options_.dryRun, streams_.language) << '\n';
        }
        if (undone.why) {
            printError(streams_, *undone.why);
        }
    }

    void printSummary() const
    {
        const Language& language = streams_.language;
        std::string text;
        for (const UndoStatus status : {UndoStatus::GivenBack, UndoStatus::Removed,
                                        UndoStatus::Already, UndoStatus::LeftAlone}) {
            if (const std::size_t count = countOf(status); count > 0) {
                text += (text.empty() ? "" : ", ") + language.number(count) + ' ' +
                        (status == UndoStatus::Already
                             ? language.text("undone already")
                             : whatHappened(status, options_.dryRun, language));
            }
        }
        printNote(streams_, text.empty() ? language.text("the report has nothing to undo") : text);
    }

    std::size_t countOf(UndoStatus status) const
    {
        return counts_.at(static_cast<std::size_t>(status));
    }

private:
    const UndoOptions& options_;
    const Streams& streams_;
    std::array<std::size_t, 4> counts_ = {};
};

} // namespace

int undoRun(const UndoOptions& options, const Streams& streams)
{
    const auto undo = RunUndo::read(options.reports);
    if (!undo) {
        return failedWith(streams, options.json, undo.error());
    }
    UndoReporter reporter(options, streams);
    undo->undo({options.removeOutputs, options.dryRun, streams.interrupted},
               [&](const Undone& undone) { reporter.take(undone); });
    if (!options.quiet) {
        reporter.printSummary();
    }
    if (streams.interrupted()) {
        printNote(streams,
                  streams.language.text("interrupted; to go on, give the same command again"));
        return InterruptedByUser;
    }
    return reporter.countOf(UndoStatus::LeftAlone) == 0 ? AllDone : SomeFailed;
}

} // namespace vantora::cli
