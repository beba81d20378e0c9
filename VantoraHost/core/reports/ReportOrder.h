#pragma once

#include "VantoraHost/core/reports/DocumentReport.h"

#include <cstddef>
#include <functional>
#include <map>

namespace vantora {

/// Puts reports that come in any order into the order of their documents.
class ReportOrder {
public:
    using Receiver = std::function<void(const DocumentReport&)>;

    explicit ReportOrder(Receiver receiver) : receiver_(std::move(receiver)) {}

    /// Takes the report of a document, numbered from 0, and passes on all whose turn has come.
    void add(std::size_t document, DocumentReport report);

    /// Passes on what waits for documents that are never going to have a report.
    void finish();

    /// The first document without a report.
    std::size_t firstMissing() const { return next_; }

    /// About how much memory the waiting reports take, in bytes.
    std::size_t bytesHeld() const { return held_; }

private:
    const Receiver receiver_;
    std::map<std::size_t, DocumentReport> waiting_;
    std::size_t next_ = 0;
    std::size_t held_ = 0;
};

} // namespace vantora
