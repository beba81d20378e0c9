#pragma once

#include "VantoraHost/desktop/documents/Document.h"

#include <QtCore/QAbstractTableModel>
#include <QtCore/QHash>
#include <QtCore/QSet>

#include <functional>
#include <utility>
#include <vector>

namespace vantora::desktop {

/// The documents that somebody works on, as a table. No file is listed twice. Nothing here can be
/// undone; what users do goes through DocumentCommands.
class DocumentList : public QAbstractTableModel {
    Q_OBJECT

public:
    enum Column { Name, Pages, Going, Size, State, Folder, Columns };
    enum Role {
        SortRole = Qt::UserRole, ///< what rows are sorted by
        StateRole,               ///< a DocumentState as a number
        IdRole,
    };
    using Placed = std::pair<int, Document>; ///< a row and what stands there

    using QAbstractTableModel::QAbstractTableModel;

    int rowCount(const QModelIndex& parent = {}) const override;
    int columnCount(const QModelIndex& parent = {}) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

    const std::vector<Document>& documents() const { return documents_; }
    const Document* find(DocumentId id) const; ///< null when it isn't listed
    int rowOf(DocumentId id) const;            ///< -1 when it isn't listed

    /// All documents, by qtPath() of their paths.
    QHash<QString, DocumentId> idsByPath() const;

    /// Those of the inputs that aren't listed yet, each once, as new documents.
    std::vector<Document> newOnes(const std::vector<Input>& inputs);

    /// Puts documents at the list's end.
    void append(std::vector<Document> documents);

    /// Takes documents out; returns them with their rows, ascending.
    std::vector<Placed> take(const QSet<DocumentId>& ids);

    /// Puts back what was taken out.
    void putBack(const std::vector<Placed>& documents);

    /// Changes documents; `change` returns whether it did.
    void update(const std::vector<DocumentId>& ids, const std::function<bool(Document&)>& change);

    /// Who says how many pages of a document are going to go; none when nobody can tell.
    void setForecast(std::function<std::optional<int>(const Document&)> forecast);

    /// The forecast says something else now: of all documents, or of one.
    void forecastChanged();
    void forecastChanged(DocumentId id);

signals:
    /// Documents were added, removed or changed.
    void changed();

private:
    QString display(const Document& document, int column) const;
    QVariant sorted(const Document& document, int column) const;
    void numberFrom(std::size_t row);

    std::vector<Document> documents_;
    QHash<DocumentId, int> rows_;
    QSet<QString> paths_;
    DocumentId last_ = 0;
    std::function<std::optional<int>(const Document&)> forecast_;
};

/// A state in one word or two.
QString stateText(DocumentState state);

/// The picture of a state by its name among the resources; none for those that need none.
QString statePicture(DocumentState state);

} // namespace vantora::desktop
