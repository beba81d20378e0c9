#pragma once

#include <cstddef>
#include <qpdf/QPDFObjectHandle.hh>
#include <stdexcept>
#include <string>
#include <string_view>

namespace karvel::index {

class TooMuchData : public std::length_error {
public:
    TooMuchData() : length_error("a stream decodes to more data than is reasonable") {}
};

/// A stream's decoded data. Throws TooMuchData as soon as there is more than `most` bytes of it, so
/// that a small file cannot fill the memory, and std::length_error for what can't be decoded.
std::string boundedData(QPDFObjectHandle stream, std::size_t most);

/// The same of bytes that /FlateDecode packs, with the text of its parameters, which may be empty.
/// Throws std::length_error also for what libqpdf warns of.
std::string inflated(const std::string& packed, std::string_view parameters, std::size_t most);

} // namespace karvel::index
