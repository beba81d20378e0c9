#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace vantora {

/// How many of a kind of thing a document has.
struct Amount {
    std::uint64_t before = 0;
    std::uint64_t after = 0;
};

struct Amounts {
    Amount outlineEntries;
    Amount links;
    Amount fields; ///< signatures among them
    Amount signatures;
    Amount attachments;
};

/// Removed pages that follow each other.
struct LabelledPages {
    int first = 0;
    int last = 0;
    std::string firstLabel;
    std::string lastLabel;
};

/// What was found out about an output in which verification found nothing.
struct VerifiedOutput {
    std::uint64_t lookedFor = 0;      ///< things of removed pages
    std::vector<std::string> notTold; ///< what can't be told, as sentences
    Amounts amounts;
    std::vector<LabelledPages> labels; ///< none where the document has no labels
};

} // namespace vantora
