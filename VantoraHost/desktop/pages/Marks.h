#pragma once

#include "VantoraHost/desktop/pages/PageSet.h"

#include <QtCore/QHash>
#include <QtCore/QObject>
#include <QtCore/QString>

#include <optional>

namespace vantora::desktop {

/// A listed document, for as long as the program runs; whoever lists documents numbers them, and
/// gives no number twice.
using DocumentId = quint64;

/// The documents that marks are for: one, or with none named all that have no marks of their own.
using MarksPlace = std::optional<DocumentId>;

/// Pages that are going to go, and the text that names them.
struct RangeMarks {
    QString text;                 ///< as typed, or the shortest that names the pages
    PageSet pages;                ///< those of the text, or of the last one that had no fault
    std::optional<QString> fault; ///< what is wrong with the text, as a sentence that follows it

    bool operator==(const RangeMarks& other) const { return text == other.text; }
    bool operator!=(const RangeMarks& other) const { return !(*this == other); }
};

/// The marks of pages that go: one set for all documents, and others for single documents in its
/// place. Nothing here can be undone; whatever users do goes through MarkCommand.
class Marks : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// Those that hold for all documents without their own.
    const RangeMarks& forAll() const { return forAll_; }

    /// Those that hold for a document: its own or those for all.
    const RangeMarks& of(DocumentId document) const;

    /// Whether a document has marks of its own ("only here").
    bool isOwn(DocumentId document) const { return own_.contains(document); }

    /// Where the marks stand that hold for a document.
    MarksPlace placeOf(DocumentId document) const;

    /// What stands in a place; none where a document has no marks of its own.
    std::optional<RangeMarks> at(const MarksPlace& place) const;

    /// The marks that a text would make in the place of `before`.
    static RangeMarks ofText(const QString& text, const RangeMarks& before);
    static RangeMarks ofPages(PageSet pages);

    /// Puts marks into a place, or takes those of a document's own away. All documents always have
    /// some: none are an empty text.
    void put(const MarksPlace& place, std::optional<RangeMarks> marks);

    /// Forgets a document that is not listed any more.
    void forget(DocumentId document);

    /// The documents with marks of their own, in no order.
    QList<DocumentId> documentsWithOwn() const { return own_.keys(); }

signals:
    /// What holds for all documents without marks of their own is another.
    void changedForAll();
    /// What holds for this document is another.
    void changedFor(vantora::desktop::DocumentId document);

private:
    RangeMarks forAll_;
    QHash<DocumentId, RangeMarks> own_;
};

} // namespace vantora::desktop
