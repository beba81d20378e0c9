#pragma once

#include "VantoraHost/desktop/documents/DocumentFilter.h"
#include "VantoraHost/desktop/documents/DocumentsController.h"

#include <QtCore/QSet>
#include <QtWidgets/QWidget>

#include <memory>
#include <optional>

class QAction;

namespace Ui {
class DocumentsPane;
}

namespace vantora::desktop {

/// The list of documents, with what it can be filtered by, and the place where a locked one is
/// given its password.
class DocumentsPane : public QWidget {
    Q_OBJECT

public:
    /// Both outlive the pane.
    DocumentsPane(DocumentList& list, DocumentsController& controller, QWidget* parent = nullptr);
    ~DocumentsPane() override;

    QSet<DocumentId> selected() const;

    /// The one that the user is at; none when the list is empty.
    std::optional<DocumentId> current() const;

    void setCurrent(DocumentId id);

    /// Commands for the list's context menu.
    void setCommands(const QList<QAction*>& actions);

    /// Leads the keyboard to the list.
    void focusList();

    QByteArray saveState() const;
    void restoreState(const QByteArray& state);

signals:
    /// The user is at another document, or that is another now.
    void currentChanged();
    void selectionChanged();

private:
    void chooseFirst();
    void fitTitles();
    void showStatus();
    void showDetail();
    void tryPassword();

    DocumentList& list_;
    DocumentsController& controller_;
    DocumentFilter filter_;
    const std::unique_ptr<Ui::DocumentsPane> form_;
};

} // namespace vantora::desktop
