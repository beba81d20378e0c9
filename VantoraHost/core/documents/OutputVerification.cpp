#include "VantoraHost/core/documents/OutputVerification.h"

#include "KarvelPDFLibrary/base/WarningKinds.h"
#include "VantoraHost/core/PageNumbers.h"

#include <algorithm>

namespace vantora {

namespace {

using verification::Finding;
using verification::Question;
using verification::Refusal;
using verification::Verdict;

tl::unexpected<Error> notVerified(const std::string& why)
{
    return fail(Reason::NotVerified, {}, "the output is not verified, and so not written: " + why);
}

std::string foundText(const Verdict& verdict)
{
    const Finding& first = verdict.findings.front();
    const std::size_t more = verdict.findings.size() - 1 + verdict.more;
    std::string text = verification::kindName(first.kind);
    if (first.page > 0) {
        text += " of page " + std::to_string(first.page);
    }
    if (!first.object.empty()) {
        text += " in object " + first.object;
    }
    text += ": " + first.what;
    return text + (more == 0 ? "" : " (and " + std::to_string(more) + " more)");
}

// The pages that are missing beside those that went.
std::vector<int> pagesLost(const std::vector<PageLoss>& losses)
{
    std::vector<int> lost;
    for (const PageLoss& loss : losses) {
        if (loss.what.rfind(karvel::pageLeftOut, 0) == 0) {
            lost.push_back(loss.page);
        }
    }
    std::sort(lost.begin(), lost.end());
    lost.erase(std::unique(lost.begin(), lost.end()), lost.end());
    return lost;
}

} // namespace

Result<const verification::Verifier*> verifierIn(const std::string& module)
{
    if (module.empty()) {
        return nullptr;
    }
    const auto loaded = verification::loadVerifier(module);
    if (!loaded) {
        return fail(Reason::LibraryMissing, module,
                    "the program's part that verifies can't be loaded: " + loaded.error());
    }
    return *loaded;
}

Result<VerifiedOutput> verifyOutput(const verification::Verifier& verifier, Question question,
                                    const std::optional<std::vector<int>>& pagesRemoved,
                                    const std::vector<PageLoss>& losses, int pagesAfter)
{
    if (!pagesRemoved) {
        return notVerified("only the actions know which pages were to go");
    }
    question.removed = pageRuns(*pagesRemoved);
    question.lost = pagesLost(losses);
    const auto verdict = verifier.verify(question);
    if (!verdict) {
        const Refusal& refusal = verdict.error();
        return notVerified((refusal.isAfter ? "it " : "the document ") + refusal.sentence);
    }
    if (!verdict->passed()) {
        return notVerified(foundText(*verdict));
    }
    if (verdict->pagesAfter != pagesAfter) {
        return notVerified("it has " + std::to_string(verdict->pagesAfter) + " pages where " +
                           std::to_string(pagesAfter) + " were written");
    }
    return VerifiedOutput{verdict->things, verdict->notTold, verdict->amounts, verdict->labels};
}

} // namespace vantora
