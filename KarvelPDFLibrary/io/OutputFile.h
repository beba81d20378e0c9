#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/io/ByteSource.h"
#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace karvel::io {

enum class Existing { Refuse, Replace };

/// Takes bytes in order.
class ByteSink {
public:
    virtual ~ByteSink() = default;

    /// Throws std::runtime_error when the bytes cannot be written.
    virtual void write(const char* bytes, std::size_t length) = 0;

    /// Writes a part of a source, which must have it. Sources are best copied from in order.
    virtual void copy(ByteSource& source, std::int64_t offset, std::uint64_t length);

private:
    /// What was read from the source ahead of what was asked for.
    std::vector<char> ahead_;
    std::int64_t aheadOffset_ = 0;
    std::size_t aheadLength_ = 0;
};

/// A file that appears under its name whole or not at all: bytes go to a temporary file beside the
/// target, which is synced and renamed by commit(). Without commit() nothing is left behind.
class OutputFile final : public ByteSink {
public:
    /// Fails when the folder is missing or not writable, when the target is no regular file, or
    /// when it exists and may not be replaced.
    static Result<OutputFile> create(const std::string& path, Existing existing);

    OutputFile(OutputFile&& other) noexcept;
    OutputFile& operator=(OutputFile&&) = delete;
    ~OutputFile() override;

    void write(const char* bytes, std::size_t length) override;

    /// Large parts of files are copied by the system, which may share them between the files.
    void copy(ByteSource& source, std::int64_t offset, std::uint64_t length) override;

    /// Writes out what is buffered, so that the descriptor may be written to directly.
    void flush();

    int descriptor() const { return file_.get(); }

    /// Syncs the file, gives it the target's name and syncs the folder. A file that is replaced
    /// hands on its owner, mode and access control list. After a failure the target is as it was.
    Status commit();

    /// The parts of commit() for those who commit many files at a time: between these two the file
    /// has to be synced, and after them the folder (io/Durability.h).
    Status prepare();
    Status takeName();

    /// Takes another name in the same folder instead.
    void aimAt(std::string path) { path_ = std::move(path); }

    /// Where the bytes are until the file has its name.
    const std::string& temporary() const { return temporary_; }

    /// Goes on with the file that somebody has put in the place of the temporary one.
    Status takeReplacement();

private:
    OutputFile(std::string path, std::string temporary, FileDescriptor file, Existing existing);
    Status takeOverAttributes();
    Status rename();

    std::string path_;
    std::string temporary_;
    FileDescriptor file_;
    Existing existing_;
    std::vector<char> buffer_;
    std::size_t buffered_ = 0;
};

} // namespace karvel::io
