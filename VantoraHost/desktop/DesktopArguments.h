#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <optional>

namespace vantora::desktop {

/// What the command line of the desktop program says.
struct DesktopArguments {
    QStringList files;              ///< files and folders to open
    bool newWindow = false;         ///< even where the session has one
    std::optional<QString> printed; ///< to be printed, and that is all: help or version
    std::optional<QString> mistake; ///< what is wrong; then nothing else counts
};

/// Reads arguments, without the program's name.
DesktopArguments readArguments(const QStringList& arguments);

} // namespace vantora::desktop
