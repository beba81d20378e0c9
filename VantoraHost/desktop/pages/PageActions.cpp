#include "VantoraHost/desktop/pages/PageActions.h"

#include "VantoraHost/desktop/pages/MarkOperation.h"

#include <QtWidgets/QAction>
#include <QtWidgets/QWidget>

namespace vantora::desktop {

namespace {

QAction* made(QObject* parent, const char* name, const QString& text,
              const QKeySequence& shortcut = {})
{
    auto* const action = new QAction(text, parent);
    action->setObjectName(name);
    action->setShortcut(shortcut);
    action->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    return action;
}

QAction* checkable(QAction* action)
{
    action->setCheckable(true);
    return action;
}

} // namespace

PageActions::PageActions(QObject* parent)
    : toggle(made(parent, "toggleMarks", tr("Re&move or Keep"), Qt::Key_Space)),
      add(made(parent, "addMarks", tr("&Remove"), Qt::Key_Delete)),
      remove(made(parent, "removeMarks", tr("&Keep"), Qt::SHIFT | Qt::Key_Delete)),
      odd(made(parent, "markOdd", tr("Remove &Odd Pages"))),
      even(made(parent, "markEven", tr("Remove &Even Pages"))),
      fromHere(made(parent, "markFromHere", tr("Remove from &Here to the End"),
                    Qt::SHIFT | Qt::CTRL | Qt::Key_End)),
      toHere(made(parent, "markToHere", tr("Remove from the &Beginning to Here"),
                  Qt::SHIFT | Qt::CTRL | Qt::Key_Home)),
      invert(made(parent, "invertMarks", tr("&Invert"), Qt::CTRL | Qt::Key_I)),
      none(made(parent, "clearMarks", tr("Keep &All"))),
      selectAll(made(parent, "selectAllPages", tr("&Select All Pages"), QKeySequence::SelectAll)),
      review(
          checkable(made(parent, "review", tr("Re&view All Removed Pages"), Qt::CTRL | Qt::Key_R))),
      zoomIn(made(parent, "zoomIn", tr("Zoom I&n"), QKeySequence::ZoomIn)),
      zoomOut(made(parent, "zoomOut", tr("Zoom O&ut"), QKeySequence::ZoomOut)),
      wholePage(checkable(made(parent, "wholePage", tr("One Page at a &Time"), Qt::Key_Return))),
      largePage(
          checkable(made(parent, "largePage", tr("Current Page &Large"), Qt::CTRL | Qt::Key_L))),
      goTo(made(parent, "goToPage", tr("&Go to Page..."), Qt::CTRL | Qt::Key_G)),
      retry(made(parent, "retryPictures", tr("Dra&w Again"), QKeySequence::Refresh))
{
    review->setIconText(tr("Review All")); // on its button, beside the range, which needs the room
    zoomIn->setShortcuts({QKeySequence(QKeySequence::ZoomIn), Qt::CTRL | Qt::Key_Equal});
    for (QAction* action : {toggle, add, remove, fromHere, toHere, selectAll, wholePage}) {
        action->setShortcutContext(Qt::WidgetShortcut);
    }
}

void PageActions::connectMarks(const std::function<void(MarkOperation, const QString&)>& apply)
{
    const std::pair<QAction*, MarkOperation> all[] = {
        {toggle, MarkOperation::Toggle}, {add, MarkOperation::Add},
        {remove, MarkOperation::Remove}, {odd, MarkOperation::Odd},
        {even, MarkOperation::Even},     {fromHere, MarkOperation::FromHere},
        {toHere, MarkOperation::ToHere}, {invert, MarkOperation::Invert},
        {none, MarkOperation::None},
    };
    for (const auto& [action, operation] : all) {
        QObject::connect(action, &QAction::triggered, action,
                         [apply, action = action, operation = operation] {
                             apply(operation, QString(action->text()).remove('&'));
                         });
    }
}

void PageActions::attachTo(QWidget& grid, QWidget& pane) const
{
    for (QAction* action : marks() + QList<QAction*>{nullptr} + views()) {
        if (!action) {
            auto* const separator = new QAction(&grid);
            separator->setSeparator(true);
            grid.addAction(separator);
        } else {
            grid.addAction(action);
            if (action->shortcutContext() != Qt::WidgetShortcut) {
                pane.addAction(action);
            }
        }
    }
}

QList<QAction*> PageActions::marks() const
{
    return {add,    remove,  toggle, nullptr, odd,     even,     fromHere,
            toHere, nullptr, invert, none,    nullptr, selectAll};
}

QList<QAction*> PageActions::views() const
{
    return {review, nullptr, zoomIn, zoomOut, wholePage, largePage, nullptr, goTo, retry};
}

} // namespace vantora::desktop
