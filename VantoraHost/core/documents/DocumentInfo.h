#pragma once

#include "VantoraHost/core/Error.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// Pages of one size, as a viewer shows them.
struct PageSize {
    double width = 0;  ///< points, to a hundredth
    double height = 0; ///< points, to a hundredth
    int firstPage = 0; ///< the first page of that size
    int pages = 0;     ///< how many have it
    std::string paper; ///< such as "A4"; empty when the size is none with a name
};

/// The operations of a document that its owner may permit or not, in the library's order.
inline constexpr std::array<const char*, 8> permissionNames = {
    "printing",     "modifying",     "copying",    "annotating",
    "form filling", "accessibility", "assembling", "full-quality printing"};

/// What `vantora info` shows. What the library can't tell in this version stays empty.
struct DocumentInfo {
    std::string input;
    std::uint64_t bytes = 0;
    int pages = 0;
    std::vector<PageSize> pageSizes;       ///< in the order of their first pages
    std::string version;                   ///< such as "1.7"
    std::optional<std::string> encryption; ///< such as "AES 256 bits"; "none"
    std::vector<std::string> permitted;    ///< of permissionNames; all when not encrypted
    std::optional<std::string> title;
    std::optional<int> outlineEntries;
    std::optional<int> fields;
    std::optional<bool> tagged;
    std::optional<int> signatures;
    std::optional<int> attachments;
    std::optional<int> layers;
    std::optional<bool> linearised;
    std::vector<std::string> repairs; ///< what was damaged
};

/// Opens a document, looks at it and closes it.
Result<DocumentInfo> inspect(KarvelPDFLibraryCPDylibCPP1311& library, const std::string& input,
                             const std::string& standardInput,
                             const std::vector<std::string>& passwords);

} // namespace vantora
