#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::saving {

/// A way from the trailer to an object as people can follow it in a file, such as
/// "/Root /Outlines /First (object 12) /A /D [0]"; keys and array items, from 0, on the way, and
/// the number of the last object passed. Settles the document's changes and reads all of it where
/// need be. "a reference" when there is no way.
std::string pathTo(Document& document, int object);

} // namespace karvel::saving
