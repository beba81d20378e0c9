#include "VantoraHost/core/Inputs.h"

#include "VantoraApp/CActionUtils.h"

#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QTextCodec>

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <filesystem>
#include <unistd.h>

namespace vantora {

namespace fs = std::filesystem;

namespace {

/// Takes every byte of a file's name for one character, so that every name comes through, whatever
/// the locale makes of it; a backslash, which the search for files takes for a separator, for one
/// that it does not know.
class BytesOfNames : public QTextCodec {
public:
    static constexpr ushort backslash = 0xe05c; // in the private use area

    static char byteOf(QChar character)
    {
        return character == QChar(backslash) ? '\\' : character.toLatin1();
    }
    static std::string bytesOf(const QString& name)
    {
        std::string bytes;
        bytes.reserve(static_cast<std::size_t>(name.size()));
        std::transform(name.begin(), name.end(), std::back_inserter(bytes), byteOf);
        return bytes;
    }

    QByteArray name() const override { return "vantora-bytes-of-names"; }
    int mibEnum() const override { return -1; } // registered nowhere

protected:
    QString convertToUnicode(const char* bytes, int length, ConverterState*) const override
    {
        return QString::fromLatin1(bytes, length).replace('\\', QChar(backslash));
    }
    QByteArray convertFromUnicode(const QChar* characters, int length,
                                  ConverterState*) const override
    {
        QByteArray bytes(length, '\0');
        std::transform(characters, characters + length, bytes.begin(), byteOf);
        return bytes;
    }
};

/// While it lives, Qt reads and writes the names of files as above.
class NamesAreBytes {
public:
    NamesAreBytes()
    {
        static QTextCodec* const codec = new BytesOfNames; // Qt owns every codec
        QTextCodec::setCodecForLocale(codec);
    }
    ~NamesAreBytes() { QTextCodec::setCodecForLocale(before_); }
    NamesAreBytes(const NamesAreBytes&) = delete;
    NamesAreBytes& operator=(const NamesAreBytes&) = delete;

private:
    QTextCodec* const before_ = QTextCodec::codecForLocale();
};

std::string withSlash(std::string folder)
{
    return folder.empty() || folder.back() == '/' ? folder : folder + '/';
}

/// What paths below `folder` begin with when they lie in `inner`; empty when that isn't below it.
std::string prefixOf(const std::string& inner, const std::string& folder)
{
    std::error_code failed;
    const fs::path below = fs::weakly_canonical(inner, failed)
                               .lexically_relative(fs::weakly_canonical(folder, failed));
    if (inner.empty() || failed || below.empty() || below == "." || *below.begin() == "..") {
        return {};
    }
    return withSlash(below);
}

} // namespace

Input inputNamed(std::string path)
{
    const std::size_t slash = path.rfind('/');
    return {std::move(path), slash == std::string::npos ? 0 : slash + 1};
}

bool isFolder(const std::string& path)
{
    std::error_code failed;
    return fs::is_directory(path, failed);
}

// Few have any, and taking a path to its parts costs several times what looking for them does.
std::string normalPath(const std::string& path)
{
    const bool hasNeedlessParts =
        path.rfind('.', 0) == 0 || path.find("/.") != path.npos || path.find("//") != path.npos;
    return hasNeedlessParts ? fs::path(path).lexically_normal().string() : path;
}

Outcome folderIsReadable(const std::string& folder)
{
    if (::eaccess(folder.c_str(), R_OK | X_OK) != 0) {
        return fail(Reason::InputUnreadable, folder,
                    "the folder can't be read: " + systemMessage(errno));
    }
    return {};
}

Result<std::vector<Input>> inputsBelow(const std::string& folder, const std::string& outputs)
{
    if (const Outcome readable = folderIsReadable(folder); !readable) {
        return tl::unexpected<Error>(readable.error());
    }
    const std::string beginning = withSlash(folder);
    const std::string leftOut = prefixOf(outputs, folder);
    const NamesAreBytes scope;
    // An absolute path, as Qt takes a relative one that begins with a colon for one of its
    // resources.
    std::error_code failed;
    const std::string absolute = fs::absolute(folder, failed).string();
    const QDir searched(QFile::decodeName(absolute.c_str()));
    const int above = searched.absolutePath().size();
    std::vector<Input> found;
    const auto add = [&](const QString& path) {
        std::string below = BytesOfNames::bytesOf(path.mid(above));
        below.erase(0, below.find_first_not_of('/'));
        if (leftOut.empty() || below.compare(0, leftOut.size(), leftOut) != 0) {
            found.push_back({beginning + below, beginning.size()});
        }
    };
    QStringList unreadable;
    for (const QString& file :
         CActionUtils::SearchFilesInDir(searched, {"pdf"}, true, unreadable)) {
        add(file);
    }
    for (const QString& inner : unreadable) {
        add(inner);
    }
    return found;
}

// FNV-1a (Fowler, Noll and Vo) with 64 bits; the halves are joined because its low bits alone
// depend on the low bits of the bytes alone.
bool Share::holds(std::string_view path) const
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char byte : path) {
        hash = (hash ^ static_cast<unsigned char>(byte)) * 0x100000001b3U;
    }
    return ((hash >> 32U) ^ hash) % count == number - 1;
}

} // namespace vantora
