#include "VantoraHost/desktop/DesktopArguments.h"

namespace vantora::desktop {

namespace {

constexpr char help[] = R"(Opens a window to remove pages from many PDF documents.

vantora-desktop [--new-window] [FILE...]

  FILE         PDF files, and folders whose PDF files are added with those of
               their subfolders; the steps of action lists (.xqq) and of tool
               settings (.tsf) become those of the run
  --new-window open another window; else one that is there takes the files
  --help       print this
  --version    print the version

`vantora desktop FILE...` is the same; `vantora --help` shows what a terminal can do.
)";

} // namespace

DesktopArguments readArguments(const QStringList& arguments)
{
    DesktopArguments read;
    bool onlyFiles = false;
    for (const QString& argument : arguments) {
        if (onlyFiles || !argument.startsWith('-')) {
            read.files << argument;
        } else if (argument == "--") {
            onlyFiles = true;
        } else if (argument == "--new-window") {
            read.newWindow = true;
        } else if (argument == "--help" || argument == "-h") {
            read.printed = QString::fromLatin1(help);
        } else if (argument == "--version") {
            read.printed = QStringLiteral("vantora-desktop " VANTORA_VERSION "\n");
        } else {
            read.mistake = QStringLiteral("there is no option %1; --help shows what there is; a "
                                          "file of such a name goes behind --")
                               .arg(argument);
        }
    }
    return read;
}

} // namespace vantora::desktop
