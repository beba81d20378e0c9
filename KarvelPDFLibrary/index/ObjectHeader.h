#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"

#include <cstdint>
#include <map>
#include <optional>
#include <qpdf/QPDF.hh>
#include <string_view>
#include <vector>

namespace karvel::index {

/// Where "12 0 obj" is in a text: where it begins, and where it ends.
struct ObjectHeader {
    std::size_t start = 0;
    std::size_t end = 0;
};

/// Reads the header of an object, before which there may be white space; nothing when another text
/// is there.
std::optional<ObjectHeader> readObjectHeader(std::string_view text, std::uint32_t number,
                                             std::uint32_t generation);

using CrossReferenceTable = std::map<QPDFObjGen, QPDFXRefEntry>;

/// The objects that are not where a table says, in ascending order. Entries that lead to the
/// beginning of the file are not among them.
std::vector<QPDFObjGen> misplacedObjects(const CrossReferenceTable& table, io::ByteSource& source);

/// Whether a rebuilt table says the same as the one before of all objects but the misplaced ones.
bool agreesButFor(const std::vector<QPDFObjGen>& misplaced, const CrossReferenceTable& before,
                  const CrossReferenceTable& rebuilt);

} // namespace karvel::index
