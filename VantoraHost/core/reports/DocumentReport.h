#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/PageLoss.h"
#include "VantoraHost/core/reports/RunIdentity.h"
#include "VantoraHost/core/reports/VerifiedOutput.h"

#include <QtCore/QJsonObject>

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

enum class DocumentStatus {
    Done,    ///< the output is written whole
    Planned, ///< a dry run: nothing was written
    Skipped, ///< nothing was written, as was asked for; the last warning says why
    Failed,  ///< nothing was written, `error` says why
};

/// What became of one document. What isn't known stays empty.
struct DocumentReport {
    std::string input;                 ///< as named by the caller, "-" for standard input
    std::string output;                ///< "-" for standard output
    std::optional<std::string> range;  ///< the document's own, where a list of ranges gave it one
    std::optional<bool> outputExisted; ///< whether something had the output's name before
    DocumentStatus status = DocumentStatus::Failed;
    bool inPart = false;    ///< not all that was asked for could be done; the warnings say what
    bool leftBlank = false; ///< every page went, and one blank page is left
    std::optional<int> pagesBefore;
    std::optional<int> pagesAfter;
    std::optional<std::vector<int>> pagesRemoved; ///< page numbers of the input, ascending
    std::optional<std::uint64_t> bytesBefore;
    std::optional<std::uint64_t> bytesAfter;
    std::string inputModified; ///< FileState::changed of the input as it was opened; empty for none
    std::string inputSha256;   ///< in hexadecimal digits; empty where nobody asked for it
    std::string outputSha256;  ///< as that of the input
    std::string outputModified; ///< FileState::changed of the output; empty for none
    std::vector<std::string> warnings;
    std::optional<VerifiedOutput> verified; ///< none where nobody asked for it
    std::vector<PageLoss> losses;           ///< what damage made unreadable and the output lacks
    std::vector<std::string> leftToJudge;   ///< what stays and may repeat what removed pages said
    std::vector<std::string> repairs;       ///< what was damaged in the input
    std::optional<Error> error;
    double seconds = 0;
};

/// Warnings and repairs in one list, as reports show them: repairs begin with "repaired: ".
std::vector<std::string> withRepairs(std::vector<std::string> warnings,
                                     const std::vector<std::string>& repairs);

/// The two lists that such a list was made of.
void takeWarnings(const QJsonArray& all, std::vector<std::string>& warnings,
                  std::vector<std::string>& repairs);

/// The report as one JSON object on one line, without the line's end; ASCII only.
std::string toJson(const DocumentReport& report);

/// As toJson, with the run that it comes from, as a line of a report is.
std::string toJson(const DocumentReport& report, const RunIdentity& run);

/// The report that toJson wrote; none when the object isn't one. What is missing counts as not
/// known. Times are rounded to microseconds.
std::optional<DocumentReport> reportOf(const QJsonObject& json);

} // namespace vantora
