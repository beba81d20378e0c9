#pragma once

#include "KarvelPDFLibrary/document/Document.h"

#include <cstdint>
#include <vector>

namespace karvel::deletion {

/// Who refers to an object: the references of a document turned round, as they are when this is
/// made. Unchanged objects are known from the index; without one every object is looked at.
class Referrers {
public:
    explicit Referrers(Document& document);

    /// The numbers of the objects that refer to an object, each once or more.
    struct Range {
        const std::uint32_t* first;
        const std::uint32_t* last;
        const std::uint32_t* begin() const { return first; }
        const std::uint32_t* end() const { return last; }
    };
    Range of(int object) const;

    /// All objects of the document.
    const std::vector<QPDFObjGen>& objects() const { return objects_; }

    /// The generation under which a number is in use.
    QPDFObjGen idOf(std::uint32_t object) const
    {
        const int generation = object < generations_.size() ? generations_[object] : 0;
        return QPDFObjGen(static_cast<int>(object), generation);
    }

private:
    void listObjects(Document& document);

    std::vector<QPDFObjGen> objects_;
    std::vector<std::uint16_t> generations_; // by number
    std::vector<std::uint32_t> start_;       // by number: where its referrers begin
    std::vector<std::uint32_t> referrers_;
};

} // namespace karvel::deletion
