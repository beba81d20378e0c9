#pragma once

#include <string>
#include <vector>

/// Documents with everything that pages take along, and what others tell of them.
namespace told {

/// A document of three pages with
///  - a text field "name" with widgets on pages 1 and 2 and a field "group.last" on page 3,
///  - links on page 1: by name to page 2 ("two") and to page 3, on page 3 to page 1,
///  - an outline: "One" for page 1 and, below it and shown, "Two" (by name) and "Three",
///  - layers "shown", on page 1, and "hidden", on page 2.
std::string richDocument();

/// "name@2" for a widget of the field "name" on page 2, in page order, as qpdf tells.
std::vector<std::string> fields(const std::string& pdf);

/// "title>2" for an outline entry that leads to page 2, "title>" for one that leads nowhere,
/// entries on lower levels in parentheses after theirs, as qpdf tells.
std::string outline(const std::string& pdf);

/// "name>2" for a named destination on page 2, in page order, as pdfinfo tells.
std::vector<std::string> destinations(const std::string& pdf);

/// What the links of a page lead to: "two" for a name, "page 2", or "nothing".
std::vector<std::string> links(const std::string& pdf, int page);

} // namespace told
