#include "VantoraHost/desktop/pages/PageGridModel.h"

#include <QtCore/QSet>

#include <algorithm>
#include <iterator>

namespace vantora::desktop {

namespace {

constexpr qint64 mostBytesOfPictures = 32 * 1024 * 1024;

} // namespace

PageGridModel::PageGridModel(Marks& marks, Pictures& pictures, QObject* parent)
    : QAbstractListModel(parent), marks_(marks), pictures_(pictures), cache_(mostBytesOfPictures)
{
    connect(&marks_, &Marks::changedForAll, this, [this] {
        allChanged({GoesRole, Qt::AccessibleTextRole});
    });
    connect(&marks_, &Marks::changedFor, this, [this](DocumentId id) {
        if (isReview_ || (document_ && document_->id == id)) {
            allChanged({GoesRole, Qt::AccessibleTextRole});
        }
    });
    connect(&pictures_, &Pictures::pagesKnown, this, &PageGridModel::takePages);
    connect(&pictures_, &Pictures::factsKnown, this, &PageGridModel::takeFacts);
    connect(&pictures_, &Pictures::made, this, &PageGridModel::takePicture);
    connect(&pictures_, &Pictures::failed, this, &PageGridModel::takeFailure);
}

PageGridModel::Known& PageGridModel::openedFor(const ShownDocument& document)
{
    Known& known = known_[document.id];
    const bool isSame = known.document.path == document.path &&
                        known.document.state == document.state &&
                        known.document.password == document.password;
    if (!isSame) {
        known = Known();
        cache_.forget(document.id);
        pictures_.open(document.id, document.path, document.password);
    }
    known.document = document;
    known.pages = std::max(known.pages, document.pages);
    return known;
}

const PageGridModel::Known* PageGridModel::knownOf(DocumentId document) const
{
    const auto found = known_.constFind(document);
    return found == known_.constEnd() ? nullptr : &*found;
}

QString PageGridModel::nameOf(DocumentId document) const
{
    const Known* const known = knownOf(document);
    return known ? known->document.name : QString();
}

void PageGridModel::showDocument(const std::optional<ShownDocument>& document)
{
    if (!isReview_ && document == document_) {
        return;
    }
    beginResetModel();
    isReview_ = false;
    document_ = document;
    listPages();
    endResetModel();
    emit outdated();
}

void PageGridModel::listPages()
{
    rows_.clear();
    if (!document_) {
        return;
    }
    const Known& known = openedFor(*document_);
    rows_.reserve(static_cast<std::size_t>(known.pages));
    for (int page = 1; page <= known.pages; ++page) {
        rows_.push_back({document_->id, page, false, false});
    }
}

void PageGridModel::review(std::vector<ShownDocument> documents)
{
    beginResetModel();
    isReview_ = true;
    reviewed_ = std::move(documents);
    for (Known& known : known_) {
        known.reviewedPages = std::nullopt;
    }
    rows_ = rowsOfReview();
    endResetModel();
    emit outdated();
}

void PageGridModel::setReviewed(std::vector<ShownDocument> documents)
{
    reviewed_ = std::move(documents);
    exchangeRows(rowsOfReview());
    emit outdated();
}

void PageGridModel::keepOnly(const std::vector<ShownDocument>& documents)
{
    QSet<DocumentId> kept;
    const auto keep = [&kept](const std::vector<ShownDocument>& list) {
        for (const ShownDocument& document : list) {
            kept.insert(document.id);
        }
    };
    keep(documents);
    if (isReview_) {
        keep(reviewed_);
    }
    for (auto known = known_.begin(); known != known_.end();) {
        const DocumentId id = known.key();
        if (kept.contains(id) || (document_ && document_->id == id)) {
            ++known;
            continue;
        }
        pictures_.close(id);
        cache_.forget(id);
        known = known_.erase(known);
    }
}

// A document that has rows keeps them while it is the same.
std::vector<PageGridModel::Row> PageGridModel::rowsOfReview()
{
    QHash<DocumentId, std::size_t> kept; // where a document's rows begin
    for (std::size_t row = rows_.size(); row-- > 0;) {
        kept[rows_[row].document] = row;
    }
    std::vector<Row> rows;
    for (const ShownDocument& document : reviewed_) {
        Known& known = openedFor(document);
        if (known.reviewedPages != known.pages) {
            appendReviewed(document, known.pages, rows);
            known.reviewedPages = known.pages;
            continue;
        }
        for (std::size_t row = kept.value(document.id, rows_.size());
             row < rows_.size() && rows_[row].document == document.id; ++row) {
            rows.push_back(rows_[row]);
        }
    }
    return rows;
}

// The pages that go, with what stands before and behind them.
void PageGridModel::appendReviewed(const ShownDocument& document, int pages,
                                   std::vector<Row>& rows) const
{
    const PageSet goes = marks_.of(document.id).pages.upTo(pages);
    int listed = 0; // the last page that has its row
    const auto list = [&](int page, bool isNeighbour) {
        rows.push_back({document.id, page, isNeighbour, listed == 0});
        listed = page;
    };
    for (const PageRun& run : goes.runs()) {
        if (run.first > 1 && run.first - 1 > listed) {
            list(run.first - 1, true);
        }
        for (int page = run.first; page <= run.last; ++page) {
            list(page, false);
        }
        if (run.last < pages && !goes.contains(run.last + 1)) {
            list(run.last + 1, true);
        }
    }
}

// What stands before and behind all that differs stays: what is chosen there, and a click that has
// begun there.
void PageGridModel::exchangeRows(const std::vector<Row>& rows)
{
    const auto before = std::mismatch(rows_.begin(), rows_.end(), rows.begin(), rows.end());
    const auto behind = std::mismatch(
        std::make_reverse_iterator(rows_.end()), std::make_reverse_iterator(before.first),
        std::make_reverse_iterator(rows.end()), std::make_reverse_iterator(before.second));
    const int first = static_cast<int>(before.first - rows_.begin());
    const int gone = static_cast<int>(behind.first.base() - before.first);
    const int come = static_cast<int>(behind.second.base() - before.second);
    if (gone > 0) {
        beginRemoveRows({}, first, first + gone - 1);
        rows_.erase(rows_.begin() + first, rows_.begin() + first + gone);
        endRemoveRows();
    }
    if (come > 0) {
        beginInsertRows({}, first, first + come - 1);
        rows_.insert(rows_.begin() + first, rows.begin() + first, rows.begin() + first + come);
        endInsertRows();
    }
}

void PageGridModel::want(const std::vector<int>& rows, int side, double density)
{
    side_ = side;
    density_ = density;
    std::vector<PageWish> wishes;
    std::vector<DocumentId> seen; // few: those of a screen
    for (const int row : rows) {
        const Row& wanted = rows_[static_cast<std::size_t>(row)];
        const PageKey page(wanted.document, wanted.page);
        if (std::find(seen.begin(), seen.end(), wanted.document) == seen.end()) {
            seen.push_back(wanted.document);
        }
        if (cache_.side(page) != side && reasonOf(wanted).isEmpty()) {
            wishes.push_back({wanted.document, PictureTask{wanted.page, side, 0}});
        }
    }
    if (document_ && !isReview_ && rows_.empty()) {
        wishes.push_back({document_->id, std::nullopt});
    }
    for (const ShownDocument& document : qAsConst(reviewed_)) {
        if (isReview_ && pagesOf(document.id) == 0 && knownOf(document.id)->failure.isEmpty()) {
            wishes.push_back({document.id, std::nullopt});
        }
    }
    for (const DocumentId document : seen) {
        const Known& known = *knownOf(document);
        for (int first = static_cast<int>(known.facts.size()) + 1;
             known.failure.isEmpty() && first <= known.pages; first += mostFacts) {
            wishes.push_back({document, PictureTask{first, 0, mostFacts}});
        }
    }
    pictures_.wish(PictureAsker::Grid, std::move(wishes));
}

void PageGridModel::retry()
{
    beginResetModel();
    for (Known& known : known_) {
        if (!known.failure.isEmpty() || !known.reasons.isEmpty()) {
            known.failure.clear();
            known.reasons.clear();
            pictures_.open(known.document.id, known.document.path, known.document.password);
        }
    }
    endResetModel();
    emit outdated();
}

int PageGridModel::rowCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(rows_.size());
}

