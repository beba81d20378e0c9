#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <string>
#include <vector>

namespace karvel::transfer {

/// The dictionary under a key of `holder`, for changing; made when there is none. `holder` must
/// have been recorded as changed, which covers a dictionary that stands in it.
QPDFObjectHandle editDictionary(Document& document, QPDFObjectHandle holder,
                                const std::string& key);

/// Likewise an array.
QPDFObjectHandle editArray(Document& document, QPDFObjectHandle holder, const std::string& key);

/// A dictionary of the catalog with a number of its own, for changing; made when there is none.
QPDFObjectHandle editCatalogDictionary(Document& document, const std::string& key);

/// What is in an array; nothing when it is none.
std::vector<QPDFObjectHandle> itemsOf(QPDFObjectHandle array);

} // namespace karvel::transfer
