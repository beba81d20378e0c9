#pragma once

#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <cstdint>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>
#include <string_view>
#include <vector>

namespace karvel::saving {

/// The numbers that objects get in an output in which they stand in another order. All have
/// generation 0 there.
class Renumbering {
public:
    /// For objects with numbers below `size` that are in an output at all.
    explicit Renumbering(std::size_t size) : numbers_(size), generations_(size) {}

    /// Gives an object, known by the generation that references to it have, its number.
    void set(std::uint32_t object, std::uint32_t generation, std::uint32_t number)
    {
        numbers_[object] = number;
        generations_[object] = static_cast<std::uint16_t>(generation);
    }

    /// An object's number in the output; 0 when it is not there.
    std::uint32_t of(std::uint32_t object) const
    {
        return object < numbers_.size() ? numbers_[object] : 0;
    }

    /// How a reference is written in the output: "null" when it leads to nothing.
    std::string reference(std::uint32_t object, std::uint32_t generation) const
    {
        const std::uint32_t number = of(object);
        return number == 0 || generations_[object] != generation ? "null"
                                                                 : std::to_string(number) + " 0 R";
    }
    std::string reference(const QPDFObjectHandle& object) const
    {
        const QPDFObjGen id = QPDFObjectHandle(object).getObjGen();
        return reference(static_cast<std::uint32_t>(id.getObj()),
                         static_cast<std::uint32_t>(id.getGen()));
    }

    /// Appends the value that begins at `at` of a text, with its references renumbered and all else
    /// as it stands, and moves `at` past it. Unless the scan is complete, nothing is done; a
    /// reference with a comment inside counts as malformed. The text
    /// must go on after the value as a ValueScanner needs it.
    index::ScanResult append(std::string& out, std::string_view text, std::size_t& at) const;

private:
    std::vector<std::uint32_t> numbers_; // by the number in the document
    std::vector<std::uint16_t> generations_;
};

} // namespace karvel::saving
