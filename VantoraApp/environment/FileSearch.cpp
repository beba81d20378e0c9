#include "VantoraApp/CActionUtils.h"

#include <QtCore/QFile>
#include <algorithm>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>
#include <vector>

// The walk goes from folder descriptor to folder descriptor and not by paths, since a path longer
// than PATH_MAX opens nothing; and it keeps its place in a vector and not on the stack, since a
// tree may be deeper than any stack.

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { closedir(folder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

Folder openFolder(int below, const char* path, int flags)
{
    const int descriptor = openat(below, path, O_RDONLY | O_DIRECTORY | O_CLOEXEC | flags);
    if (descriptor < 0) {
        return nullptr;
    }
    Folder folder(fdopendir(descriptor));
    if (!folder) {
        close(descriptor);
    }
    return folder;
}

/// Opens an absolute path of any length, in pieces that the system takes.
Folder openPath(QByteArray path)
{
    Folder folder;
    int from = AT_FDCWD;
    while (path.size() >= PATH_MAX) {
        const int piece = path.lastIndexOf('/', PATH_MAX - 1);
        if (piece <= 0) {
            errno = ENAMETOOLONG;
            return nullptr;
        }
        folder = openFolder(from, path.left(piece).constData(), 0);
        if (!folder) {
            return nullptr;
        }
        from = dirfd(folder.get());
        path.remove(0, piece + 1);
    }
    return openFolder(from, path.constData(), 0);
}

mode_t kindOf(DIR* folder, const dirent& entry)
{
    if (entry.d_type != DT_UNKNOWN) {
        return DTTOIF(entry.d_type);
    }
    struct stat status = {};
    const bool known = fstatat(dirfd(folder), entry.d_name, &status, AT_SYMLINK_NOFOLLOW) == 0;
    return known ? status.st_mode & S_IFMT : 0;
}

QString suffixOf(const QString& fileName)
{
    const int dot = fileName.lastIndexOf('.');
    return dot < 0 ? QString() : fileName.mid(dot + 1);
}

bool takesAll(const QStringList& nameFilters)
{
    return nameFilters.isEmpty() || nameFilters.contains("*");
}

class FileSearch {
public:
    using Receiver = std::function<bool(const QString&)>;

    FileSearch(QStringList suffixes, bool recursive, QStringList& unreadable, const Receiver& found)
        : suffixes_(std::move(suffixes)), recursive_(recursive), unreadable_(unreadable),
          found_(found)
    {
    }

    void below(const QDir& start)
    {
        path_ = start.absolutePath();
        enter(openPath(QFile::encodeName(path_)), start.nameFilters());
        while (!levels_.empty() && visitNext()) {
        }
    }

private:
    struct Entry {
        QString name;
        bool isFolder;
    };

    /// A folder on the way from the start to where the walk is.
    struct Level {
        Folder folder; ///< null when it was closed, because many levels lie below
        std::pair<dev_t, ino_t> identity;
        int pathLength;
        std::vector<Entry> entries;
        std::size_t next = 0;
    };

    /// How many folders are open at once.
    static constexpr std::size_t openLevels = 16;

    /// Returns whether the search is to go on.
    bool visitNext()
    {
        Level& level = levels_.back();
        path_.truncate(level.pathLength);
        if (level.next == level.entries.size()) {
            levels_.pop_back();
            return true;
        }
        const Entry& entry = level.entries[level.next++];
        if (!entry.isFolder) {
            return found_(QString(path_ + '/' + entry.name).replace('\\', '/'));
        }
        Folder folder = reopen(level)
                            ? openFolder(dirfd(level.folder.get()),
                                         QFile::encodeName(entry.name).constData(), O_NOFOLLOW)
                            : nullptr;
        path_ = (path_ == "/" ? path_ : path_ + '/') + entry.name;
        enter(std::move(folder), {});
        return true;
    }

    /// Goes into the folder at `path_`; null when it could not be opened.
    void enter(Folder folder, const QStringList& nameFilters)
    {
        if (!folder) {
            missed(errno);
            return;
        }
        Level level;
        level.identity = identityOf(folder.get());
        level.pathLength = path_.size();
        level.entries = wanted(folder.get(), nameFilters);
        level.folder = std::move(folder);
        levels_.push_back(std::move(level));
        if (levels_.size() > openLevels) {
            levels_[levels_.size() - openLevels - 1].folder.reset();
        }
    }

    /// Opens the folder at `path_` again if it was closed; not another one that took its place.
    bool reopen(Level& level)
    {
        if (!level.folder) {
            level.folder = openPath(QFile::encodeName(path_));
            if (level.folder && identityOf(level.folder.get()) != level.identity) {
                level.folder.reset();
                errno = ENOENT;
            }
        }
        return level.folder != nullptr;
    }

    /// The folder at `path_` could not be read, or not to its end; one that went or was replaced
    /// meanwhile is none to be searched.
    void missed(int error)
    {
        if (error != ENOENT && error != ENOTDIR && error != ELOOP) {
            unreadable_ << path_;
        }
    }

    static std::pair<dev_t, ino_t> identityOf(DIR* folder)
    {
        struct stat status = {};
        fstat(dirfd(folder), &status);
        return {status.st_dev, status.st_ino};
    }

    std::vector<Entry> wanted(DIR* folder, const QStringList& nameFilters)
    {
        std::vector<Entry> entries;
        while (const dirent* entry = nextIn(folder)) {
            const bool hidden = entry->d_name[0] == '.';
            const mode_t kind = hidden ? 0 : kindOf(folder, *entry);
            if (kind != S_IFREG && !(kind == S_IFDIR && recursive_)) {
                continue;
            }
            const QString name = QFile::decodeName(entry->d_name);
            if (kind == S_IFREG && !suffixes_.contains(suffixOf(name), Qt::CaseInsensitive)) {
                continue;
            }
            // A name that is not text in the system's encoding cannot be part of a path here.
            if (QFile::encodeName(name) == entry->d_name &&
                (takesAll(nameFilters) || QDir::match(nameFilters, name))) {
                entries.push_back({name, kind == S_IFDIR});
            }
        }
        std::sort(entries.begin(), entries.end(),
                  [](const Entry& a, const Entry& b) { return a.name < b.name; });
        return entries;
    }

    const dirent* nextIn(DIR* folder)
    {
        errno = 0;
        const dirent* entry = readdir(folder);
        if (!entry && errno != 0) {
            missed(errno);
        }
        return entry;
    }

    const QStringList suffixes_;
    const bool recursive_;
    QStringList& unreadable_;
    const Receiver& found_;
    QString path_; ///< of the last of the levels
    std::vector<Level> levels_;
};

} // namespace

QStringList CActionUtils::SearchFilesInDir(QDir folder, QStringList suffixes, bool recursive)
{
    QStringList unreadable;
    return SearchFilesInDir(folder, std::move(suffixes), recursive, unreadable);
}

QStringList CActionUtils::SearchFilesInDir(QDir folder, QStringList suffixes, bool recursive,
                                           QStringList& unreadable)
{
    QStringList files;
    SearchFilesInDir(folder, std::move(suffixes), recursive, unreadable, [&](const QString& file) {
        files << file;
        return true;
    });
    return files;
}

void CActionUtils::SearchFilesInDir(QDir folder, QStringList suffixes, bool recursive,
                                    QStringList& unreadable,
                                    const std::function<bool(const QString&)>& found)
{
    FileSearch(std::move(suffixes), recursive, unreadable, found).below(folder);
}
