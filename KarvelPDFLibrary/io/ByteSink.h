#pragma once

#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/ReadBuffer.h"

#include <cstddef>
#include <cstdint>

namespace karvel::io {

/// Takes bytes in order.
class ByteSink {
public:
    ByteSink() = default;
    ByteSink(ByteSink&&) = default;
    ByteSink& operator=(ByteSink&&) = default;
    virtual ~ByteSink() = default;

    /// Throws std::runtime_error when the bytes cannot be written.
    virtual void write(const char* bytes, std::size_t length) = 0;

    /// Writes a part of a source, which must have it. Sources are best copied from in order.
    virtual void copy(ByteSource& source, std::int64_t offset, std::uint64_t length);

private:
    /// What was read from the source ahead of what was asked for.
    ReadBuffer ahead_;
    std::int64_t aheadOffset_ = 0;
    std::size_t aheadLength_ = 0;
};

/// Writes to an open file from where it stands. The descriptor stays the caller's.
class DescriptorSink final : public ByteSink {
public:
    explicit DescriptorSink(int descriptor) : descriptor_(descriptor) {}

    void write(const char* bytes, std::size_t length) override;

    /// Large parts of files are copied by the system, which may share them between the files.
    void copy(ByteSource& source, std::int64_t offset, std::uint64_t length) override;

    /// Writes out what is buffered, so that the descriptor may be written to directly.
    void flush();

private:
    int descriptor_;
    ReadBuffer buffer_;
    std::size_t buffered_ = 0;
};

} // namespace karvel::io
