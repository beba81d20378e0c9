#include "VantoraHost/core/choices/LibraryFacts.h"

#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"
#include "VantoraHost/core/PageNumbers.h"

#include <QtCore/QCryptographicHash>

#include <iterator>
#include <limits>

namespace vantora {

std::vector<std::string> unreadableTextRemarks(const std::set<int>& pages)
{
    if (pages.empty()) {
        return {};
    }
    return {"text of pages " + pageRangeText({pages.begin(), pages.end()}) +
            " can't be read, as their fonts don't say which characters they show"};
}

/// The answer, unless the library complained since the error was last cleared.
template <class Answer>
Result<Answer> LibraryFacts::checked(Answer answer, const char* otherwise)
{
    if (lastLibraryCode(library_) == LibraryCode::None) {
        return answer;
    }
    return tl::unexpected<Error>(lastLibraryFailure(library_, input_)
                                     .value_or(Error{Reason::LibraryFailed, input_, otherwise}));
}

int LibraryFacts::count()
{
    return library_.PageCount();
}

Result<QString> LibraryFacts::label(int page)
{
    library_.ClearLastError();
    return checked(QString::fromStdWString(library_.GetPageLabel(page)), "has unreadable labels");
}

Result<ShownSize> LibraryFacts::size(int page)
{
    library_.ClearLastError();
    const int selected = library_.SelectedPage();
    library_.SelectPage(page);
    const ShownSize size{library_.PageWidth(), library_.PageHeight()};
    library_.SelectPage(selected);
    return checked(size, "has a page without a size");
}

Result<QString> LibraryFacts::text(int page)
{
    constexpr int readingOrder = 1;
    library_.ClearLastError();
    const int before = library_.WarningCount();
    const std::wstring text = library_.GetPageText(page, readingOrder);
    const int after = library_.WarningCount();
    for (int warning = before + 1; warning <= after; ++warning) {
        const std::wstring said = library_.GetWarningText(warning);
        const std::wstring kind(std::begin(karvel::unreadableText),
                                std::end(karvel::unreadableText) - 1);
        if (said.compare(0, kind.size(), kind) == 0) {
            unreadable_.insert(page);
        }
    }
    return checked(QString::fromStdWString(text), "has a page whose text can't be read");
}

bool LibraryFacts::hasUnreadableText(int page)
{
    return unreadable_.count(page) > 0;
}

Result<bool> LibraryFacts::isBlank(int page, bool strictly)
{
    constexpr double noiseIsAMark = -1;
    library_.ClearLastError();
    return checked(library_.IsPageBlank(page, strictly ? noiseIsAMark : 0) == 1,
                   "has a page that can't be shown");
}

Result<double> LibraryFacts::noise(int page)
{
    // The library keeps its judgement and is asked for the least tolerance that lets the page pass.
    library_.ClearLastError();
    constexpr int steps = 10000; // of a hundredth of a percent
    int least = 0;
    int most = steps;
    while (least < most) {
        const int middle = (least + most) / 2;
        if (library_.IsPageBlank(page, -1 - middle / 100.0) == 1) {
            most = middle;
        } else {
            least = middle + 1;
        }
    }
    return checked(least / 100.0, "has a page that can't be shown");
}

Result<bool> LibraryFacts::hasColour(int page)
{
    library_.ClearLastError();
    return checked(library_.HasPageColor(page, 0) == 1, "has a page that can't be shown");
}

Result<int> LibraryFacts::duplicateOf(int page)
{
    while (duplicateOf_.size() < static_cast<std::size_t>(page)) {
        const Result<int> found = findDuplicate(static_cast<int>(duplicateOf_.size()) + 1);
        if (!found) {
            return found;
        }
        duplicateOf_.push_back(*found);
    }
    return duplicateOf_[static_cast<std::size_t>(page) - 1];
}

/// Pages that look the same have the same small picture; whether it is the same look, a larger one
/// tells.
Result<int> LibraryFacts::findDuplicate(int page)
{
    constexpr int side = 96;
    constexpr int ppm = 5;
    constexpr int dpi = 100;
    library_.ClearLastError();
    const std::string picture = library_.RenderThumbnailToString(page, side, ppm);
    const QByteArray look = QCryptographicHash::hash(
        QByteArray::fromRawData(picture.data(), static_cast<int>(picture.size())),
        QCryptographicHash::Sha256);
    std::vector<int>& pages = looks_[look];
    const int document = library_.SelectedDocument();
    int found = 0;
    for (const int earlier : pages) {
        if (library_.ComparePageAppearance(document, earlier, document, page, dpi) == 0) {
            found = earlier;
            break;
        }
    }
    if (found == 0) {
        pages.push_back(page);
    }
    return checked(found, "has a page that can't be shown");
}

Result<std::vector<OutlineEntry>> LibraryFacts::outline()
{
    library_.ClearLastError();
    return checked(outlineEntries(library_, std::numeric_limits<std::size_t>::max()),
                   "has an unreadable outline");
}

} // namespace vantora
