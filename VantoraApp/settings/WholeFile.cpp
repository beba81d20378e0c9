#include "VantoraApp/settings/WholeFile.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QUuid>

#include <cstdio>
#include <fcntl.h>
#include <unistd.h>

namespace {

/// Makes a rename in the folder last through a power failure; where that can't be had, the file is
/// no less whole.
void SyncFolder(const QString& folder)
{
    const int descriptor = ::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY);
    if (descriptor < 0)
        return;
    ::fsync(descriptor);
    ::close(descriptor);
}

/// A new file, hidden, so that no listing of the folder meets it half-written; closed with the
/// returned object, and removed too unless it was renamed.
class NewFile {
public:
    explicit NewFile(const QString& folder)
        : mName(folder + "/.vantora-" + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {
        const int descriptor = ::open(QFile::encodeName(mName).constData(),
                                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        mIsOpen = descriptor >= 0 &&
                  mFile.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle);
    }

    ~NewFile()
    {
        if (mIsOpen && !mIsRenamed)
            QFile::remove(mName);
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool Write(const QByteArray& bytes)
    {
        return mIsOpen && mFile.write(bytes) == bytes.size() && mFile.flush() &&
               ::fsync(mFile.handle()) == 0;
    }

    bool SetPermissions(QFile::Permissions permissions)
    {
        return QFile::setPermissions(mName, permissions);
    }

    bool RenameTo(const QString& path)
    {
        mIsRenamed = std::rename(QFile::encodeName(mName).constData(),
                                 QFile::encodeName(path).constData()) == 0;
        return mIsRenamed;
    }

private:
    QString mName;
    QFile mFile;
    bool mIsOpen = false;
    bool mIsRenamed = false;
};

} // namespace

tl::expected<QByteArray, QString> ReadWholeFile(const QString& path, qint64 maximumSize)
{
    QFile file(path);
    if (!file.exists())
        return tl::unexpected<QString>(QStringLiteral("There is no such file."));
    if (!QFileInfo(file).isFile())
        return tl::unexpected<QString>(QStringLiteral("This is not a file."));
    if (!file.open(QIODevice::ReadOnly))
        return tl::unexpected<QString>(file.errorString());
    const QByteArray bytes = file.read(qMin(file.size(), maximumSize) + 1);
    if (file.error() != QFile::NoError)
        return tl::unexpected<QString>(file.errorString());
    if (bytes.size() > maximumSize)
        return tl::unexpected<QString>(QStringLiteral("The file is too large."));
    return bytes;
}

bool WriteWholeFile(const QString& path, const QByteArray& bytes,
                    std::optional<QFile::Permissions> permissions)
{
    const QString folder = QFileInfo(path).absolutePath();
    QDir().mkpath(folder);
    NewFile file(folder);
    if (!file.Write(bytes) || (permissions && !file.SetPermissions(*permissions)) ||
        !file.RenameTo(path))
        return false;
    SyncFolder(folder);
    return true;
}
