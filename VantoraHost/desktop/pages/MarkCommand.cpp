#include "VantoraHost/desktop/pages/MarkCommand.h"

#include <utility>

namespace vantora::desktop {

MarkCommand::MarkCommand(Marks& marks, MarksPlace place, std::optional<RangeMarks> after,
                         const QString& text, int series)
    : QUndoCommand(text), marks_(marks), place_(std::move(place)), before_(marks.at(place_)),
      after_(std::move(after)), series_(series)
{
}

void MarkCommand::redo()
{
    marks_.put(place_, after_);
}

void MarkCommand::undo()
{
    marks_.put(place_, before_);
}

int MarkCommand::id() const
{
    constexpr int ofMarks = 0x6d61726b; // no other command of the program has it
    return series_ == 0 ? -1 : ofMarks;
}

bool MarkCommand::mergeWith(const QUndoCommand* next)
{
    const auto* const later = dynamic_cast<const MarkCommand*>(next);
    if (!later || later->series_ != series_ || later->place_ != place_) {
        return false;
    }
    after_ = later->after_;
    return true;
}

} // namespace vantora::desktop
