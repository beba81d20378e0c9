#include "VantoraHost/core/choices/ChosenPages.h"

#include "VantoraApp/CActionUtils.h"
#include "VantoraHost/core/PageNumbers.h"
#include "VantoraHost/core/choices/Sections.h"

#include <algorithm>
#include <cmath>
#include <functional>
#include <map>

namespace vantora {

namespace {

/// By page, from 1: which choice a page was found by, from 1; 0 for none.
using Found = std::vector<std::size_t>;

class Chooser {
public:
    explicit Chooser(PageFacts& facts) : facts_(facts), count_(std::max(facts.count(), 0)) {}

    /// Finds those of the pages asked about that any of the choices names.
    Result<Found> find(const std::vector<Choice>& choices, const std::function<bool(int)>& asked)
    {
        std::vector<std::size_t> order(choices.size());
        for (std::size_t i = 0; i < order.size(); ++i) {
            order[i] = i;
        }
        std::stable_sort(order.begin(), order.end(), [&](std::size_t one, std::size_t other) {
            return choices[one].kind < choices[other].kind;
        });
        Found found(static_cast<std::size_t>(count_) + 1, 0);
        for (const std::size_t i : order) {
            const auto isOpen = [&](int page) {
                return found[static_cast<std::size_t>(page)] == 0 && asked(page);
            };
            const auto take = [&](int page) {
                if (page >= 1 && page <= count_ && isOpen(page)) {
                    found[static_cast<std::size_t>(page)] = i + 1;
                }
            };
            if (const Outcome done = apply(choices[i], isOpen, take); !done) {
                return tl::unexpected<Error>(done.error());
            }
        }
        return found;
    }

    /// The figure by which a page was found.
    std::optional<double> figureOf(int page) const
    {
        const auto found = figures_.find(page);
        return found == figures_.end() ? std::nullopt : std::optional<double>(found->second);
    }

private:
    using Test = std::function<Result<bool>(int)>;
    using Take = std::function<void(int)>;

    Outcome apply(const Choice& choice, const std::function<bool(int)>& isOpen, const Take& take)
    {
        switch (choice.kind) {
        case ChoiceKind::Range:
            takeRange(choice, take);
            return {};
        case ChoiceKind::Label:
            return takeLabels(choice, take);
        case ChoiceKind::Bookmark:
            return takeSections(choice, take);
        default:
            break;
        }
        const Test test = testOf(choice);
        for (int page = 1; page <= count_; ++page) {
            if (!isOpen(page)) {
                continue;
            }
            const Result<bool> passed = test(page);
            if (!passed) {
                return tl::unexpected<Error>(passed.error());
            }
            if (*passed) {
                take(page);
            }
        }
        return {};
    }

    Test testOf(const Choice& choice)
    {
        switch (choice.kind) {
        case ChoiceKind::First:
            return [&choice](int page) { return page <= choice.count; };
        case ChoiceKind::Last:
            return [this, &choice](int page) { return page > count_ - choice.count; };
        case ChoiceKind::Odd:
            return [](int page) { return page % 2 == 1; };
        case ChoiceKind::Even:
            return [](int page) { return page % 2 == 0; };
        case ChoiceKind::Every:
            return [&choice](int page) { return page % choice.count == choice.offset; };
        case ChoiceKind::Size:
            return [this, &choice](int page) {
                return facts_.size(page).map([&](ShownSize size) { return fits(choice, size); });
            };
        case ChoiceKind::Portrait:
            return [this](int page) {
                return facts_.size(page).map(
                    [](ShownSize size) { return size.height > size.width; });
            };
        case ChoiceKind::Landscape:
            return [this](int page) {
                return facts_.size(page).map(
                    [](ShownSize size) { return size.width > size.height; });
            };
        case ChoiceKind::NoText:
            return [this](int page) {
                return facts_.text(page).map([&](const QString& text) {
                    return text.simplified().isEmpty() && !facts_.hasUnreadableText(page);
                });
            };
        case ChoiceKind::Blank:
            return [this, &choice](int page) { return isBlank(choice, page); };
        case ChoiceKind::Colour:
            return [this](int page) { return facts_.hasColour(page); };
        case ChoiceKind::Grey:
            return [this](int page) {
                return facts_.hasColour(page).map([](bool coloured) { return !coloured; });
            };
        case ChoiceKind::Duplicate:
            return [this](int page) {
                return facts_.duplicateOf(page).map([&](int first) {
                    if (first > 0) {
                        figures_[page] = first;
                    }
                    return first > 0;
                });
            };
        default:
            return [this, &choice](int page) {
                return facts_.text(page).map([&](const QString& text) {
                    return choice.pattern.match(text.simplified()).hasMatch();
                });
            };
        }
    }

