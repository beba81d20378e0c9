#include "VantoraHost/desktop/sequence/FavouriteBar.h"

#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtWidgets/QHBoxLayout>
#include <QtWidgets/QMenu>
#include <QtWidgets/QToolButton>

namespace vantora::desktop {

namespace {

// In letters: a longer name would widen the pane.
constexpr int longestShown = 24;

} // namespace

FavouriteBar::FavouriteBar(const std::vector<InstalledAction>& actions, QWidget* parent)
    : QWidget(parent), actions_(actions), list_(new QToolButton), newer_(new QToolButton),
      older_(new QToolButton)
{
    list_->setObjectName("favouriteButton");
    list_->setPopupMode(QToolButton::InstantPopup);
    list_->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    list_->setToolTip(tr("Favourites of this action, the newest first"));
    list_->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    newer_->setObjectName("newerButton");
    newer_->setArrowType(Qt::LeftArrow);
    newer_->setText(tr("Newer favourite"));
    older_->setObjectName("olderButton");
    older_->setArrowType(Qt::RightArrow);
    older_->setText(tr("Older favourite"));
    for (QToolButton* button : {newer_, older_}) {
        button->setToolTip(button->text());
        button->setAccessibleName(button->text());
    }
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(list_, 1);
    layout->addWidget(newer_);
    layout->addWidget(older_);
    auto* menu = new QMenu(list_);
    connect(menu, &QMenu::aboutToShow, this, &FavouriteBar::fill);
    list_->setMenu(menu);
    connect(newer_, &QToolButton::clicked, this, [this] { stepBy(-1); });
    connect(older_, &QToolButton::clicked, this, [this] { stepBy(1); });
    setStep(nullptr);
}

void FavouriteBar::setStep(const ListedStep* step)
{
    action_ = step == nullptr ? nullptr : actionNamed(actions_, step->action);
    current_ = step == nullptr ? std::string() : step->favourite;
    setEnabled(action_ != nullptr);
    const QString name = current_.empty() ? tr("Favourites") : shownText(current_);
    list_->setText(onButton(fontMetrics().elidedText(
        name, Qt::ElideMiddle, longestShown * fontMetrics().averageCharWidth())));
    list_->setAccessibleName(current_.empty() ? name : tr("Favourite: %1").arg(name));
    list_->setIcon(step == nullptr ? QIcon() : step->favouriteIcon);
}

std::vector<Favourite> FavouriteBar::favourites() const
{
    return action_ == nullptr ? std::vector<Favourite>() : favouritesOf(*action_, actions_);
}

void FavouriteBar::stepBy(int distance)
{
    const std::vector<Favourite> all = favourites();
    const int place = favouriteBeside(all, current_, distance);
    if (place >= 0) {
        emit chosen(all[static_cast<std::size_t>(place)]);
    } else if (all.empty()) {
        emit noted(tr("No favourite of this action is saved; its options have a button for it."));
    } else {
        emit noted(distance > 0 ? tr("There is no older favourite.")
                                : tr("There is no newer favourite."));
    }
}

void FavouriteBar::fill()
{
    QMenu& menu = *list_->menu();
    menu.clear();
    for (const Favourite& favourite : favourites()) {
        QAction* entry = menu.addAction(favourite.icon, onButton(shownText(favourite.name)), this,
                                        [this, favourite] { emit chosen(favourite); });
        if (favourite.name == current_) {
            menu.setDefaultAction(entry);
        }
    }
    if (menu.isEmpty()) {
        menu.addAction(tr("None is saved"))->setEnabled(false);
    }
}

} // namespace vantora::desktop
