#include "KarvelPDFLibrary/saving/Damage.h"

#include "KarvelPDFLibrary/base/Text.h"
#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "KarvelPDFLibrary/content/LostContent.h"

#include <algorithm>
#include <string>
#include <vector>

namespace karvel::saving {

namespace {

constexpr char missingContent[] = "content that cannot be read is missing";

bool mayLose(const Document& document, LostPages lost)
{
    return lost == LostPages::AsWished && document.maySalvage();
}

/// The number of a page in the document as it was loaded, which is what its caller knows it by.
int numberLoaded(const Document& document, int page)
{
    const int number = document.order().at(page).loaded;
    return number > 0 ? number : page;
}

void warnOnce(Document& document, const std::string& text)
{
    Warnings& warnings = document.warnings();
    if (std::find(warnings.begin(), warnings.end(), text) == warnings.end()) {
        warnings.push_back(text);
    }
}

void warnOfLoss(Document& document, int number, const std::string& what)
{
    warnOnce(document, lostOfPage + std::to_string(number) + ": " + what);
}

Outcome damaged(Document& document, const std::string& how)
{
    return fail(ErrorCode::NotPdf, document.name() + ": damaged: " + how);
}

/// "page 19", "page 19 and 2 others"
std::string pagesText(int first, std::size_t count)
{
    return "page " + std::to_string(first) +
           (count == 1 ? "" : " and " + text::counted(count - 1, "other", "others"));
}

/// Viewers can't show a page whose content is something else.
void dropWhatIsNoContent(Document& document)
{
    for (int page = 1; page <= document.pageCount(); ++page) {
        QPDFObjectHandle contents = document.page(page).getKey("/Contents");
        if (!contents.isNull() && !contents.isStream() && !contents.isArray()) {
            document.editPage(page).removeKey("/Contents");
            warnOfLoss(document, numberLoaded(document, page), missingContent);
        }
    }
}

/// Which pages went has to be the same for readers that count them otherwise.
Outcome settleDoubts(Document& document, bool mayLose)
{
    const PageDoubts& doubts = document.pageDoubts();
    if (!doubts.any() && doubts.unknownFrom == 0) {
        return {};
    }
    const std::vector<std::int32_t> removed = document.removedSinceLoading();
    const std::int32_t doubtful = doubts.firstPerhapsNotMeant(removed);
    if (doubtful > 0) {
        const std::string how =
            "its page tree leads to what is no page, so that viewers may call page " +
            std::to_string(doubtful) + " by another number";
        if (!mayLose) {
            return damaged(document, how + " and another page be meant");
        }
        warnOnce(document, deletingPages + how);
    }
    for (const std::int32_t page : removed) {
        if (doubts.isLost(page)) {
            warnOnce(document, deletingPages + ("page " + std::to_string(page)) +
                                   ", which cannot be read, was removed; viewers that leave it "
                                   "out give the pages behind it lower numbers");
        }
    }
    return {};
}

} // namespace

Outcome settleLostPages(Document& document, LostPages lost)
{
    if (lost == LostPages::ShowEmpty) {
        return {};
    }
    std::vector<int> pages;
    for (int page = document.pageDoubts().lost.empty() ? 0 : document.pageCount(); page > 0;
         --page) {
        if (document.isLost(page)) {
            pages.push_back(page);
        }
    }
    if (!pages.empty() && !mayLose(document, lost)) {
        return damaged(document, pagesText(numberLoaded(document, pages.back()), pages.size()) +
                                     " cannot be recovered");
    }
    if (Outcome status = settleDoubts(document, mayLose(document, lost)); !status) {
        return status;
    }
    if (!pages.empty() && static_cast<int>(pages.size()) == document.pageCount()) {
        return damaged(document, "none of the pages that are left can be recovered");
    }
    for (auto page = pages.rbegin(); page != pages.rend(); ++page) {
        const int number = numberLoaded(document, *page);
        const int unknownFrom = document.pageDoubts().unknownFrom;
        warnOfLoss(document, number,
                   unknownFrom > 0 && number >= unknownFrom
                       ? std::string(pageLeftOut) + ", and perhaps others with it"
                       : pageLeftOut);
    }
    for (const int page : pages) {
        document.removePages({page, 1});
    }
    if (mayLose(document, lost) && document.index() == nullptr) {
        dropWhatIsNoContent(document);
    }
    return {};
}

Outcome settleLostContent(Document& document, LostPages lost)
{
    if (document.warnings().empty()) {
        return {};
    }
    content::LostContent content(document);
    for (int page = 1; page <= document.pageCount(); ++page) {
        const int number = numberLoaded(document, page);
        if (!content.isLost(page)) {
            if (mayLose(document, lost) && content.isBroken(page)) {
                warnOfLoss(
                    document, number,
                    "its content breaks off or cannot be decoded to its end, and is kept as it is");
            }
            continue;
        }
        if (!mayLose(document, lost)) {
            return damaged(document, "the content of page " + std::to_string(number) +
                                         " cannot be recovered");
        }
        warnOfLoss(document, number, missingContent);
    }
    return {};
}

} // namespace karvel::saving
