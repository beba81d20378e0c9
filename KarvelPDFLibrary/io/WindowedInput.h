#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/ReadBuffer.h"

#include <memory>
#include <qpdf/InputSource.hh>
#include <string>

namespace karvel::io {

/// A byte source as libqpdf reads it: through a window that is read ahead in one go and grows while
/// reading goes on where it ended. libqpdf's own file source makes a system call a token.
class WindowedInput final : public InputSource {
public:
    explicit WindowedInput(std::shared_ptr<ByteSource> source);

    qpdf_offset_t findAndSkipNextEOL() override;
    std::string const& getName() const override;
    qpdf_offset_t tell() override;
    void seek(qpdf_offset_t offset, int whence) override;
    void rewind() override;
    size_t read(char* buffer, size_t length) override;
    void unreadCh(char ch) override;

private:
    /// Makes the window hold the byte at the position; false at the end.
    bool fill();

    std::shared_ptr<ByteSource> source_;
    ReadBuffer window_;
    qpdf_offset_t windowStart_ = 0;
    size_t windowLength_ = 0;
    size_t nextWindow_;
    qpdf_offset_t position_ = 0;
};

} // namespace karvel::io
