#include "VantoraHost/desktop/pages/PageSet.h"

#include "VantoraHost/core/PageRangeFault.h"
#include "VantoraHost/desktop/sentences/Sentences.h"

#include <QtCore/QStringList>

#include <algorithm>

namespace vantora::desktop {

namespace {

// Runs in any order and over each other, as the fewest that name the same pages.
std::vector<PageRun> joined(std::vector<PageRun> runs)
{
    std::sort(runs.begin(), runs.end(),
              [](const PageRun& a, const PageRun& b) { return a.first < b.first; });
    std::vector<PageRun> fewest;
    for (const PageRun& run : runs) {
        if (!fewest.empty() && run.first - 1 <= fewest.back().last) {
            fewest.back().last = std::max(fewest.back().last, run.last);
        } else {
            fewest.push_back(run);
        }
    }
    return fewest;
}

} // namespace

std::optional<PageSet> PageSet::ofText(const QString& text, QString* fault)
{
    const QString range = withoutLooseEnd(text);
    if (range.trimmed().isEmpty()) {
        return PageSet();
    }
    if (const auto wrong = pageRangeFault(range)) {
        if (fault) {
            *fault = shownSentence(wrong->toStdString());
        }
        return std::nullopt;
    }
    // A range without a fault is numbers, dashes, commas and spaces, and nothing goes down.
    std::vector<PageRun> runs;
    for (const QStringRef& item : range.splitRef(',')) {
        const int dash = item.indexOf('-');
        const int first = item.left(dash < 0 ? item.size() : dash).trimmed().toInt();
        runs.push_back({first, dash < 0 ? first : item.mid(dash + 1).trimmed().toInt()});
    }
    PageSet pages;
    pages.runs_ = joined(std::move(runs));
    return pages;
}

PageSet PageSet::everySecond(int first, int last)
{
    PageSet pages;
    for (int page = first; page <= last; page += 2) {
        pages.runs_.push_back({page, page});
    }
    return pages;
}

QString PageSet::text() const
{
    QString text;
    for (const PageRun& run : runs_) {
        if (!text.isEmpty()) {
            text += ',';
        }
        text += QString::number(run.first);
        if (run.last > run.first) {
            text += '-' + QString::number(run.last);
        }
    }
    return text;
}

bool PageSet::contains(int page) const
{
    const auto after =
        std::upper_bound(runs_.begin(), runs_.end(), page,
                         [](int number, const PageRun& run) { return number < run.first; });
    return after != runs_.begin() && page <= std::prev(after)->last;
}

int PageSet::countIn(int pages) const
{
    int count = 0;
    for (const PageRun& run : runs_) {
        if (run.first > pages) {
            break;
        }
        count += std::min(run.last, pages) - run.first + 1;
    }
    return count;
}

PageSet PageSet::united(const PageSet& other) const
{
    std::vector<PageRun> runs = runs_;
    runs.insert(runs.end(), other.runs_.begin(), other.runs_.end());
    PageSet both;
    both.runs_ = joined(std::move(runs));
    return both;
}

PageSet PageSet::without(const PageSet& other) const
{
    PageSet left;
    auto hole = other.runs_.begin();
    for (PageRun run : runs_) {
        while (hole != other.runs_.end() && hole->last < run.first) {
            ++hole;
        }
        for (auto cut = hole; cut != other.runs_.end() && cut->first <= run.last; ++cut) {
            if (cut->first > run.first) {
                left.runs_.push_back({run.first, cut->first - 1});
            }
            if (cut->last >= run.last) {
                run.first = 0; // nothing is left of it
                break;
            }
            run.first = cut->last + 1;
        }
        if (run.first > 0) {
            left.runs_.push_back(run);
        }
    }
    return left;
}

PageSet PageSet::upTo(int pages) const
{
    PageSet within;
    for (const PageRun& run : runs_) {
        if (run.first > pages) {
            break;
        }
        within.runs_.push_back({run.first, std::min(run.last, pages)});
    }
    return within;
}

PageSet PageSet::inverted(int pages) const
{
    if (pages < 1) {
        return *this;
    }
    const PageSet all(PageRun{1, pages});
    return without(all).united(all.without(*this));
}

} // namespace vantora::desktop
