#include "VantoraApp/dialogs/HostSetting.h"

#include <QtWidgets/QWidget>

HostSetting FindHostSetting(QObject* start)
{
    for (QObject* object = start; object != nullptr; object = object->parent()) {
        if (object->objectName() == QLatin1String("VantoraClass"))
            return {true, nullptr};
        auto* widget = qobject_cast<QWidget*>(object);
        if (widget != nullptr && object->objectName() == QLatin1String("VantoraPreviewClass"))
            return {false, widget};
    }
    return {};
}
