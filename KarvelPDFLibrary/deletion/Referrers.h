#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <vector>

namespace karvel::deletion {

/// Who refers to an object: the references of a document turned round, as they are when this is
/// made.
class Referrers {
public:
    /// `view` then knows the generations of all objects.
    Referrers(Document& document, ObjectView& view);

    /// The numbers of the objects that refer to an object, each once or more.
    ObjectView::Numbers of(int object) const;

    /// All objects of the document.
    const std::vector<int>& objects() const { return objects_; }

private:
    void listObjects(Document& document, ObjectView& view);

    std::vector<int> objects_;
    std::vector<std::uint32_t> start_; // by number: where its referrers begin
    std::vector<std::uint32_t> referrers_;
};

} // namespace karvel::deletion
