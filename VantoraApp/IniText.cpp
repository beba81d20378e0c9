#include "VantoraApp/IniText.h"

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
    explicit ValueReader(const QByteArray& text) : mText(text) {}

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
            else
                mPart += QLatin1Char(c);
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
            while (mPart.size() > mChopLimit && IsBlank(mPart.back().toLatin1()))
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
    int mPosition = 0;
    QStringList mParts;
    QString mPart;
    int mChopLimit = 0; ///< what was escaped is not chopped off as a blank
    bool mInQuotes = false;
    bool mPartIsQuoted = false;
};

/// A key without the blanks around it. A line end can only stand at its end when it is escaped,
/// and is a part of the key then.
QByteArray KeyPart(QByteArray part)
{
    while (!part.isEmpty() && (IsBlank(part.front()) || IsLineEnd(part.front())))
        part.remove(0, 1);
    while (!part.isEmpty() && IsBlank(part.back()))
        part.chop(1);
    return part;
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

QStringList ReadIniValue(const QByteArray& value)
{
    return ValueReader(value).Read();
}

IniText::IniText(QByteArray bytes) : mBytes(std::move(bytes))
{
    int position = mBytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
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
        const QString key = ReadKey(KeyPart(mBytes.mid(start, equals - start)));
        mValues[mGroup + key] = ReadIniValue(mBytes.mid(equals + 1, contentEnd - equals - 1));
        if (mGroup.isEmpty())
            mGeneralLines.append({start, end, key});
    }
    if (mGroup.isEmpty() && !content.isEmpty())
        mGeneralEnd = end;
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

QByteArray IniText::withLines(const QStringList& keys, const QByteArray& lines) const
{
    const int generalStart = mBytes.startsWith(byteOrderMark) ? byteOrderMark.size() : 0;
    QByteArray result = mBytes.left(generalStart);
    if (mGeneralEnd < 0)
        return result + "[General]\n" + lines + (mBytes.size() > generalStart ? "\n" : "") +
               mBytes.mid(generalStart);

    int copied = generalStart;
    for (const Line& line : mGeneralLines) {
        if (keys.contains(line.key)) {
            result += mBytes.mid(copied, line.start - copied);
            copied = line.end;
        }
    }
    result += mBytes.mid(copied, mGeneralEnd - copied);
    if (!result.isEmpty() && !IsLineEnd(result.back()))
        result += '\n';
    return result + lines + mBytes.mid(mGeneralEnd);
}
