#include "VantoraHost/desktop/texts/ShownTexts.h"

#include "VantoraHost/core/Figures.h"
#include "VantoraHost/core/ShownText.h"

#include <QtCore/QCoreApplication>
#include <QtCore/QFile>
#include <QtCore/QLocale>

#include <algorithm>
#include <limits>

namespace vantora::desktop {

QString shownText(const std::string& text)
{
    return QString::fromStdString(shown(text));
}

QString shownName(const std::string& path)
{
    return shownText(path.substr(path.rfind('/') + 1));
}

QString onButton(QString text)
{
    return text.replace('&', QLatin1String("&&"));
}

QString figureText(const std::string& figures)
{
    const QLocale locale;
    QString text;
    for (const QChar& mark : QString::fromStdString(figures)) {
        text += locale == QLocale::c() ? mark
                : mark == ','          ? locale.groupSeparator()
                : mark == '.'          ? locale.decimalPoint()
                                       : mark;
    }
    return text;
}

QString numberText(std::uint64_t number)
{
    return figureText(grouped(number));
}

QString sizeShown(std::uint64_t bytes)
{
    return bytes < 1000
               ? QCoreApplication::translate("ShownTexts", "%n byte(s)", nullptr, asCount(bytes))
               : figureText(sizeText(bytes));
}

int asCount(std::uint64_t number)
{
    return static_cast<int>(std::min<std::uint64_t>(number, std::numeric_limits<int>::max()));
}

QString qtPath(const std::string& path)
{
    return QFile::decodeName(path.c_str());
}

std::string systemPath(const QString& path)
{
    return QFile::encodeName(path).toStdString();
}

} // namespace vantora::desktop
