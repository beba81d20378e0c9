#include "VantoraHost/desktop/pages/PagesPane.h"

#include "VantoraHost/desktop/pages/LargePage.h"
#include "VantoraHost/desktop/pages/MarkCommand.h"
#include "VantoraHost/desktop/pages/MarkOperation.h"
#include "VantoraHost/desktop/pages/PageActions.h"
#include "VantoraHost/desktop/pages/PageDrawing.h"
#include "VantoraHost/desktop/pages/PageGridView.h"
#include "ui_PagesPane.h"

#include <QtCore/QDataStream>
#include <QtCore/QSignalBlocker>
#include <QtCore/QTimer>
#include <QtWidgets/QAction>
#include <QtWidgets/QUndoStack>

#include <map>
#include <utility>

namespace vantora::desktop {

/// What the pane is made of, and what it does with it.
class PagesPane::Parts : public QObject {
public:
    Parts(PagesPane& pane, Marks& marks, QUndoStack& undo, Pictures& pictures);

    void setReview(bool on);
    void showAgain(bool fromStart);
    void refresh();
    void refreshMarks();

    PagesPane& pane;
    Marks& marks;
    QUndoStack& undo;
    PageGridModel model;
    PageActions actions;
    Ui::PagesPaneForm form;
    PageGridView* grid = nullptr;
    LargePage* large = nullptr;
    std::optional<ShownDocument> document;
    std::vector<ShownDocument> reviewed;

private:
    void connectForm();
    void connectGrid();
    void type(const QString& text);
    void setOnlyHere(bool on);
    void apply(MarkOperation operation, const QString& text);
    void applyToRows(MarkOperation operation, const std::vector<int>& rows, const QString& text);
    void put(const MarksPlace& place, std::optional<RangeMarks> after, const QString& text,
             int series = 0);
    void jump();
    void showCurrent();
    QString emptyText() const;
    QString summary() const;
    MarksPlace place() const;

