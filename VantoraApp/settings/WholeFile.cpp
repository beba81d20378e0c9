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
        : name_(folder + "/.vantora-" + QUuid::createUuid().toString(QUuid::WithoutBraces))
    {
        const int descriptor = ::open(QFile::encodeName(name_).constData(),
                                      O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        isOpen_ = descriptor >= 0 &&
                  file_.open(descriptor, QIODevice::WriteOnly, QFileDevice::AutoCloseHandle);
    }

    ~NewFile()
    {
        if (isOpen_ && !isRenamed_)
            QFile::remove(name_);
    }

    NewFile(const NewFile&) = delete;
    NewFile& operator=(const NewFile&) = delete;

    bool Write(const QByteArray& bytes)
    {
        return isOpen_ && file_.write(bytes) == bytes.size() && file_.flush() &&
               ::fsync(file_.handle()) == 0;
    }

    bool SetPermissions(QFile::Permissions permissions)
    {
        return QFile::setPermissions(name_, permissions);
    }

    bool RenameTo(const QString& path)
    {
        isRenamed_ = std::rename(QFile::encodeName(name_).constData(),
                                 QFile::encodeName(path).constData()) == 0;
        return isRenamed_;
    }

private:
    QString name_;
    QFile file_;
    bool isOpen_ = false;
    bool isRenamed_ = false;
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
