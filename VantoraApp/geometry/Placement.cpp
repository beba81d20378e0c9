#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include <QtCore/QRectF>
#include <algorithm>

namespace {

using Options = QMap<QString, QVariant>;

double real(const Options& options, const char* key, double whenMissing)
{
    return options.value(key, whenMissing).toDouble();
}

int integer(const Options& options, const char* key, int whenMissing)
{
    return options.value(key, whenMissing).toInt();
}

double points(const Options& options, const char* key)
{
    constexpr int pointUnit = 3;
    return CUtils::Convert(integer(options, "unitsComboBox", pointUnit), real(options, key, 0),
                           pointUnit);
}

QMatrix rotated(double degrees)
{
    QMatrix matrix;
    if (degrees != 0) {
        matrix.rotate(360 - degrees);
    }
    return matrix;
}

enum Edge { Near, Far, Centre };

} // namespace

QMatrix CActionUtils::Prefs2Matrix(QMap<QString, QVariant>* prefs, double width, double height,
                                   double pageWidth, double pageHeight)
{
    const double percentX = real(*prefs, "sizeSpinBox", 100);
    const double percentY = real(*prefs, "sizeSpinBoxY", 100);
    if (percentX != 100 || percentY != 100) {
        width = width * percentX / 100;
        height = height * percentY / 100;
    }

    QMatrix matrix = rotated(real(*prefs, "rotationSpinBox", 0));
    const QRectF box = matrix.mapRect(QRectF(0, 0, width, height));
    const double left = std::min(box.left(), box.width());
    const double top = std::min(box.top(), box.height());

    const double offsetX = points(*prefs, "horiznotalSpinBox");
    double dx = offsetX;
    switch (integer(*prefs, "horizontalFromCombo", Near)) {
    case Near:
        dx = offsetX + (0 - left);
        break;
    case Far:
        dx = pageWidth - box.width() - left - offsetX;
        break;
    case Centre:
        dx = offsetX + ((pageWidth - box.width()) * 0.5 - left);
        break;
    }

    const double offsetY = points(*prefs, "verticalSpinBox");
    double dy = offsetY;
    switch (integer(*prefs, "verticalFromCombo", Near)) {
    case Near:
        dy = pageHeight - box.height() - top - offsetY;
        break;
    case Far:
        dy = offsetY + (0 - top);
        break;
    case Centre:
        dy = (pageHeight - box.height()) * 0.5 - top - offsetY;
        break;
    }

    matrix.scale(width, height);
    matrix.setMatrix(matrix.m11(), matrix.m12(), matrix.m21(), matrix.m22(), dx, dy);
    return matrix;
}
