#include "VantoraApp/settings/StoredText.h"

#include "VantoraApp/settings/StoredVariant.h"

#include <QtCore/QPoint>
#include <QtCore/QRect>
#include <QtCore/QSize>

#include <algorithm>

namespace {

QString Typed(const char* type, const QString& text)
{
    return QLatin1Char('@') + QLatin1String(type) + QLatin1Char('(') + text + QLatin1Char(')');
}

/// With all bytes, whatever they are.
QString Typed(const char* type, const QByteArray& bytes)
{
    return Typed(type, QString::fromLatin1(bytes.constData(), bytes.size()));
}

QString Numbers(std::initializer_list<int> numbers)
{
    QStringList texts;
    for (const int number : numbers)
        texts << QString::number(number);
    return texts.join(' ');
}

QString Text(const QString& text)
{
    if (text.contains(QChar(0)))
        return Typed("String", text);
    return text.startsWith('@') ? '@' + text : text;
}

QString TextOf(const QVariant& value)
{
    switch (value.userType()) {
    case QMetaType::UnknownType:
        return Typed("Invalid", QString());
    case QMetaType::QByteArray:
        return Typed("ByteArray", value.toByteArray());
    case QMetaType::QString:
    case QMetaType::LongLong:
    case QMetaType::ULongLong:
    case QMetaType::Int:
    case QMetaType::UInt:
    case QMetaType::Bool:
    case QMetaType::Double:
    case QMetaType::QKeySequence:
        return Text(value.toString());
    case QMetaType::QRect: {
        const QRect rect = value.toRect();
        return Typed("Rect", Numbers({rect.x(), rect.y(), rect.width(), rect.height()}));
    }
    case QMetaType::QSize:
        return Typed("Size", Numbers({value.toSize().width(), value.toSize().height()}));
    case QMetaType::QPoint:
        return Typed("Point", Numbers({value.toPoint().x(), value.toPoint().y()}));
    case QMetaType::QDateTime:
        return Typed("DateTime", EncodeStoredDateTime(value));
    default:
        return Typed("Variant", EncodeStoredVariant(value));
    }
}

/// What stands between the parentheses of a value such as "@ByteArray(…)".
std::optional<QString> Inside(const QString& text, const char* type)
{
    const QString opening = QLatin1Char('@') + QLatin1String(type) + QLatin1Char('(');
    if (!text.startsWith(opening) || !text.endsWith(QLatin1Char(')')))
        return std::nullopt;
    return text.mid(opening.size()).chopped(1);
}

/// As many numbers as are asked for.
std::optional<QList<int>> NumbersIn(const QString& text, int count)
{
    QList<int> numbers;
    for (const QString& number : text.split(' '))
        numbers << number.toInt();
    return numbers.size() == count ? std::optional(numbers) : std::nullopt;
}

std::optional<QVariant> ShapeOf(const QString& text)
{
    if (const auto inside = Inside(text, "Rect")) {
        const auto n = NumbersIn(*inside, 4);
        return n ? std::optional<QVariant>(QRect(n->at(0), n->at(1), n->at(2), n->at(3)))
                 : std::nullopt;
    }
    if (const auto inside = Inside(text, "Size")) {
        const auto n = NumbersIn(*inside, 2);
        return n ? std::optional<QVariant>(QSize(n->at(0), n->at(1))) : std::nullopt;
    }
    if (const auto inside = Inside(text, "Point")) {
        const auto n = NumbersIn(*inside, 2);
        return n ? std::optional<QVariant>(QPoint(n->at(0), n->at(1))) : std::nullopt;
    }
    return std::nullopt;
}

std::optional<QVariant> ValueOf(const QString& text, QStringList* refused)
{
    if (!text.startsWith(QLatin1Char('@')))
        return text;
    if (text.startsWith(QLatin1String("@@")))
        return text.mid(1);
    if (text == QLatin1String("@Invalid()"))
        return QVariant();
    if (const auto inside = Inside(text, "String"))
        return *inside;
    if (const auto inside = Inside(text, "ByteArray"))
        return inside->toLatin1();
    if (const auto inside = Inside(text, "Variant"))
        return DecodeStoredVariant(inside->toLatin1(), refused);
    if (const auto inside = Inside(text, "DateTime"))
        return DecodeStoredDateTime(inside->toLatin1());
    return ShapeOf(text);
}

} // namespace

QStringList StoredTexts(const QVariant& value)
{
    const bool isList =
        value.userType() == QMetaType::QStringList || value.userType() == QMetaType::QVariantList;
    const QVariantList list = isList ? value.toList() : QVariantList();
    // A list of one text can't be told from the text; that of another value can.
    if (!isList || (value.userType() == QMetaType::QVariantList && list.size() == 1))
        return {TextOf(value)};
    if (list.isEmpty())
        return {TextOf(QVariant())};
    QStringList texts;
    for (const QVariant& one : list)
        texts << TextOf(one);
    return texts;
}

std::optional<QVariant> ValueOfStoredTexts(const QStringList& texts, QStringList* refused)
{
    if (texts.size() == 1)
        return ValueOf(texts.first(), refused);
    QVariantList values;
    for (const QString& text : texts) {
        const std::optional<QVariant> value = ValueOf(text, refused);
        if (!value)
            return std::nullopt;
        values << *value;
    }
    // QSettings takes a list for one of texts when none of them stands for something else.
    const bool isOfTexts = std::all_of(texts.begin(), texts.end(), [](const QString& text) {
        return !text.startsWith(QLatin1Char('@')) || text.startsWith(QLatin1String("@@"));
    });
    return isOfTexts ? QVariant(QVariant(values).toStringList()) : QVariant(values);
}
