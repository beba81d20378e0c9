#pragma once

#include "VantoraHost/desktop/background/Background.h"
#include "VantoraHost/desktop/documents/Document.h"

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include <functional>
#include <vector>

namespace vantora::desktop {

/// A file as somebody saw it.
struct WatchedFile {
    DocumentId id = 0;
    std::string path;
    FileState seen;
};

/// Those that aren't any more what was seen.
std::vector<DocumentId> changedAmong(const std::vector<WatchedFile>& files);

/// Looks every other second which files are others than they were, beside the window's thread,
/// since a network's folder may keep it waiting. This also sees what is written into a file that
/// keeps its name, and costs nothing for files that the system could not notify about.
class DiskWatch : public QObject {
    Q_OBJECT

public:
    /// `files` says what to look at; it is asked each time.
    explicit DiskWatch(std::function<std::vector<WatchedFile>()> files, QObject* parent = nullptr);

    /// Looks at once.
    void look();

signals:
    void changed(const std::vector<vantora::desktop::DocumentId>& documents);

private:
    const std::function<std::vector<WatchedFile>()> files_;
    QTimer timer_;
    Background background_;
};

} // namespace vantora::desktop
