#include "VantoraHost/desktop/WindowActions.h"

#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtWidgets/QUndoStack>

namespace vantora::desktop {

namespace {

void shape(QAction& action, const QString& text, const QString& picture,
           const QKeySequence& shortcut, const QString& tip)
{
    action.setText(text);
    action.setIcon(picture.isEmpty() ? QIcon() : windowPicture(picture));
    action.setShortcut(shortcut);
    action.setToolTip(shortcut.isEmpty() ? tip
                                         : QStringLiteral("%1 (%2)").arg(
                                               tip, shortcut.toString(QKeySequence::NativeText)));
}

void shapePane(QAction& action, const QString& text, const QKeySequence& shortcut)
{
    shape(action, text, QString(), shortcut, WindowActions::tr("Show or hide this part"));
    action.setCheckable(true);
    action.setChecked(true);
}

} // namespace

QIcon windowPicture(const QString& name)
{
    return QIcon(":/Vantora/Resources/Desktop/" + name);
}

WindowActions::WindowActions(QUndoStack& stack, QObject* parent)
    : QObject(parent), undo(new QAction(this)), redo(new QAction(this))
{
    undo->setEnabled(false);
    redo->setEnabled(false);
    connect(undo, &QAction::triggered, &stack, &QUndoStack::undo);
    connect(redo, &QAction::triggered, &stack, &QUndoStack::redo);
    connect(&stack, &QUndoStack::canUndoChanged, undo, &QAction::setEnabled);
    connect(&stack, &QUndoStack::canRedoChanged, redo, &QAction::setEnabled);
    connect(&stack, &QUndoStack::undoTextChanged, this, &WindowActions::nameUndo);
    connect(&stack, &QUndoStack::redoTextChanged, this, &WindowActions::nameRedo);
    shape(addFiles, tr("Add &Files…"), "AddFiles.png", QKeySequence::Open,
          tr("Add PDF files to the list"));
    shape(addFolder, tr("Add Fol&der…"), "AddFolder.png", QKeySequence("Ctrl+Shift+O"),
          tr("Add the PDF files in a folder and its subfolders"));
    shape(removeDocuments, tr("Re&move from List"), QString(), QKeySequence("Ctrl+Delete"),
          tr("Remove the selected documents from the list; the files stay"));
    shape(readAgain, tr("Read A&gain"), QString(), QKeySequence::Refresh,
          tr("Read the selected documents anew"));
    shape(showInFolder, tr("Show in F&older"), QString(), QKeySequence(),
          tr("Open the folder that the document is in"));
    shape(quit, tr("&Quit"), QString(), QKeySequence::Quit, tr("Close the program"));
    shape(paste, tr("&Paste Files"), QString(), QKeySequence::Paste,
          tr("Add the files that were copied elsewhere"));
    shape(choosePages, tr("&Choose Pages…"), "Choose.png", QKeySequence::Find,
          tr("Find pages by what they are: blank, with some words, the last one"));
    shape(loadRanges, tr("&Load Pages…"), QString(), QKeySequence(),
          tr("Mark the pages that a list of documents and pages names"));
    shape(saveRanges, tr("&Save Pages…"), QString(), QKeySequence(),
          tr("Save which pages go from which documents, for another time or vantora run --ranges"));
    shape(saveReport, tr("Save Repor&t…"), QString(), QKeySequence(),
          tr("Save what became of the documents, with pictures of the pages that went"));
    saveReport.setEnabled(false);
    choosePages.setCheckable(true);
    choosePages.setIconText(tr("Choose Pages"));
    shapePane(showDocuments, tr("&Documents"), QKeySequence("Ctrl+1"));
    shapePane(showPages, tr("&Pages"), QKeySequence("Ctrl+2"));
    shapePane(showSequence, tr("&Steps"), QKeySequence("Ctrl+3"));
    shapePane(showHelp, tr("&Help of the Action"), QKeySequence::HelpContents);
    showHelp.setChecked(false);
    shape(about, tr("&About"), QString(), QKeySequence(), tr("Show the program's version"));
    undo->setIcon(windowPicture("Undo.png"));
    undo->setShortcut(QKeySequence::Undo);
    nameUndo({});
    nameRedo({});
    redo->setIcon(windowPicture("Redo.png"));
    redo->setShortcut(QKeySequence::Redo);
    setRunning(false);
}

void WindowActions::nameUndo(const QString& command)
{
    undo->setText(command.isEmpty() ? tr("&Undo") : tr("&Undo %1").arg(onButton(command)));
    undo->setIconText(tr("Undo")); // a tool bar would move with each text
}

void WindowActions::nameRedo(const QString& command)
{
    redo->setText(command.isEmpty() ? tr("&Redo") : tr("&Redo %1").arg(onButton(command)));
    redo->setIconText(tr("Redo"));
}

void WindowActions::setRunning(bool running)
{
    if (running) {
        shape(run, tr("S&top"), "Stop.png", QKeySequence("Ctrl+Return"),
              tr("Stop the run; what is being saved is finished"));
    } else {
        shape(run, tr("&Run"), "Run.png", QKeySequence("Ctrl+Return"),
              tr("Do this to all documents"));
    }
}

QList<QAction*> WindowActions::forDocuments()
{
    return {&addFiles, &addFolder, &paste, &removeDocuments, &readAgain, &showInFolder};
}

} // namespace vantora::desktop
