#include "VantoraHost/core/FileDigest.h"

#include "KarvelPDFLibrary/io/FileDescriptor.h"

#include <QtCore/QCryptographicHash>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <vector>

namespace vantora {

std::string sha256Of(std::string_view bytes)
{
    constexpr std::size_t most = 1U << 30; // at once, since the class takes an int
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (; !bytes.empty(); bytes.remove_prefix(std::min(most, bytes.size()))) {
        hash.addData(bytes.data(), static_cast<int>(std::min(most, bytes.size())));
    }
    return hash.result().toHex().toStdString();
}

std::optional<std::string> sha256Of(int descriptor)
{
    constexpr std::size_t piece = 256 * 1024;
    std::vector<char> buffer(piece);
    QCryptographicHash hash(QCryptographicHash::Sha256);
    for (off_t offset = 0;;) {
        const ssize_t got = ::pread(descriptor, buffer.data(), buffer.size(), offset);
        if (got < 0 && errno == EINTR) {
            continue;
        }
        if (got < 0) {
            return std::nullopt;
        }
        if (got == 0) {
            return hash.result().toHex().toStdString();
        }
        hash.addData(buffer.data(), static_cast<int>(got));
        offset += got;
    }
}

std::optional<std::string> sha256OfFile(const std::string& path)
{
    const karvel::io::FileDescriptor file(
        ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0 || !S_ISREG(status.st_mode)) {
        return std::nullopt;
    }
    return sha256Of(file.get());
}

} // namespace vantora
