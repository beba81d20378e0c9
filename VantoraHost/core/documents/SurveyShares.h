#pragma once

#include "VantoraHost/core/documents/PageSurvey.h"

#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace vantora {

/// Into how many further parts a document of so many pages is to be divided, which so many
/// processes share, after a first part that is looked at to know the number of pages.
std::size_t furtherParts(int pages, std::size_t processes);

/// The pages of a part, from 0, of so many further ones; of the first part, 0, for any document.
PageSpan spanOfPart(std::size_t part, int pages = 0, std::size_t further = 0);

/// One survey of the parts of a document, in their order. The error is that they are not parts of
/// one version of it, or not all.
Result<PageSurvey> joined(std::vector<PageSurvey> parts);

/// How the surveys of documents are shared among processes, each of which has a copy of this as it
/// was when the process began.
class SurveyShares {
public:
    /// What a process looks at for a part of a document.
    PageSpan spanOf(const std::string& input, std::size_t part) const;

    /// How many parts follow the first one, which is what was found there (toJson), whole.
    std::size_t furtherParts(const std::string& input, const std::string& first,
                             std::size_t processes);

    /// The survey of a document of what was found in its parts.
    static Result<PageSurvey> join(const std::vector<std::string>& found);

private:
    struct Shared {
        int pages = 0;
        std::size_t further = 0; ///< parts
    };
    std::map<std::string, Shared> shared_; ///< by input
};

} // namespace vantora
