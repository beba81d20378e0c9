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
        : text_(text), codec_(QTextCodec::codecForName(isUtf8 ? "UTF-8" : "ISO-8859-1"))
    {
    }

    QStringList Read()
    {
        SkipBlanks();
        while (position_ < text_.size()) {
            const char c = text_.at(position_++);
            if (c == '\\')
                ReadEscape();
            else if (c == '"')
                ReadQuote();
            else if (c == ',' && !inQuotes_)
                EndPart();
            else if (c == ',')
                part_ += ',';
            else
                ReadPlain();
        }
        EndPart();
        return parts_;
    }

private:
    void SkipBlanks()
    {
        while (position_ < text_.size() && IsBlank(text_.at(position_)))
            ++position_;
    }

    void ReadPlain()
    {
        const int start = position_ - 1;
        while (position_ < text_.size() && !IsSpecial(text_.at(position_)))
            ++position_;
        part_ += codec_->toUnicode(text_.constData() + start, position_ - start);
    }

    static bool IsSpecial(char c) { return c == '\\' || c == '"' || c == ','; }

    void ReadQuote()
    {
        partIsQuoted_ = true;
        inQuotes_ = !inQuotes_;
        if (!inQuotes_)
            SkipBlanks();
    }

    void EndPart()
    {
        if (!partIsQuoted_) {
            while (part_.size() > chopLimit_ && (part_.back() == ' ' || part_.back() == '\t'))
                part_.chop(1);
        }
        parts_ << part_;
        part_.clear();
        partIsQuoted_ = false;
        chopLimit_ = 0;
        SkipBlanks();
    }

    void ReadEscape()
    {
        static const QByteArray names = "abfnrtv\"?'\\";
        static const QByteArray meanings = "\a\b\f\n\r\t\v\"?'\\";
        chopLimit_ = part_.size();
        if (position_ == text_.size())
            return;
        const char c = text_.at(position_++);
        if (const int known = names.indexOf(c); known >= 0) {
            part_ += QLatin1Char(meanings.at(known));
        } else if (c == 'x') {
            if (position_ < text_.size() && DigitOf(text_.at(position_), 16) < 16)
                ReadNumber(16);
        } else if (DigitOf(c, 8) < 8) {
            --position_;
            ReadNumber(8);
        } else if (IsLineEndPair(text_, position_ - 1)) {
            ++position_;
        }
        chopLimit_ = part_.size();
    }

    void ReadNumber(int base)
    {
        ushort code = 0;
        while (position_ < text_.size() && DigitOf(text_.at(position_), base) < base)
            code = static_cast<ushort>(code * base + DigitOf(text_.at(position_++), base));
        part_ += QChar(code);
    }

    const QByteArray& text_;
    const QTextCodec* codec_;
    int position_ = 0;
    QStringList parts_;
    QString part_;
    int chopLimit_ = 0; ///< what was escaped is not chopped off as a blank
    bool inQuotes_ = false;
    bool partIsQuoted_ = false;
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
    : bytes_(std::move(bytes)), start_(bytes_.startsWith(byteOrderMark) ? byteOrderMark.size() : 0)
{
    int position = start_;
    while (position < bytes_.size()) {
        const LineScan line = ScanLine(bytes_, position);
        readLine(position, line.equals, line.contentEnd, line.end);
        position = line.end;
    }
}

void IniText::readLine(int start, int equals, int contentEnd, int end)
{
    const QByteArray content = bytes_.mid(start, contentEnd - start).trimmed();
    if (content.startsWith('[')) {
        readSection(content);
    } else if (equals >= 0) {
        const QString key = group_ + ReadKey(KeyPart(bytes_.mid(start, equals - start)));
        values_[key] = ReadIniValue(bytes_.mid(equals + 1, contentEnd - equals - 1), start_ > 0);
        lines_.append({start, end, key});
    }
    if (!content.isEmpty())
        groupEnds_[group_] = end;
}

void IniText::readSection(const QByteArray& header)
{
    const int close = header.indexOf(']');
    const QByteArray name = header.mid(1, close < 0 ? -1 : close - 1).trimmed();
    if (name.compare("general", Qt::CaseInsensitive) == 0)
        group_.clear();
    else if (name.compare("%general", Qt::CaseInsensitive) == 0)
        group_ = QString::fromLatin1(name.mid(1)) + '/';
    else
        group_ = ReadKey(name) + '/';
}

QByteArray IniText::with(const QMap<QString, QByteArray>& values) const
{
    struct Edit {
        int start;
        int end;
        QByteArray text;
    };
    QMap<QString, QByteArray> lines; // the new ones, by groups as in `group_`
    for (auto value = values.cbegin(); value != values.cend(); ++value) {
        const int slash = value.key().indexOf('/') + 1;
        lines[value.key().left(slash)] +=
            IniKey(value.key().mid(slash)) + '=' + value.value() + '\n';
    }

    QByteArray result = bytes_.left(start_);
    const bool isNew = bytes_.size() == start_;
    // What is outside any group stands before the first group.
    if (lines.contains(QString()) && !groupEnds_.contains(QString()))
        result += IniHeader({}) + '\n' + lines.take(QString()) + (isNew ? "" : "\n");

    QList<Edit> edits;
    for (const Line& line : lines_) {
        if (values.contains(line.key))
            edits.append({line.start, line.end, {}});
    }
    for (auto end = groupEnds_.cbegin(); end != groupEnds_.cend(); ++end) {
        if (lines.contains(end.key()))
            edits.append({end.value(), end.value(), lines.take(end.key())});
    }
    std::sort(edits.begin(), edits.end(), [](const Edit& a, const Edit& b) {
        return std::make_pair(a.start, a.end) < std::make_pair(b.start, b.end);
    });

    int copied = start_;
    const auto endLine = [&result, this] {
        if (result.size() > start_ && !IsLineEnd(result.back()))
            result += '\n';
    };
    for (const Edit& edit : edits) {
        result += bytes_.mid(copied, edit.start - copied);
        copied = edit.end;
        if (!edit.text.isEmpty())
            endLine();
        result += edit.text;
    }
    result += bytes_.mid(copied);
    for (auto group = lines.cbegin(); group != lines.cend(); ++group) {
        endLine();
        if (result.size() > start_)
            result += '\n';
        result += IniHeader(group.key().chopped(1)) + '\n' + group.value();
    }
    return result;
}

QByteArray IniText::without(const QStringList& keys) const
{
    QByteArray result;
    int copied = 0;
    for (const Line& line : lines_) {
        if (!keys.contains(line.key))
            continue;
        result += bytes_.mid(copied, line.start - copied);
        copied = line.end;
    }
    return result + bytes_.mid(copied);
}
