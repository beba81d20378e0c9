#pragma once

#include <QtCore/QCoreApplication>
#include <QtCore/QList>

#include <functional>

class QAction;
class QObject;
class QWidget;

namespace vantora::desktop {

enum class MarkOperation;

/// The commands of the pane of pages, with their texts and shortcuts.
class PageActions {
    Q_DECLARE_TR_FUNCTIONS(PageActions)

public:
    explicit PageActions(QObject* parent);

    /// `apply` does an operation, whose command in the list of what can be undone is called so.
    void connectMarks(const std::function<void(MarkOperation, const QString&)>& apply);

    /// Those of single keys work where the grid has the keyboard, and nowhere else.
    void attachTo(QWidget& grid, QWidget& pane) const;

    /// Null stands for a separator.
    QList<QAction*> marks() const;
    QList<QAction*> views() const;

    QAction* toggle;
    QAction* add;
    QAction* remove;
    QAction* odd;
    QAction* even;
    QAction* fromHere;
    QAction* toHere;
    QAction* invert;
    QAction* none;
    QAction* selectAll;
    QAction* review;
    QAction* zoomIn;
    QAction* zoomOut;
    QAction* wholePage;
    QAction* largePage;
    QAction* goTo;
    QAction* retry;
};

} // namespace vantora::desktop
