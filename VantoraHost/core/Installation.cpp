#include "VantoraHost/core/Installation.h"

#include "VantoraHost/core/FileIdentity.h"

#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>
#include <system_error>

namespace vantora {

namespace fs = std::filesystem;

namespace {

// In a folder with the sticky bit others can't rename or remove what is not theirs.
bool othersMayChangeItself(const fs::path& path)
{
    struct stat status = {};
    if (::lstat(path.c_str(), &status) != 0) {
        return true;
    }
    const bool sticky = S_ISDIR(status.st_mode) && (status.st_mode & S_ISVTX) != 0;
    return isOwnedByOthers(status) || (othersMayWriteTo(status) && !sticky);
}

// What of the path, links followed, somebody else may change: it or a folder above it.
std::optional<fs::path> changeableByOthers(const fs::path& path)
{
    std::error_code failed;
    const fs::path real = fs::canonical(path, failed);
    if (failed) {
        return path;
    }
    fs::path part;
    for (const fs::path& name : real) {
        part /= name;
        if (othersMayChangeItself(part)) {
            return part;
        }
    }
    return std::nullopt;
}

} // namespace

Installation installationOf(const fs::path& program, const char* actionFolders)
{
    const fs::path parts = program.parent_path().parent_path() / VANTORA_LIBRARY_DIR;
    Installation found;
    found.library = parts / VANTORA_PDF_LIBRARY;
    found.guiPart = parts / VANTORA_GUI_PART;
    found.verifier = parts / VANTORA_VERIFIER;
    found.desktop = program.parent_path() / VANTORA_DESKTOP;
    std::string_view given = actionFolders ? actionFolders : "";
    while (!given.empty()) {
        const auto end = given.find(':');
        if (end != 0) {
            found.actionFolders.emplace_back(given.substr(0, end));
        }
        given.remove_prefix(end == std::string_view::npos ? given.size() : end + 1);
    }
    if (found.actionFolders.empty()) {
        found.actionFolders.push_back(parts / "actions");
    }
    return found;
}

fs::path ownActionFolder(const char* dataHome, const char* home)
{
    const fs::path below = "vantora/actions";
    if (dataHome && dataHome[0] == '/') {
        return dataHome / below;
    }
    return home && home[0] == '/' ? home / (".local/share" / below) : fs::path();
}

void addOwnActions(Installation& installation, const fs::path& folder)
{
    std::error_code failed;
    if (folder.empty() || !fs::is_directory(folder, failed)) {
        return;
    }
    std::optional<fs::path> changeable = changeableByOthers(folder);
    for (fs::directory_iterator entry(folder, failed), end; !changeable && !failed && entry != end;
         entry.increment(failed)) {
        changeable = changeableByOthers(entry->path());
    }
    if (changeable) {
        installation.leftOut = Error{Reason::ActionUnusable, folder,
                                     "others than you may change " + changeable->string() +
                                         "; forbid it by chmod go-w, and own it yourself"};
        return;
    }
    installation.actionFolders.push_back(folder);
}

fs::path thisProgram()
{
    std::error_code failed;
    return fs::read_symlink("/proc/self/exe", failed);
}

Installation thisInstallation()
{
    const char* const given = std::getenv("VANTORA_ACTIONS_PATH");
    Installation found = installationOf(thisProgram(), given);
    if (!given || given[0] == '\0') {
        addOwnActions(found, ownActionFolder(std::getenv("XDG_DATA_HOME"), std::getenv("HOME")));
    }
    return found;
}

} // namespace vantora
