#pragma once

#include "VantoraHost/desktop/pages/PictureCache.h"
#include "VantoraHost/desktop/pages/Pictures.h"
#include "VantoraHost/desktop/pages/ShownDocument.h"

#include <QtCore/QAbstractListModel>
#include <QtCore/QHash>
#include <QtCore/QSizeF>

#include <functional>
#include <optional>
#include <vector>

namespace vantora::desktop {

/// Pages in a row: those of one document, or in a review those of many documents that go, with
/// their neighbours. Which pages of a document a review has stays as it is until the review is
/// begun anew or the document is another, so that a page that is rescued stays in its place.
class PageGridModel : public QAbstractListModel {
    Q_OBJECT

public:
    enum Role {
        PageRole = Qt::UserRole, ///< its number, from 1
        DocumentRole,            ///< its document's DocumentId
        LabelRole,               ///< the label; empty where it only says the number
        SizeRole,                ///< QSizeF, in points; empty where that isn't known
        GoesRole,                ///< whether it is going to go
        NeighbourRole,           ///< whether it is only here to be seen beside one that goes
        PictureRole,             ///< QPixmap of whatever size; null where there is none
        ReasonRole,              ///< why there is none, a sentence; empty where there is no reason
        HeadingRole,             ///< the document's name, where its pages begin in a review
    };

    /// Both outlive the model.
    PageGridModel(Marks& marks, Pictures& pictures, QObject* parent = nullptr);

    /// Who says why a page goes, in words; an empty text where there is no reason but a person's.
    using Reasons = std::function<QString(DocumentId document, int page)>;
    void setReasons(Reasons reasons) { reasons_ = std::move(reasons); }

    /// Shows a document's pages; none for no pages at all.
    void showDocument(const std::optional<ShownDocument>& document);

    /// Begins a review: shows all pages of these documents that go.
    void review(std::vector<ShownDocument> documents);

    /// Goes on with a review, of these documents now.
    void setReviewed(std::vector<ShownDocument> documents);

    bool isReview() const { return isReview_; }

    /// Asks for what these rows lack, in this order; what was asked for before isn't any more.
    /// `side` is that of pictures in pixels, of which `density` lie on one of a window's.
    void want(const std::vector<int>& rows, int side, double density);

    /// Forgets why there are no pictures, so that they are asked for again.
    void retry();

    int rowCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    DocumentId documentAt(int row) const { return rows_[static_cast<std::size_t>(row)].document; }
    int pageAt(int row) const { return rows_[static_cast<std::size_t>(row)].page; }

    /// The document that is shown; none in a review, or when there is none.
    const std::optional<ShownDocument>& document() const { return document_; }

    /// How many pages a document has; 0 where that isn't known.
    int pagesOf(DocumentId document) const;

    /// The row of a page in the document that is shown, by its number or else its label; -1 for
    /// none.
    int rowNamed(const QString& numberOrLabel) const;

    /// Forgets all but the document that is shown, a review's documents and these, which are to be
    /// had again without waiting; closes them for pictures, too.
    void keepOnly(const std::vector<ShownDocument>& documents);

    /// Why nothing can be shown of the document, or none.
    QString failure() const;

signals:
    /// Something has become known that rows may lack now: they are to be wanted anew.
    void outdated();
    void pagesKnown(vantora::desktop::DocumentId document, int pages);
    void cannotBeShown(vantora::desktop::DocumentId document, const QString& reason);

private:
    struct Row {
        DocumentId document;
        int page;
        bool isNeighbour;
        bool beginsDocument;

        bool operator==(const Row& other) const
        {
            return document == other.document && page == other.page &&
                   isNeighbour == other.isNeighbour && beginsDocument == other.beginsDocument;
        }
    };
    /// What is known of a document.
    struct Known {
        ShownDocument document;
        int pages = 0;
        std::optional<int> reviewedPages; ///< as many as it had when its rows of a review were made
        std::vector<ShownPage> facts;     ///< of the first pages
        QString failure;
        QHash<int, QString> reasons; ///< of pages
    };

    Known& openedFor(const ShownDocument& document);
    const Known* knownOf(DocumentId document) const; ///< null for one that was never shown
    QString nameOf(DocumentId document) const;
    void listPages();
    std::vector<Row> rowsOfReview();
    void appendReviewed(const ShownDocument& document, int pages, std::vector<Row>& rows) const;
    void exchangeRows(const std::vector<Row>& rows);
    void takePages(DocumentId document, int pages);
    void takeFacts(DocumentId document, int first, const std::vector<ShownPage>& pages);
    void takePicture(DocumentId document, int page, int side, const QImage& picture);
    void takeFailure(DocumentId document, int page, const QString& reason);
    void changed(DocumentId document, int page, const QVector<int>& roles);
    void allChanged(const QVector<int>& roles);
    int rowOf(DocumentId document, int page) const;
    const ShownPage* factOf(const Row& row) const;
    QString labelOf(const Row& row) const;
    QString accessibleText(const Row& row) const;
    QString reasonOf(const Row& row) const;

    Reasons reasons_ = [](DocumentId, int) { return QString(); };
    Marks& marks_;
    Pictures& pictures_;
    mutable PictureCache cache_;
    int side_ = 0; ///< of the pictures that were wanted last
    double density_ = 1;
    bool isReview_ = false;
    std::optional<ShownDocument> document_;
    std::vector<ShownDocument> reviewed_;
    QHash<DocumentId, Known> known_;
    std::vector<Row> rows_;
};

} // namespace vantora::desktop
