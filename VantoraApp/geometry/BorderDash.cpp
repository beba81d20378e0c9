#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/geometry/Truncated.h"

QString CActionUtils::GetBorderDash(int style, double width)
{
    const QString dash = QString::number(Truncated(width * 5 + 5));
    const QString gap = QString::number(Truncated(width * 2 + 2));
    const QString dot = QString::number(Truncated(width * 3 + 3));
    switch (style) {
    case 1:
        return QStringList({dash, gap}).join(' ');
    case 2:
        return QStringList({dot, gap}).join(' ');
    case 3:
        return QStringList({dash, gap, gap, gap}).join(' ');
    case 4:
        return QStringList({dash, gap, gap, gap, gap, gap}).join(' ');
    default:
        return "invalid";
    }
}
