#include "VantoraApp/settings/IniWriting.h"

#include <QtCore/QByteArrayList>

#include <cstring>

namespace {

bool IsOneOf(QChar c, const char* characters)
{
    return c.unicode() != 0 && c.unicode() < 0x80 &&
           std::strchr(characters, c.toLatin1()) != nullptr;
}

bool IsPlainInKeys(QChar c)
{
    return c.unicode() < 0x80 && (c.isLetterOrNumber() || IsOneOf(c, "_-."));
}

bool IsHexDigit(QChar c)
{
    return c.unicode() < 0x80 && (c.isDigit() || IsOneOf(c.toLower(), "abcdef"));
}

/// The character as it stands in a value.
QByteArray Escaped(QChar c)
{
    static const QByteArray controls = "\a\b\f\n\r\t\v";
    static const QByteArray names = "abfnrtv";
    if (c == '"' || c == '\\')
        return QByteArray("\\") + c.toLatin1();
    if (c.unicode() == 0)
        return "\\0";
    if (const int control = c.unicode() < 0x20 ? controls.indexOf(c.toLatin1()) : -1; control >= 0)
        return QByteArray("\\") + names.at(control);
    if (c.unicode() < 0x20 || c.unicode() > 0x7e)
        return "\\x" + QByteArray::number(c.unicode(), 16);
    return QByteArray(1, c.toLatin1());
}

QByteArray IniPart(const QString& text)
{
    QByteArray part;
    bool afterNumber = false; // a digit would be taken for one more of the number
    bool needsQuotes = text.startsWith(' ') || text.endsWith(' ');
    for (const QChar c : text) {
        needsQuotes = needsQuotes || IsOneOf(c, ";,=");
        if (afterNumber && IsHexDigit(c)) {
            part += "\\x" + QByteArray::number(c.unicode(), 16);
            continue;
        }
        if (c.unicode() < 0x80 && c.isLetterOrNumber()) {
            part += c.toLatin1();
            afterNumber = false;
            continue;
        }
        const QByteArray escaped = Escaped(c);
        afterNumber = escaped.startsWith("\\x") || escaped == "\\0";
        part += escaped;
    }
    return needsQuotes ? '"' + part + '"' : part;
}

} // namespace

QByteArray IniHeader(const QString& group)
{
    if (group.isEmpty())
        return "[General]";
    // A group of that name, not the values outside any group.
    if (group.compare(QLatin1String("general"), Qt::CaseInsensitive) == 0)
        return "[%" + group.toLatin1() + ']';
    return '[' + IniKey(group) + ']';
}

QByteArray IniKey(const QString& key)
{
    QByteArray result;
    for (const QChar c : key) {
        const QByteArray code = QByteArray::number(c.unicode(), 16).toUpper();
        if (c == '/')
            result += '\\';
        else if (IsPlainInKeys(c))
            result += c.toLatin1();
        else if (c.unicode() < 0x100)
            result += '%' + code.rightJustified(2, '0');
        else
            result += "%U" + code.rightJustified(4, '0');
    }
    return result;
}

QByteArray IniValue(const QStringList& texts)
{
    QByteArrayList parts;
    for (const QString& text : texts)
        parts << IniPart(text);
    return parts.join(", ");
}
