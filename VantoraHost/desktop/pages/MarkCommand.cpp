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

MarkDocuments::MarkDocuments(Marks& marks, Changes after, const QString& text, int series)
    : QUndoCommand(text), marks_(marks), after_(std::move(after)), series_(series)
{
    for (auto change = after_.cbegin(); change != after_.cend(); ++change) {
        before_.insert(change.key(), marks_.at(change.key()));
    }
}

void MarkDocuments::put(const Changes& changes)
{
    for (auto change = changes.cbegin(); change != changes.cend(); ++change) {
        if (marks_.at(change.key()) != change.value()) {
            marks_.put(change.key(), change.value());
        }
    }
}

void MarkDocuments::redo()
{
    put(after_);
}

void MarkDocuments::undo()
{
    put(before_);
}

int MarkDocuments::id() const
{
    constexpr int ofDocuments = 0x63686f73; // no other command of the program has it
    return ofDocuments;
}

bool MarkDocuments::mergeWith(const QUndoCommand* next)
{
    const auto* const later = dynamic_cast<const MarkDocuments*>(next);
    if (!later || later->series_ != series_) {
        return false;
    }
    for (auto change = later->after_.cbegin(); change != later->after_.cend(); ++change) {
        if (!before_.contains(change.key())) {
            before_.insert(change.key(), later->before_.value(change.key()));
        }
        after_.insert(change.key(), change.value());
    }
    setObsolete(after_ == before_);
    return true;
}

} // namespace vantora::desktop
