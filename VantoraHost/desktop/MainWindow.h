#pragma once

#include "VantoraHost/desktop/WindowActions.h"
#include "VantoraHost/desktop/WindowState.h"
#include "VantoraHost/desktop/Workbench.h"
#include "VantoraHost/desktop/pages/Pictures.h"
#include "VantoraHost/desktop/run/ReportSaver.h"
#include "VantoraHost/desktop/session/RecentPaths.h"

#include <QtCore/QTimer>
#include <QtWidgets/QMainWindow>

#include <utility>

class QFrame;
class QLabel;
class QMenu;
class QSplitter;
class QStackedWidget;

namespace vantora::desktop {

class ChoosePane;
class DocumentsPane;
class HelpPane;
class PagesPane;
class ResultsPane;
class RunBar;
class SequencePane;

/// The program's window: puts the panes beside each other and connects them with what they show.
/// What they do, they do themselves.
class MainWindow : public QMainWindow {
    Q_OBJECT

public:
    explicit MainWindow(const Installation& installation);
    ~MainWindow() override;

    /// Adds files and folders to the list, and takes steps from files that people saved them in.
    void open(const QStringList& paths);

    /// The same, and shows itself to the user, who asked for it elsewhere.
    void comeForward(const QStringList& paths);

    Workbench& workbench() { return workbench_; }

protected:
    void closeEvent(QCloseEvent* event) override;
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    QWidget* titled(const QString& title, QWidget* pane);
    void layOut();
    void makeMenus();
    void connectCommands();
    void connectChoosing();
    void connectRuns();
    void connectUndo();
    void fillPastRuns(QMenu& menu);
    void chooseFiles(bool folders);
    void chooseRangesFile(bool saves);
    void chooseReportFile();
    void pasteFiles();
    void showCurrentDocument();
    void showReviewed();
    void showOutlook();
    void endRun(bool cancelled, const QString& error);
    void showNote(const QString& sentence);
    void restore();
    void keep();

    Workbench workbench_;
    Pictures pictures_;
    ReportSaver reports_;
    WindowActions actions_;
    RecentPaths recent_;
    DocumentsPane* documents_;
    ChoosePane* choosing_;
    PagesPane* pages_;
    SequencePane* sequence_;
    HelpPane* help_;
    RunBar* runBar_;
    ResultsPane* results_;
    QStackedWidget* stack_;
    QSplitter* panes_;
    QSplitter* upAndDown_;
    QLabel* note_;
    QFrame* closing_; ///< asks what is to become of the run
    QTimer reviewTimer_;
    std::pair<DocumentId, quint64> shown_; ///< a document and its version; zeros for none
    std::size_t inRun_ = 0;
    bool closesAnyway_ = false;
};

} // namespace vantora::desktop
