#pragma once

#include <QtCore/QString>

/// The product's name, as it stands in titles.
inline QString ProductTitle()
{
    return QStringLiteral("Sorrelin");
}
