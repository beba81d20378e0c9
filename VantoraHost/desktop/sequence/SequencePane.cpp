#include "VantoraHost/desktop/sequence/SequencePane.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraHost/desktop/sentences/Sentences.h"
#include "VantoraHost/desktop/session/AskForFile.h"
#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "ui_SequencePane.h"

#include <QtCore/QFileInfo>
#include <QtWidgets/QAction>
#include <QtWidgets/QMenu>
#include <QtWidgets/QUndoStack>

namespace vantora::desktop {

SequencePane::SequencePane(SequenceParts parts, QWidget& preview, QWidget* parent)
    : QWidget(parent), parts_(std::move(parts)), favourites_(new FavouriteBar(parts_.actions)),
      preview_(preview), form_(std::make_unique<Ui::SequencePane>())
{
    form_->setupUi(this);
    form_->saveRow->hide();
    form_->messageLabel->hide();
    form_->layout->insertWidget(form_->layout->indexOf(form_->saveRow), favourites_);
    QWidget* before = form_->removeButton;
    for (auto* button : favourites_->findChildren<QToolButton*>()) {
        setTabOrder(before, button);
        before = button;
    }
    const int line = form_->view->fontMetrics().height();
    form_->view->setIconSize({2 * line, 2 * line});
    form_->view->setModel(&parts_.list);
    for (QToolButton* button : {form_->upButton, form_->downButton}) {
        button->setToolTip(button->text());
        button->setAccessibleName(button->text());
    }
    auto* addMenu = new QMenu(this);
    fillAddMenu(*addMenu);
    form_->addButton->setMenu(addMenu);
    auto* savedMenu = new QMenu(this);
    connect(savedMenu, &QMenu::aboutToShow, this, [this, savedMenu] { fillSavedMenu(*savedMenu); });
    form_->savedButton->setMenu(savedMenu);
    connect(form_->configureButton, &QPushButton::clicked, this, &SequencePane::configure);
    connect(form_->view, &QAbstractItemView::activated, this, &SequencePane::configure);
    connect(form_->upButton, &QToolButton::clicked, this, [this] { moveBy(-1); });
    connect(form_->downButton, &QToolButton::clicked, this, [this] { moveBy(1); });
    connect(form_->removeButton, &QPushButton::clicked, this, &SequencePane::remove);
    connect(form_->saveButton, &QPushButton::clicked, this, &SequencePane::save);
    connect(form_->saveNameEdit, &QLineEdit::returnPressed, this, &SequencePane::save);
    connect(form_->saveCancelButton, &QPushButton::clicked, form_->saveRow, &QWidget::hide);
    connect(favourites_, &FavouriteBar::noted, this, &SequencePane::say);
    connect(favourites_, &FavouriteBar::chosen, this, [this](const Favourite& favourite) {
        takeOptions(row(), favourite.step, &favourite,
                    tr("the favourite %1").arg(shownText(favourite.name)));
    });
    connect(&parts_.list, &StepList::asked, this, &SequencePane::change);
    connect(&parts_.list, &StepList::changed, this, &SequencePane::keepChosen);
    connect(form_->view->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &SequencePane::follow);
    form_->view->setCurrentIndex(parts_.list.index(0));
    follow();
}

SequencePane::~SequencePane() = default;

int SequencePane::row() const
{
    return form_->view->currentIndex().isValid() ? form_->view->currentIndex().row() : -1;
}

void SequencePane::change(ListedSteps steps, const QString& text)
{
    parts_.undo.push(new ChangeSteps(parts_.list, std::move(steps), text));
}

// A step is chosen after undoing, too, when the list is another one.
void SequencePane::keepChosen()
{
    form_->view->setCurrentIndex(
        parts_.list.index(std::min(std::max(chosen_, 0), parts_.list.rowCount() - 1)));
    follow();
}

void SequencePane::changeWithRange(ListedSteps steps, const QString& range, const QString& text)
{
    parts_.undo.beginMacro(text);
    change(std::move(steps), text);
    if (!range.isEmpty()) {
        emit rangeAsked(range);
    }
    parts_.undo.endMacro();
    say({});
}

void SequencePane::fillAddMenu(QMenu& menu)
{
    QString group;
    for (const InstalledAction& action : parts_.actions) {
        if (action.group != group) {
            group = action.group;
            menu.addSection(group);
        }
        menu.addAction(
            CActionUtils::GetIconForTool(action.icon), action.title, this, [this, &action] {
                ListedSteps steps = parts_.list.steps();
                steps.push_back(stepOf(action));
                change(std::move(steps), tr("adding %1").arg(action.title));
                form_->view->setCurrentIndex(parts_.list.index(parts_.list.rowCount() - 1));
            });
    }
    if (menu.isEmpty()) {
        menu.addAction(tr("No action is installed"))->setEnabled(false);
    }
}

void SequencePane::addSaved(QMenu& menu, const std::vector<Result<SavedEntry>>& entries,
                            SavedKind kind)
{
    for (const Result<SavedEntry>& entry : entries) {
        if (!entry) {
            continue; // there is nothing that could be loaded
        }
        QMenu* place = &menu;
        if (!entry->category.empty()) {
            const QString category = QString::fromStdString(entry->category);
            place = menu.findChild<QMenu*>(category);
            if (place == nullptr) {
                place = menu.addMenu(onButton(category));
                place->setObjectName(category);
            }
        }
        const SavedIn saved = {kind, entry->name};
        const QIcon icon = kind == SavedKind::Favourite ? favouritePicture(entry->file) : QIcon();
        place->addAction(icon, onButton(shownText(entry->name)), this,
                         [this, saved] { load(saved); });
    }
}

void SequencePane::fillSavedMenu(QMenu& menu)
{
    menu.clear();
    qDeleteAll(menu.findChildren<QMenu*>(QString(), Qt::FindDirectChildrenOnly));
    menu.addSection(tr("Action lists"));
    addSaved(menu, savedActionLists(), SavedKind::ActionList);
    menu.addSection(tr("Favourites"));
    addSaved(menu, savedFavourites(), SavedKind::Favourite);
    menu.addSeparator();
    menu.addAction(tr("&Save as Action List…"), this, &SequencePane::beginSaving)
        ->setEnabled(!parts_.list.requests(parts_.range()).empty());
    menu.addSeparator();
    menu.addAction(tr("&Load Tool Settings…"), this, [this] { chooseToolSettings(false); });
    menu.addAction(tr("Save &Tool Settings…"), this, [this] { chooseToolSettings(true); })
        ->setEnabled(row() >= 0);
}

void SequencePane::load(const SavedIn& saved)
{
    const auto requests = savedSteps(saved);
    auto steps = requests ? listed(*requests, parts_.actions)
                          : Result<ListedSteps>(tl::unexpected<Error>(requests.error()));
    if (!steps) {
        sayWhy(steps.error());
        return;
    }
    QString range;
    for (ListedStep& step : *steps) {
        if (const char* key = rangeKeyOf(step); key != nullptr && range.isEmpty()) {
            range = step.preferences.take(key).toString();
        }
    }
    changeWithRange(std::move(*steps), range, tr("loading %1").arg(shownName(saved.name)));
}

void SequencePane::takeOptions(int row, const StepRequest& options, const Favourite* favourite,
                               const QString& text)
{
    auto taken = listed({options}, parts_.actions);
    if (!taken) {
        say(shownSentence(taken.error().sentence));
        return;
    }
    ListedStep& step = taken->front();
    if (favourite != nullptr) {
        step.favourite = favourite->name;
        step.favouriteIcon = favourite->icon;
    }
    ListedSteps steps = parts_.list.steps();
    const int marks = parts_.list.marksRow();
    const bool isMore = row < 0;
    const bool takesMarks = isMore ? marks < 0 : row == marks;
    const char* key = rangeKeyOf(step);
    const QString range =
        takesMarks && key != nullptr ? step.preferences.take(key).toString() : QString();
    if (isMore) {
        steps.push_back(std::move(step));
    } else {
        step.isOn = steps[static_cast<std::size_t>(row)].isOn;
        steps[static_cast<std::size_t>(row)] = std::move(step);
    }
    changeWithRange(std::move(steps), range, text);
    form_->view->setCurrentIndex(parts_.list.index(isMore ? parts_.list.rowCount() - 1 : row));
}

void SequencePane::loadToolSettings(const QString& path)
{
    const auto requests = savedSteps({SavedKind::ToolSettings, systemPath(path)});
    if (!requests) {
        sayWhy(requests.error());
        return;
    }
    const StepRequest& options = requests->front();
    const InstalledAction* action = actionNamed(parts_.actions, options.action);
    const int chosen = row();
    const bool isSame =
        action != nullptr && chosen >= 0 &&
        parts_.list.steps()[static_cast<std::size_t>(chosen)].action == action->action.name;
    takeOptions(isSame ? chosen : -1, options, nullptr,
                tr("loading %1").arg(shownName(systemPath(path))));
}

bool SequencePane::loadFile(const QString& path)
{
    const bool isList = path.endsWith(QLatin1String(".xqq"));
    if (!isList && !path.endsWith(QLatin1String(".tsf"))) {
        return false;
    }
    if (QFileInfo(path).isDir()) {
        return false;
    }
    if (isList) {
        load({SavedKind::ActionList, systemPath(path)});
    } else {
        loadToolSettings(path);
    }
    return true;
}

void SequencePane::saveToolSettings(const QString& path)
{
    if (row() < 0) {
        return;
    }
    const Outcome saved =
        saveAsToolSettings(path, parts_.list.request(row(), parts_.range()), parts_.actions);
    const QString name = shownName(systemPath(path));
    say(saved ? tr("Saved in “%1”.").arg(name)
              : tr("%1: %2", "a file's name and what is wrong with it")
                    .arg(name, shownSentence(saved.error().sentence)));
}

void SequencePane::chooseToolSettings(bool saves)
{
    const int chosen = row();
    QString name;
    if (saves && chosen >= 0) {
        name = parts_.list.steps()[static_cast<std::size_t>(chosen)].title;
        name = name.replace('/', '_') + QStringLiteral(".tsf");
    }
    askForFile(*this,
               {saves ? tr("Save Tool Settings") : tr("Load Tool Settings"),
                saves,
                QStringLiteral("tsf"),
                {tr("Tool settings files (*.tsf)"), tr("All files (*)")},
                {},
                name},
               [this, saves](const QString& path) {
                   saves ? saveToolSettings(path) : loadToolSettings(path);
               });
}

void SequencePane::configure()
{
    const int chosen = row();
    if (chosen < 0) {
        return;
    }
    ListedSteps steps = parts_.list.steps();
    ListedStep& step = steps[static_cast<std::size_t>(chosen)];
    const InstalledAction* action = actionNamed(parts_.actions, step.action);
    if (action == nullptr) {
        return;
    }
    const bool hasMarks = chosen == parts_.list.marksRow();
    PreferencesMap preferences = step.preferences;
    if (hasMarks) {
        preferences.insert(rangeKeyOf(step), parts_.range());
    }
    DialogLoadStruct load = {};
    load.pPrefs = &preferences;
    if (action->action.operations->ShowDialogProc(&preview_, &load) != 1) {
        return;
    }
    const QString range = hasMarks ? preferences.take(rangeKeyOf(step)).toString() : QString();
    const bool isAnother = step.preferences != preferences;
    step.preferences = preferences;
    parts_.undo.beginMacro(tr("options of %1").arg(step.title));
    if (isAnother) {
        change(steps, tr("options of %1").arg(step.title));
    }
    if (hasMarks && range != parts_.range()) {
        emit rangeAsked(range);
    }
    parts_.undo.endMacro();
}

void SequencePane::moveBy(int distance)
{
    const int from = row();
    const int to = from + distance;
    if (from >= 0 && to >= 0 && to < parts_.list.rowCount()) {
        change(moved(parts_.list.steps(), from, distance > 0 ? to + 1 : to), tr("moving a step"));
        form_->view->setCurrentIndex(parts_.list.index(to));
    }
}

void SequencePane::remove()
{
    const int chosen = row();
    if (chosen >= 0) {
        ListedSteps steps = parts_.list.steps();
        const QString title = steps[static_cast<std::size_t>(chosen)].title;
        steps.erase(steps.begin() + chosen);
        change(std::move(steps), tr("removing %1").arg(title));
    }
}

void SequencePane::beginSaving()
{
    form_->saveCategoryCombo->clear();
    form_->saveCategoryCombo->addItems(CActionUtils::GetActionListCategories());
    form_->saveRow->show();
    form_->saveNameEdit->setFocus();
}

void SequencePane::save()
{
    const QString name = form_->saveNameEdit->text().trimmed();
    if (savedEntry({SavedKind::ActionList, name.toStdString()})) {
        say(tr("There is a list of this name; name it otherwise."));
        return;
    }
    const Outcome saved =
        saveAsActionList(name.toStdString(), form_->saveCategoryCombo->currentText().toStdString(),
                         parts_.list, parts_.range(), parts_.actions);
    if (!saved) {
        say(shownSentence(saved.error().sentence));
        return;
    }
    form_->saveRow->hide();
    say(tr("Saved as the action list “%1”.").arg(name));
}

void SequencePane::follow()
{
    const int chosen = row();
    const int count = parts_.list.rowCount();
    chosen_ = chosen >= 0 ? chosen : chosen_;
    form_->configureButton->setEnabled(chosen >= 0);
    form_->removeButton->setEnabled(chosen >= 0);
    form_->upButton->setEnabled(chosen > 0);
    form_->downButton->setEnabled(chosen >= 0 && chosen + 1 < count);
    favourites_->setStep(chosen < 0 || chosen >= count
                             ? nullptr
                             : &parts_.list.steps()[static_cast<std::size_t>(chosen)]);
    askForHelp();
}

void SequencePane::askForHelp()
{
    const int chosen = row();
    const InstalledAction* action =
        chosen < 0 || chosen >= parts_.list.rowCount()
            ? nullptr
            : actionNamed(parts_.actions,
                          parts_.list.steps()[static_cast<std::size_t>(chosen)].action);
    emit helpAsked(action ? action->title : QString(), action ? action->help : QString());
}

void SequencePane::say(const QString& message)
{
    form_->messageLabel->setText(message);
    form_->messageLabel->setVisible(!message.isEmpty());
}

void SequencePane::sayWhy(const Error& error)
{
    const QString sentence = shownSentence(error.sentence);
    say(error.file.empty() ? sentence
                           : tr("%1: %2", "a file's name and what is wrong with it")
                                 .arg(shownName(error.file), sentence));
}

} // namespace vantora::desktop
