#include "VantoraHost/core/reports/ReportFile.h"

#include "VantoraHost/core/reports/JsonReading.h"
#include "VantoraHost/core/reports/ReportLines.h"

#include <sys/file.h>
#include <sys/stat.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <fcntl.h>
#include <string_view>
#include <unistd.h>

namespace vantora {

namespace {

tl::unexpected<Error> unwritable(const std::string& path, int errorNumber)
{
    return fail(Reason::OutputNotWritable, path,
                "the report can't be written: " + systemMessage(errorNumber));
}

/// Where the last line begins that has no end; the file's size when there is none.
off_t endOfWholeLines(int descriptor, off_t size)
{
    std::array<char, 4096> piece = {};
    for (off_t end = size; end > 0;) {
        const auto length = std::min<off_t>(end, piece.size());
        if (::pread(descriptor, piece.data(), static_cast<std::size_t>(length), end - length) !=
            length) {
            return size;
        }
        const auto bytes = std::string_view(piece.data(), static_cast<std::size_t>(length));
        if (const auto newline = bytes.rfind('\n'); newline != std::string_view::npos) {
            return end - length + static_cast<off_t>(newline) + 1;
        }
        end -= length;
    }
    return 0;
}

// Every line begins as one of a report does, and the first one is one.
bool isReport(int descriptor)
{
    ReportLines lines(descriptor);
    while (const auto line = lines.next()) {
        if (!line->mayBeOurs() && !line->isSummary()) {
            return false;
        }
        const auto json =
            line->number == 1 && line->complete ? jsonObjectOf(line->text) : std::nullopt;
        if (line->number == 1 && line->complete && !(json && reportOf(*json))) {
            return false;
        }
    }
    return lines.error() == 0;
}

} // namespace

Result<ReportFile> ReportFile::open(const std::string& path, ExistingReport existing)
{
    // It names documents: nobody beyond the group is told. O_NONBLOCK, since a pipe must not wait.
    constexpr mode_t mode = 0640;
    const int creation = existing == ExistingReport::Refuse ? O_EXCL : 0;
    const int descriptor =
        ::open(path.c_str(),
               O_RDWR | O_APPEND | O_CREAT | O_CLOEXEC | O_NONBLOCK | O_NOCTTY | creation, mode);
    if (descriptor < 0) {
        return errno == EEXIST ? fail(Reason::ReportExists, path, "the report exists already")
                               : unwritable(path, errno);
    }
    ReportFile report(path, descriptor);
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0) {
        return unwritable(path, errno);
    }
    if (!S_ISREG(status.st_mode)) {
        return fail(Reason::ReportMisplaced, path, "is a device or pipe, not a file");
    }
    if (::flock(descriptor, LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) {
        return fail(Reason::ReportExists, path, "another run is writing this report");
    }
    if (status.st_size == 0) {
        return report;
    }
    if (!isReport(descriptor)) {
        return fail(Reason::ReportMisplaced, path, "is not a report, and so not replaced by one");
    }
    const off_t kept =
        existing == ExistingReport::Continue ? endOfWholeLines(descriptor, status.st_size) : 0;
    if (kept != status.st_size && ::ftruncate(descriptor, kept) != 0) {
        return unwritable(path, errno);
    }
    return report;
}

void ReportFile::add(const DocumentReport& report, const RunIdentity& run)
{
    append(toJson(report, run) + '\n');
}

// In one call, so that whoever reads the file while it grows finds whole lines.
void ReportFile::append(const std::string& text)
{
    std::size_t written = 0;
    while (failure_ == 0 && written < text.size()) {
        const ssize_t count = ::write(file_.get(), text.data() + written, text.size() - written);
        if (count > 0) {
            written += static_cast<std::size_t>(count);
        } else if (count < 0 && errno != EINTR) {
            failure_ = errno;
        }
    }
    struct stat status = {};
    if (failure_ != 0 && written > 0 && ::fstat(file_.get(), &status) == 0 &&
        S_ISREG(status.st_mode)) {
        // Takes back what a full disk left of the line.
        [[maybe_unused]] const int cut =
            ::ftruncate(file_.get(), status.st_size - static_cast<off_t>(written));
    }
}

Outcome ReportFile::reserve(std::uint64_t bytes)
{
    const off_t end = ::lseek(file_.get(), 0, SEEK_END);
    const auto length = static_cast<off_t>(bytes);
    const bool isFull = end >= 0 &&
                        ::fallocate(file_.get(), FALLOC_FL_KEEP_SIZE, end, length) != 0 &&
                        (errno == ENOSPC || errno == EDQUOT || errno == EFBIG);
    return isFull ? unwritable(path_, errno) : Outcome();
}

Outcome ReportFile::sync()
{
    if (failure_ == 0 && ::fdatasync(file_.get()) != 0 && errno != EINVAL && errno != EROFS) {
        failure_ = errno;
    }
    return failure_ == 0 ? Outcome() : unwritable(path_, failure_);
}

} // namespace vantora
