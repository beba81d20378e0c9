#include "VantoraHost/core/PageRangeFault.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/page_ranges/PlainNumber.h"

#include <QtCore/QStringList>
#include <QtCore/QVector>

#include <algorithm>

namespace vantora {

namespace {

using Fault = std::optional<QString>;

constexpr char highest[] = "2147483647";

constexpr int longestItem = 30;

QString quoted(const QString& text)
{
    return '"' + shortened(text, longestItem) + '"';
}

bool isDigit(QChar c)
{
    return c >= '0' && c <= '9';
}

bool isDash(QChar c)
{
    return c.category() == QChar::Punctuation_Dash || c == QChar(0x2212);
}

QString joined(const QStringList& ends)
{
    return ends.join('-');
}

// What the action would make of an item that passes for valid.
QString meaning(const QString& item)
{
    QList<int> few;
    constexpr int pages = 1000000;
    CActionUtils::GetPageList(item, pages, false, false, &few);
    few.removeAll(0);
    if (few.isEmpty()) {
        return "no page at all";
    }
    return few.size() == 1
               ? "page " + QString::number(few.first())
               : "pages " + QString::number(few.first()) + " to " +
                     (few.last() == pages ? QString("the end") : QString::number(few.last()));
}

Fault faultOfWord(const QString& item)
{
    const QString inQuotes = quoted(item);
    const auto dash =
        std::find_if(item.begin(), item.end(), [](QChar c) { return c != '-' && isDash(c); });
    if (dash != item.end()) {
        QStringList ends = QString(item).replace(*dash, '-').split('-');
        for (QString& end : ends) {
            end = end.trimmed();
        }
        return "has the dash " + quoted(*dash) + " in " + inQuotes +
               ", which is not the one of a keyboard; write " +
               shortened(joined(ends), longestItem);
    }
    if (item.contains('\n') || item.contains('\r') || item.contains('\t')) {
        return QString("has a tab or the end of a line within; write a comma between the pages");
    }
    const auto letter =
        std::find_if(item.begin(), item.end(), [](QChar c) { return c.isLetter(); });
    if (letter != item.end()) {
        return "has " + inQuotes +
               ", and pages go by their numbers alone; write the number, also for the last page "
               "(vantora info tells it)";
    }
    if (item.contains(';')) {
        return "has a semicolon in " + inQuotes + "; write " +
               shortened(QString(item).replace(';', ','), longestItem);
    }
    return Fault();
}

// A number of a text whose spaces and dashes are right.
Fault faultOfNumber(const QString& number, const QString& item)
{
    if (!std::all_of(number.begin(), number.end(), [](QChar c) { return c.isNumber(); })) {
        return "has " + quoted(number) + ", which is no page number";
    }
    if (!std::all_of(number.begin(), number.end(), isDigit)) {
        return "has " + quoted(number) +
               ", which is not written in the digits 0 to 9: " + quoted(item) +
               " would have meant " + meaning(item);
    }
    if (number.startsWith('0')) {
        const QString rest = QString::number(number.toLongLong());
        return rest == "0" ? QString("names page 0, and pages count from 1")
                           : "has zeros before " + rest + "; write " + rest;
    }
    bool isInt = false;
    number.toInt(&isInt);
    if (!isInt) {
        return "has a number in " + quoted(item) + " that is higher than " + highest +
               ", the highest of a page: it would have meant " + meaning(item);
    }
    return std::nullopt;
}

Fault faultOfEnds(QStringList ends, const QString& item)
{
    for (QString& end : ends) {
        end = end.trimmed();
        if (end.contains(' ')) {
            return "has a space inside a number in " + quoted(item) + ": it would have meant " +
                   meaning(item) + "; write a comma between pages";
        }
        if (const Fault fault = faultOfNumber(end, item)) {
            return fault;
        }
    }
    if (ends.size() == 1 || ends[0].toInt() < ends[1].toInt()) {
        return std::nullopt;
    }
    return ends[0].toInt() == ends[1].toInt()
               ? "names one page as a range in " + quoted(item) + "; write " + ends[0]
               : "goes down at " + quoted(item) + "; write " + ends[1] + "-" + ends[0];
}

// A page as most texts name it; 0 for any other text, right or wrong.
int plainPage(const QStringRef& text)
{
    constexpr int mostDigits = 9;
    const bool isPlain = !text.isEmpty() && text.size() <= mostDigits && text.front() != '0' &&
                         std::all_of(text.begin(), text.end(), isDigit);
    return isPlain ? NumberOf(text) : 0;
}

// Pages as most texts name them, of which there may be many: nothing is wrong there.
bool isPlain(const QStringRef& item)
{
    const int dash = item.indexOf('-');
    if (dash < 0) {
        return plainPage(item) > 0;
    }
    const int first = plainPage(item.left(dash));
    return first > 0 && first < plainPage(item.mid(dash + 1));
}

Fault faultOf(const QString& untidy)
{
    const QString item = untidy.trimmed();
    if (const Fault fault = faultOfWord(item)) {
        return fault;
    }
    const QStringList ends = item.split('-');
    if (ends.size() > 2) {
        return "has more than one dash in " + quoted(item) + "; write a comma between ranges";
    }
    if (ends.size() == 2 && ends[1].trimmed().isEmpty()) {
        return ends[0].trimmed().isEmpty()
                   ? QString("has a dash without pages")
                   : "has no page after the dash of " + quoted(item) +
                         "; write the last one, too (vantora info tells how many there are)";
    }
    if (ends.size() == 2 && ends[0].trimmed().isEmpty()) {
        return "has no page before the dash of " + quoted(item) + "; write 1" + item;
    }
    return faultOfEnds(ends, item);
}

} // namespace

QString shortened(const QString& text, int longest)
{
    return text.size() <= longest ? text : text.left(longest) + "...";
}

QString withoutLooseEnd(QString range)
{
    while (!range.isEmpty() && (range.back() == ',' || range.back().isSpace())) {
        range.chop(1);
    }
    return range;
}

Fault pageRangeFault(const QString& range)
{
    if (range.trimmed().isEmpty()) {
        return QString("names no page");
    }
    const QVector<QStringRef> items = range.splitRef(',');
    for (int i = 0; i < items.size(); ++i) {
        if (isPlain(items[i])) {
            continue;
        }
        if (items[i].trimmed().isEmpty()) {
            return i == 0                  ? QString("begins with a comma")
                   : i + 1 == items.size() ? QString("ends with a comma")
                                           : QString("has two commas with no page between them");
        }
        if (const Fault fault = faultOf(items[i].toString())) {
            return fault;
        }
    }
    // White space other than the space itself is left, which only the check of the syntax minds.
    return CActionUtils::ValidatePageRange(range, false)
               ? Fault()
               : QString("has white space in it that is not a space; leave it out");
}

} // namespace vantora
