#pragma once

#include "KarvelPDFLibrary/document/Document.h"

namespace karvel::pages {

/// A page's tab order of annotations (ISO 32000-2, table 31) by the codes of the interface.
enum class TabOrder : int {
    Unset = 0,
    Row = 1,
    Column = 2,
    Structure = 3,
    AnnotationArray = 4,
    Widget = 5,
};
constexpr int largestTabOrder = 5;

TabOrder tabOrder(Document& document, int page);
void setTabOrder(Document& document, int page, TabOrder order);

} // namespace karvel::pages
