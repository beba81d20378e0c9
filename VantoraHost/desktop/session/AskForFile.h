#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

class QWidget;

namespace vantora::desktop {

/// What somebody is asked for.
struct FileQuestion {
    QString title;
    bool saves = false;  ///< else the file has to be there
    QString suffix;      ///< of a name that is typed without one
    QStringList filters; ///< as QFileDialog takes them; to save, one of a single kind of files has
                         ///< its own suffix
    QString folder;      ///< where it begins; empty for where the last one ended
    QString name;        ///< the one to save by that is proposed
};

/// Asks for a file without holding up the window, and calls `then` with its path. Before a file
/// that exists is saved to, it is asked whether it is to be replaced.
void askForFile(QWidget& parent, const FileQuestion& question,
                const std::function<void(const QString& path)>& then);

} // namespace vantora::desktop
