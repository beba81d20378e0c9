#pragma once

#include "VantoraHost/core/actions/Sequence.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QMimeData>
#include <QtCore/QString>
#include <QtGui/QIcon>
#include <QtWidgets/QUndoCommand>

#include <vector>

namespace vantora::desktop {

/// A step of the sequence that a run is going to do.
struct ListedStep {
    std::string action; ///< its name, by which runs find it
    QString title;      ///< the name that people see
    QString icon;       ///< the file of its picture among the resources; may be empty
    PreferencesMap preferences;
    bool isOn = true;
    std::string favourite; ///< the one that it had last, as bytes of the file system
    QIcon favouriteIcon;

    /// Whether both do the same.
    bool operator==(const ListedStep& other) const
    {
        return action == other.action && preferences == other.preferences && isOn == other.isOn;
    }
};

using ListedSteps = std::vector<ListedStep>;

/// The steps in their order. Pages that are marked go by one of them: the first that is on and
/// whose action takes a range of pages; that range stands with the marks, not here.
class StepList : public QAbstractListModel {
    Q_OBJECT

public:
    using QAbstractListModel::QAbstractListModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;
    bool setData(const QModelIndex& index, const QVariant& value, int role) override;
    Qt::DropActions supportedDropActions() const override { return Qt::MoveAction; }
    QStringList mimeTypes() const override;
    QMimeData* mimeData(const QModelIndexList& indexes) const override;
    bool dropMimeData(const QMimeData* data, Qt::DropAction action, int row, int column,
                      const QModelIndex& parent) override;

    const ListedSteps& steps() const { return steps_; }
    void set(ListedSteps steps);

    /// The row of the step that the marks belong to; -1 when there is none.
    int marksRow() const;

    /// The steps for documents whose marks are this range; without the marks' step where nothing is
    /// marked.
    std::vector<StepRequest> requests(const QString& range) const;

    /// The step in a row, whether it is on or not, with the options that it has where `range` are
    /// the marks.
    StepRequest request(int row, const QString& range) const;

    /// What is shown below a step that has the marks' range, or its own.
    void setMarks(const QString& range);

signals:
    void changed();
    /// The user wants the steps to be these; the text says what for.
    void asked(const vantora::desktop::ListedSteps& steps, const QString& text);

private:
    ListedSteps steps_;
    QString range_;
};

/// The key of the option that holds the range of a step's pages; null where it has none.
const char* rangeKeyOf(const ListedStep& step);

/// The steps with one at `from` moved before what stands at `before`.
ListedSteps moved(ListedSteps steps, int from, int before);

/// Puts other steps in the place of those of before.
class ChangeSteps : public QUndoCommand {
public:
    ChangeSteps(StepList& list, ListedSteps steps, const QString& text)
        : QUndoCommand(text), list_(list), before_(list.steps()), after_(std::move(steps))
    {
    }

    void redo() override { list_.set(after_); }
    void undo() override { list_.set(before_); }

private:
    StepList& list_;
    const ListedSteps before_;
    const ListedSteps after_;
};

} // namespace vantora::desktop
