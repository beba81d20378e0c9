#pragma once

#include "KarvelPDFLibrary/base/Error.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

namespace karvel::io {

/// The bytes of a document, read at any position. Reading never goes through the document's text
/// model, so several readers may use one source; it is not for several threads at once.
class ByteSource {
public:
    virtual ~ByteSource() = default;

    /// What messages call the source: the file's path, or a word for data in memory.
    const std::string& name() const { return name_; }

    std::int64_t size() const { return size_; }

    /// Reads up to `length` bytes at `offset`; fewer only at the end. Throws ReadFailure when the
    /// bytes that were there on opening cannot be read any more.
    virtual std::size_t readAt(std::int64_t offset, char* buffer, std::size_t length) = 0;

    /// The file descriptor behind the source, or -1 when it is memory.
    virtual int descriptor() const { return -1; }

    /// The first failure of reading, also when a library swallowed the exception; and any change of
    /// the file since it was opened, unless all of it had been read before. To be asked before
    /// anything that was read is relied on.
    virtual Outcome intact() const { return {}; }

protected:
    ByteSource(std::string name, std::int64_t size) : name_(std::move(name)), size_(size) {}

private:
    std::string name_;
    std::int64_t size_;
};

/// Calls `look` with a source's bytes, in parts of which each begins with the last `overlap` bytes
/// of the one before, until it returns false.
void forEachWindow(ByteSource& source, std::size_t overlap,
                   const std::function<bool(std::string_view)>& look);

/// Opens a file for reading, or goes on with one that is open where the path names a descriptor of
/// this process (descriptorNamed). Fails for what is missing, not readable, a folder, or no regular
/// file.
Result<std::shared_ptr<ByteSource>> openFile(const std::string& path);

/// Data in memory as a source.
std::shared_ptr<ByteSource> fromMemory(std::string data);

} // namespace karvel::io
