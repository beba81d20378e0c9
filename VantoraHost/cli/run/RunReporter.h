#pragma once

#include "VantoraHost/cli/console/Streams.h"
#include "VantoraHost/cli/run/ProgressLine.h"
#include "VantoraHost/cli/run/RunOptions.h"
#include "VantoraHost/cli/run/RunRecords.h"
#include "VantoraHost/core/documents/Batch.h"
#include "VantoraHost/core/reports/RunReport.h"
#include "VantoraHost/core/reports/RunSummary.h"

#include <optional>
#include <string>
#include <vector>

namespace vantora::cli {

/// Whether the document itself goes to standard output.
bool writesDocumentToOutput(const RunOptions& options);

/// Prints what a run has to say as it goes.
class RunReporter : public RunObserver {
public:
    /// Where lines about documents go, and what they say of the run.
    struct Reporting {
        RunIdentity run;
        std::optional<RunReport> report; ///< the one that --report names
        std::size_t notNamed = 0;        ///< inputs that the list of ranges leaves as they are
    };

    /// `total` is the number of documents of the run. The options, records and streams must outlive
    /// the reporter.
    RunReporter(const RunOptions& options, std::size_t total, Reporting reporting,
                RunRecords& records, const Streams& streams);

    void outputsGetNames(const std::vector<DocumentReport>& reports) override;
    void documentArrived(const DocumentReport& report) override;
    void documentInTurn(const DocumentReport& report) override;
    bool cancelled() const override { return streams_.interrupted(); }

    /// Prints how the run ended, and writes its figures where asked. The error is that the report
    /// isn't complete, or the figures can't be written.
    Outcome finish(bool interrupted);

    /// Whether a document failed for a reason that counts for the exit status, or has no
    /// certificate that was asked for.
    bool someFailed() const
    {
        return recordsFailed_ || summary_.failedBut(options_.acceptedFailures) > 0;
    }

    /// Whether a document is done with losses.
    bool someLost() const { return summary_.withLosses() > 0; }

private:
    bool saysSomething(const DocumentReport& report) const;
    void printSummary(bool interrupted) const;
    void printWarnings(const DocumentReport& report) const;
    void printWhatIsLeft(const DocumentReport& report) const;

    const RunOptions& options_;
    const Streams& streams_;
    const bool documentOnOutput_;
    const std::size_t total_;
    const ProgressLine::Clock::time_point started_ = ProgressLine::Clock::now();
    Reporting reporting_;
    RunRecords& records_;
    bool recordsFailed_ = false;
    ProgressLine progress_;
    RunSummary summary_;
};

} // namespace vantora::cli
