#include "VantoraHost/desktop/recovery/WorkStore.h"

#include "VantoraHost/core/DescriptorText.h"
#include "VantoraHost/core/FileIdentity.h"
#include "VantoraHost/core/outputs/TextFile.h"
#include "VantoraHost/desktop/recovery/KeptWork.h"
#include "VantoraHost/desktop/session/StateFolder.h"

#include <QtCore/QDateTime>
#include <QtCore/QDir>
#include <QtCore/QRegularExpression>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <optional>

namespace vantora::desktop {

namespace {

using karvel::io::FileDescriptor;

std::string lockOf(const std::string& path)
{
    return path.substr(0, path.rfind('.')) + ".lock";
}

bool isThisFile(const std::string& path, int descriptor)
{
    const auto there = identityOf(path);
    const auto here = identityOf(descriptor);
    return there && here && *there == *here;
}

// None while somebody else has it, and where the file system can't tell. Whoever had it before may
// have removed it in the meantime.
std::optional<FileDescriptor> locked(const std::string& path)
{
    constexpr mode_t ownerOnly = S_IRUSR | S_IWUSR;
    FileDescriptor lock(
        ::open(path.c_str(), O_RDWR | O_CREAT | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, ownerOnly));
    if (!lock || ::flock(lock.get(), LOCK_EX | LOCK_NB) != 0 || !isThisFile(path, lock.get())) {
        return std::nullopt;
    }
    return lock;
}

} // namespace

Outcome WorkFile::write(const std::string& text) const
{
    return writePrivateText(path_, text, ExistingText::Replace);
}

Result<std::string> WorkFile::read() const
{
    const FileDescriptor file(
        ::open(path_.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return fail(Reason::InputUnreadable, path_, systemMessage(errno));
    }
    if (!S_ISREG(status.st_mode) || static_cast<std::size_t>(status.st_size) > mostKept) {
        return fail(Reason::InputUnreadable, path_, "is not what a window of this version keeps");
    }
    auto text = textOf(file.get(), mostKept);
    if (!text) {
        return fail(Reason::InputUnreadable, path_, systemMessage(text.error()));
    }
    return std::move(*text);
}

void WorkFile::clear() const
{
    ::unlink(path_.c_str());
}

void WorkFile::remove()
{
    clear();
    ::unlink(lockOf(path_).c_str());
    lock_ = FileDescriptor();
}

WorkStore::WorkStore() : folder_(stateFolder("windows")) {}

Result<WorkFile> WorkStore::begin() const
{
    if (Outcome made = makeStateFolder(folder_); !made) {
        return tl::unexpected<Error>(std::move(made.error()));
    }
    // Another window may begin one at the same time, or take this one for one that is left behind.
    constexpr int tries = 100;
    QDateTime time = QDateTime::currentDateTimeUtc();
    for (int i = 0; i < tries; ++i, time = time.addMSecs(1)) {
        const std::string path =
            folder_ + '/' + time.toString("yyyyMMdd-HHmmsszzz").toStdString() + ".json";
        if (auto lock = isThere(path) ? std::nullopt : locked(lockOf(path))) {
            return WorkFile(path, std::move(*lock));
        }
    }
    return fail(Reason::OutputNotWritable, folder_, "no file in it can be locked");
}

std::vector<WorkFile> WorkStore::leftBehind() const
{
    static const QRegularExpression pattern("^\\d{8}-\\d{9}\\.(json|lock)$");
    std::vector<WorkFile> files;
    if (!isPrivateFolder(folder_)) {
        return files;
    }
    const QStringList names =
        QDir(QFile::decodeName(folder_.c_str()))
            .entryList(QDir::Files | QDir::System | QDir::Hidden, QDir::Name | QDir::Reversed);
    for (const QString& name : names) {
        const auto match = pattern.match(name);
        // Where there are both, the one of the text counts.
        const bool isLock = match.captured(1) == "lock";
        const QString text = name.section('.', 0, 0) + ".json";
        if (!match.hasMatch() || (isLock && names.contains(text))) {
            continue;
        }
        const std::string path = folder_ + '/' + text.toStdString();
        auto lock = locked(lockOf(path));
        if (!lock) {
            continue;
        }
        WorkFile file(path, std::move(*lock));
        if (!isThere(path) || files.size() == most) {
            file.remove();
        } else {
            files.push_back(std::move(file));
        }
    }
    return files;
}

} // namespace vantora::desktop
