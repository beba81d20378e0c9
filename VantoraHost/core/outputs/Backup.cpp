#include "VantoraHost/core/outputs/Backup.h"

#include "KarvelPDFLibrary/io/Durability.h"
#include "KarvelPDFLibrary/io/TemporaryFile.h"
#include "VantoraHost/core/FileIdentity.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string_view>
#include <system_error>
#include <vector>

namespace vantora {

namespace fs = std::filesystem;
using karvel::io::FileDescriptor;

namespace {

// What the name of a backup is followed by until it is one, then the number of the process. The
// two tell whether an older backup may be replaced.
constexpr std::string_view replacing = ".vantora-";
constexpr std::string_view first = ".vantora-first-";

// Some file systems have no hard links, and the system may refuse one to somebody else's file.
bool linksAreRefused(int errorNumber)
{
    return errorNumber == EPERM || errorNumber == EOPNOTSUPP || errorNumber == ENOSYS ||
           errorNumber == EMLINK;
}

// Returns 0 or an errno value. The copy appears whole or not at all.
int copyDurably(const std::string& file, const std::string& copy)
{
    const std::string temporary = karvel::io::folderOf(copy) + '/' + karvel::io::temporaryName();
    std::error_code failed;
    fs::copy_file(file, temporary, fs::copy_options::none, failed);
    int result = failed.value();
    if (result == 0) {
        const FileDescriptor descriptor(::open(temporary.c_str(), O_RDONLY | O_CLOEXEC));
        const bool moved = descriptor && ::fsync(descriptor.get()) == 0 &&
                           ::rename(temporary.c_str(), copy.c_str()) == 0;
        result = moved ? 0 : errno;
    }
    if (result != 0) {
        ::unlink(temporary.c_str());
    }
    return result;
}

// Returns 0 or an errno value.
int giveSecondName(const std::string& file, const std::string& second)
{
    if (::link(file.c_str(), second.c_str()) == 0) {
        return 0;
    }
    const int refused = errno;
    return linksAreRefused(refused) ? copyDurably(file, second) : refused;
}

// Returns 0 or an errno value; never replaces anything.
int renameToNew(const std::string& from, const std::string& to)
{
    if (::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0) {
        return 0;
    }
    if (errno != EINVAL && errno != ENOSYS) {
        return errno;
    }
    if (::link(from.c_str(), to.c_str()) != 0) {
        return errno;
    }
    ::unlink(from.c_str());
    return 0;
}

// Returns 0 or an errno value.
int rename(const std::string& from, const std::string& to, bool replace)
{
    if (!replace) {
        return renameToNew(from, to);
    }
    if (::rename(from.c_str(), to.c_str()) != 0) {
        return errno;
    }
    // Renaming does nothing when the older backup is a link to the original, too.
    ::unlink(from.c_str());
    return 0;
}

bool haveSameContent(const std::string& one, const std::string& other)
{
    std::error_code failed;
    if (fs::file_size(one, failed) != fs::file_size(other, failed) || failed) {
        return false;
    }
    std::ifstream left(one, std::ios::binary);
    std::ifstream right(other, std::ios::binary);
    using Bytes = std::istreambuf_iterator<char>;
    return left && right && std::equal(Bytes(left), Bytes(), Bytes(right));
}

/// The second name of an original, taken apart.
struct HeldName {
    std::string file;
    std::string backup;
    bool replace;

    static std::optional<HeldName> of(const std::string& held)
    {
        const std::size_t digits = held.find_last_not_of("0123456789") + 1;
        if (digits == held.size()) {
            return std::nullopt;
        }
        const std::string rest = held.substr(0, digits);
        for (const std::string_view mark : {first, replacing}) {
            const std::string ending = ".bak" + std::string(mark);
            if (rest.size() > ending.size() &&
                rest.compare(rest.size() - ending.size(), ending.size(), ending) == 0) {
                const std::string file = rest.substr(0, rest.size() - ending.size());
                return HeldName{file, file + ".bak", mark == replacing};
            }
        }
        return std::nullopt;
    }
};

void settle(const std::string& held, const HeldName& name)
{
    // Its process holds a lock on it. Where there are no locks, nobody can tell; it stays.
    const FileDescriptor file(::open(held.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
        return;
    }
    if (isSameFile(held, name.file) || isSameFile(held, name.backup) ||
        haveSameContent(held, name.file)) {
        ::unlink(held.c_str());
    } else {
        rename(held, name.backup, name.replace);
    }
}

} // namespace

Result<Backup> Backup::of(const std::string& file, const std::string& backup, bool replace)
{
    const std::string held =
        backup + std::string(replace ? replacing : first) + std::to_string(::getpid());
    int failed = !replace && isThere(backup) ? EEXIST : giveSecondName(file, held);
    if (failed == EEXIST && isThere(held)) { // a process of the same number was killed
        settle(held, HeldName{file, backup, replace});
        failed = giveSecondName(file, held);
    }
    if (failed != 0) {
        return fail(failed == EEXIST ? Reason::BackupExists : Reason::OutputNotWritable, file,
                    failed == EEXIST
                        ? "the backup " + backup + " exists already"
                        : "the backup " + backup + " can't be made: " + systemMessage(failed));
    }
    FileDescriptor claim(::open(held.c_str(), O_RDONLY | O_CLOEXEC));
    if (claim) {
        ::flock(claim.get(), LOCK_EX | LOCK_NB);
    }
    // Before it was claimed somebody may have taken it for an abandoned one.
    if (!isThere(held)) {
        giveSecondName(file, held);
    }
    return Backup(held, backup, replace, std::move(claim));
}

Backup::Backup(Backup&& other) noexcept
    : held(std::move(other.held)), name(std::move(other.name)), replace(other.replace),
      claim(std::move(other.claim))
{
    other.held.clear();
}

Backup::~Backup()
{
    if (!held.empty()) {
        ::unlink(held.c_str());
    }
}

Outcome Backup::keep()
{
    const std::string original = std::move(held);
    held.clear();
    if (const int failed = rename(original, name, replace); failed != 0) {
        return fail(Reason::OutputNotWritable, name,
                    "the original is kept as " + original + ", because the backup " + name +
                        " can't be made: " + systemMessage(failed));
    }
    return {};
}

void settleAbandonedBackups(const std::string& folder)
{
    std::error_code failed;
    std::vector<std::string> found;
    for (fs::directory_iterator entry(folder, failed), end; !failed && entry != end;
         entry.increment(failed)) {
        std::string path = entry->path();
        if (HeldName::of(path)) {
            found.push_back(std::move(path));
        }
    }
    for (const std::string& held : found) {
        settle(held, *HeldName::of(held));
    }
}

} // namespace vantora
