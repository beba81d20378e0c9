#pragma once

#include "VantoraHost/cli/Options.h"
#include "VantoraHost/cli/ProgressLine.h"
#include "VantoraHost/cli/Streams.h"
#include "VantoraHost/core/Batch.h"

namespace vantora::cli {

/// Whether the document itself goes to standard output.
bool writesDocumentToOutput(const RunOptions& options);

/// Prints what a run has to say as it goes.
class RunReporter : public RunObserver {
public:
    /// The options and streams must outlive the reporter.
    RunReporter(const RunOptions& options, const Streams& streams);

    void documentArrived(const DocumentReport& report) override;
    void documentInTurn(const DocumentReport& report) override;
    bool cancelled() const override { return streams.interrupted(); }

    /// Prints how the run ended.
    void finish(const BatchResult& result);

private:
    bool saysSomething(const DocumentReport& report) const;
    void printWarnings(const DocumentReport& report) const;

    const RunOptions& options;
    const Streams& streams;
    const bool documentOnOutput;
    ProgressLine progress;
    std::size_t finished = 0;
    std::size_t failed = 0;
};

} // namespace vantora::cli
