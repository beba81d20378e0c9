#include "VantoraApp/settings/IniText.h"

#include "VantoraApp/settings/IniWriting.h"

#include <QtCore/QTextCodec>

#include <algorithm>

namespace {

bool IsLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool IsLineEndPair(const QByteArray& text, int position)
{
    return position + 1 < text.size() && IsLineEnd(text.at(position)) &&
           IsLineEnd(text.at(position + 1)) && text.at(position) != text.at(position + 1);
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t';
}

/// The value of a digit; at least `base` for a character that is none.
int DigitOf(char c, int base)
{
    int digit = base;
    if (c >= '0' && c <= '9')
        digit = c - '0';
    else if (c >= 'a' && c <= 'f')
        digit = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F')
        digit = c - 'A' + 10;
    return digit;
}

/// Reads a value character by character.
class ValueReader {
public:
    ValueReader(const QByteArray& text, bool isUtf8)
        : mText(text), mCodec(QTextCodec::codecForName(isUtf8 ? "UTF-8" : "ISO-8859-1"))
    {
    }

    QStringList Read()
    {
        SkipBlanks();
        while (mPosition < mText.size()) {
            const char c = mText.at(mPosition++);
            if (c == '\\')
                ReadEscape();
            else if (c == '"')
                ReadQuote();
            else if (c == ',' && !mInQuotes)
                EndPart();
            else if (c == ',')
                mPart += ',';
            else
                ReadPlain();
        }
        EndPart();
        return mParts;
    }

private:
    void SkipBlanks()
    {
        while (mPosition < mText.size() && IsBlank(mText.at(mPosition)))
            ++mPosition;
    }

    void ReadPlain()
    {
        const int start = mPosition - 1;
        while (mPosition < mText.size() && !IsSpecial(mText.at(mPosition)))
            ++mPosition;
        mPart += mCodec->toUnicode(mText.constData() + start, mPosition - start);
    }

    static bool IsSpecial(char c) { return c == '\\' || c == '"' || c == ','; }

    void ReadQuote()
    {
        mPartIsQuoted = true;
        mInQuotes = !mInQuotes;
        if (!mInQuotes)
            SkipBlanks();
    }

    void EndPart()
    {
        if (!mPartIsQuoted) {
            while (mPart.size() > mChopLimit && (mPart.back() == ' ' || mPart.back() == '\t'))
                mPart.chop(1);
        }
        mParts << mPart;
        mPart.clear();
        mPartIsQuoted = false;
        mChopLimit = 0;
        SkipBlanks();
    }

    void ReadEscape()
    {
        static const QByteArray names = "abfnrtv\"?'\\";
        static const QByteArray meanings = "\a\b\f\n\r\t\v\"?'\\";
        mChopLimit = mPart.size();
        if (mPosition == mText.size())
            return;
        const char c = mText.at(mPosition++);
        if (const int known = names.indexOf(c); known >= 0) {
            mPart += QLatin1Char(meanings.at(known));
        } else if (c == 'x') {
            if (mPosition < mText.size() && DigitOf(mText.at(mPosition), 16) < 16)
                ReadNumber(16);
        } else if (DigitOf(c, 8) < 8) {
            --mPosition;
            ReadNumber(8);
        } else if (IsLineEndPair(mText, mPosition - 1)) {
            ++mPosition;
        }
        mChopLimit = mPart.size();
    }

    void ReadNumber(int base)
    {
        ushort code = 0;
        while (mPosition < mText.size() && DigitOf(mText.at(mPosition), base) < base)
            code = static_cast<ushort>(code * base + DigitOf(mText.at(mPosition++), base));
        mPart += QChar(code);
    }

    const QByteArray& mText;
    const QTextCodec* mCodec;
    int mPosition = 0;
    QStringList mParts;
    QString mPart;
    int mChopLimit = 0; ///< what was escaped is not chopped off as a blank
    bool mInQuotes = false;
    bool mPartIsQuoted = false;
};

/// A key without the blanks around it. A line end can only stand at its end when it is escaped,
/// and is a part of the key then.
QByteArray KeyPart(const QByteArray& part)
{
    int start = 0;
    int end = part.size();
    while (start < end && (IsBlank(part.at(start)) || IsLineEnd(part.at(start))))
        ++start;
    while (end > start && IsBlank(part.at(end - 1)))
        --end;
    return part.mid(start, end - start);
}

/// The key as it was before QSettings wrote it with %41 for unusual characters.
QString ReadKey(const QByteArray& key)
{
    QString result;
    for (int i = 0; i < key.size(); ++i) {
        const char c = key.at(i);
        const bool wide = c == '%' && i + 1 < key.size() && key.at(i + 1) == 'U';
        const int digits = wide ? 4 : 2;
        bool isNumber = false;
        const int code = key.mid(i + (wide ? 2 : 1), digits).toInt(&isNumber, 16);
        if (c == '\\') {
            result += QLatin1Char('/');
        } else if (c == '%' && isNumber && i + (wide ? 1 : 0) + digits < key.size()) {
            result += QChar(code);
            i += (wide ? 1 : 0) + digits;
        } else {
            result += QLatin1Char(c);
        }
    }
    return result;
}

const QByteArray byteOrderMark = "\xef\xbb\xbf";

struct LineScan {
    int equals = -1;     ///< the first "=" outside quotes, or -1
    int contentEnd = -1; ///< where the line or a comment at its end begins
    int end = 0;         ///< past the line's end characters
};

/// Finds the end of a line: line ends in quotes and after a backslash don't count, quotes and
/// backslashes in a comment neither.
LineScan ScanLine(const QByteArray& text, int position)
{
    LineScan line;
    bool inQuotes = false;
    for (; position < text.size(); ++position) {
        const char c = text.at(position);
        const bool isComment = line.contentEnd >= 0;
        if (IsLineEnd(c) && (isComment || !inQuotes))
            break;
        if (isComment)
            continue;
        if (c == ';' && !inQuotes)
            line.contentEnd = position;
        else if (c == '\\')
            position += IsLineEndPair(text, position + 1) ? 2 : 1;
        else if (c == '"')
            inQuotes = !inQuotes;
        else if (c == '=' && !inQuotes && line.equals < 0)
            line.equals = position;
    }
    position = qMin(position, text.size());
    if (line.contentEnd < 0)
        line.contentEnd = position;
    line.end = qMin(position + (IsLineEndPair(text, position) ? 2 : 1), text.size());
    return line;
}

} // namespace

