#pragma once

#include <QtCore/QStringRef>

/// What QStringRef::toInt makes of a text, 0 for one that it can't read; many times faster for a few
/// digits, which is how most pages are named.
inline int NumberOf(const QStringRef& text)
{
    constexpr int mostDigits = 9;
    if (text.isEmpty() || text.size() > mostDigits)
        return text.toInt();
    int number = 0;
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9'))
            return text.toInt();
        number = number * 10 + (c.unicode() - '0');
    }
    return number;
}
