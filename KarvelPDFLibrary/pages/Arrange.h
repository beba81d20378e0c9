#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <vector>

/// Changes of the order of pages that leave the pages as they are. What is refused changes nothing.
namespace karvel::pages {

/// Inserts blank pages before a page (the page count plus 1 appends) that look as large as that
/// page, or the last one when appending.
Outcome insertBlankPages(Document& document, int beforePage, int count);

/// Inserts one blank page after the last, of a size in points, and returns its number.
int appendBlankPage(Document& document, double width, double height);

/// Removes the listed pages, each once, and returns how many they are.
Result<int> deletePages(Document& document, const std::vector<int>& list);

/// Moves a run before a page outside it; the page count plus 1 moves it to the end.
Outcome movePages(Document& document, PageRun run, int beforePage);

Outcome reversePages(Document& document, PageRun run);

/// Puts the pages into the order of a list, which must name every page exactly once.
Outcome reorderPages(Document& document, const std::vector<int>& list);

} // namespace karvel::pages
