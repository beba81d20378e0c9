#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/choices/ChosenPages.h"

#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

class KarvelPDFLibraryCPDylibCPP1311;

namespace vantora {

/// Which pages of a document choices name, without changing anything; also of a span of it alone.
struct PageSurvey {
    std::string input; ///< "-" for standard input
    int pages = 0;     ///< of the whole document
    PageSpan span;     ///< what was looked at; only pages of it are chosen
    std::vector<ChosenPage> chosen;
    std::map<int, std::string> pictures; ///< of chosen pages and their neighbours, as JPEG
    std::set<int> unreadable;            ///< pages that were asked for text that can't be read
    std::vector<std::string> warnings;   ///< what could not be found out
    std::vector<std::string> repairs;
    std::string version; ///< tells versions of the file apart; empty of standard input
};

/// A survey has no more pictures than this, and takes none for one that is larger.
inline constexpr std::size_t mostPictures = 1000;
inline constexpr std::size_t largestSurveyPicture = 128 * 1024; ///< in bytes

/// What to survey of a document that is opened with one of the passwords, or with none.
struct SurveyRequest {
    const ChoiceSet& choices;
    const std::vector<std::string>& passwords;
    std::size_t pictures = 0; ///< up to so many are taken
    PageSpan span = {};
};

/// Surveys a document. The error says why it can't be.
Result<PageSurvey> surveyPages(KarvelPDFLibraryCPDylibCPP1311& library, const std::string& input,
                               const std::string& standardInput, const SurveyRequest& request);

/// The survey as one JSON object on one line: as `vantora pages --json` prints it, or with all that
/// joining and showing it takes. Where there is none, that is failureJson().
enum class Extent { Printed, Whole };
std::string toJson(const PageSurvey& survey, Extent extent);

/// What such an object says, as far as it makes sense: pages that ascend within the document,
/// pictures that are such. The error is the one that it tells, or that it is none.
Result<PageSurvey> pageSurveyOf(std::string_view json);

} // namespace vantora
