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

/// A signature field and what its signature says of itself; whether that is true, and whether the
/// signature is valid, is not looked at.
struct SignatureInfo {
    std::string field;
    bool isSigned = false;
    std::string signer; ///< empty where it names none
    std::string time;   ///< in ISO 8601; empty where it has none
    /// Whether its byte range covers the whole file but the signature itself; none where that
    /// can't be told.
    std::optional<bool> coversAll;
};

/// An entry of the outline.
struct OutlineLine {
    int level = 1;
    std::string title;
};

/// What is listed where that is asked for. Each list holds so many at most.
inline constexpr std::size_t mostListed = 1000;
struct DocumentLists {
    std::vector<std::string> attachments; ///< their names
    std::vector<std::string> layers;
    std::vector<OutlineLine> outline;
};

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
    std::vector<SignatureInfo> signatureFields; ///< mostListed at most
    std::optional<int> attachments;
    std::optional<int> layers;
    std::optional<bool> linearised;
    std::optional<DocumentLists> lists; ///< none where nobody asked
    std::vector<std::string> repairs;   ///< what was damaged
};

/// Opens a document, looks at it and closes it; `withLists` tells whether the lists are wanted.
Result<DocumentInfo> inspect(KarvelPDFLibraryCPDylibCPP1311& library, const std::string& input,
                             const std::string& standardInput,
                             const std::vector<std::string>& passwords, bool withLists);

} // namespace vantora
