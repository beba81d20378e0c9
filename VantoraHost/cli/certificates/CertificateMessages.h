#pragma once

#include "VantoraHost/core/reports/DocumentReport.h"

#include <optional>
#include <string>
#include <string_view>

/// What a run and the process that draws its certificates tell each other: one JSON object a line.
namespace vantora::cli {

/// What a certificate is about: a document that is done and verified.
struct CertifiedRemoval {
    DocumentReport report;
    std::string command; ///< what was typed, for people
    std::string time;    ///< of the certificate, in ISO 8601
};

std::string certificateOrder(const CertifiedRemoval& removal);
std::optional<CertifiedRemoval> certificateOrderOf(std::string_view line);

std::string certificateAnswer(const Result<std::string>& pdf);

/// The bytes of the PDF, or why there are none.
Result<std::string> certificateAnswerOf(std::string_view line);

} // namespace vantora::cli