QStringList ReadIniValue(const QByteArray& value, bool isUtf8)
{
    return ValueReader(value, isUtf8).Read();
}

IniText::IniText(QByteArray bytes)
    : mBytes(std::move(bytes)), mStart(mBytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0)
{
    int position = mStart;
    while (position < mBytes.size()) {
        const LineScan line = ScanLine(mBytes, position);
        readLine(position, line.equals, line.contentEnd, line.end);
        position = line.end;
    }
}

void IniText::readLine(int start, int equals, int contentEnd, int end)
{
    const QByteArray content = mBytes.mid(start, contentEnd - start).trimmed();
    if (content.startsWith('[')) {
        readSection(content);
    } else if (equals >= 0) {
        const QString key = mGroup + ReadKey(KeyPart(mBytes.mid(start, equals - start)));
        mValues[key] = ReadIniValue(mBytes.mid(equals + 1, contentEnd - equals - 1), mStart > 0);
        mLines.append({start, end, key});
    }
    if (!content.isEmpty())
        mGroupEnds[mGroup] = end;
}

void IniText::readSection(const QByteArray& header)
{
    const int close = header.indexOf(']');
    const QByteArray name = header.mid(1, close < 0 ? -1 : close - 1).trimmed();
    if (name.compare("general", Qt::CaseInsensitive) == 0)
        mGroup.clear();
    else if (name.compare("%general", Qt::CaseInsensitive) == 0)
        mGroup = QString::fromLatin1(name.mid(1)) + '/';
    else
        mGroup = ReadKey(name) + '/';
}

QByteArray IniText::with(const QMap<QString, QByteArray>& values) const
{
    struct Edit {
        int start;
        int end;
        QByteArray text;
    };
    QMap<QString, QByteArray> lines; // the new ones, by groups as in `mGroup`
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const int slash = value.key().indexOf('/') + 1;
        lines[value.key().left(slash)] +=
            IniKey(value.key().mid(slash)) + '=' + value.value() + '\n';
    }

    QByteArray result = mBytes.left(mStart);
    const bool isNew = mBytes.size() == mStart;
    // What is outside any group stands before the first group.
    if (lines.contains(QString()) && !mGroupEnds.contains(QString()))
        result += IniHeader({}) + '\n' + lines.take(QString()) + (isNew ? "" : "\n");

    QList<Edit> edits;
    for (const Line& line : mLines) {
        if (values.contains(line.key))
            edits.append({line.start, line.end, {}});
    }
    for (auto end = mGroupEnds.cbegin(); end != mGroupEnds.cend(); ++end) {
        if (lines.contains(end.key()))
            edits.append({end.value(), end.value(), lines.take(end.key())});
    }
    std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
        return std::make_pair(a.start, a.end) < std::make_pair(b.start, b.end);
    });

    int copied = mStart;
    const auto endLine = [&result, this] {
        if (result.size() > mStart && !IsLineEnd(result.back()))
            result += '\n';
    };
    for (const Edit& edit : edits) {
        result += mBytes.mid(copied, edit.start - copied);
        copied = edit.end;
        if (!edit.text.isEmpty())
            endLine();
        result += edit.text;
    }
    result += mBytes.mid(copied);
    for (auto group = lines.cbegin(); group != lines.cend(); ++group) {
        endLine();
        if (result.size() > mStart)
            result += '\n';
        result += IniHeader(group.key().chopped(1)) + '\n' + group.value();
    }
    return result;
}

QByteArray IniText::without(const QStringList& keys) const
{
    QByteArray result;
    int copied = 0;
    for (const Line& line : mLines) {
        if (!keys.contains(line.key))
            continue;
        result += mBytes.mid(copied, line.start - copied);
        copied = line.end;
    }
    return result + mBytes.mid(copied);
}
