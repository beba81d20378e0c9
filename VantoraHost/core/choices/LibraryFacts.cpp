#include "VantoraHost/core/choices/LibraryFacts.h"

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraHost/core/LibraryFailure.h"

namespace vantora {

/// The answer, unless the library complained since the error was last cleared.
template <class Answer>
Result<Answer> LibraryFacts::checked(Answer answer, const char* otherwise)
{
    if (lastLibraryCode(library) == LibraryCode::None) {
        return answer;
    }
    return tl::unexpected<Error>(lastLibraryFailure(library, input)
                                     .value_or(Error{Reason::LibraryFailed, input, otherwise}));
}

int LibraryFacts::count()
{
    return library.PageCount();
}

Result<QString> LibraryFacts::label(int page)
{
    library.ClearLastError();
    return checked(QString::fromStdWString(library.GetPageLabel(page)), "has unreadable labels");
}

Result<ShownSize> LibraryFacts::size(int page)
{
    library.ClearLastError();
    const int selected = library.SelectedPage();
    library.SelectPage(page);
    const ShownSize size{library.PageWidth(), library.PageHeight()};
    library.SelectPage(selected);
    return checked(size, "has a page without a size");
}

Result<QString> LibraryFacts::text(int page)
{
    constexpr int readingOrder = 1;
    library.ClearLastError();
    return checked(QString::fromStdWString(library.GetPageText(page, readingOrder)),
                   "has a page whose text can't be read");
}

} // namespace vantora
