#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/choices/ChosenPages.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// Which pages of a document choices name, without changing anything.
struct PageSurvey {
    std::string input; ///< "-" for standard input
    int pages = 0;
    std::vector<ChosenPage> chosen;
    std::map<int, std::string> pictures; ///< of chosen pages and their neighbours, as JPEG
    std::vector<std::string> warnings;   ///< what could not be found out
    std::vector<std::string> repairs;
};

/// A survey has no more pictures than this, and takes none for one that is larger.
inline constexpr std::size_t mostPictures = 1000;
inline constexpr std::size_t largestPicture = 128 * 1024; ///< in bytes

/// Surveys a document; up to so many `pictures` are taken. The error says why it can't be.
Result<PageSurvey> surveyPages(KarvelPDFLibraryCPDylibCPP1311& library, const std::string& input,
                               const std::string& standardInput,
                               const std::vector<std::string>& passwords, const ChoiceSet& choices,
                               std::size_t pictures);

/// The survey as one JSON object on one line, which is also what `vantora pages --json` prints
/// without the pictures; where there is none, that is failureJson().
enum class WithPictures { Yes, No };
std::string toJson(const PageSurvey& survey, WithPictures pictures);

/// What such an object says, as far as it makes sense: pages that ascend within the document,
/// pictures that are such. The error is the one that it tells, or that it is none.
Result<PageSurvey> pageSurveyOf(std::string_view json);

} // namespace vantora
