#pragma once

#include "VantoraHost/desktop/documents/DocumentList.h"

#include <QtCore/QSortFilterProxyModel>

namespace vantora::desktop {

/// The documents that are shown: those whose names hold a text, of one kind of state.
class DocumentFilter : public QSortFilterProxyModel {
    Q_OBJECT

public:
    enum class States {
        All,
        Usable, ///< that can take part in a run
        Locked,
        Troubled, ///< that can't be read or have failed
    };

    explicit DocumentFilter(DocumentList& list, QObject* parent = nullptr);

    void setText(const QString& text);
    void setStates(States states);

protected:
    bool filterAcceptsRow(int row, const QModelIndex& parent) const override;

private:
    const DocumentList& list_;
    QString text_;
    States states_ = States::All;
};

} // namespace vantora::desktop
