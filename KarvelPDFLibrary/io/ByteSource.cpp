#include "KarvelPDFLibrary/io/ByteSource.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"
#include "KarvelPDFLibrary/io/FileVersion.h"
#include "KarvelPDFLibrary/io/ReadBuffer.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <optional>
#include <stdexcept>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace karvel::io {

namespace {

/// Files up to this size are read once, and as a whole: each of several readers begins anew.
constexpr std::int64_t readOnce = 64 * 1024;

class FileSource final : public ByteSource {
public:
    FileSource(const std::string& path, FileDescriptor file, const FileVersion& opened)
        : ByteSource(path, opened.size), file_(std::move(file)), opened_(opened)
    {
    }

    std::size_t readAt(std::int64_t offset, char* buffer, std::size_t length) override
    {
        if (offset < 0 || offset >= size()) {
            return 0;
        }
        // Bytes appended after opening are not part of the document.
        const auto wanted = static_cast<std::size_t>(
            std::min<std::int64_t>(static_cast<std::int64_t>(length), size() - offset));
        if (size() > readOnce) {
            readFile(offset, buffer, wanted);
        } else {
            if (whole_.empty()) {
                ReadBuffer whole;
                whole.grow(static_cast<std::size_t>(size()));
                readFile(0, whole.data(), whole.size());
                wholeIsAsOpened_ = isAsOpened();
                whole_ = std::move(whole);
            }
            std::memcpy(buffer, whole_.data() + offset, wanted);
        }
        return wanted;
    }

    int descriptor() const override { return file_.get(); }

    Outcome intact() const override
    {
        if (fail_) {
            return fail(ErrorCode::FileNotReadable, name() + ": the file " + *fail_);
        }
        // What becomes of the file when all of it is here is nothing to us.
        if (whole_.empty() ? isAsOpened() : wholeIsAsOpened_) {
            return {};
        }
        return fail(ErrorCode::FileNotReadable,
                    name() + ": the file was changed by another program while it was read");
    }

private:
    bool isAsOpened() const { return versionOf(file_.get()) == opened_; }

    void readFile(std::int64_t offset, char* buffer, std::size_t wanted)
    {
        std::size_t done = 0;
        while (done < wanted) {
            const ssize_t count = pread(file_.get(), buffer + done, wanted - done,
                                        offset + static_cast<std::int64_t>(done));
            if (count < 0 && errno == EINTR) {
                continue;
            }
            if (count <= 0) {
                fail_ = count < 0 ? std::string("cannot be read: ") + std::strerror(errno)
                                  : std::string("became shorter while it was read");
                throw std::runtime_error(*fail_);
            }
            done += static_cast<std::size_t>(count);
        }
    }

    FileDescriptor file_;
    const FileVersion opened_;
    std::optional<std::string> fail_;
    ReadBuffer whole_; // of a small file that was read
    bool wholeIsAsOpened_ = false;
};

class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::string data)
        : ByteSource("data in memory", static_cast<std::int64_t>(data.size())),
          data_(std::move(data))
    {
    }

    std::size_t readAt(std::int64_t offset, char* buffer, std::size_t length) override
    {
        if (offset < 0 || offset >= size()) {
            return 0;
        }
        const auto start = static_cast<std::size_t>(offset);
        const std::size_t count = std::min(length, data_.size() - start);
        std::memcpy(buffer, data_.data() + start, count);
        return count;
    }

private:
    std::string data_;
};

} // namespace

Result<std::shared_ptr<ByteSource>> openFile(const std::string& path)
{
    // O_NONBLOCK: opening a named pipe must not wait for a writer before it can be refused.
    const auto named = descriptorNamed(path);
    FileDescriptor file(named ? fcntl(*named, F_DUPFD_CLOEXEC, 0)
                              : open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file) {
        return fail(ErrorCode::FileNotReadable, path + ": " + std::strerror(errno));
    }
    struct stat status = {};
    if (fstat(file.get(), &status) != 0) {
        return fail(ErrorCode::FileNotReadable, path + ": " + std::strerror(errno));
    }
    if (S_ISDIR(status.st_mode)) {
        return fail(ErrorCode::FileNotReadable, path + ": is a folder");
    }
    if (!S_ISREG(status.st_mode)) {
        return fail(ErrorCode::FileNotReadable, path + ": is not a regular file");
    }
    return std::make_shared<FileSource>(path, std::move(file), versionOf(status));
}

void forEachWindow(ByteSource& source, std::size_t overlap,
                   const std::function<bool(std::string_view)>& look)
{
    constexpr std::size_t windowSize = 1024 * 1024;
    std::vector<char> window(windowSize);
    for (std::int64_t offset = 0; offset < source.size();
         offset += static_cast<std::int64_t>(windowSize - overlap)) {
        const std::size_t length = source.readAt(offset, window.data(), window.size());
        if (!look(std::string_view(window.data(), length))) {
            return;
        }
    }
}

std::shared_ptr<ByteSource> fromMemory(std::string data)
{
    return std::make_shared<MemorySource>(std::move(data));
}

} // namespace karvel::io
