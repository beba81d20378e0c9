#pragma once

#include "VantoraHost/core/Error.h"
#include "VantoraHost/core/OutlineEntries.h"
#include "VantoraHost/core/choices/Choice.h"

#include <QtCore/QString>

#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace vantora {

/// What choices ask about the pages of one document. Pages count from 1. Each answer is asked for
/// only where a choice needs it.
class PageFacts {
public:
    virtual ~PageFacts() = default;

    virtual int count() = 0;
    virtual Result<QString> label(int page) = 0;

    /// As the page is shown, turned with its rotation.
    virtual Result<ShownSize> size(int page) = 0;

    virtual Result<QString> text(int page) = 0;

    /// The entries of the outline in the order in which they are read.
    virtual Result<std::vector<OutlineEntry>> outline() = 0;

    /// Whether a page, whose text was asked for, shows text that can't be read for its fonts.
    virtual bool hasUnreadableText(int page) = 0;

    /// Whether a person would see anything on a page; strictly, the noise of scanners counts, too.
    virtual Result<bool> isBlank(int page, bool strictly) = 0;

    /// How much of a blank page differs from its paper, in percent: the noise that it has.
    virtual Result<double> noise(int page) = 0;

    virtual Result<bool> hasColour(int page) = 0;

    /// The first page before this one that looks the same; 0 for none.
    virtual Result<int> duplicateOf(int page) = 0;
};

/// Pages that follow each other, from 1, as far as the document has them.
struct PageSpan {
    int first = 1;
    int last = std::numeric_limits<int>::max();

    bool contains(int page) const { return page >= first && page <= last; }
};

/// Which pages a user wants to go.
struct ChoiceSet {
    std::vector<Choice> choose; ///< pages of any of these go
    std::vector<Choice> keep;   ///< or, instead, all pages but those of any of these
    std::vector<Choice> except; ///< these stay in any case
};

/// A page that goes, with the choice that it goes by; empty for one that nothing keeps.
struct ChosenPage {
    int page = 0;
    std::string reason;

    /// By a choice of blank pages: how much of it differs from its paper, in percent. By one of
    /// duplicates: the page that it looks like.
    std::optional<double> figure = std::nullopt;
};

/// The pages of a document, or of a span of it, that go, ascending. Choices that cost little are
/// asked first, and the others only about the pages that are not decided by then.
Result<std::vector<ChosenPage>> choosePages(const ChoiceSet& set, PageFacts& facts,
                                            PageSpan span = {});

/// Whether spans of a long document are better looked at apart: choosing takes looking at pages,
/// and at each by itself.
bool isWorthSharing(const ChoiceSet& set);

/// The shortest range text that names pages, which must be ascending: "1,4-6"; empty for none.
std::string rangeTextOf(const std::vector<ChosenPage>& pages);

} // namespace vantora
