#pragma once

#include "VantoraHost/desktop/pages/ShownDocument.h"

#include <QtWidgets/QWidget>

#include <functional>
#include <memory>
#include <vector>

class QAction;
class QUndoStack;

namespace vantora::desktop {

class Pictures;

/// The pages of a document with those crossed out that go, or of all documents those that go
/// (review). Marks are shown as they are, whoever changes them, and changed through `undo`. Named
/// "VantoraPreviewClass".
class PagesPane : public QWidget {
    Q_OBJECT

public:
    /// All three outlive the pane.
    PagesPane(Marks& marks, QUndoStack& undo, Pictures& pictures, QWidget* parent = nullptr);
    ~PagesPane() override;

    /// Shows the pages of a document; none shows what to do in an empty window.
    void showDocument(const std::optional<ShownDocument>& document);

    /// The documents that a review is about. While it is on, it is brought up to date.
    void setReviewed(std::vector<ShownDocument> documents);

    /// Who says why pages go, for their tips.
    void setReasons(std::function<QString(DocumentId document, int page)> reasons);

    bool isReview() const;
    void setReview(bool on);

    /// The commands of the pane with their texts, icons and shortcuts, for a menu; those for
    /// marking and, apart, those for looking. Null stands for a separator.
    QList<QAction*> markActions() const;
    QList<QAction*> viewActions() const;

    /// What a program keeps until its next start: sizes of thumbnails, and the like.
    QByteArray saveState() const;
    bool restoreState(const QByteArray& state);

signals:
    /// The page that the user is at; 0 when there is none.
    void currentPageChanged(vantora::desktop::DocumentId document, int page);
    void reviewChanged(bool on);
    /// A document was opened for its pictures and has so many pages.
    void pagesKnown(vantora::desktop::DocumentId document, int pages);
    /// A document can't be shown; the reason is a sentence.
    void cannotBeShown(vantora::desktop::DocumentId document, const QString& reason);

private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

} // namespace vantora::desktop
