#include "VantoraHost/desktop/session/RecentPaths.h"

#include "VantoraHost/desktop/texts/ShownTexts.h"

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

namespace vantora::desktop {

RecentPaths::RecentPaths(const QStringList& stored)
{
    for (const QString& path : stored) {
        if (QDir::isAbsolutePath(path) && !paths_.contains(path) && paths_.size() < most) {
            paths_ << path;
        }
    }
}

void RecentPaths::add(const QStringList& opened)
{
    QStringList added;
    for (const QString& path : opened) {
        const QString clean = QDir::cleanPath(path);
        added << (opened.size() == 1 ? clean : QFileInfo(clean).path());
    }
    *this = RecentPaths(added + paths_);
}

RecentMenu::RecentMenu(RecentPaths& paths, QWidget* parent) : QMenu(parent), paths_(paths)
{
    setTitle(tr("Open Re&cent"));
    setToolTipsVisible(true);
    connect(this, &QMenu::aboutToShow, this, &RecentMenu::fill);
}

void RecentMenu::fill()
{
    clear();
    const int widest = 60 * fontMetrics().averageCharWidth();
    int number = 0;
    for (const QString& path : paths_.paths()) {
        const QString shown = onButton(fontMetrics().elidedText(path, Qt::ElideMiddle, widest));
        number = (number + 1) % 10;
        QAction* action = addAction(QStringLiteral("&%1  %2").arg(number).arg(shown));
        action->setToolTip(path);
        connect(action, &QAction::triggered, this, [this, path] { emit chosen(path); });
    }
    if (paths_.paths().isEmpty()) {
        addAction(tr("Nothing was opened yet"))->setEnabled(false);
        return;
    }
    addSeparator();
    connect(addAction(tr("&Forget These")), &QAction::triggered, this, [this] { paths_.clear(); });
}

} // namespace vantora::desktop
