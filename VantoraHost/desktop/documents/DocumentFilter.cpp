#include "VantoraHost/desktop/documents/DocumentFilter.h"

namespace vantora::desktop {

DocumentFilter::DocumentFilter(DocumentList& list, QObject* parent)
    : QSortFilterProxyModel(parent), list_(list)
{
    setSourceModel(&list);
    setSortRole(DocumentList::SortRole);
    setSortLocaleAware(true);
}

void DocumentFilter::setText(const QString& text)
{
    text_ = text;
    invalidateFilter();
}

void DocumentFilter::setStates(States states)
{
    states_ = states;
    invalidateFilter();
}

bool DocumentFilter::filterAcceptsRow(int row, const QModelIndex& /*parent*/) const
{
    const Document& document = list_.documents()[static_cast<std::size_t>(row)];
    if (!text_.isEmpty() && !nameOf(document).contains(text_, Qt::CaseInsensitive)) {
        return false;
    }
    switch (states_) {
    case States::All:
        return true;
    case States::Usable:
        return document.isUsable();
    case States::Locked:
        return document.state == DocumentState::Locked;
    case States::Troubled:
        return document.state == DocumentState::Damaged || document.state == DocumentState::Failed;
    }
    return true;
}

} // namespace vantora::desktop
