#include "VantoraHost/verification/Amounts.h"
#include "VantoraHost/verification/Kept.h"
#include "VantoraHost/verification/Leftovers.h"

#include <algorithm>
#include <exception>
#include <new>
#include <qpdf/QPDFExc.hh>

namespace vantora::verification {

namespace {

Refusal about(Refusal refusal, bool isAfter)
{
    refusal.isAfter = isAfter;
    return refusal;
}

// A document whose pages all went has one blank page.
void judgeBlankPage(PdfFile& after, Findings& findings)
{
    const Page& page = after.pages().front();
    for (const QPDFObjectHandle& stream : contentsOf(page.object)) {
        if (!dataOf(stream).bytes.empty()) {
            findings.add(Kind::PageCount, 0, numberText(QPDFObjectHandle(page.object).getObjGen()),
                         "the page that stands for none is not blank");
            return;
        }
    }
}

/// Translates numbers of pages. Whoever asks may count pages that can't be read, which PdfFile
/// passes over.
class Numbers {
public:
    static tl::expected<Numbers, Refusal> of(const Question& question, const PdfFile& before)
    {
        const std::size_t counted = before.pages().size();
        const auto asked = static_cast<std::size_t>(question.pages);
        Numbers numbers;
        if (asked == 0 || asked == counted) {
            return numbers;
        }
        if (asked != counted + before.unreadable().size()) {
            return tl::unexpected<Refusal>(
                Refusal{Refusal::Why::Failed, false,
                        "can't be verified: its " + std::to_string(asked) +
                            " pages are counted otherwise by libqpdf, which finds " +
                            std::to_string(counted)});
        }
        numbers.passedOver_ = before.unreadable();
        return numbers;
    }

    std::vector<std::pair<int, int>> gone(const Question& question) const
    {
        std::vector<std::pair<int, int>> runs;
        for (const auto& [first, last] : question.removed) {
            runs.emplace_back(first - passedOver(first), last - passedOver(last + 1));
        }
        for (const int page : question.lost) {
            if (!std::binary_search(passedOver_.begin(), passedOver_.end(), page)) {
                runs.emplace_back(page - passedOver(page), page - passedOver(page));
            }
        }
        return runs;
    }

    /// The number that whoever asked knows a page by.
    int askers(int number) const
    {
        for (const int page : passedOver_) {
            number += number > 0 && page <= number ? 1 : 0;
        }
        return number;
    }

private:
    int passedOver(int before) const
    {
        return static_cast<int>(std::count_if(passedOver_.begin(), passedOver_.end(),
                                              [&](int page) { return page < before; }));
    }

    std::vector<int> passedOver_; ///< ascending
};

void compare(PdfFile& before, PdfFile& after, const std::vector<std::pair<int, int>>& gone,
             Verdict& verdict)
{
    Findings findings(verdict);
    const Split split(before, gone);
    const Targets targets(before);
    const Judgement judgement(split, targets);
    const Targets targetsAfter(after);
    const Belongings belongings(split, judgement);
    const Both both{split, judgement, belongings, targets, after, targetsAfter, findings};
    verdict.pagesBefore = static_cast<int>(before.pages().size());
    verdict.pagesAfter = static_cast<int>(after.pages().size());
    verdict.pagesRemoved = static_cast<int>(split.removed().size());
    verdict.labels = labelsOfRemoved(split);
    countInto(verdict.amounts, &Amount::before, before, judgement);
    const Split splitAfter(after, {});
    countInto(verdict.amounts, &Amount::after, after, Judgement(splitAfter, targetsAfter));
    const auto viewedBefore = view(before.bytes(), before.password());
    const auto viewedAfter = view(after.bytes(), after.password());
    const bool readable =
        viewedBefore && viewedBefore->pages() == static_cast<int>(before.pages().size());
    if (!readable) {
        findings.notTold("texts of removed pages: poppler can't open the document, or counts its "
                         "pages differently");
    }
    findLeftovers(split, judgement, belongings, after, readable ? viewedBefore.get() : nullptr,
                  findings);
    compareDocuments(both);
    const std::size_t kept = split.kept().size();
    if (kept == 0 && after.pages().size() == 1) {
        judgeBlankPage(after, findings);
    } else if (kept != after.pages().size()) {
        findings.add(Kind::PageCount, 0, "",
                     "the document should have " + std::to_string(kept) + " pages and has " +
                         std::to_string(after.pages().size()));
    } else {
        compareKeptPages(both);
        compareViews(both, viewedBefore.get(), viewedAfter.get());
    }
}

void describeSame(PdfFile& file, Verdict& verdict)
{
    const Split split(file, {});
    const Judgement judgement(split, Targets(file));
    countInto(verdict.amounts, &Amount::before, file, judgement);
    countInto(verdict.amounts, &Amount::after, file, judgement);
    verdict.pagesBefore = verdict.pagesAfter = static_cast<int>(file.pages().size());
}

class ThisVerifier final : public Verifier {
public:
    tl::expected<Verdict, Refusal> verify(const Question& question) const override
    {
        auto before = PdfFile::open(question.before, question.passwords);
        if (!before) {
            return tl::unexpected<Refusal>(about(std::move(before.error()), false));
        }
        auto after = PdfFile::open(question.after, question.passwords);
        if (!after) {
            return tl::unexpected<Refusal>(about(std::move(after.error()), true));
        }
        Verdict verdict;
        try {
            const auto numbers = Numbers::of(question, **before);
            if (!numbers) {
                return tl::unexpected<Refusal>(numbers.error());
            }
            const auto gone = numbers->gone(question);
            if (gone.empty() && (*before)->bytes() == (*after)->bytes()) {
                describeSame(**before, verdict);
                return verdict;
            }
            compare(**before, **after, gone, verdict);
            for (Finding& finding : verdict.findings) {
                finding.page = numbers->askers(finding.page);
            }
            for (LabelledPages& pages : verdict.labels) {
                pages.first = numbers->askers(pages.first);
                pages.last = numbers->askers(pages.last);
            }
        } catch (const std::bad_alloc&) {
            throw;
        } catch (const std::exception& error) {
            return tl::unexpected<Refusal>(Refusal{
                Refusal::Why::Failed, false, std::string("can't be verified: ") + error.what()});
        }
        return verdict;
    }
};

} // namespace

} // namespace vantora::verification

extern "C" __attribute__((visibility("default"))) const vantora::verification::Verifier*
vantoraVerifier()
{
    static const vantora::verification::ThisVerifier verifier;
    return &verifier;
}
