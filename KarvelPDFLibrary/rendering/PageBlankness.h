#pragma once

#include "KarvelPDFLibrary/blankness/Judgement.h"
#include "KarvelPDFLibrary/document/Document.h"
#include "KarvelPDFLibrary/viewer/View.h"

#include <cstdint>
#include <vector>

namespace karvel::rendering {

/// How thorough a judgement has to be.
enum class Thoroughness {
    Whether, ///< only whether the page is blank: what is marked and different may be more
    HowMuch,
};

/// Whether a person would see something on a page: annotations and form fields as they print or are
/// shown, the noise of scanners allowed for where images cover most of the page. Pages whose
/// content paints nothing are not rendered, and scans are decoded at a fraction of their size.
Result<blankness::Judgement> pageJudgement(Document& document, viewer::View& view, int page,
                                           Thoroughness thoroughness);

/// Judgements that were made, so that further questions about the same page cost nothing.
class LastJudgement {
public:
    Result<blankness::Judgement> of(Document& document, viewer::View& view, int page,
                                    Thoroughness thoroughness);

private:
    std::uint64_t revision_ = 0;
    int page_ = 0; // 0 for none
    Thoroughness thoroughness_ = Thoroughness::Whether;
    blankness::Judgement judgement_;
};

/// Whether at most a percentage of a page is marked; a negative tolerance is -1 less the percentage
/// of the page that may differ from its paper, noise included.
Result<bool> isBlank(Document& document, viewer::View& view, LastJudgement& last, int page,
                     double tolerance);

/// The blank pages of a run. When those are all pages of the document, the first one is left out.
Result<std::vector<int>> blankPages(Document& document, viewer::View& view, PageRun run);

} // namespace karvel::rendering
