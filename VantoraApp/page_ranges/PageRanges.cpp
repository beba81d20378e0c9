#include "VantoraApp/CActionUtils.h"
#include "VantoraApp/page_ranges/PlainNumber.h"

#include <QtCore/QStringRef>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

bool IsNumber(const QStringRef& text)
{
    return !text.isEmpty() && text.front() != QLatin1Char('0') &&
           std::all_of(text.begin(), text.end(), [](QChar c) { return c.isNumber(); });
}

/// An item is a number or two numbers joined by one dash.
bool ValidateItem(const QStringRef& item, bool allowDescending)
{
    const int dash = item.indexOf(QLatin1Char('-'));
    if (dash < 0)
        return IsNumber(item);
    const QStringRef first = item.left(dash);
    const QStringRef last = item.mid(dash + 1);
    return IsNumber(first) && IsNumber(last) && (allowDescending || NumberOf(first) < NumberOf(last));
}

/// Calls `visit` with each part of the text between separators, empty ones included, until it
/// returns false. Unlike QString::split this keeps no list of the parts.
template <typename Visit>
bool ForEachPart(const QString& text, QChar separator, Visit visit)
{
    for (int start = 0;;) {
        const int found = text.indexOf(separator, start);
        const int end = found < 0 ? text.size() : found;
        if (!visit(text.midRef(start, end - start)))
            return false;
        if (found < 0)
            return true;
        start = found + 1;
    }
}

/// A set of pages as runs. Most texts name them in order, where adding a run is all; others are put
/// into order from time to time, so that its size is bounded by the pages in it and by the runs
/// added, however often these repeat and overlap.
class PageSet {
public:
    void Add(qint64 first, qint64 last)
    {
        if (runs_.empty() || first > runs_.back().last + 1) {
            runs_.push_back({first, last});
        } else if (first >= runs_.back().first) {
            runs_.back().last = std::max(runs_.back().last, last);
        } else {
            runs_.push_back({first, last});
            ordered_ = false;
            if (runs_.size() > mostUnordered_) {
                Order();
                mostUnordered_ = std::max(mostUnordered_, 2 * runs_.size());
            }
        }
    }

    /// Calls `visit` with each page once, ascending.
    template <typename Visit>
    void ForEachPage(Visit visit)
    {
        Order();
        for (const Run& run : runs_)
            for (qint64 page = run.first; page <= run.last; ++page)
                visit(static_cast<int>(page));
    }

private:
    struct Run {
        qint64 first;
        qint64 last;
    };

    /// Leaves disjoint runs, ascending, that don't touch each other.
    void Order()
    {
        if (ordered_)
            return;
        std::sort(runs_.begin(), runs_.end(),
                  [](const Run& one, const Run& other) { return one.first < other.first; });
        std::size_t kept = 0;
        for (const Run& run : runs_) {
            if (kept > 0 && run.first <= runs_[kept - 1].last + 1)
                runs_[kept - 1].last = std::max(runs_[kept - 1].last, run.last);
            else
                runs_[kept++] = run;
        }
        runs_.resize(kept);
        ordered_ = true;
    }

    std::vector<Run> runs_;
    bool ordered_ = true; // and disjoint
    std::size_t mostUnordered_ = 1024;
};

PageSet ReadPages(const QString& text, int pageCount)
{
    PageSet pages;
    ForEachPart(text, QLatin1Char(','), [&pages, pageCount](const QStringRef& item) {
        const int dash = item.indexOf(QLatin1Char('-'));
        qint64 first = NumberOf(dash < 0 ? item : item.left(dash));
        const qint64 last = dash < 0 ? first : NumberOf(item.mid(dash + 1));
        if (first > pageCount || first > last)
            return true;
        // QString reads U+2212 as a minus sign, which is not the dash of a range: only such a text
        // reaches below page 0, and it may not name more pages there than the document could have.
        if (dash >= 0)
            first = std::max(first, -std::abs(static_cast<qint64>(pageCount)));
        pages.Add(first, std::min<qint64>(last, pageCount));
        return true;
    });
    return pages;
}

} // namespace

bool CActionUtils::ValidatePageRange(QString text, bool allowDescending)
{
    text.remove(QLatin1Char(' '));
    if (text.size() > 1 && text.endsWith(QLatin1Char(',')))
        text.chop(1);
    return ForEachPart(text, QLatin1Char(','), [allowDescending](const QStringRef& item) {
        return ValidateItem(item, allowDescending);
    });
}

bool CActionUtils::ValidateSplitPageRange(QString text)
{
    return ForEachPart(text, QLatin1Char(';'), [](const QStringRef& part) {
        return ValidatePageRange(part.toString(), true);
    });
}

bool CActionUtils::GetPageList(const QString& text, int pageCount, bool leaveOutOdd,
                               bool leaveOutEven, QList<int>* pages)
{
    if (text.isEmpty())
        return false;

    std::sort(pages->begin(), pages->end());
    const QList<int> present = *pages;
    auto nextPresent = present.cbegin();
    ReadPages(text, pageCount).ForEachPage([&](int page) {
        const bool odd = page % 2 != 0;
        if (odd ? leaveOutOdd : leaveOutEven)
            return;
        while (nextPresent != present.cend() && *nextPresent < page)
            ++nextPresent;
        if (nextPresent == present.cend() || *nextPresent != page)
            pages->append(page);
    });
    std::inplace_merge(pages->begin(), pages->begin() + present.size(), pages->end());
    return true;
}

void CActionUtils::CollectPageList(QList<int>* pages, QList<int>* runs)
{
    for (int end = pages->size(); end > 0;) {
        int start = end - 1;
        while (start > 0 && static_cast<qint64>(pages->at(start - 1)) + 1 == pages->at(start))
            --start;
        runs->append(pages->at(start));
        runs->append(end - start);
        end = start;
    }
}
