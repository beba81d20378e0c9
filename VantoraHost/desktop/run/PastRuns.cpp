#include "VantoraHost/desktop/run/PastRuns.h"

#include "VantoraHost/desktop/session/StateFolder.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <algorithm>
#include <unistd.h>

namespace vantora::desktop {

namespace {

// "20261126-104500123-20.jsonl": when it began, in UTC, and how many documents it was for.
constexpr char timeFormat[] = "yyyyMMdd-HHmmsszzz";

std::optional<PastRun> runNamed(const QString& name)
{
    static const QRegularExpression pattern("^(\\d{8}-\\d{9})-(\\d{1,9})\\.jsonl$");
    const auto match = pattern.match(name);
    QDateTime begun = QDateTime::fromString(match.captured(1), timeFormat);
    begun.setTimeSpec(Qt::UTC);
    return match.hasMatch() && begun.isValid()
               ? std::optional(PastRun{{}, begun, match.captured(2).toUInt()})
               : std::nullopt;
}

} // namespace

PastRuns::PastRuns() : folder_(stateFolder("runs")) {}

std::vector<PastRun> PastRuns::list() const
{
    std::vector<PastRun> runs;
    for (const QString& name : QDir(qtPath(folder_)).entryList(QDir::Files, QDir::Name)) {
        if (auto run = runNamed(name)) {
            run->report = folder_ + '/' + systemPath(name);
            runs.push_back(std::move(*run));
        }
    }
    std::reverse(runs.begin(), runs.end());
    return runs;
}

std::optional<PastRun> PastRuns::named(const std::string& fileName) const
{
    auto run = runNamed(qtPath(fileName));
    if (run) {
        run->report = folder_ + '/' + fileName;
    }
    return run;
}

Result<PastRuns::Begun> PastRuns::begin(const QDateTime& now, std::size_t documents) const
{
    if (Outcome made = makeStateFolder(folder_); !made) {
        return tl::unexpected<Error>(std::move(made.error()));
    }
    const std::vector<PastRun> before = list();
    for (std::size_t i = most - 1; i < before.size(); ++i) {
        ::unlink(before[i].report.c_str());
    }
    // Another window may begin one at the same time.
    for (QDateTime time = now.toUTC();; time = time.addMSecs(1)) {
        std::string path = folder_ + '/' + time.toString(timeFormat).toStdString() + '-' +
                           std::to_string(documents) + ".jsonl";
        auto file = ReportFile::open(path, ExistingReport::Refuse);
        if (file) {
            return Begun{std::move(path), std::move(*file)};
        }
        if (file.error().reason != Reason::ReportExists) {
            return tl::unexpected<Error>(std::move(file.error()));
        }
    }
}

} // namespace vantora::desktop
