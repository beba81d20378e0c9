#include "VantoraHost/desktop/pages/Marks.h"

namespace vantora::desktop {

const RangeMarks& Marks::of(DocumentId document) const
{
    const auto own = own_.constFind(document);
    return own == own_.constEnd() ? forAll_ : *own;
}

MarksPlace Marks::placeOf(DocumentId document) const
{
    return isOwn(document) ? MarksPlace(document) : std::nullopt;
}

std::optional<RangeMarks> Marks::at(const MarksPlace& place) const
{
    if (!place) {
        return forAll_;
    }
    return isOwn(*place) ? std::optional<RangeMarks>(own_[*place]) : std::nullopt;
}

RangeMarks Marks::ofText(const QString& text, const RangeMarks& before)
{
    QString fault;
    if (auto pages = PageSet::ofText(text, &fault)) {
        return {text, std::move(*pages), std::nullopt};
    }
    return {text, before.pages, fault};
}

RangeMarks Marks::ofPages(PageSet pages)
{
    QString text = pages.text();
    return {std::move(text), std::move(pages), std::nullopt};
}

void Marks::put(const MarksPlace& place, std::optional<RangeMarks> marks)
{
    if (!place) {
        forAll_ = std::move(marks).value_or(RangeMarks());
        emit changedForAll();
        return;
    }
    if (marks) {
        own_[*place] = std::move(*marks);
    } else {
        own_.remove(*place);
    }
    emit changedFor(*place);
}

void Marks::forget(DocumentId document)
{
    own_.remove(document);
}

} // namespace vantora::desktop
