#include "KarvelPDFLibrary/io/OutputFile.h"

#include "KarvelPDFLibrary/io/Durability.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"

#include <acl/libacl.h>
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/acl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace karvel::io {

namespace {

constexpr std::size_t bufferSize = 1024 * 1024;

tl::unexpected<Error> notWritable(const std::string& path, int error)
{
    return fail(ErrorCode::FileNotWritable, path + ": " + std::strerror(error));
}

void writeAll(int descriptor, const char* bytes, std::size_t length)
{
    while (length > 0) {
        const ssize_t count = ::write(descriptor, bytes, length);
        if (count < 0 && errno == EINTR) {
            continue;
        }
        if (count < 0) {
            throw std::runtime_error(std::strerror(errno));
        }
        bytes += count;
        length -= static_cast<std::size_t>(count);
    }
}

} // namespace

void ByteSink::copy(ByteSource& source, std::int64_t offset, std::uint64_t length)
{
    constexpr std::size_t window = 1024 * 1024;
    while (length > 0) {
        const bool inside = offset >= aheadOffset_ &&
                            offset < aheadOffset_ + static_cast<std::int64_t>(aheadLength_);
        if (!inside) {
            // Small parts with small gaps between them are read in one go.
            if (ahead_.empty()) {
                ahead_.resize(static_cast<std::size_t>(
                    std::min<std::int64_t>(window, std::max<std::int64_t>(source.size(), 1))));
            }
            aheadLength_ = 0;
            aheadLength_ = source.readAt(offset, ahead_.data(), ahead_.size());
            aheadOffset_ = offset;
            if (aheadLength_ == 0) {
                throw std::runtime_error("the source ends early");
            }
        }
        const auto start = static_cast<std::size_t>(offset - aheadOffset_);
        const auto count =
            static_cast<std::size_t>(std::min<std::uint64_t>(length, aheadLength_ - start));
        write(ahead_.data() + start, count);
        offset += static_cast<std::int64_t>(count);
        length -= count;
    }
}

Result<OutputFile> OutputFile::create(const std::string& path, Existing existing)
{
    struct stat target = {};
    if (lstat(path.c_str(), &target) == 0) {
        if (existing == Existing::Refuse) {
            return fail(ErrorCode::FileExists, path + ": the file exists");
        }
        if (!S_ISREG(target.st_mode) && !S_ISLNK(target.st_mode)) {
            return fail(ErrorCode::FileNotWritable, path + ": is not a regular file");
        }
    }
    const std::string folder = folderOf(path);
    for (;;) {
        std::string temporary = folder + "/" + temporaryName();
        FileDescriptor file(
            open(temporary.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
        if (file && !claimTemporary(file.get())) {
            continue;
        }
        if (file) {
            return OutputFile(path, std::move(temporary), std::move(file), existing);
        }
        if (errno != EEXIST) {
            return notWritable(path, errno);
        }
    }
}

OutputFile::OutputFile(std::string path, std::string temporary, FileDescriptor file,
                       Existing existing)
    : path_(std::move(path)), temporary_(std::move(temporary)), file_(std::move(file)),
      existing_(existing)
{
}

OutputFile::OutputFile(OutputFile&& other) noexcept
    : path_(std::move(other.path_)), temporary_(std::exchange(other.temporary_, std::string())),
      file_(std::move(other.file_)), existing_(other.existing_), buffer_(std::move(other.buffer_)),
      buffered_(std::exchange(other.buffered_, 0))
{
}

OutputFile::~OutputFile()
{
    if (!temporary_.empty()) {
        unlink(temporary_.c_str());
    }
}

void OutputFile::write(const char* bytes, std::size_t length)
{
    if (buffered_ + length > bufferSize) {
        flush();
    }
    if (length >= bufferSize) {
        writeAll(file_.get(), bytes, length);
        return;
    }
    if (buffer_.size() < buffered_ + length) {
        buffer_.resize(
            std::min(bufferSize, std::max(2 * (buffered_ + length), std::size_t{16384})));
    }
    std::memcpy(buffer_.data() + buffered_, bytes, length);
    buffered_ += length;
}

void OutputFile::flush()
{
    writeAll(file_.get(), buffer_.data(), buffered_);
    buffered_ = 0;
}

void OutputFile::copy(ByteSource& source, std::int64_t offset, std::uint64_t length)
{
    constexpr std::uint64_t worthACall = 256 * 1024;
    constexpr std::uint64_t writtenAhead = 16 * 1024 * 1024;
    if (source.descriptor() >= 0 && length >= worthACall) {
        flush();
        off_t from = offset;
        off_t to = lseek(file_.get(), 0, SEEK_CUR);
        while (length > 0) {
            const ssize_t count =
                copy_file_range(source.descriptor(), &from, file_.get(), nullptr,
                                static_cast<std::size_t>(std::min(length, writtenAhead)), 0);
            if (count <= 0) {
                break; // not between these files, or not there any more: the other way will tell
            }
            // The disk begins now, so that less is left to wait for at the end.
            sync_file_range(file_.get(), to, count, SYNC_FILE_RANGE_WRITE);
            to += count;
            length -= static_cast<std::uint64_t>(count);
        }
        offset = from;
    }
    ByteSink::copy(source, offset, length);
}

Status OutputFile::takeOverAttributes()
{
    struct stat target = {};
    if (lstat(path_.c_str(), &target) != 0 || !S_ISREG(target.st_mode)) {
        return {};
    }
    // Only the superuser may give a file away; the group can be kept by its members.
    if (fchown(file_.get(), target.st_uid, target.st_gid) != 0 &&
        fchown(file_.get(), static_cast<uid_t>(-1), target.st_gid) != 0 && errno != EPERM) {
        return notWritable(path_, errno);
    }
    if (fchmod(file_.get(), target.st_mode & 0777) != 0) {
        return notWritable(path_, errno);
    }
    if (acl_extended_file(path_.c_str()) == 1) {
        const acl_t list = acl_get_file(path_.c_str(), ACL_TYPE_ACCESS);
        const bool taken = list && acl_set_fd(file_.get(), list) == 0;
        const int error = errno;
        acl_free(list);
        if (!taken) {
            return notWritable(path_, error);
        }
    }
    return {};
}

Status OutputFile::rename()
{
    if (existing_ == Existing::Replace) {
        if (::rename(temporary_.c_str(), path_.c_str()) != 0) {
            return notWritable(path_, errno);
        }
        return {};
    }
    int result = renameat2(AT_FDCWD, temporary_.c_str(), AT_FDCWD, path_.c_str(), RENAME_NOREPLACE);
    if (result != 0 && (errno == EINVAL || errno == ENOSYS)) {
        // A file system without that flag: a hard link refuses an existing name just as well.
        result = link(temporary_.c_str(), path_.c_str());
        if (result == 0) {
            unlink(temporary_.c_str());
        }
    }
    if (result != 0 && errno == EEXIST) {
        return fail(ErrorCode::FileExists, path_ + ": the file exists");
    }
    return result == 0 ? Status() : Status(notWritable(path_, errno));
}

Status OutputFile::prepare()
{
    try {
        flush();
    } catch (const std::exception& exception) {
        return fail(ErrorCode::FileNotWritable, path_ + ": " + exception.what());
    }
    return existing_ == Existing::Replace ? takeOverAttributes() : Status();
}

Status OutputFile::takeReplacement()
{
    FileDescriptor file(open(temporary_.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW));
    if (!file) {
        return notWritable(path_, errno);
    }
    if (!claimTemporary(file.get())) {
        return notWritable(path_, ENOENT);
    }
    file_ = std::move(file);
    buffered_ = 0;
    return {};
}

Status OutputFile::takeName()
{
    // Closing the file would give up the claim on the temporary name.
    Status status = rename();
    if (status) {
        temporary_.clear();
    }
    return status;
}

Status OutputFile::commit()
{
    if (Status status = prepare(); !status) {
        return status;
    }
    if (fsync(file_.get()) != 0) {
        return notWritable(path_, errno);
    }
    if (Status status = takeName(); !status) {
        return status;
    }
    syncFolder(folderOf(path_));
    return {};
}

} // namespace karvel::io
