#pragma once

#include "VantoraHost/desktop/pages/PageSet.h"

namespace vantora::desktop {

/// What can be done to the marks of a document as a whole or of chosen pages.
enum class MarkOperation {
    Toggle,   ///< the chosen ones: all go, or where all do already, none
    Add,      ///< the chosen ones
    Remove,   ///< the chosen ones
    Odd,      ///< pages 1, 3, 5, ... beside what goes already
    Even,     ///< pages 2, 4, 6, ...
    FromHere, ///< from the current page to the end
    ToHere,   ///< from the first page to the current one
    All,
    Invert,
    None,
};

/// What an operation is about.
struct MarkedDocument {
    int pages = 0;   ///< how many it has
    PageSet chosen;  ///< those that the user has chosen
    int current = 0; ///< that the user is at; 0 for none
};

/// The marks after an operation. Marks above the document's last page are for other documents and
/// stay as they are, except with None.
PageSet marksAfter(MarkOperation operation, const PageSet& before, const MarkedDocument& document);

} // namespace vantora::desktop
