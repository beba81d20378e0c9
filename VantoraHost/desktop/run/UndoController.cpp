#include "VantoraHost/desktop/run/UndoController.h"

#include "VantoraHost/core/reports/ReportReading.h"
#include "VantoraHost/desktop/run/RunRemedy.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QJsonObject>

#include <unordered_map>

namespace vantora::desktop {

namespace {

constexpr int interval = 100; // milliseconds

QString sentenceOf(const Error& error)
{
    return UndoController::tr("%1: %2.", "a file and what is wrong with it")
        .arg(shownName(error.file), explained(error));
}

// A document that a run came to twice, as one that was tried again, has its last result.
Result<std::vector<RunResult>> resultsIn(const std::string& report)
{
    std::vector<RunResult> results;
    std::unordered_map<std::string, std::size_t> places;
    const Outcome read =
        readReport(report, ReportWriter::Ourselves,
                   [&](DocumentReport document, const QJsonObject&, std::size_t) -> Outcome {
                       const auto [place, isNew] = places.emplace(document.input, results.size());
                       if (isNew) {
                           results.emplace_back();
                       }
                       results[place->second].report = std::move(document);
                       return {};
                   });
    return read ? Result<std::vector<RunResult>>(std::move(results))
                : tl::unexpected<Error>(read.error());
}

QStringList countsOf(const UndoOutlook& outlook)
{
    QStringList parts;
    if (outlook.givenBack > 0) {
        parts << UndoController::tr("%n original(s) put back", nullptr, asCount(outlook.givenBack));
    }
    if (outlook.removed > 0) {
        parts << UndoController::tr("%n result(s) removed", nullptr, asCount(outlook.removed));
    }
    if (outlook.already > 0) {
        parts << UndoController::tr("%n undone already", nullptr, asCount(outlook.already));
    }
    if (outlook.leftAlone > 0) {
        parts << UndoController::tr("%n left alone", nullptr, asCount(outlook.leftAlone));
    }
    return parts;
}

// What would be done is asked, not told.
QStringList askedCountsOf(const UndoOutlook& outlook)
{
    QStringList parts;
    if (outlook.givenBack > 0) {
        parts << UndoController::tr("%n original(s) will be put back", nullptr,
                                    asCount(outlook.givenBack));
    }
    if (outlook.removed > 0) {
        parts << UndoController::tr("%n result(s) will be removed", nullptr,
                                    asCount(outlook.removed));
    }
    if (outlook.already > 0) {
        parts << UndoController::tr("%n undone already", nullptr, asCount(outlook.already));
    }
    if (outlook.leftAlone > 0) {
        parts << UndoController::tr("%n will be left alone", nullptr, asCount(outlook.leftAlone));
    }
    return parts;
}

QString whyText(const UndoOutlook& outlook)
{
    return outlook.firstWhy ? ' ' + sentenceOf(*outlook.firstWhy) : QString();
}

} // namespace

void UndoOutlook::add(const Undone& undone)
{
    switch (undone.status) {
    case UndoStatus::GivenBack:
        ++givenBack;
        break;
    case UndoStatus::Removed:
        ++removed;
        break;
    case UndoStatus::Already:
        ++already;
        break;
    case UndoStatus::LeftAlone:
        ++leftAlone;
        firstWhy = firstWhy ? firstWhy : undone.why;
        break;
    }
}

UndoController::UndoController(QObject* parent)
    : QObject(parent), done_(std::make_shared<std::atomic<std::size_t>>(0)),
      total_(std::make_shared<std::atomic<std::size_t>>(0))
{
    connect(&timer_, &QTimer::timeout, this, &UndoController::progressed);
}

void UndoController::read(const std::string& report)
{
    background_.start([this, report](const std::atomic<bool>&) {
        return [this, results = resultsIn(report)] {
            if (results) {
                emit runRead(*results);
            } else {
                emit failed(sentenceOf(results.error()));
            }
        };
    });
}

void UndoController::foresee(const std::string& report)
{
    begin(report, true);
}

void UndoController::undo(const std::string& report)
{
    begin(report, false);
}

void UndoController::begin(const std::string& report, bool dryRun)
{
    *done_ = 0;
    *total_ = 0;
    if (!dryRun) {
        timer_.start(interval);
    }
    background_.start(
        [this, report, dryRun, done = done_, total = total_](const std::atomic<bool>& stopped) {
            std::vector<Undone> documents;
            UndoOutlook outlook;
            std::optional<Error> error;
            if (const auto run = RunUndo::read({report})) {
                *total = run->count();
                run->undo({true, dryRun, [&stopped] { return stopped.load(); }},
                          [&](const Undone& undone) {
                              outlook.add(undone);
                              documents.push_back(undone);
                              ++*done;
                          });
            } else {
                error = run.error();
            }
            return [this, dryRun, error, outlook, documents = std::move(documents)] {
                timer_.stop();
                if (error) {
                    emit failed(sentenceOf(*error));
                } else if (dryRun) {
                    emit foreseen(outlook);
                } else {
                    emit undone(documents);
                }
            };
        });
}

QString outlookText(const UndoOutlook& outlook)
{
    const QString counts = countsOf(outlook).join(QStringLiteral(" · "));
    if (!outlook.hasWork()) {
        return (counts.isEmpty() ? UndoController::tr("This run has written nothing.")
                                 : UndoController::tr("Nothing to undo: %1.").arg(counts)) +
               whyText(outlook);
    }
    return UndoController::tr("Undo this run? %1.", "counts")
               .arg(askedCountsOf(outlook).join(QStringLiteral(" · "))) +
           whyText(outlook);
}

QString undoneText(const UndoOutlook& outlook)
{
    return UndoController::tr("Undone: %1.", "counts")
               .arg(countsOf(outlook).join(QStringLiteral(" · "))) +
           whyText(outlook);
}

} // namespace vantora::desktop
