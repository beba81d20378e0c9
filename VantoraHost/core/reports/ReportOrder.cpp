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
           (report.error ? report.error->file.size() + report.error->sentence.size() : 0);
}

} // namespace

void ReportOrder::add(std::size_t document, DocumentReport report)
{
    if (document != next) {
        held += bytesOf(report);
        waiting.emplace(document, std::move(report));
        return;
    }
    receiver(report);
    ++next;
    for (auto first = waiting.begin(); first != waiting.end() && first->first == next; ++next) {
        receiver(first->second);
        held -= bytesOf(first->second);
        first = waiting.erase(first);
    }
}

void ReportOrder::finish()
{
    for (const auto& [document, report] : waiting) {
        receiver(report);
        next = document + 1;
    }
    waiting.clear();
    held = 0;
}

} // namespace vantora
