#include "VantoraHost/core/choices/LibraryFacts.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"

#include <limits>

namespace vantora {

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
    return checked(QString::fromStdWString(library_.GetPageText(page, readingOrder)),
                   "has a page whose text can't be read");
}

Result<std::vector<OutlineEntry>> LibraryFacts::outline()
{
    library_.ClearLastError();
    return checked(outlineEntries(library_, std::numeric_limits<std::size_t>::max()),
                   "has an unreadable outline");
}

} // namespace vantora
