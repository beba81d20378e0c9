#pragma once

#include <string>
#include <utility>
#include <vector>

namespace support {

/// A document in shorthand. In all texts "@name" is a reference to an object: to one of `objects`,
/// to page N with "@pN", or to the page tree's root with "@pages". Page N shows the text "Page N".
struct Sketch {
    /// Entries of each page. /Contents, /Parent, /MediaBox and /Resources are added where a page
    /// hasn't got its own, the last two unless `tree` or a /Parent of its own gives them.
    std::vector<std::string> pages;

    /// Entries of the catalog besides /Pages.
    std::string catalog;

    /// Further objects with their names; a text with "|" is a stream, its dictionary's entries
    /// before and its data after it.
    std::vector<std::pair<std::string, std::string>> objects;

    /// Entries of the page tree's root besides what it must have; all of them when there is /Kids.
    std::string tree = {};

    /// The file with a cross-reference table.
    std::string built() const;
};

/// What is found in a document when a path is followed: "Root/AcroForm/Fields/0/T" from the
/// catalog, "p2/Annots/0" from the second page. Scalars as PDF text, "page 2" for a page, "array 3"
/// for an array of three, "dictionary" or "stream", and "nothing".
std::string valueAt(const std::string& pdf, const std::string& path,
                    const std::string& password = {});

/// Every string, name and decoded stream of all objects in a file, referred to or not.
std::string everythingIn(const std::string& pdf, const std::string& password = {});

} // namespace support
