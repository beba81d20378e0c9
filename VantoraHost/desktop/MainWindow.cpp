#include "VantoraHost/desktop/MainWindow.h"

#include "VantoraApp/environment/ProductTitle.h"
#include "VantoraHost/desktop/EmptyPage.h"
#include "VantoraHost/desktop/RecoveryBar.h"
#include "VantoraHost/desktop/choosing/ChoosePane.h"
#include "VantoraHost/desktop/documents/DocumentsPane.h"
#include "VantoraHost/desktop/help/AboutWindow.h"
#include "VantoraHost/desktop/help/HelpPane.h"
#include "VantoraHost/desktop/pages/PagesPane.h"
#include "VantoraHost/desktop/run/ResultsPane.h"
#include "VantoraHost/desktop/run/RunBar.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/sequence/SequencePane.h"
#include "VantoraHost/desktop/session/AskForFile.h"
#include "VantoraHost/desktop/session/Notice.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QFileInfo>
#include <QtCore/QMimeData>
#include <QtCore/QUrl>
#include <QtGui/QClipboard>
#include <QtGui/QDesktopServices>
#include <QtGui/QDragEnterEvent>
#include <QtGui/QScreen>
#include <QtWidgets/QApplication>
#include <QtWidgets/QFileDialog>
#include <QtWidgets/QLabel>
#include <QtWidgets/QMenuBar>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QSplitter>
#include <QtWidgets/QStackedWidget>
#include <QtWidgets/QStatusBar>
#include <QtWidgets/QToolBar>
#include <QtWidgets/QVBoxLayout>

#include <algorithm>
#include <iterator>
#include <memory>