QVariant PageGridModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid()) {
        return {};
    }
    const Row& row = rows_[static_cast<std::size_t>(index.row())];
    switch (role) {
    case Qt::DisplayRole:
        return QString::number(row.page);
    case Qt::AccessibleTextRole:
    case Qt::ToolTipRole:
        return accessibleText(row);
    case PageRole:
        return row.page;
    case DocumentRole:
        return row.document;
    case LabelRole:
        return labelOf(row);
    case SizeRole: {
        const ShownPage* fact = factOf(row);
        return fact ? QSizeF(fact->width, fact->height) : QSizeF();
    }
    case GoesRole:
        return marks_.of(row.document).pages.contains(row.page);
    case NeighbourRole:
        return row.isNeighbour;
    case PictureRole:
        return cache_.picture({row.document, row.page});
    case ReasonRole:
        return reasonOf(row);
    case HeadingRole:
        return row.beginsDocument ? nameOf(row.document) : QString();
    default:
        return {};
    }
}

Qt::ItemFlags PageGridModel::flags(const QModelIndex& index) const
{
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren
                           : Qt::NoItemFlags;
}

int PageGridModel::pagesOf(DocumentId document) const
{
    const Known* const known = knownOf(document);
    return known ? known->pages : 0;
}

int PageGridModel::rowNamed(const QString& numberOrLabel) const
{
    if (!document_ || isReview_) {
        return -1;
    }
    bool isNumber = false;
    const int page = numberOrLabel.trimmed().toInt(&isNumber);
    if (isNumber && page >= 1 && page <= rowCount()) {
        return page - 1;
    }
    const std::string label = numberOrLabel.trimmed().toStdString();
    const std::vector<ShownPage>& facts = knownOf(document_->id)->facts;
    const auto found = std::find_if(facts.begin(), facts.end(),
                                    [&](const ShownPage& fact) { return fact.label == label; });
    return found == facts.end() ? -1 : static_cast<int>(found - facts.begin());
}

