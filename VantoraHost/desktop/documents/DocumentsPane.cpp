#include "VantoraHost/desktop/documents/DocumentsPane.h"

#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "ui_DocumentsPane.h"

#include <QtWidgets/QAction>

#include <algorithm>

namespace vantora::desktop {

namespace {

// Of thousands that are being read, for each that is.
constexpr int mostLookedAt = 100;

} // namespace

DocumentsPane::DocumentsPane(DocumentList& list, DocumentsController& controller, QWidget* parent)
    : QWidget(parent), list_(list), controller_(controller), filter_(list),
      form_(std::make_unique<Ui::DocumentsPane>())
{
    form_->setupUi(this);
    form_->view->setModel(&filter_);
    form_->view->header()->setSortIndicator(-1, Qt::AscendingOrder); // as they were added
    form_->view->header()->setStretchLastSection(true);
    const int letter = form_->view->fontMetrics().averageCharWidth();
    const int letters[] = {17, 7, 6, 9, 14};
    for (int column = 0; column < DocumentList::Folder; ++column) {
        form_->view->setColumnWidth(column, letters[column] * letter);
    }
    fitTitles();
    for (const QString& text : {tr("All"), tr("Ready"), tr("Locked"), tr("In trouble")}) {
        form_->stateCombo->addItem(text);
    }
    connect(form_->filterEdit, &QLineEdit::textChanged, &filter_, &DocumentFilter::setText);
    connect(form_->stateCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            [this](int index) { filter_.setStates(static_cast<DocumentFilter::States>(index)); });
    connect(form_->view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &DocumentsPane::currentChanged);
    connect(form_->view->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &DocumentsPane::selectionChanged);
    connect(&list_, &DocumentList::changed, this, [this] {
        if (!form_->view->currentIndex().isValid()) {
            chooseFirst();
        }
        emit currentChanged();
    });
    for (const auto signal : {&DocumentsPane::currentChanged, &DocumentsPane::selectionChanged}) {
        connect(this, signal, this, &DocumentsPane::showDetail);
    }
    connect(form_->passwordEdit, &QLineEdit::returnPressed, this, &DocumentsPane::tryPassword);
    connect(form_->passwordButton, &QPushButton::clicked, this, &DocumentsPane::tryPassword);
    connect(form_->stopButton, &QPushButton::clicked, &controller_,
            &DocumentsController::stopAdding);
    connect(&controller_, &DocumentsController::progressed, this, &DocumentsPane::showStatus);
    connect(&list_, &DocumentList::changed, this, &DocumentsPane::showStatus);
    connect(&controller_, &DocumentsController::refused, form_->statusLabel, &QLabel::setText);
    connect(&controller_, &DocumentsController::passwordRefused, this, [this](DocumentId id) {
        if (const Document* document = list_.find(id)) {
            form_->detailLabel->setText(
                tr("This password does not open %1.").arg(nameOf(*document)));
            form_->passwordEdit->selectAll();
            form_->passwordEdit->setFocus();
        }
    });
    showStatus();
    showDetail();
}

DocumentsPane::~DocumentsPane() = default;

QSet<DocumentId> DocumentsPane::selected() const
{
    QSet<DocumentId> ids;
    for (const QModelIndex& index : form_->view->selectionModel()->selectedRows()) {
        ids.insert(index.data(DocumentList::IdRole).toULongLong());
    }
    return ids;
}

std::optional<DocumentId> DocumentsPane::current() const
{
    const QModelIndex index = form_->view->currentIndex();
    return index.isValid()
               ? std::optional<DocumentId>(index.data(DocumentList::IdRole).toULongLong())
               : std::nullopt;
}

// The first that there are pages of, once there is one.
void DocumentsPane::chooseFirst()
{
    const bool isReading = controller_.unread() > 0;
    for (int row = 0; row < filter_.rowCount(); ++row) {
        const QModelIndex index = filter_.index(row, 0);
        const Document* document = list_.find(index.data(DocumentList::IdRole).toULongLong());
        if (document->isUsable()) {
            form_->view->setCurrentIndex(index);
            return;
        }
        if (isReading && row == mostLookedAt) {
            return;
        }
    }
    if (!isReading) {
        form_->view->setCurrentIndex(filter_.index(0, 0));
    }
}

void DocumentsPane::setCurrent(DocumentId id)
{
    const QModelIndex index = filter_.mapFromSource(list_.index(list_.rowOf(id), 0));
    if (index.isValid()) {
        form_->view->setCurrentIndex(index);
    }
}

void DocumentsPane::setCommands(const QList<QAction*>& actions)
{
    form_->view->addActions(actions);
}

void DocumentsPane::focusList()
{
    form_->view->setFocus(Qt::ShortcutFocusReason);
}

QByteArray DocumentsPane::saveState() const
{
    return form_->view->header()->saveState();
}

void DocumentsPane::restoreState(const QByteArray& state)
{
    form_->view->header()->restoreState(state);
    fitTitles(); // the window may have spoken another language
}

void DocumentsPane::fitTitles()
{
    for (int column = 0; column < DocumentList::Columns; ++column) {
        const int title = form_->view->header()->sectionSizeHint(column);
        form_->view->setColumnWidth(column, std::max(form_->view->columnWidth(column), title));
    }
}

void DocumentsPane::showStatus()
{
    const std::size_t unread = controller_.unread();
    const int all = list_.rowCount();
    const bool isSearching = controller_.isSearching();
    form_->stopButton->setVisible(isSearching);
    form_->busyBar->setVisible(isSearching || unread > 0);
    form_->busyBar->setMaximum(isSearching ? 0 : std::max(1, all));
    form_->busyBar->setValue(
        all - static_cast<int>(std::min<std::size_t>(unread, static_cast<std::size_t>(all))));
    form_->statusLabel->setText(
        isSearching  ? tr("Looking for documents: %n found", nullptr, all)
        : unread > 0 ? tr("Reading: %n document(s) left", nullptr, static_cast<int>(unread))
                     : tr("%n document(s)", nullptr, all));
}

void DocumentsPane::showDetail()
{
    const auto id = current();
    const Document* document = id ? list_.find(*id) : nullptr;
    const bool isLocked = document != nullptr && document->state == DocumentState::Locked;
    if (isLocked && !form_->passwordEdit->isVisible()) {
        form_->passwordEdit->clear();
    }
    form_->passwordEdit->setVisible(isLocked);
    form_->passwordButton->setVisible(isLocked);
    form_->detailRow->setVisible(document != nullptr && document->error);
    if (isLocked) {
        form_->detailLabel->setText(tr("%1 is locked. Its password is tried on the other locked "
                                       "documents, too, and is never saved.")
                                        .arg(nameOf(*document)));
    } else if (document != nullptr && document->error) {
        form_->detailLabel->setText(
            tr("%1: %2", "a document and what is wrong with it")
                .arg(nameOf(*document), shownSentence(document->error->sentence)));
    }
}

void DocumentsPane::tryPassword()
{
    const auto id = current();
    if (id && !form_->passwordEdit->text().isEmpty()) {
        controller_.tryPassword(*id, form_->passwordEdit->text());
        form_->detailLabel->setText(tr("Trying the password…"));
    }
}

} // namespace vantora::desktop
