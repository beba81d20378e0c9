#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

namespace poppler {
class document;
class page;
} // namespace poppler

namespace karvel::viewing {

/// A document as poppler sees it, for rendering and reading text: the document as it is now, read
/// again only after a change. One view serves one document and lives no longer than it.
class View {
public:
    View();
    ~View();
    View(View&& other) noexcept;
    View& operator=(View&& other) noexcept;

    /// A page; it must go before the document changes or the view goes.
    Result<std::unique_ptr<poppler::page>> page(Document& document, int number);

private:
    Status refresh(Document& document);

    std::vector<char> bytes_; // of a document in memory: poppler reads from them
    std::unique_ptr<poppler::document> seen_;
    std::optional<std::uint64_t> revision_;
};

} // namespace karvel::viewing
