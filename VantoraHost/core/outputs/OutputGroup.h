#pragma once

#include "KarvelPDFLibrary/io/OutputFile.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/Target.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <chrono>
#include <cstddef>
#include <vector>

namespace vantora {

/// A document's output that is written whole, but hasn't its name yet.
struct WrittenOutput {
    karvel::io::OutputFile file;
    Target target;
    FileIdentity identity;
};

/// Outputs that get their names together, because waiting for the disk takes hardly longer for many
/// than for one. What is here without a name when the process ends was never there.
class OutputGroup {
public:
    /// A document's place in the run, and what became of it.
    struct Entry {
        std::size_t number;
        DocumentReport report;
        bool asWritten; ///< whether the report is the one that it was added with
    };

    /// Takes an output and the report that its document is to have.
    void add(std::size_t number, DocumentReport report, WrittenOutput output);

    bool empty() const { return members_.empty(); }

    /// The reports of its documents, as they were added.
    std::vector<DocumentReport> reports() const;

    /// Whether the outputs had better get their names before another one is added.
    bool isFull() const;

    /// Waits until the disk has the outputs, and gives them their names. Each document is done or
    /// failed then, whatever happens to the machine.
    std::vector<Entry> place();

private:
    struct Member {
        std::size_t number;
        DocumentReport report;
        WrittenOutput output;
    };

    std::vector<Member> members_;
    std::uint64_t bytes_ = 0;
    std::chrono::steady_clock::time_point begun_;
};

/// What a report says once the document has failed.
void turnIntoFailure(DocumentReport& report, Error error);

} // namespace vantora
