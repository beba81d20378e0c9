#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>
#include <vector>

namespace karvel::extraction {

/// The fonts that a page's content uses and that don't say which characters they show: text in them
/// can be seen but not read. By the names that the page has for them.
std::vector<std::string> fontsWithoutCharacters(Document& document, int page);

/// Records a warning, once, when text of a page can't be read for its fonts.
void warnOfUnreadableText(Document& document, int page);

} // namespace karvel::extraction
