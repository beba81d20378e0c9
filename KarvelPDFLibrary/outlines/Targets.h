#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <unordered_map>

namespace karvel::outlines {

/// Where entries of one document's outline lead; what that takes is looked up once a change.
class Targets {
public:
    /// The page that an entry leads to, by its destination or its action (ISO 32000-2, 12.3.3), a
    /// named one looked up; 0 where it leads to none of the document's pages.
    int pageOf(Document& document, QPDFObjectHandle entry);

private:
    void refresh(Document& document);
    int pageOfDestination(QPDFObjectHandle destination) const;

    std::optional<std::uint64_t> revision_;
    int pageCount_ = 0;
    std::unordered_map<int, int> pages_;              // numbers by object
    std::map<std::string, QPDFObjectHandle> strings_; // of the name tree
    std::map<std::string, QPDFObjectHandle> names_;   // of the old dictionary, with slash
};

} // namespace karvel::outlines
