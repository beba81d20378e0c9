#pragma once

#include <string>

namespace support {

/// Where two documents differ, object by object from the trailer; empty when they say the same.
/// Object numbers may differ, and so may identifiers, /Length and what only describes the file.
std::string firstDifference(const std::string& onePdf, const std::string& otherPdf,
                            const std::string& password = {});

} // namespace support