QString PageGridModel::failure() const
{
    return document_ && !isReview_ ? knownOf(document_->id)->failure : QString();
}

void PageGridModel::takePages(DocumentId document, int pages)
{
    const auto known = known_.find(document);
    if (known == known_.end()) {
        return;
    }
    emit pagesKnown(document, pages);
    const bool isShown = isReview_ || (document_ && document_->id == document);
    if (known->pages == pages || !isShown) {
        known->pages = pages;
        return;
    }
    known->pages = pages;
    if (isReview_) {
        exchangeRows(rowsOfReview());
    } else {
        beginResetModel();
        listPages();
        endResetModel();
    }
    emit outdated();
}

void PageGridModel::takeFacts(DocumentId document, int first, const std::vector<ShownPage>& pages)
{
    const auto known = known_.find(document);
    if (known == known_.end() || static_cast<std::size_t>(first) != known->facts.size() + 1) {
        return;
    }
    known->facts.insert(known->facts.end(), pages.begin(), pages.end());
    allChanged({LabelRole, SizeRole, Qt::AccessibleTextRole});
}

void PageGridModel::takePicture(DocumentId document, int page, int side, const QImage& picture)
{
    if (side != side_ || !known_.contains(document)) {
        return; // somebody else's
    }
    QPixmap made = QPixmap::fromImage(picture);
    made.setDevicePixelRatio(density_);
    cache_.put({document, page}, side, made);
    changed(document, page, {PictureRole});
}

void PageGridModel::takeFailure(DocumentId document, int page, const QString& reason)
{
    const auto known = known_.find(document);
    if (known == known_.end()) {
        return;
    }
    if (page > 0) {
        known->reasons[page] = reason;
        changed(document, page, {ReasonRole, Qt::AccessibleTextRole});
    } else if (known->failure.isEmpty()) {
        known->failure = reason;
        allChanged({ReasonRole, Qt::AccessibleTextRole});
        emit cannotBeShown(document, reason);
    }
}

void PageGridModel::changed(DocumentId document, int page, const QVector<int>& roles)
{
    if (const int row = rowOf(document, page); row >= 0) {
        emit dataChanged(index(row), index(row), roles);
    }
}

void PageGridModel::allChanged(const QVector<int>& roles)
{
    if (!rows_.empty()) {
        emit dataChanged(index(0), index(rowCount() - 1), roles);
    }
}

int PageGridModel::rowOf(DocumentId document, int page) const
{
    if (!isReview_) {
        return document_ && document_->id == document && page >= 1 && page <= rowCount() ? page - 1
                                                                                         : -1;
    }
    const auto found = std::find_if(rows_.begin(), rows_.end(), [&](const Row& row) {
        return row.document == document && row.page == page;
    });
    return found == rows_.end() ? -1 : static_cast<int>(found - rows_.begin());
}

const ShownPage* PageGridModel::factOf(const Row& row) const
{
    const Known* const known = knownOf(row.document);
    const auto place = static_cast<std::size_t>(row.page) - 1;
    return known && place < known->facts.size() ? &known->facts[place] : nullptr;
}

QString PageGridModel::labelOf(const Row& row) const
{
    const ShownPage* const fact = factOf(row);
    const QString label = fact ? QString::fromStdString(fact->label) : QString();
    return label == QString::number(row.page) ? QString() : label;
}

QString PageGridModel::reasonOf(const Row& row) const
{
    const Known* const known = knownOf(row.document);
    if (!known) {
        return {};
    }
    return known->failure.isEmpty() ? known->reasons.value(row.page) : known->failure;
}

QString PageGridModel::accessibleText(const Row& row) const
{
    const QString label = labelOf(row);
    const bool goes = marks_.of(row.document).pages.contains(row.page);
    QString text;
    if (label.isEmpty()) {
        text = goes ? tr("page %1, will be removed") : tr("page %1, stays");
        text = text.arg(row.page);
    } else {
        text = goes ? tr("page %1, %2, will be removed") : tr("page %1, %2, stays");
        text = text.arg(QString::number(row.page), label);
    }
    if (const QString why = goes ? reasons_(row.document, row.page) : QString(); !why.isEmpty()) {
        text = tr("%1 (%2)", "what becomes of a page, and why").arg(text, why);
    }
    if (isReview_) {
        text =
            tr("%1: %2", "a document's name and one of its pages").arg(nameOf(row.document), text);
    }
    const QString reason = reasonOf(row);
    return reason.isEmpty()
               ? text
               : tr("%1; it can't be shown: %2", "a page and a reason").arg(text, reason);
}

} // namespace vantora::desktop
