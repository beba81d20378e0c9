#include "VantoraHost/desktop/session/StateFolder.h"

#include "VantoraHost/core/FileIdentity.h"

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <sys/stat.h>

#include <cerrno>
#include <cstdlib>
#include <filesystem>

namespace vantora::desktop {

std::string stateFolder(const std::string& name)
{
    const char* const state = std::getenv("XDG_STATE_HOME");
    const std::string base =
        state != nullptr && *state == '/'
            ? state
            : QFile::encodeName(QDir::homePath()).toStdString() + "/.local/state";
    return base + "/vantora/" + name;
}

Outcome makeStateFolder(const std::string& folder)
{
    std::error_code failed;
    std::filesystem::create_directories(std::filesystem::path(folder).parent_path(), failed);
    if (::mkdir(folder.c_str(), S_IRWXU) != 0 && errno != EEXIST) {
        return fail(Reason::OutputNotWritable, folder, systemMessage(errno));
    }
    return isPrivateFolder(folder)
               ? Outcome()
               : fail(Reason::OutputNotWritable, folder,
                      "is not a folder of yours that nobody else may look into");
}

} // namespace vantora::desktop
