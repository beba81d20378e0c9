#pragma once

#include <QtWidgets/QAction>

class QMenuBar;
class QToolBar;
class QUndoStack;

namespace vantora::desktop {

/// The window's commands, with their texts, icons and shortcuts; what they do is connected
/// elsewhere.
class WindowActions : public QObject {
    Q_OBJECT

public:
    WindowActions(QUndoStack& undo, QObject* parent = nullptr);

    QAction addFiles;
    QAction addFolder;
    QAction removeDocuments;
    QAction readAgain;
    QAction showInFolder;
    QAction run; ///< or stop, while there is a run
    QAction quit;
    QAction* undo;
    QAction* redo;
    QAction paste;
    QAction choosePages;
    QAction loadRanges;
    QAction saveRanges;
    QAction saveReport;
    QAction showDocuments;
    QAction showPages;
    QAction showSequence;
    QAction showHelp;
    QAction about;

    /// Says what `run` does now.
    void setRunning(bool running);

    /// The commands for the list of documents.
    QList<QAction*> forDocuments();

private:
    void nameUndo(const QString& command);
    void nameRedo(const QString& command);
};

/// A picture of the window's own, by the name of its file.
QIcon windowPicture(const QString& name);

} // namespace vantora::desktop