    Result<bool> isBlank(const Choice& choice, int page)
    {
        const Result<bool> blank = facts_.isBlank(page, choice.isStrict);
        if (!blank || !*blank) {
            return blank;
        }
        return facts_.noise(page).map([&](double noise) {
            figures_[page] = noise;
            return true;
        });
    }

    static bool fits(const Choice& choice, ShownSize size)
    {
        constexpr double oneMillimetre = 72 / 25.4;
        const auto near = [](double one, double other) {
            return std::abs(one - other) <= oneMillimetre;
        };
        const ShownSize& wanted = choice.size;
        return (near(size.width, wanted.width) && near(size.height, wanted.height)) ||
               (choice.eitherOrientation && near(size.width, wanted.height) &&
                near(size.height, wanted.width));
    }

    void takeRange(const Choice& choice, const Take& take) const
    {
        QList<int> pages;
        CActionUtils::GetPageList(choice.argument, count_, false, false, &pages);
        std::for_each(pages.begin(), pages.end(), take);
    }

    /// The pages with the label or, where no page has it, those from one label to another.
    Outcome takeLabels(const Choice& choice, const Take& take)
    {
        std::vector<QString> labels(static_cast<std::size_t>(count_) + 1);
        bool found = false;
        for (int page = 1; page <= count_; ++page) {
            Result<QString> label = facts_.label(page);
            if (!label) {
                return tl::unexpected<Error>(std::move(label.error()));
            }
            labels[static_cast<std::size_t>(page)] = std::move(*label);
            if (labels[static_cast<std::size_t>(page)] == choice.argument) {
                found = true;
                take(page);
            }
        }
        for (int dash = choice.argument.indexOf('-'); dash >= 0 && !found;
             dash = choice.argument.indexOf('-', dash + 1)) {
            const auto first =
                std::find(labels.begin() + 1, labels.end(), choice.argument.left(dash));
            const auto last = std::find(first, labels.end(), choice.argument.mid(dash + 1));
            for (auto label = first; last != labels.end() && label <= last; ++label) {
                found = true;
                take(static_cast<int>(label - labels.begin()));
            }
        }
        return {};
    }

    Outcome takeSections(const Choice& choice, const Take& take)
    {
        return facts_.outline().map([&](const std::vector<OutlineEntry>& outline) {
            const auto isWanted = [&](const OutlineEntry& entry) {
                const QString title = QString::fromStdWString(entry.title).simplified();
                return choice.pattern.match(title).hasMatch();
            };
            const std::vector<int> pages = pagesOfSections(outline, count_, isWanted);
            std::for_each(pages.begin(), pages.end(), take);
        });
    }

    PageFacts& facts_;
    const int count_;
    std::map<int, double> figures_;
};

} // namespace

Result<std::vector<ChosenPage>> choosePages(const ChoiceSet& set, PageFacts& facts, PageSpan span)
{
    Chooser chooser(facts);
    const bool keeps = !set.keep.empty();
    const auto every = [&](int page) { return span.contains(page); };
    const Result<Found> found = chooser.find(keeps ? set.keep : set.choose, every);
    if (!found) {
        return tl::unexpected<Error>(found.error());
    }
    const auto goes = [&](int page) {
        return span.contains(page) && ((*found)[static_cast<std::size_t>(page)] == 0) == keeps;
    };
    const Result<Found> excepted = chooser.find(set.except, goes);
    if (!excepted) {
        return tl::unexpected<Error>(excepted.error());
    }
    std::vector<ChosenPage> chosen;
    for (std::size_t page = 1; page < found->size(); ++page) {
        if (goes(static_cast<int>(page)) && (*excepted)[page] == 0) {
            const std::size_t choice = (*found)[page];
            const int number = static_cast<int>(page);
            chosen.push_back(
                keeps ? ChosenPage{number, {}}
                      : ChosenPage{number, set.choose[choice - 1].text, chooser.figureOf(number)});
        }
    }
    return chosen;
}

bool isWorthSharing(const ChoiceSet& set)
{
    bool looksAtPages = false;
    for (const auto* choices : {&set.choose, &set.keep, &set.except}) {
        for (const Choice& choice : *choices) {
            if (choice.kind == ChoiceKind::Duplicate) {
                return false;
            }
            looksAtPages = looksAtPages || choice.kind >= ChoiceKind::Text;
        }
    }
    return looksAtPages;
}

std::string rangeTextOf(const std::vector<ChosenPage>& pages)
{
    std::vector<int> numbers;
    for (const ChosenPage& chosen : pages) {
        numbers.push_back(chosen.page);
    }
    return pageRangeText(numbers);
}

} // namespace vantora
