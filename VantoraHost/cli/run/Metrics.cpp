#include "VantoraHost/cli/run/Metrics.h"

#include <cstdio>

namespace vantora::cli {

namespace {

class Metrics {
public:
    void begin(const char* name, const char* help)
    {
        name_ = std::string("vantora_run_") + name;
        text += "# HELP " + name_ + ' ' + help + "\n# TYPE " + name_ + " gauge\n";
    }
    void add(const std::string& labels, const std::string& value)
    {
        text += name_ + (labels.empty() ? "" : '{' + labels + '}') + ' ' + value + '\n';
    }
    void addOne(const char* what, const char* help, const std::string& value)
    {
        begin(what, help);
        add("", value);
    }

    std::string text;

private:
    std::string name_;
};

std::string thousandths(double seconds)
{
    const auto whole = static_cast<std::int64_t>(seconds * 1000 + 0.5);
    char text[64];
    std::snprintf(text, sizeof text, "%lld.%03lld", static_cast<long long>(whole / 1000),
                  static_cast<long long>(whole % 1000));
    return text;
}

} // namespace

std::string metricsText(const RunSummary& summary, const RunEnd& end)
{
    Metrics metrics;
    metrics.begin("documents", "Documents of the run by what became of them.");
    for (const auto& [status, count] : summary.byStatus()) {
        metrics.add("status=\"" + std::string(status) + '"', std::to_string(count));
    }
    metrics.begin("failed_documents", "Documents that failed, by the reason.");
    for (const auto& [reason, count] : summary.byReason()) {
        metrics.add("reason=\"" + std::string(reasonName(reason)) + '"', std::to_string(count));
    }
    metrics.addOne("documents_with_losses", "Damaged documents that were done with losses.",
                   std::to_string(summary.withLosses()));
    metrics.addOne("pages_removed", "Pages that were removed.",
                   std::to_string(summary.removedPages()));
    metrics.begin("bytes", "Size of the documents that were done.");
    metrics.add("when=\"before\"", std::to_string(summary.sizeBefore()));
    metrics.add("when=\"after\"", std::to_string(summary.sizeAfter()));
    metrics.addOne("duration_seconds", "How long the run took.", thousandths(end.seconds));
    metrics.addOne("end_timestamp_seconds", "When the run ended, in seconds since 1970.",
                   std::to_string(end.time / 1'000'000'000));
    metrics.addOne("interrupted", "Whether somebody ended the run.", end.interrupted ? "1" : "0");
    return metrics.text;
}

} // namespace vantora::cli
