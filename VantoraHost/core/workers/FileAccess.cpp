#include "VantoraHost/core/workers/FileAccess.h"

#include "KarvelPDFLibrary/io/Folder.h"

#include <fcntl.h>
#include <linux/landlock.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <set>

namespace vantora {

using karvel::io::FileDescriptor;

namespace {

// More rules than this take a worker longer than its documents are worth.
constexpr std::size_t mostReadable = 4096;

// Of versions later than the header's (landlock(7)).
constexpr std::uint64_t moveBetweenFolders = 1ULL << 13; // version 2
constexpr std::uint64_t truncateFile = 1ULL << 14;       // version 3
constexpr std::uint64_t controlDevice = 1ULL << 15;      // version 5
constexpr std::uint64_t useNetwork = 3;                  // version 4: bind and connect
constexpr std::uint64_t otherDomains = 3;                // version 6: sockets and signals

/// struct landlock_ruleset_attr of version 6.
struct Ruleset {
    std::uint64_t files;
    std::uint64_t network;
    std::uint64_t scoped;
};

constexpr std::uint64_t readFile = LANDLOCK_ACCESS_FS_READ_FILE;
constexpr std::uint64_t read = readFile | LANDLOCK_ACCESS_FS_READ_DIR;

constexpr std::uint64_t firstVersion =
    LANDLOCK_ACCESS_FS_EXECUTE | LANDLOCK_ACCESS_FS_WRITE_FILE | read |
    LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_CHAR |
    LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG | LANDLOCK_ACCESS_FS_MAKE_SOCK |
    LANDLOCK_ACCESS_FS_MAKE_FIFO | LANDLOCK_ACCESS_FS_MAKE_BLOCK | LANDLOCK_ACCESS_FS_MAKE_SYM;

constexpr std::uint64_t write = read | LANDLOCK_ACCESS_FS_WRITE_FILE |
                                LANDLOCK_ACCESS_FS_REMOVE_FILE | LANDLOCK_ACCESS_FS_MAKE_DIR |
                                LANDLOCK_ACCESS_FS_MAKE_REG | moveBetweenFolders | truncateFile;

std::uint64_t knownTo(long version)
{
    return firstVersion | (version >= 2 ? moveBetweenFolders : 0) |
           (version >= 3 ? truncateFile : 0) | (version >= 5 ? controlDevice : 0);
}

std::size_t sizeFor(long version)
{
    return version >= 6   ? sizeof(Ruleset)
           : version >= 4 ? offsetof(Ruleset, scoped)
                          : offsetof(Ruleset, network);
}

// What is not there can't be used either.
void addRule(const FileDescriptor& rules, const std::string& path, std::uint64_t access)
{
    const FileDescriptor file(::open(path.c_str(), O_PATH | O_CLOEXEC));
    struct stat status = {};
    if (!file || ::fstat(file.get(), &status) != 0) {
        return;
    }
    if (!S_ISDIR(status.st_mode)) {
        access &= readFile | LANDLOCK_ACCESS_FS_WRITE_FILE;
    }
    const landlock_path_beneath_attr rule = {access, file.get()};
    ::syscall(SYS_landlock_add_rule, rules.get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0);
}

void addFolder(std::vector<std::string>& found, const char* variable, const std::string& below)
{
    const char* const folder = std::getenv(variable);
    if (folder && folder[0] == '/') {
        found.push_back(folder + below);
    }
}

// Folders with as few rules: each step leaves the last part of the longest paths out.
void shorten(std::set<std::string>& folders)
{
    while (folders.size() > mostReadable) {
        std::set<std::string> above;
        for (const std::string& folder : folders) {
            above.insert(karvel::io::folderOf(folder));
        }
        folders = std::move(above);
    }
}

} // namespace

std::vector<std::string> readableFor(const std::vector<std::string>& inputs)
{
    std::vector<std::string> readable;
    std::set<std::string> folders;
    for (const std::string& input : inputs) {
        if (input == standardStream) {
            continue;
        }
        if (inputs.size() <= mostReadable) {
            readable.push_back(input);
        } else {
            folders.insert(karvel::io::folderOf(input));
        }
    }
    shorten(folders);
    readable.insert(readable.end(), folders.begin(), folders.end());
    return readable;
}

std::vector<std::string> writableFor(const Batch& batch)
{
    std::set<std::string> folders;
    for (const Result<Target>& target : batch.targets) {
        if (target && !batch.settings.dryRun && !target->standardOutput) {
            folders.insert(karvel::io::folderOf(target->path));
        }
    }
    return {folders.begin(), folders.end()};
}

std::vector<std::string> programFiles(std::vector<std::filesystem::path> folders)
{
    std::vector<std::string> found = {"/usr",
                                      "/lib",
                                      "/lib32",
                                      "/lib64",
                                      "/opt",
                                      "/etc/fonts",
                                      "/etc/ld.so.cache",
                                      "/etc/localtime",
                                      "/etc/passwd",
                                      "/etc/nsswitch.conf",
                                      "/etc/papersize",
                                      "/var/cache/fontconfig",
                                      "/var/lib/dpkg/arch",
                                      "/dev/urandom",
                                      "/dev/random",
                                      "/dev/zero",
                                      "/proc/self",
                                      "/sys/devices/system/cpu"};
    for (const std::filesystem::path& folder : folders) {
        found.push_back(folder);
    }
    for (const char* below : {"/.fonts", "/.fonts.conf", "/.config/fontconfig",
                              "/.local/share/fonts", "/.cache/fontconfig"}) {
        addFolder(found, "HOME", below);
    }
    addFolder(found, "XDG_CONFIG_HOME", "/fontconfig");
    addFolder(found, "XDG_DATA_HOME", "/fonts");
    addFolder(found, "XDG_CACHE_HOME", "/fontconfig");
    addFolder(found, "FONTCONFIG_PATH", "");
    addFolder(found, "FONTCONFIG_FILE", "");
    return found;
}

FileRules::FileRules()
{
    const long version =
        ::syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
    if (version < 1) {
        return;
    }
    known_ = knownTo(version);
    const Ruleset attributes = {known_, useNetwork, otherDomains};
    rules_ = FileDescriptor(
        static_cast<int>(::syscall(SYS_landlock_create_ruleset, &attributes, sizeFor(version), 0)));
    addRule(rules_, "/dev/null", (readFile | LANDLOCK_ACCESS_FS_WRITE_FILE) & known_);
}

void FileRules::allow(const FileAccess& access)
{
    if (!rules_) {
        return;
    }
    for (const std::string& path : access.readable) {
        addRule(rules_, path, read & known_);
    }
    for (const std::string& folder : access.writable) {
        addRule(rules_, folder, write & known_);
    }
}

bool FileRules::enforce() const
{
    return rules_ && ::syscall(SYS_landlock_restrict_self, rules_.get(), 0) == 0;
}

} // namespace vantora
