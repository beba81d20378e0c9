#include "VantoraHost/core/reports/ReportOrder.h"

#include <utility>

namespace vantora {

namespace {

std::size_t bytesOf(const std::vector<std::string>& texts)
{
    std::size_t bytes = 0;
    for (const std::string& text : texts) {
        bytes += sizeof text + text.size();
    }
    return bytes;
}

std::size_t bytesOf(const DocumentReport& report)
{
    constexpr std::size_t node = 64;
    return sizeof report + node + report.input.size() + report.output.size() +
           report.inputSha256.size() +
           (report.pagesRemoved ? report.pagesRemoved->size() * sizeof(int) : 0) +
           bytesOf(report.warnings) + bytesOf(report.leftToJudge) + bytesOf(report.repairs) +
           report.losses.size() * 2 * sizeof(PageLoss) +
           (report.error ? report.error->file.size() + report.error->sentence.size() : 0);
}

} // namespace

void ReportOrder::add(std::size_t document, DocumentReport report)
{
    if (document != next_) {
        held_ += bytesOf(report);
        waiting_.emplace(document, std::move(report));
        return;
    }
    receiver_(report);
    ++next_;
    for (auto first = waiting_.begin(); first != waiting_.end() && first->first == next_; ++next_) {
        receiver_(first->second);
        held_ -= bytesOf(first->second);
        first = waiting_.erase(first);
    }
}

void ReportOrder::finish()
{
    for (const auto& [document, report] : waiting_) {
        receiver_(report);
        next_ = document + 1;
    }
    waiting_.clear();
    held_ = 0;
}

} // namespace vantora