    QTimer summing_;         ///< until what is said of a review is said anew
    int series_ = 1;         ///< of typing
    int zoomBefore_ = 3;     ///< one page at a time
    bool showsStart_ = true; ///< the first page is to become the current one
};

PagesPane::Parts::Parts(PagesPane& p, Marks& m, QUndoStack& u, Pictures& pictures)
    : pane(p), marks(m), undo(u), model(m, pictures), actions(&p)
{
    form.setupUi(&pane);
    pane.setObjectName("VantoraPreviewClass");
    grid = new PageGridView(model);
    grid->setAccessibleName(PagesPane::tr("Pages"));
    large = new LargePage(marks, pictures);
    form.views->addWidget(grid);
    form.views->addWidget(large);
    form.views->setStretchFactor(0, 3);
    form.views->setStretchFactor(1, 2);
    large->hide();
    form.faultLabel->hide();
    form.jumpEdit->setFixedWidth(form.jumpEdit->fontMetrics().averageCharWidth() * 10);
    form.zoomSlider->setRange(0, PageGridView::mostZoom());
    form.zoomSlider->setValue(grid->zoom());
    form.zoomSlider->setFixedWidth(form.zoomSlider->sizeHint().width());
    form.reviewButton->setDefaultAction(actions.review);
    QWidget::setTabOrder(form.reviewButton, grid);
    QWidget::setTabOrder(grid, form.jumpEdit);
    actions.attachTo(*grid, pane);
    connectForm();
    connectGrid();
    refresh();
}

void PagesPane::Parts::connectForm()
{
    connect(form.rangeEdit, &QLineEdit::textEdited, this, &Parts::type);
    connect(form.rangeEdit, &QLineEdit::editingFinished, this, [this] { ++series_; });
    connect(form.onlyHere, &QCheckBox::clicked, this, &Parts::setOnlyHere);
    connect(form.jumpEdit, &QLineEdit::returnPressed, this, &Parts::jump);
    connect(form.zoomSlider, &QSlider::valueChanged, grid, &PageGridView::setZoom);
    connect(&marks, &Marks::changedForAll, this, [this] {
        if (model.isReview()) {
            showsStart_ = true;
            model.review(reviewed); // other pages go than when it was begun
        } else {
            refreshMarks();
        }
    });
    connect(&marks, &Marks::changedFor, this, [this](DocumentId id) {
        if (model.isReview()) {
            summing_.start(); // thousands may change together, and it goes by all of them
        } else if (document && document->id == id) {
            refreshMarks();
        }
    });
    summing_.setSingleShot(true);
    connect(&summing_, &QTimer::timeout, this, &Parts::refreshMarks);
    actions.connectMarks(
        [this](MarkOperation operation, const QString& text) { apply(operation, text); });
    connect(actions.review, &QAction::toggled, this, &Parts::setReview);
    connect(actions.selectAll, &QAction::triggered, grid, &QListView::selectAll);
    connect(actions.zoomIn, &QAction::triggered, this, [this] { grid->setZoom(grid->zoom() + 1); });
    connect(actions.zoomOut, &QAction::triggered, this,
            [this] { grid->setZoom(grid->zoom() - 1); });
    connect(actions.wholePage, &QAction::triggered, this,
            [this](bool on) { grid->setZoom(on ? PageGridView::mostZoom() : zoomBefore_); });
    connect(actions.largePage, &QAction::toggled, large, &QWidget::setVisible);
    connect(actions.goTo, &QAction::triggered, this, [this] {
        form.jumpEdit->setFocus(Qt::ShortcutFocusReason);
        form.jumpEdit->selectAll();
    });
    connect(actions.retry, &QAction::triggered, &model, &PageGridModel::retry);
}

void PagesPane::Parts::connectGrid()
{
    connect(&model, &QAbstractItemModel::modelReset, this, &Parts::refresh);
    connect(&model, &QAbstractItemModel::rowsInserted, this, &Parts::refresh);
    connect(&model, &QAbstractItemModel::rowsRemoved, this, &Parts::refresh);
    connect(&model, &PageGridModel::pagesKnown, &pane, &PagesPane::pagesKnown);
    connect(&model, &PageGridModel::cannotBeShown, this,
            [this](DocumentId id, const QString& reason) {
                refresh();
                emit pane.cannotBeShown(id, reason);
            });
    connect(&model, &QAbstractItemModel::dataChanged, this, &Parts::showCurrent);
    connect(grid->selectionModel(), &QItemSelectionModel::currentChanged, this, [this] {
        showCurrent();
        const QModelIndex at = grid->currentIndex();
        emit pane.currentPageChanged(at.isValid() ? model.documentAt(at.row()) : 0,
                                     at.isValid() ? model.pageAt(at.row()) : 0);
    });
    connect(grid, &PageGridView::zoomChanged, this, [this](int zoom) {
        const bool isWhole = zoom == PageGridView::mostZoom();
        zoomBefore_ = isWhole ? zoomBefore_ : zoom;
        actions.wholePage->setChecked(isWhole);
        form.zoomSlider->setValue(zoom);
    });
    connect(grid, &QListView::doubleClicked, this, [this] {
        if (!model.isReview()) {
            actions.wholePage->trigger();
        }
    });
    connect(grid, &PageGridView::pressed, this, [this](int row) {
        if (model.isReview() && !model.index(row).data(PageGridModel::NeighbourRole).toBool()) {
            applyToRows(MarkOperation::Toggle, {row}, PagesPane::tr("Rescue or Remove"));
        }
    });
}

// Where what is typed goes.
MarksPlace PagesPane::Parts::place() const
{
    return model.isReview() || !document ? std::nullopt : marks.placeOf(document->id);
}

void PagesPane::Parts::put(const MarksPlace& where, std::optional<RangeMarks> after,
                           const QString& text, int series)
{
    if (after != marks.at(where)) {
        undo.push(new MarkCommand(marks, where, std::move(after), text, series));
    }
}

void PagesPane::Parts::type(const QString& text)
{
    put(place(), Marks::ofText(text, *marks.at(place())), PagesPane::tr("Type Pages"), series_);
}

void PagesPane::Parts::setOnlyHere(bool on)
{
    if (document) {
        put(document->id, on ? std::optional(marks.of(document->id)) : std::nullopt,
            on ? PagesPane::tr("Only Here") : PagesPane::tr("As in All Documents"));
    }
}

void PagesPane::Parts::apply(MarkOperation operation, const QString& text)
{
    if (!model.isReview()) {
        const QModelIndex at = grid->currentIndex();
        const MarkedDocument marked = {model.rowCount(), grid->chosen(),
                                       at.isValid() ? model.pageAt(at.row()) : 0};
        if (document) {
            const PageSet after = marksAfter(operation, marks.of(document->id).pages, marked);
            put(place(), Marks::ofPages(after), text);
        }
        return;
    }
    std::vector<int> rows;
    for (const QModelIndex& index : grid->selectionModel()->selectedIndexes()) {
        rows.push_back(index.row());
    }
    applyToRows(operation, rows, text);
}

// In a review what is decided is decided for the document that the page is of.
void PagesPane::Parts::applyToRows(MarkOperation operation, const std::vector<int>& rows,
                                   const QString& text)
{
    std::map<DocumentId, PageSet> chosen;
    for (const int row : rows) {
        PageSet& pages = chosen[model.documentAt(row)];
        pages = pages.united(PageSet(PageRun{model.pageAt(row), model.pageAt(row)}));
    }
    undo.beginMacro(text);
    for (const auto& [id, pages] : chosen) {
        const PageSet after =
            marksAfter(operation, marks.of(id).pages, {model.pagesOf(id), pages, 0});
        put(id, Marks::ofPages(after), text);
    }
    undo.endMacro();
}

void PagesPane::Parts::jump()
{
    const int row = model.rowNamed(form.jumpEdit->text());
    if (row >= 0) {
        grid->goTo(row);
        grid->setFocus(Qt::OtherFocusReason);
        showCurrent(); // the number in the place of a label
    } else {
        form.jumpEdit->selectAll();
    }
}

void PagesPane::Parts::setReview(bool on)
{
    showsStart_ = true;
    if (on) {
        model.review(reviewed);
    } else {
        model.showDocument(document);
    }
    emit pane.reviewChanged(on);
}

void PagesPane::Parts::showAgain(bool fromStart)
{
    const QModelIndex at = grid->currentIndex();
    showsStart_ = showsStart_ || fromStart;
    model.showDocument(document);
    // A document that is read anew is shown where it was.
    if (!fromStart && at.isValid() && !grid->currentIndex().isValid()) {
        grid->goTo(std::min(at.row(), model.rowCount() - 1));
    }
}

QString PagesPane::Parts::emptyText() const
{
    if (model.isReview()) {
        return PagesPane::tr("No page goes from any document. Type above which pages to remove, or "
                             "mark them in a document.");
    }
    if (!document) {
        return PagesPane::tr("Choose a document to see its pages.");
    }
    return model.failure().isEmpty()
               ? PagesPane::tr("Reading %1...").arg(document->name)
               : PagesPane::tr("%1 can't be shown: %2", "a document and a reason")
                     .arg(document->name, model.failure());
}

void PagesPane::Parts::refresh()
{
    const bool isEmpty = model.rowCount() == 0;
    form.emptyLabel->setText(isEmpty ? emptyText() : QString());
    form.stack->setCurrentIndex(isEmpty ? 0 : 1);
    form.jumpEdit->setEnabled(!isEmpty && !model.isReview());
    form.countLabel->setText(model.isReview() || isEmpty
                                 ? QString()
                                 : PagesPane::tr("of %n", "pages", model.rowCount()));
    form.onlyHere->setEnabled(document && !model.isReview());
    for (QAction* action : {actions.odd, actions.even, actions.fromHere, actions.toHere,
                            actions.invert, actions.none, actions.goTo}) {
        action->setEnabled(!isEmpty && !model.isReview());
    }
    if (!isEmpty && showsStart_) {
        showsStart_ = false;
        grid->setCurrentIndex(model.index(0));
        grid->scrollToTop();
    }
    refreshMarks();
    showCurrent();
}

void PagesPane::Parts::refreshMarks()
{
    const RangeMarks now = *marks.at(place());
    if (form.rangeEdit->text() != now.text) {
        form.rangeEdit->setText(now.text);
    }
    form.faultLabel->setVisible(now.fault.has_value());
    form.faultLabel->setText(
        now.fault ? PagesPane::tr("This range %1.", "what is wrong with it").arg(*now.fault)
                  : QString());
    form.onlyHere->setChecked(document && !model.isReview() && marks.isOwn(document->id));
    form.summaryLabel->setText(summary());
}

QString PagesPane::Parts::summary() const
{
    if (!model.isReview()) {
        const int pages = model.rowCount();
        return pages == 0 ? QString()
                          : PagesPane::tr("%n page(s) will be removed", "",
                                          marks.of(document->id).pages.countIn(pages));
    }
    int pages = 0;
    int documents = 0;
    for (const ShownDocument& one : reviewed) {
        const int go = marks.of(one.id).pages.countIn(model.pagesOf(one.id));
        pages += go;
        documents += go > 0 ? 1 : 0;
    }
    return PagesPane::tr("%1 from %2", "pages and documents")
        .arg(PagesPane::tr("%n page(s) will be removed", "", pages),
             PagesPane::tr("%n document(s)", "after: removed from", documents));
}

void PagesPane::Parts::showCurrent()
{
    const QModelIndex at = grid->currentIndex();
    if (!at.isValid()) {
        large->show(0, 0, {});
        return;
    }
    large->show(model.documentAt(at.row()), model.pageAt(at.row()),
                at.data(Qt::AccessibleTextRole).toString());
    if (!form.jumpEdit->hasFocus()) {
        form.jumpEdit->setText(at.data(Qt::DisplayRole).toString());
    }
}

PagesPane::PagesPane(Marks& marks, QUndoStack& undo, Pictures& pictures, QWidget* parent)
    : QWidget(parent), parts_(std::make_unique<Parts>(*this, marks, undo, pictures))
{
}

PagesPane::~PagesPane() = default;

void PagesPane::showDocument(const std::optional<ShownDocument>& document)
{
    const bool isAnother = document.has_value() != parts_->document.has_value() ||
                           (document && parts_->document && document->id != parts_->document->id);
    parts_->document = document;
    if (isReview() && isAnother) {
        parts_->actions.review->setChecked(false); // which shows it
    } else if (!isReview()) {
        parts_->showAgain(isAnother);
    }
}

void PagesPane::setReviewed(std::vector<ShownDocument> documents)
{
    const bool isSame = parts_->reviewed == documents;
    parts_->reviewed = std::move(documents);
    if (isReview() && !isSame) {
        parts_->model.setReviewed(parts_->reviewed);
    }
    if (!isSame) {
        parts_->model.keepOnly(parts_->reviewed);
    }
}

void PagesPane::setReasons(std::function<QString(DocumentId document, int page)> reasons)
{
    parts_->model.setReasons(std::move(reasons));
}

bool PagesPane::isReview() const
{
    return parts_->actions.review->isChecked();
}

void PagesPane::setReview(bool on)
{
    parts_->actions.review->setChecked(on);
}

QList<QAction*> PagesPane::markActions() const
{
    return parts_->actions.marks();
}

QList<QAction*> PagesPane::viewActions() const
{
    return parts_->actions.views();
}

QByteArray PagesPane::saveState() const
{
    QByteArray state;
    QDataStream stream(&state, QIODevice::WriteOnly);
    stream.setVersion(QDataStream::Qt_5_15);
    stream << qint32(parts_->grid->zoom()) << parts_->actions.largePage->isChecked()
           << parts_->form.views->saveState();
    return state;
}

bool PagesPane::restoreState(const QByteArray& state)
{
    qint32 zoom = 0;
    bool isLarge = false;
    QByteArray views;
    QDataStream stream(state);
    stream.setVersion(QDataStream::Qt_5_15);
    stream >> zoom >> isLarge >> views;
    if (stream.status() != QDataStream::Ok) {
        return false;
    }
    parts_->grid->setZoom(zoom);
    parts_->actions.largePage->setChecked(isLarge);
    parts_->form.views->restoreState(views);
    return true;
}

} // namespace vantora::desktop
