#include "VantoraHost/desktop/run/ReportSaver.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "VantoraHost/core/reports/ReportLines.h"
#include "VantoraHost/core/reports/RunSummary.h"
#include "VantoraHost/desktop/run/ResultsPane.h"
#include "VantoraHost/desktop/run/RunRemedy.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <fcntl.h>

#include <algorithm>
#include <cerrno>
#include <memory>
#include <utility>

namespace vantora::desktop {

namespace {

QString cell(const ResultList& results, int row, int column)
{
    return results.index(row, column).data().toString();
}

ReportRow rowOf(const ResultList& results, int row)
{
    const RunResult& result = results.results()[static_cast<std::size_t>(row)];
    ReportRow shown;
    shown.name = cell(results, row, ResultList::Name);
    shown.path = shownText(result.report.input);
    shown.outcome = cell(results, row, ResultList::Outcome);
    shown.isGood = !result.report.error;
    shown.pages = cell(results, row, ResultList::Pages);
    shown.size = cell(results, row, ResultList::Size);
    shown.output = cell(results, row, ResultList::Output);
    if (result.report.status == DocumentStatus::Done && result.report.pagesRemoved) {
        shown.removed = result.report.pagesRemoved->size();
    }
    return shown;
}

// Those that are whole, as they stand there.
Result<std::string> linesOf(const std::string& report)
{
    const karvel::io::FileDescriptor file(
        ::open(report.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    if (!file) {
        return fail(Reason::InputUnreadable, report, systemMessage(errno));
    }
    std::string text;
    ReportLines lines(file.get());
    while (const auto line = lines.next()) {
        text += line->complete ? line->text + '\n' : std::string();
    }
    return lines.error() == 0 ? Result<std::string>(std::move(text))
                              : fail(Reason::InputUnreadable, report, systemMessage(lines.error()));
}

} // namespace

ReportSaver::ReportSaver(const ResultList& results, Pictures& pictures,
                         std::function<QString(const std::string&)> passwordFor, QObject* parent)
    : QObject(parent), results_(results), passwordFor_(std::move(passwordFor)), pictures_(pictures)
{
    connect(&pictures_, &ReportPictures::progressed, this, [this] {
        emit noted(tr("The report is being saved: %1 of %2", "pictures")
                       .arg(numberText(pictures_.done()),
                            ReportSaver::tr("%n picture(s)", nullptr, asCount(pictures_.total()))));
    });
    connect(&pictures_, &ReportPictures::finished, this, &ReportSaver::write);
}

void ReportSaver::saveHtml(const QString& path, ExistingText existing, const QString& title)
{
    if (isBusy_) {
        return;
    }
    isBusy_ = true;
    path_ = systemPath(path);
    existing_ = existing;
    content_ = {};
    content_.title = title;
    RunSummary summary;
    std::vector<DocumentReport> reports;
    for (int row = 0; row < results_.rowCount(); ++row) {
        content_.rows.push_back(rowOf(results_, row));
        reports.push_back(results_.results()[static_cast<std::size_t>(row)].report);
        summary.add(reports.back());
    }
    content_.summary = summaryText(summary, reports.size(), false, {});
    background_.start([this, reports = std::move(reports)](const std::atomic<bool>& stopped) {
        auto originals = std::make_shared<std::vector<ReportOriginal>>(reports.size());
        std::size_t pages = 0;
        for (std::size_t i = 0; i < reports.size() && !stopped; ++i) {
            const bool isDone = reports[i].status == DocumentStatus::Done;
            if (isDone && reports[i].pagesRemoved && pages < ReportPictures::most) {
                (*originals)[i] = originalOf(reports[i]);
                pages += (*originals)[i].path.empty() ? 0
                                                      : std::min((*originals)[i].pages.size(),
                                                                 ReportPictures::mostOfADocument);
            }
        }
        return [this, originals, reports] {
            for (std::size_t i = 0; i < reports.size(); ++i) {
                ReportOriginal& original = (*originals)[i];
                if (!original.path.empty()) {
                    original.password = passwordFor_(reports[i].input);
                } else if (!original.pages.empty()) {
                    content_.rows[i].whyNoPicture =
                        tr("the original is not there any more as it was");
                }
            }
            originals_ = std::move(*originals);
            pictures_.make(originals_);
        };
    });
}

void ReportSaver::write(std::vector<ReportPictures::Made> made)
{
    background_.start([this, path = path_, existing = existing_, content = std::move(content_),
                       originals = std::move(originals_),
                       made = std::move(made)](const std::atomic<bool>& /*stopped*/) mutable {
        for (std::size_t i = 0; i < made.size(); ++i) {
            ReportRow& row = content.rows[i];
            // The pictures may be those of a file that has taken the original's place meanwhile.
            const bool isStillIt = originals[i].path.empty() ||
                                   isStill(stateOf(originals[i].path), originals[i].state);
            if (isStillIt) {
                row.pictures = std::move(made[i].pictures);
            }
            if (!isStillIt) {
                row.whyNoPicture = tr("the original is not there any more as it was");
            } else if (!made[i].why.isEmpty()) {
                row.whyNoPicture = made[i].why;
            }
        }
        const Outcome written = writePrivateText(path, reportHtml(content), existing);
        return [this, written, path] {
            isBusy_ = false;
            say(written, path);
        };
    });
    content_ = {};
    originals_.clear();
}

void ReportSaver::saveJson(const QString& path, ExistingText existing, const std::string& report)
{
    if (isBusy_) {
        return;
    }
    std::string known;
    for (const RunResult& result : results_.results()) {
        known += toJson(result.report) + '\n';
    }
    background_.start([this, path = systemPath(path), existing, report,
                       known = std::move(known)](const std::atomic<bool>& /*stopped*/) {
        auto lines = report.empty() ? Result<std::string>(known) : linesOf(report);
        const Outcome done = lines.and_then(
            [&](const std::string& text) { return writePrivateText(path, text, existing); });
        return [this, done, path] { say(done, path); };
    });
}

void ReportSaver::say(const Outcome& written, const std::string& path)
{
    emit noted(written ? tr("The report is saved as %1.").arg(shownText(path))
                       : tr("The report is not saved: %1: %2.", "a file and what is wrong with it")
                             .arg(shownText(written.error().file), explained(written.error())));
}

} // namespace vantora::desktop
