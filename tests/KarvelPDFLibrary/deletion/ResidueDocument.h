#pragma once

#include "tests/support/Sketch.h"

#include <set>
#include <string>

/// Documents in which every page has texts of its own in all the places that refer to pages or
/// belong to them, and a search for what is left of them.
namespace support {

/// A document of `pages` pages. Every text that belongs to page N, or leads to it, is a word that
/// begins with "ownN-"; it ends in "-on-M" when it stands on page M and goes with that one as well.
/// What shows all pages together and goes with any of them begins with "own0-".
Sketch residueDocument(int pages);

/// A later revision of a file that gives every page its content anew; the former content, which no
/// one can see any more, begins with "oldN-".
std::string withLaterRevision(const std::string& pdf, int pages);

/// The file in the hybrid form (ISO 32000-2, 7.5.8.4): everything but the catalog, pages and
/// streams is in an object stream, about which only the cross-reference stream knows.
std::string asHybridFile(const std::string& pdf);

/// The words that begin with "ownN-" or "oldN-" in all objects of a file and in its bytes.
std::set<std::string> ownWords(const std::string& pdf, const std::string& password = {});

/// Whether a word goes with a page.
bool belongsTo(const std::string& word, int page);

} // namespace support
