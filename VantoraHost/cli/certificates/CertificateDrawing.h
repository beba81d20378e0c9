#pragma once

#include "VantoraHost/cli/certificates/CertificateMessages.h"

#include <string>

namespace vantora::cli {

/// The certificate as a PDF/A-1b document (ISO 19005-1) of A4 pages, with its fonts. Needs an
/// application that has fonts.
std::string certificatePdf(const CertifiedRemoval& removal);

} // namespace vantora::cli
