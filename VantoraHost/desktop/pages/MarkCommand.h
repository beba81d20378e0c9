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

} // namespace vantora::desktop
