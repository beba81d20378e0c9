#include "VantoraApp/dialogs/CVantoraHeaderButton.h"

#include <QtGui/QMouseEvent>

void CVantoraHeaderButton::mouseDoubleClickEvent(QMouseEvent* event)
{
    event->accept();
}
