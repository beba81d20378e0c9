#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>

namespace karvel::outlines {

/// The number of outline entries on all levels, closed ones included. Entries that loops lead back
/// to count once.
int entryCount(Document& document);

/// The first entry of the top level, the first one below an entry, and the one after it on its
/// level. Null where there is none; entries that are no objects of their own are none (ISO 32000-2,
/// 12.3.3).
QPDFObjectHandle firstEntry(Document& document);
QPDFObjectHandle firstChild(QPDFObjectHandle entry);
QPDFObjectHandle nextEntry(QPDFObjectHandle entry);

/// An entry's title; empty where it has none.
std::string titleOf(QPDFObjectHandle entry);

} // namespace karvel::outlines
