#pragma once

#include "VantoraHost/desktop/pages/Marks.h"

#include <QtWidgets/QUndoCommand>

#include <optional>

namespace vantora::desktop {

/// Puts marks into a place, or takes a document's own away.
class MarkCommand : public QUndoCommand {
public:
    /// `text` says in a menu what is undone. Commands that follow each other in one series, such
    /// as that of a text being typed, are undone together; 0 is none.
    MarkCommand(Marks& marks, MarksPlace place, std::optional<RangeMarks> after,
                const QString& text, int series = 0);

    void redo() override;
    void undo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* next) override;

private:
    Marks& marks_;
    const MarksPlace place_;
    const std::optional<RangeMarks> before_;
    std::optional<RangeMarks> after_;
    const int series_;
};

/// Gives documents marks of their own, or takes these away, as one step.
class MarkDocuments : public QUndoCommand {
public:
    using Changes = QHash<DocumentId, std::optional<RangeMarks>>;

    /// `text` and `series` as of MarkCommand. A series that in the end changes nothing is no step.
    MarkDocuments(Marks& marks, Changes after, const QString& text, int series);

    void redo() override;
    void undo() override;
    int id() const override;
    bool mergeWith(const QUndoCommand* next) override;

    int series() const { return series_; }

private:
    void put(const Changes& changes);

    Marks& marks_;
    Changes before_;
    Changes after_;
    const int series_;
};

} // namespace vantora::desktop
