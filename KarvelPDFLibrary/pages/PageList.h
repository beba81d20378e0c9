#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <string>
#include <vector>

namespace karvel::pages {

/// The pages that a list in qpdf's page range notation names, in its order: "1-3,7,12-9,z,r2",
/// where z is the last page and r2 the last but one, with ":odd" or ":even" at the end for every
/// other place of the list. An empty list names every page. Fails when the text is no list or names
/// a page that is not among 1 to `pageCount`, and when it names more pages than any use of it has.
Result<std::vector<int>> parsePageList(const std::string& text, int pageCount);

} // namespace karvel::pages
