#pragma once

#include "VantoraHost/core/language/Language.h"
#include "VantoraHost/core/reports/DocumentReport.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace vantora {

/// How a run ended, beside what became of its documents.
struct RunEnd {
    std::size_t total = 0; ///< documents of the run
    double seconds = 0;    ///< how long it took
    std::int64_t time = 0; ///< when, in nanoseconds since 1970
    bool interrupted = false;
    std::size_t notNamed = 0; ///< further inputs, which no list of ranges named
};

/// Counts what becomes of the documents of a run.
class RunSummary {
public:
    void add(const DocumentReport& report);

    std::size_t finished() const { return done_ + skipped_ + failed_; }
    std::size_t failed() const { return failed_; }

    /// How many are done with losses.
    std::size_t withLosses() const { return withLosses_; }

    /// Of how many the output was verified.
    std::size_t verified() const { return verified_; }

    /// How many failed for other reasons than these.
    std::size_t failedBut(const std::vector<Reason>& accepted) const;

    /// How many of `total` documents are done, verified, in part, left blank, left out, with
    /// warnings, and failed, by reason; says so where all of these are accepted.
    std::string documentsText(std::size_t total, const std::vector<Reason>& accepted = {},
                              const Language& language = {}) const;

    /// How many documents there are of each status of a report, all of these named.
    std::vector<std::pair<const char*, std::size_t>> byStatus() const;
    const std::map<Reason, std::size_t>& byReason() const { return reasons_; }
    std::uint64_t removedPages() const { return pagesRemoved_.value_or(0); }
    std::uint64_t sizeBefore() const { return bytesBefore_; }
    std::uint64_t sizeAfter() const { return bytesAfter_; }

    /// All of it as one JSON object on one line: {"schema":1,"summary":{...}}.
    std::string json(const RunEnd& end) const;

    /// Pages, bytes and documents a second, of what was done in so many seconds; empty when nothing
    /// was.
    std::string workText(double seconds, const Language& language = {}) const;

private:
    std::size_t done_ = 0;    ///< or planned, in a dry run
    std::size_t planned_ = 0; ///< of those done
    std::size_t failed_ = 0;
    std::size_t inPart_ = 0;    ///< of those done
    std::size_t leftBlank_ = 0; ///< of those done
    std::size_t skipped_ = 0;
    std::size_t withWarnings_ = 0;
    std::size_t withLosses_ = 0; ///< of those done
    std::size_t verified_ = 0;   ///< of those done
    std::map<Reason, std::size_t> reasons_;
    std::optional<std::uint64_t> pagesRemoved_; ///< none where no report tells
    std::uint64_t bytesBefore_ = 0;             ///< of documents with an output, as bytesAfter
    std::uint64_t bytesAfter_ = 0;
};

} // namespace vantora
