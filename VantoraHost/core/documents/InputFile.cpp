#include "VantoraHost/core/documents/InputFile.h"

#include "KarvelPDFLibrary/io/Permissions.h"
#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/core/outputs/TargetFolder.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>

namespace vantora {

using karvel::io::FileDescriptor;

namespace {

// Opening a named pipe must not wait for a writer before it can be refused.
constexpr int forReading = O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC;

tl::unexpected<Error> isNoFile(const std::string& input)
{
    return fail(Reason::InputNotAFile, input, "is a device or pipe, not a file");
}

tl::unexpected<Error> notOpened(const std::string& input, int why)
{
    if (why == ENOENT || why == ENOTDIR) {
        return fail(Reason::InputMissing, input, "there is no such file");
    }
    if (why == EACCES && isFolder(input)) { // a search leaves those that can't be read
        if (const Outcome readable = folderIsReadable(input); !readable) {
            return tl::unexpected<Error>(readable.error());
        }
    }
    return why == ENXIO ? isNoFile(input)
                        : fail(Reason::InputUnreadable, input, systemMessage(why));
}

} // namespace

Result<InputFile> InputFile::of(FileDescriptor file, const std::string& input)
{
    struct stat status = {};
    if (::fstat(file.get(), &status) != 0) {
        return notOpened(input, errno);
    }
    if (S_ISDIR(status.st_mode)) {
        const Outcome readable = folderIsReadable(input);
        return readable ? fail(Reason::InputNotAFile, input, "is a folder, not a file")
                        : tl::unexpected<Error>(readable.error());
    }
    if (!S_ISREG(status.st_mode)) {
        return isNoFile(input);
    }
    if (status.st_size == 0) {
        return fail(Reason::InputEmpty, input, "is empty (0 bytes)");
    }
    return InputFile(std::move(file), status);
}

Result<InputFile> InputFile::open(const std::string& input)
{
    FileDescriptor file(::open(input.c_str(), forReading));
    return file ? of(std::move(file), input) : notOpened(input, errno);
}

Result<InputFile> InputFile::open(const std::string& input, const Target& replaced)
{
    if (!replaced.root) { // its folder wasn't there to begin with
        return open(input);
    }
    const auto folder = folderOf(replaced);
    if (!folder) {
        return tl::unexpected<Error>(folder.error());
    }
    auto file = (*folder)->openFile(karvel::io::nameIn(replaced.path), forReading);
    if (!file && file.error() == ELOOP) {
        return fail(Reason::ChangedMeanwhile, input, karvel::io::changedMeanwhile);
    }
    return file ? of(std::move(*file), input) : notOpened(input, file.error());
}

mode_t InputFile::mode() const
{
    return karvel::io::modeOf(descriptor(), mode_);
}

mode_t modeOfStream(int descriptor)
{
    struct stat source = {};
    const bool isFile = ::fstat(descriptor, &source) == 0 && S_ISREG(source.st_mode);
    return isFile ? karvel::io::modeOf(descriptor, source.st_mode) : 0777;
}

} // namespace vantora
