#pragma once

#include "VantoraHost/core/actions/SavedSteps.h"
#include "VantoraHost/desktop/sequence/FavouriteBar.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <memory>
#include <vector>

class QMenu;
class QUndoStack;

namespace Ui {
class SequencePane;
}

namespace vantora::desktop {

/// What the pane of steps works with; all of it outlives the pane.
struct SequenceParts {
    StepList& list;
    QUndoStack& undo;
    const std::vector<InstalledAction>& actions;
    std::function<QString()> range; ///< that of the marks for all documents
};

/// The steps of the run, where each is configured by its plug-in's own dialog.
class SequencePane : public QWidget {
    Q_OBJECT

public:
    /// Dialogs are shown in `preview`.
    SequencePane(SequenceParts parts, QWidget& preview, QWidget* parent = nullptr);
    ~SequencePane() override;

    /// Opens the options of the chosen step.
    void configure();

    /// Asks for the help of the chosen step's action.
    void askForHelp();

    /// Takes saved steps in the place of these.
    void load(const SavedIn& saved);

    /// Takes tool settings as the options of the chosen step where that is one of their action, and
    /// else as a step more.
    void loadToolSettings(const QString& path);

    /// Takes what the file has where its name says that it is an action list or tool settings;
    /// false for every other one and for folders.
    bool loadFile(const QString& path);

    /// Saves the options of the chosen step.
    void saveToolSettings(const QString& path);

signals:
    /// The range of the pages that go was changed in a dialog or came with saved steps.
    void rangeAsked(const QString& range);
    /// Another action is the chosen one; empty for none.
    void helpAsked(const QString& title, const QString& page);

private:
    void change(ListedSteps steps, const QString& text);
    void changeWithRange(ListedSteps steps, const QString& range, const QString& text);
    void takeOptions(int row, const StepRequest& options, const Favourite* favourite,
                     const QString& text);
    void chooseToolSettings(bool saves);
    int row() const;
    void fillAddMenu(QMenu& menu);
    void fillSavedMenu(QMenu& menu);
    void addSaved(QMenu& menu, const std::vector<Result<SavedEntry>>& entries, SavedKind kind);
    void moveBy(int distance);
    void remove();
    void beginSaving();
    void save();
    void follow();
    void keepChosen();
    void say(const QString& message);
    void sayWhy(const Error& error);

    const SequenceParts parts_;
    FavouriteBar* const favourites_;
    QWidget& preview_;
    int chosen_ = 0; ///< the row that was chosen last
    const std::unique_ptr<Ui::SequencePane> form_;
};

} // namespace vantora::desktop
