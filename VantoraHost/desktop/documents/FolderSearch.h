#pragma once

#include "VantoraHost/core/Inputs.h"
#include "VantoraHost/desktop/background/Background.h"

#include <QtCore/QObject>
#include <QtCore/QStringList>

#include <vector>

namespace vantora::desktop {

/// Finds the documents in folders and their subfolders by the shared file search, beside the
/// window's thread, and hands them over in groups as they are found.
class FolderSearch : public QObject {
    Q_OBJECT

public:
    explicit FolderSearch(QObject* parent = nullptr);
    ~FolderSearch() override;

    /// Searches folders, after those that are being searched.
    void search(const QStringList& folders);

    void stop();
    bool isBusy() const { return background_.isBusy(); }

signals:
    void found(const std::vector<vantora::Input>& inputs);

    /// All is searched, or somebody stopped it; `unreadable` are folders that couldn't be read.
    void finished(const QStringList& unreadable);

private:
    void startNext();

    QStringList waiting_;
    Background background_; ///< the last: what it does uses the others
};

} // namespace vantora::desktop
