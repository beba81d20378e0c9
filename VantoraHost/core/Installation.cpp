#include "VantoraHost/core/Installation.h"

#include <string>
#include <string_view>
#include <system_error>

namespace vantora {

namespace fs = std::filesystem;

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

fs::path thisProgram()
{
    std::error_code failed;
    return fs::read_symlink("/proc/self/exe", failed);
}

} // namespace vantora
