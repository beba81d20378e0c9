#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <memory>
#include <optional>

namespace karvel::transfer {

/// A document as it was at one moment, apart from the document itself: what other documents take
/// pages from, now and whenever they read the data of streams. Made again only after a change.
class Frozen {
public:
    /// The document as it is now.
    Result<std::shared_ptr<Document>> of(Document& document);

private:
    std::shared_ptr<Document> frozen_;
    std::optional<std::uint64_t> revision_;
};

/// A copy of a document that can be worked with; it saves as the document would.
Result<std::unique_ptr<Document>> duplicate(Document& document);

} // namespace karvel::transfer
