#pragma once

#include "VantoraHost/core/reports/RunSummary.h"

#include <string>

namespace vantora::cli {

/// The figures of a run in the text format that Prometheus' node exporter reads from files:
/// https://prometheus.io/docs/instrumenting/exposition_formats/
std::string metricsText(const RunSummary& summary, const RunEnd& end);

} // namespace vantora::cli
