#pragma once

#include <cstddef>
#include <qpdf/QPDFObjectHandle.hh>
#include <string>

namespace karvel::index {

/// A stream's decoded data. Throws std::length_error as soon as there is more than `most` bytes of
/// it, so that a small file cannot fill the memory.
std::string boundedData(QPDFObjectHandle stream, std::size_t most);

} // namespace karvel::index
