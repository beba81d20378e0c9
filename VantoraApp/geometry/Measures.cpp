#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/CUtils.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

int toInt(double whole)
{
    using Limits = std::numeric_limits<int>;
    if (std::isnan(whole)) {
        return 0;
    }
    return static_cast<int>(std::clamp<double>(whole, Limits::min(), Limits::max()));
}

enum Unit : long { Inch, Centimetre, Millimetre, Point };

double fromInch(double value, long unit)
{
    switch (unit) {
    case Centimetre:
        return value * 2.54;
    case Millimetre:
        return value * 2.54 * 10;
    case Point:
        return value * 72;
    default:
        return value;
    }
}

double fromCentimetre(double value, long unit)
{
    switch (unit) {
    case Inch:
        return value / 2.54;
    case Millimetre:
        return value * 10;
    case Point:
        return value * 72 / 2.54;
    default:
        return value;
    }
}

double fromMillimetre(double value, long unit)
{
    switch (unit) {
    case Inch:
        return value / 25.4;
    case Centimetre:
        return value / 10;
    case Point:
        return value * 72 / 25.4;
    default:
        return value;
    }
}

double fromPoint(double value, long unit)
{
    switch (unit) {
    case Inch:
        return value / 72;
    case Centimetre:
        return value * 2.54 / 72;
    case Millimetre:
        return value * 2.54 * 10 / 72;
    default:
        return value;
    }
}

} // namespace

int CActionUtils::Round(double x)
{
    const int below = toInt(std::floor(x));
    return x - below > 0.5 ? toInt(std::ceil(x)) : below;
}

double CUtils::Convert(long fromUnit, double value, long toUnit)
{
    switch (fromUnit) {
    case Inch:
        return fromInch(value, toUnit);
    case Centimetre:
        return fromCentimetre(value, toUnit);
    case Millimetre:
        return fromMillimetre(value, toUnit);
    case Point:
        return fromPoint(value, toUnit);
    default:
        return value;
    }
}
