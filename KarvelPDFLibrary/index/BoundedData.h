#pragma once

#include <cstddef>
#include <qpdf/QPDFObjectHandle.hh>
#include <stdexcept>
#include <string>

namespace karvel::index {

class TooMuchData : public std::length_error {
public:
    TooMuchData() : length_error("a stream decodes to more data than is reasonable") {}
};

/// A stream's decoded data. Throws TooMuchData as soon as there is more than `most` bytes of it, so
/// that a small file cannot fill the memory, and std::length_error for what can't be decoded.
std::string boundedData(QPDFObjectHandle stream, std::size_t most);

} // namespace karvel::index