namespace vantora::desktop {

namespace {

QStringList filesIn(const QMimeData* data)
{
    QStringList files;
    for (const QUrl& url : data->urls()) {
        if (url.isLocalFile()) {
            files << url.toLocalFile();
        }
    }
    return files;
}

// The review of thousands of documents isn't put together anew for each that is read; in
// milliseconds.
constexpr int reviewDelay = 200;

ShownDocument shownOf(const Document& document)
{
    return {document.id,      qtPath(document.input.path),
            nameOf(document), QString::fromStdString(document.password),
            document.version, document.pages};
}

PictureSettings picturesFor(const Installation& installation)
{
    PictureSettings settings;
    settings.program = installation.program;
    settings.library = installation.library;
    return settings;
}

} // namespace

MainWindow::MainWindow(const Installation& installation)
    : workbench_(installation), pictures_(picturesFor(installation)),
      reports_(workbench_.results, pictures_,
               [this](const std::string& input) { return workbench_.passwordFor(input); }),
      actions_(workbench_.undo),
      documents_(new DocumentsPane(workbench_.list, workbench_.documents)),
      choosing_(new ChoosePane(workbench_.chooser, workbench_.list)),
      pages_(new PagesPane(workbench_.marks, workbench_.undo, pictures_)),
      sequence_(new SequencePane({workbench_.steps, workbench_.undo, workbench_.actions,
                                  [this] { return workbench_.marks.forAll().text; }},
                                 *pages_)),
      help_(new HelpPane), runBar_(new RunBar(actions_.run)),
      results_(new ResultsPane(workbench_.results))
{
    setObjectName("VantoraClass");
    setWindowTitle(ProductTitle());
    setWindowIcon(QIcon(":/Vantora/Resources/Icons/App_icon_256x256.png"));
    setAcceptDrops(true);
    layOut();
    makeMenus();
    connectCommands();
    connectChoosing();
    connectRuns();
    connectUndo();
    restore();
    showOutlook();
    workbench_.leftBehind.look();
}

// The panes go before what they show.
MainWindow::~MainWindow()
{
    const std::unique_ptr<QWidget> panes(takeCentralWidget());
}

QWidget* MainWindow::titled(const QString& title, QWidget* pane)
{
    auto* area = new QWidget;
    auto* layout = new QVBoxLayout(area);
    auto* heading = new QLabel(title);
    QFont strong = heading->font();
    strong.setBold(true);
    heading->setFont(strong);
    layout->addWidget(heading);
    layout->addWidget(pane, 1);
    return area;
}

void MainWindow::layOut()
{
    panes_ = new QSplitter(Qt::Horizontal);
    panes_->setChildrenCollapsible(false);
    panes_->addWidget(titled(tr("Documents"), documents_));
    QWidget* pages = titled(tr("Pages"), pages_);
    pages_->layout()->setContentsMargins(0, 0, 0, 0); // those beside it have theirs here, too
    choosing_->hide();
    static_cast<QVBoxLayout*>(pages->layout())->insertWidget(1, choosing_); // below the title
    panes_->addWidget(pages);
    auto* steps = new QSplitter(Qt::Vertical);
    steps->setChildrenCollapsible(false);
    steps->addWidget(sequence_);
    steps->addWidget(help_);
    panes_->addWidget(titled(tr("Steps"), steps));
    const int letter = fontMetrics().averageCharWidth();
    panes_->setSizes({68 * letter, 80 * letter, 34 * letter});
    panes_->setStretchFactor(1, 1);
    help_->hide();

    upAndDown_ = new QSplitter(Qt::Vertical);
    upAndDown_->setChildrenCollapsible(false);
    upAndDown_->addWidget(panes_);
    upAndDown_->addWidget(titled(tr("Results"), results_));
    upAndDown_->setStretchFactor(0, 1);
    upAndDown_->widget(1)->hide();

    note_ = new QLabel;
    note_->setWordWrap(true);
    note_->setContentsMargins(12, 6, 12, 6);
    note_->hide();
    closing_ = new QFrame;
    closing_->setFrameShape(QFrame::StyledPanel);
    auto* question = new QHBoxLayout(closing_);
    question->addWidget(new QLabel(tr("A run is going on.")), 1);
    auto* stop = new QPushButton(tr("Stop It and &Close"));
    auto* goOn = new QPushButton(tr("Go &On"));
    question->addWidget(stop);
    question->addWidget(goOn);
    connect(stop, &QPushButton::clicked, this, [this] {
        closesAnyway_ = true;
        workbench_.runs.cancel();
    });
    connect(goOn, &QPushButton::clicked, closing_, &QWidget::hide);
    closing_->hide();

    auto* work = new QWidget;
    auto* layout = new QVBoxLayout(work);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(upAndDown_, 1);
    layout->addWidget(note_);
    layout->addWidget(closing_);
    auto* line = new QFrame;
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    layout->addWidget(line);
    layout->addWidget(runBar_);

    stack_ = new QStackedWidget;
    stack_->addWidget(new EmptyPage(actions_.addFiles, actions_.addFolder));
    stack_->addWidget(work);
    auto* all = new QWidget;
    auto* aboveEachOther = new QVBoxLayout(all);
    aboveEachOther->setContentsMargins(0, 0, 0, 0);
    aboveEachOther->setSpacing(0);
    aboveEachOther->addWidget(new RecoveryBar(workbench_));
    aboveEachOther->addWidget(stack_, 1);
    setCentralWidget(all);
    const QSize wanted(190 * letter, 46 * fontMetrics().height());
    resize(wanted.boundedTo(screen()->availableSize()));
}

void MainWindow::makeMenus()
{
    const auto add = [](QMenu* menu, const QList<QAction*>& actions) {
        for (QAction* action : actions) {
            action == nullptr ? menu->addSeparator() : (menu->addAction(action), nullptr);
        }
    };
    QMenu* file = menuBar()->addMenu(tr("&File"));
    add(file, {&actions_.addFiles, &actions_.addFolder, &actions_.paste});
    auto* recent = new RecentMenu(recent_, file);
    connect(recent, &RecentMenu::chosen, this, [this](const QString& path) { open({path}); });
    file->addMenu(recent);
    add(file, {nullptr, &actions_.loadRanges, &actions_.saveRanges, nullptr, &actions_.run});
    QMenu* past = file->addMenu(tr("Past R&uns"));
    connect(past, &QMenu::aboutToShow, this, [this, past] { fillPastRuns(*past); });
    add(file, {&actions_.saveReport, nullptr, &actions_.quit});
    add(menuBar()->addMenu(tr("&Edit")),
        {actions_.undo, actions_.redo, nullptr, &actions_.removeDocuments, &actions_.readAgain,
         &actions_.showInFolder});
    QMenu* mark = menuBar()->addMenu(tr("&Mark"));
    add(mark, {&actions_.choosePages, nullptr});
    add(mark, pages_->markActions());
    QMenu* view = menuBar()->addMenu(tr("&View"));
    add(view, {&actions_.showDocuments, &actions_.showPages, &actions_.showSequence, nullptr});
    add(view, pages_->viewActions());
    add(menuBar()->addMenu(tr("&Help")), {&actions_.showHelp, nullptr, &actions_.about});
    documents_->setCommands(actions_.forDocuments());

    QToolBar* bar = addToolBar(tr("Tools"));
    bar->setObjectName("tools");
    bar->setMovable(false);
    bar->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    bar->addActions({&actions_.addFiles, &actions_.addFolder});
    bar->addSeparator();
    bar->addActions({actions_.undo, actions_.redo});
    bar->addSeparator();
    bar->addAction(&actions_.choosePages);
}

void MainWindow::connectCommands()
{
    connect(&actions_.addFiles, &QAction::triggered, this, [this] { chooseFiles(false); });
    connect(&actions_.addFolder, &QAction::triggered, this, [this] { chooseFiles(true); });
    connect(&actions_.paste, &QAction::triggered, this, &MainWindow::pasteFiles);
    connect(&actions_.removeDocuments, &QAction::triggered, this,
            [this] { workbench_.documents.remove(documents_->selected()); });
    connect(&actions_.readAgain, &QAction::triggered, this, [this] {
        const QSet<DocumentId> ids = documents_->selected();
        workbench_.documents.readAgain({ids.begin(), ids.end()});
    });
    connect(&actions_.showInFolder, &QAction::triggered, this, [this] {
        const auto id = documents_->current();
        if (const Document* document = id ? workbench_.list.find(*id) : nullptr) {
            QDesktopServices::openUrl(
                QUrl::fromLocalFile(QFileInfo(qtPath(document->input.path)).absolutePath()));
        }
    });
    connect(&actions_.quit, &QAction::triggered, this, &QWidget::close);
    connect(&actions_.about, &QAction::triggered, this, [this] { showAbout(*this); });
    const std::pair<QAction*, int> panes[] = {
        {&actions_.showDocuments, 0}, {&actions_.showPages, 1}, {&actions_.showSequence, 2}};
    for (const auto& [action, place] : panes) {
        connect(action, &QAction::toggled, panes_->widget(place), &QWidget::setVisible);
    }
    connect(&actions_.showHelp, &QAction::toggled, help_, &QWidget::setVisible);
    connect(sequence_, &SequencePane::helpAsked, help_, &HelpPane::showPage);
    sequence_->askForHelp();
    connect(sequence_, &SequencePane::rangeAsked, &workbench_, &Workbench::markForAll);
    connect(documents_, &DocumentsPane::currentChanged, this, &MainWindow::showCurrentDocument);
    connect(&workbench_.list, &DocumentList::changed, this, [this] {
        stack_->setCurrentIndex(workbench_.list.rowCount() > 0 ? 1 : 0);
        if (!reviewTimer_.isActive()) {
            reviewTimer_.start();
        }
    });
    reviewTimer_.setSingleShot(true);
    reviewTimer_.setInterval(reviewDelay);
    connect(&reviewTimer_, &QTimer::timeout, this, &MainWindow::showReviewed);
    connect(&workbench_, &Workbench::noted, this, &MainWindow::showNote);
}

void MainWindow::connectChoosing()
{
    connect(&actions_.choosePages, &QAction::toggled, this, [this](bool on) {
        choosing_->setVisible(on);
        on ? choosing_->focusLastRow() : workbench_.chooser.stop();
    });
    connect(&actions_.loadRanges, &QAction::triggered, this, [this] { chooseRangesFile(false); });
    connect(&actions_.saveRanges, &QAction::triggered, this, [this] { chooseRangesFile(true); });
    connect(choosing_, &ChoosePane::closeAsked, this,
            [this] { actions_.choosePages.setChecked(false); });
    connect(choosing_, &ChoosePane::documentAsked, documents_, &DocumentsPane::setCurrent);
    connect(choosing_, &ChoosePane::reviewAsked, this, [this] {
        showReviewed();
        pages_->setReview(false); // one that is on has the pages that went when it was begun
        pages_->setReview(true);
    });
    pages_->setReasons(
        [this](DocumentId id, int page) { return workbench_.chooser.reasonOf(id, page); });
    connect(documents_, &DocumentsPane::currentChanged, this,
            [this] { workbench_.chooser.setCurrent(documents_->current()); });
}

void MainWindow::connectRuns()
{
    RunController& runs = workbench_.runs;
    connect(&actions_.run, &QAction::triggered, this, [this] {
        showNote({});
        workbench_.runs.isRunning() ? workbench_.runs.cancel() : workbench_.startRun();
    });
    connect(runBar_, &RunBar::settingsChanged, this,
            [this] { workbench_.setSettings(runBar_->settings()); });
    connect(&workbench_, &Workbench::settingsBroughtBack, runBar_, &RunBar::setSettings);
    connect(&workbench_, &Workbench::outlookChanged, this, &MainWindow::showOutlook);
    connect(&runs, &RunController::started, this, [this](std::size_t documents) {
        inRun_ = documents;
        actions_.setRunning(true);
        actions_.run.setEnabled(true);
        runBar_->setRunning(true);
        results_->setUndoable(false);
        runBar_->showProgress(workbench_.runs.progress());
    });
    connect(&runs, &RunController::progressed, this,
            [this] { runBar_->showProgress(workbench_.runs.progress()); });
    connect(&runs, &RunController::finished, this, &MainWindow::endRun);
    connect(results_, &ResultsPane::retryAsked, &workbench_, &Workbench::goOn);
    connect(results_, &ResultsPane::salvageAsked, &workbench_, &Workbench::salvage);
    connect(results_, &ResultsPane::restAsked, &workbench_, &Workbench::goOn);
    connect(results_, &ResultsPane::closeAsked, this, [this] { upAndDown_->widget(1)->hide(); });
    connect(results_, &ResultsPane::reportAsked, &actions_.saveReport, &QAction::trigger);
    connect(&actions_.saveReport, &QAction::triggered, this, &MainWindow::chooseReportFile);
    connect(&reports_, &ReportSaver::noted, this, &MainWindow::showNote);
    const auto follow = [this] {
        actions_.saveReport.setEnabled(workbench_.results.rowCount() > 0);
    };
    connect(&workbench_.results, &QAbstractItemModel::rowsInserted, this, follow);
    connect(&workbench_.results, &QAbstractItemModel::modelReset, this, follow);
    connect(results_, &ResultsPane::commandAsked, this,
            [this] { QApplication::clipboard()->setText(workbench_.commands()); });
}

void MainWindow::connectUndo()
{
    UndoController& undoing = workbench_.undoing;
    connect(results_, &ResultsPane::undoAsked, &workbench_, &Workbench::foreseeUndo);
    connect(results_, &ResultsPane::undoConfirmed, &workbench_, &Workbench::undoRun);
    connect(&undoing, &UndoController::foreseen, results_, &ResultsPane::askUndo);
    connect(&undoing, &UndoController::progressed, results_,
            [this, &undoing] { results_->showUndoing(undoing.done(), undoing.total()); });
    connect(&undoing, &UndoController::undone, results_,
            [this](const std::vector<Undone>& documents) {
                UndoOutlook came;
                for (const Undone& document : documents) {
                    came.add(document);
                }
                results_->showUndoNote(undoneText(came));
            });
    connect(&undoing, &UndoController::failed, this, &MainWindow::showNote);
    connect(&workbench_, &Workbench::pastRunShown, this, [this](const QString& title) {
        stack_->setCurrentIndex(1);
        upAndDown_->widget(1)->show();
        results_->showTitle(title);
        results_->setUndoable(workbench_.canUndoRun());
        results_->focusList();
    });
}

void MainWindow::fillPastRuns(QMenu& menu)
{
    menu.clear();
    for (const PastRun& run : workbench_.pastRuns.list()) {
        const QString time = QLocale().toString(run.begun.toLocalTime(), QLocale::ShortFormat);
        menu.addAction(time + QStringLiteral(" · ") +
                           MainWindow::tr("%n document(s)", nullptr, asCount(run.documents)),
                       this, [this, run] { workbench_.showPastRun(run); });
    }
    if (menu.isEmpty()) {
        menu.addAction(tr("None yet"))->setEnabled(false);
    }
}

void MainWindow::open(const QStringList& paths)
{
    QStringList documents;
    std::copy_if(paths.begin(), paths.end(), std::back_inserter(documents),
                 [this](const QString& path) { return !sequence_->loadFile(path); });
    if (!documents.isEmpty()) {
        recent_.add(documents);
        workbench_.documents.add(documents);
    }
}

void MainWindow::comeForward(const QStringList& paths)
{
    open(paths);
    setWindowState(windowState() & ~Qt::WindowMinimized);
    show();
    raise();
    activateWindow();
    QApplication::alert(this); // where the desktop doesn't let it come to the front
}

void MainWindow::chooseFiles(bool folders)
{
    auto* dialog = new QFileDialog(this, folders ? tr("Add a Folder") : tr("Add Files"));
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    if (folders) {
        dialog->setFileMode(QFileDialog::Directory);
        dialog->setOption(QFileDialog::ShowDirsOnly);
    } else {
        dialog->setFileMode(QFileDialog::ExistingFiles);
        dialog->setNameFilters({tr("PDF files (*.pdf *.PDF)"), tr("All files (*)")});
    }
    connect(dialog, &QFileDialog::filesSelected, this, &MainWindow::open);
    dialog->show();
}

void MainWindow::chooseRangesFile(bool saves)
{
    const auto id = documents_->current();
    const Document* current = id ? workbench_.list.find(*id) : nullptr;
    askForFile(*this,
               {saves ? tr("Save Pages") : tr("Load Pages"),
                saves,
                QStringLiteral("tsv"),
                {tr("Lists of pages (*.tsv *.csv *.txt)"), tr("All files (*)")},
                current ? QFileInfo(qtPath(current->input.path)).absolutePath() : QString(),
                saves ? tr("pages.tsv", "a file's name that is proposed") : QString()},
               [this, saves](const QString& path) {
                   if (saves) {
                       workbench_.ranges.save(path);
                   } else {
                       workbench_.chooser.stop(); // documents that are added get those of the file
                       workbench_.ranges.load(path);
                   }
               });
}

void MainWindow::chooseReportFile()
{
    const auto save = [this](const QString& path) {
        // The dialog has asked about a file that is there.
        const auto existing =
            QFileInfo::exists(path) ? ExistingText::Replace : ExistingText::Refuse;
        if (path.endsWith(QStringLiteral(".jsonl"), Qt::CaseInsensitive)) {
            reports_.saveJson(path, existing, workbench_.report());
        } else {
            reports_.saveHtml(path, existing, workbench_.shownRun());
        }
    };
    askForFile(*this,
               {tr("Save Report"),
                true,
                QStringLiteral("html"),
                {tr("Web page with pictures (*.html)"), tr("Lines of JSON (*.jsonl)")},
                {},
                tr("report", "a file's name")},
               save);
}

void MainWindow::pasteFiles()
{
    open(filesIn(QApplication::clipboard()->mimeData()));
}

void MainWindow::dragEnterEvent(QDragEnterEvent* event)
{
    if (!filesIn(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainWindow::dropEvent(QDropEvent* event)
{
    open(filesIn(event->mimeData()));
    event->setDropAction(Qt::CopyAction); // the files stay where they are
    event->accept();
}

void MainWindow::showReviewed()
{
    std::vector<ShownDocument> reviewed;
    for (const Document& document : workbench_.list.documents()) {
        if (document.isUsable()) {
            reviewed.push_back(shownOf(document));
        }
    }
    pages_->setReviewed(std::move(reviewed));
}

void MainWindow::showCurrentDocument()
{
    const auto id = documents_->current();
    const Document* document = id ? workbench_.list.find(*id) : nullptr;
    const bool isUsable = document != nullptr && document->isUsable();
    // Every document that is read is a change of the list.
    const auto now =
        isUsable ? std::pair(document->id, document->version) : std::pair(DocumentId{}, quint64{});
    if (now != shown_) {
        shown_ = now;
        pages_->showDocument(isUsable ? std::optional(shownOf(*document)) : std::nullopt);
    }
}

void MainWindow::showOutlook()
{
    const RunOutlook& outlook = workbench_.outlook();
    runBar_->showOutlook(outlook);
    if (!workbench_.runs.isRunning()) {
        actions_.run.setEnabled(outlook.obstacle.isEmpty() && outlook.plan.documents > 0);
    }
}

void MainWindow::endRun(bool cancelled, const QString& error)
{
    actions_.setRunning(false);
    runBar_->setRunning(false);
    upAndDown_->widget(1)->show();
    results_->showSummary(workbench_.runs.summary(), inRun_, cancelled, error);
    results_->setUndoable(workbench_.canUndoRun());
    if (const auto& fault = workbench_.runs.reportFault()) {
        showNote(tr("This run can't be undone later: %1.", "a reason")
                     .arg(shownSentence(fault->sentence)));
    }
    results_->focusList(); // the fields that had the keyboard were switched off meanwhile
    closing_->hide();
    if (!isActiveWindow()) {
        QApplication::alert(this);
        showNotice(cancelled ? tr("The run was stopped") : tr("The run is over"),
                   summaryText(workbench_.runs.summary(), inRun_, cancelled, error));
    }
    if (closesAnyway_) {
        close();
    }
}

void MainWindow::showNote(const QString& sentence)
{
    note_->setText(sentence);
    note_->setVisible(!sentence.isEmpty());
}

void MainWindow::restore()
{
    const WindowState state;
    restoreGeometry(state.bytes("geometry"));
    panes_->restoreState(state.bytes("panes"));
    upAndDown_->restoreState(state.bytes("results"));
    documents_->restoreState(state.bytes("documents"));
    pages_->restoreState(state.bytes("pages"));
    actions_.showDocuments.setChecked(state.flag("documentsShown", true));
    actions_.showPages.setChecked(state.flag("pagesShown", true));
    actions_.showSequence.setChecked(state.flag("sequenceShown", true));
    recent_ = RecentPaths(state.paths("recent"));
    runBar_->setSettings(state.runSettings());
    workbench_.setSettings(runBar_->settings());
}

void MainWindow::keep()
{
    WindowState state;
    state.set("geometry", saveGeometry());
    state.set("panes", panes_->saveState());
    state.set("results", upAndDown_->saveState());
    state.set("documents", documents_->saveState());
    state.set("pages", pages_->saveState());
    state.set("documentsShown", actions_.showDocuments.isChecked());
    state.set("pagesShown", actions_.showPages.isChecked());
    state.set("sequenceShown", actions_.showSequence.isChecked());
    state.set("recent", recent_.paths());
    state.setRunSettings(runBar_->settings());
    state.write();
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (workbench_.runs.isRunning()) {
        closing_->show();
        event->ignore();
        return;
    }
    keep();
    // That a session ends says nothing about the work.
    if (!qApp->isSavingSession()) {
        workbench_.keeper.end();
    }
    event->accept();
}

} // namespace vantora::desktop
