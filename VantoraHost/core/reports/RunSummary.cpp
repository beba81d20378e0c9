#include "VantoraHost/core/reports/RunSummary.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/IsoTime.h"
#include "VantoraHost/core/reports/Json.h"

#include <algorithm>
#include <cmath>

namespace vantora {

void RunSummary::add(const DocumentReport& report)
{
    if (report.status == DocumentStatus::Failed) {
        ++failed_;
        if (report.error) {
            ++reasons_[report.error->reason];
        }
        return;
    }
    if (report.status == DocumentStatus::Skipped) {
        ++skipped_;
        return;
    }
    ++done_;
    planned_ += report.status == DocumentStatus::Planned ? 1 : 0;
    inPart_ += report.inPart ? 1 : 0;
    leftBlank_ += report.leftBlank ? 1 : 0;
    withWarnings_ += report.warnings.empty() && report.repairs.empty() ? 0 : 1;
    withLosses_ += report.losses.empty() ? 0 : 1;
    verified_ += report.verified ? 1 : 0;
    if (report.pagesRemoved) {
        pagesRemoved_ = pagesRemoved_.value_or(0) + report.pagesRemoved->size();
    }
    if (report.bytesAfter) {
        bytesBefore_ += report.bytesBefore.value_or(0);
        bytesAfter_ += *report.bytesAfter;
    }
}

std::size_t RunSummary::failedBut(const std::vector<Reason>& accepted) const
{
    std::size_t others = failed_;
    for (const auto& [reason, count] : reasons_) {
        const bool isAccepted =
            std::find(accepted.begin(), accepted.end(), reason) != accepted.end();
        others -= isAccepted ? count : 0;
    }
    return others;
}

std::string RunSummary::documentsText(std::size_t total, const std::vector<Reason>& accepted,
                                      const Language& language) const
{
    std::string text =
        language.text("%1 of %2 documents done", {language.number(done_), language.number(total)});
    const auto add = [&](std::size_t count, const std::string& what) {
        text += count == 0 ? "" : ", " + what;
    };
    add(verified_, language.text("%1 verified", {language.number(verified_)}));
    add(inPart_, language.text("%1 in part", {language.number(inPart_)}));
    add(leftBlank_, language.text("%1 left with a blank page only", {language.number(leftBlank_)}));
    add(skipped_, language.text("%1 left out", {language.number(skipped_)}));
    add(withWarnings_, language.text("%1 with warnings", {language.number(withWarnings_)}));
    add(withLosses_, language.text("%1 with losses", {language.number(withLosses_)}));
    if (failed_ > 0) {
        add(failed_, language.text("%1 failed", {language.number(failed_)}));
        const char* separator = " (";
        for (const auto& [reason, count] : reasons_) {
            text += separator + language.number(count) + ' ' + reasonName(reason);
            separator = ", ";
        }
        text += reasons_.empty() ? "" : ")";
        text += failedBut(accepted) == 0 ? language.text(", which was to be accepted") : "";
    }
    return text;
}

std::vector<std::pair<const char*, std::size_t>> RunSummary::byStatus() const
{
    return {{"done", done_ - planned_},
            {"planned", planned_},
            {"skipped", skipped_},
            {"failed", failed_}};
}

std::string RunSummary::json(const RunEnd& end) const
{
    JsonObject failures;
    for (const auto& [reason, count] : reasons_) {
        failures.add(reasonName(reason), static_cast<std::uint64_t>(count));
    }
    JsonObject figures;
    figures.add("version", VANTORA_VERSION).add("documents", static_cast<std::uint64_t>(end.total));
    for (const auto& [status, count] : byStatus()) {
        figures.add(status, static_cast<std::uint64_t>(count));
    }
    figures.add("not_named", static_cast<std::uint64_t>(end.notNamed));
    figures.add("in_part", static_cast<std::uint64_t>(inPart_))
        .add("left_blank", static_cast<std::uint64_t>(leftBlank_))
        .add("with_warnings", static_cast<std::uint64_t>(withWarnings_))
        .add("reasons", failures)
        .add("pages_removed", pagesRemoved_)
        .add("bytes_before", bytesBefore_)
        .add("bytes_after", bytesAfter_)
        .add("with_losses", static_cast<std::uint64_t>(withLosses_))
        .add("verified", static_cast<std::uint64_t>(verified_))
        .add("interrupted", end.interrupted)
        .add("ended_at", isoTime(end.time))
        .add("ended", std::to_string(end.time))
        .add("seconds", std::round(end.seconds * 1e6) / 1e6);
    JsonObject object;
    object.add("schema", 1).add("summary", figures);
    return object.text();
}

std::string RunSummary::workText(double seconds, const Language& language) const
{
    if (done_ == 0) {
        return {};
    }
    std::string text;
    if (pagesRemoved_) {
        text =
            language.text("%1 removed", {language.counted(*pagesRemoved_, "page", "pages")}) + "; ";
    }
    if (bytesAfter_ > 0) {
        text += language.text("%1 before, %2 after",
                              {language.size(bytesBefore_), language.size(bytesAfter_)}) +
                "; ";
    }
    return text + language.text("%1 documents a second",
                                {language.figures(rateText(finished(), seconds))});
}

} // namespace vantora
