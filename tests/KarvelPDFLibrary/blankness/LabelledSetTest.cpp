#include "KarvelPDFLibrary/rendering/PageBlankness.h"
#include "tests/KarvelPDFLibrary/blankness/LabelledPages.h"
#include "tests/support/Inspect.h"

#include <cstdlib>
#include <gtest/gtest.h>
#include <iomanip>
#include <iostream>

namespace {

using namespace karvel;

/// BLANKNESS_SEED=2 tries other pages, BLANKNESS_TABLE=1 prints what became of each kind.
std::uint64_t seed()
{
    const char* given = std::getenv("BLANKNESS_SEED");
    return given == nullptr ? 1 : std::strtoull(given, nullptr, 10);
}

#ifdef VANTORA_SANITIZED
constexpr int pagesOfAKind = 7; // which takes long enough there
#else
constexpr int pagesOfAKind = 28;
#endif

struct Tally {
    int pages = 0;
    int calledBlank = 0;
    std::string others; // which pages were judged otherwise than meant, and why
};

Tally judge(const labelled::Kind& kind)
{
    auto document = support::opened(labelled::documentOf(kind, pagesOfAKind, seed()));
    viewer::View view;
    Tally tally;
    for (int page = 1; page <= document->pageCount(); ++page) {
        const auto judgement =
            rendering::pageJudgement(*document, view, page, rendering::Thoroughness::Whether);
        ++tally.pages;
        tally.calledBlank += judgement && judgement->isBlank() ? 1 : 0;
        if (judgement && judgement->isBlank() != kind.isBlank) {
            tally.others += " " + std::to_string(page) + ":" +
                            std::to_string(static_cast<int>(judgement->finding));
        }
    }
    return tally;
}

/// Judges all kinds of one label; the sums, with the name of each kind that was judged wrongly.
Tally judgeAll(bool blank)
{
    Tally all;
    for (const labelled::Kind& kind : labelled::kinds()) {
        if (kind.isBlank != blank) {
            continue;
        }
        const Tally tally = judge(kind);
        all.pages += tally.pages;
        all.calledBlank += tally.calledBlank;
        const int wrong = blank ? tally.pages - tally.calledBlank : tally.calledBlank;
        if (wrong > 0) {
            all.others += "\n" + std::string(kind.name) + ":" + tally.others;
        }
        if (std::getenv("BLANKNESS_TABLE") != nullptr) {
            std::cout << "| " << std::left << std::setw(44) << kind.name << " | " << tally.pages
                      << " | " << tally.pages - wrong << " | " << (blank ? wrong : 0) << " | "
                      << (blank ? 0 : wrong) << " |\n";
        }
    }
    return all;
}

TEST(LabelledPages, ThatShowSomethingAreNeverCalledBlank)
{
    const Tally all = judgeAll(false);
    EXPECT_GE(all.pages, 48 * pagesOfAKind);
    EXPECT_EQ(all.calledBlank, 0) << all.others;
}

TEST(LabelledPages, ThatShowNothingAreFound)
{
    const Tally all = judgeAll(true);
    EXPECT_GE(all.pages, 26 * pagesOfAKind);
    EXPECT_GE(all.calledBlank * 100, all.pages * 98) << all.others;
}

} // namespace
