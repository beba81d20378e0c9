#include "VantoraHost/cli/gui_part/GuiPart.h"

#include <QtCore/QFile>
#include <QtCore/QLibrary>

namespace vantora::cli {

Result<const GuiPart*> loadGuiPart(const Installation& installation)
{
    // The object's end does not unload the module.
    QLibrary module(QFile::decodeName(installation.guiPart.c_str()));
    const auto entry = reinterpret_cast<GuiPartEntry>(module.resolve(guiPartEntryName));
    if (!entry) {
        return fail(Reason::LibraryMissing, installation.guiPart,
                    "the program's part for windows can't be loaded: " +
                        module.errorString().toStdString());
    }
    return entry();
}

} // namespace vantora::cli
