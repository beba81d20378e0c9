#pragma once

#include <QtCore/QString>

#include <optional>
#include <vector>

namespace vantora::desktop {

/// Consecutive pages, from 1: `first` to `last`, both included.
struct PageRun {
    int first = 1;
    int last = 1;

    bool operator==(const PageRun& other) const
    {
        return first == other.first && last == other.last;
    }
};

/// A set of pages, kept as its runs, so that what it costs goes by their number and not by that of
/// the pages: ten thousand pages in one run are as cheap as one page. A value.
class PageSet {
public:
    PageSet() = default;
    explicit PageSet(PageRun run) : runs_{run} {}

    /// The pages of a range text. The error is what is wrong with the text, as a sentence that
    /// follows it (pageRangeFault). An empty text names no page, which is no fault here.
    static std::optional<PageSet> ofText(const QString& text, QString* fault = nullptr);

    /// Every second page from `first` to `last`.
    static PageSet everySecond(int first, int last);

    /// The shortest range text that names these pages; empty for none.
    QString text() const;

    bool isEmpty() const { return runs_.empty(); }
    bool contains(int page) const;

    /// How many of the pages 1 to `pages` are in it.
    int countIn(int pages) const;

    /// The highest page; 0 for none.
    int last() const { return runs_.empty() ? 0 : runs_.back().last; }

    PageSet united(const PageSet& other) const;
    PageSet without(const PageSet& other) const;

    /// Those of the pages 1 to `pages` that are in it.
    PageSet upTo(int pages) const;

    /// The pages 1 to `pages` that are not in it, and those above that are.
    PageSet inverted(int pages) const;

    /// Ascending; between two runs there is at least one page.
    const std::vector<PageRun>& runs() const { return runs_; }

    bool operator==(const PageSet& other) const { return runs_ == other.runs_; }
    bool operator!=(const PageSet& other) const { return !(*this == other); }

private:
    std::vector<PageRun> runs_;
};

} // namespace vantora::desktop
