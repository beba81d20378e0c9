#include "KarvelPDFLibrary/rendering/PageBlankness.h"

#include "KarvelPDFLibrary/content/LostContent.h"
#include "KarvelPDFLibrary/content/PaintedContent.h"
#include "KarvelPDFLibrary/document/PageArguments.h"
#include "KarvelPDFLibrary/page_boxes/PageBoxes.h"
#include "KarvelPDFLibrary/rendering/RenderPage.h"
#include "KarvelPDFLibrary/rendering/ScannedPicture.h"

namespace karvel::rendering {

namespace {

using blankness::Allowing;
using blankness::Finding;
using blankness::Judgement;

/// Fine enough for the dot of an i in small print, and bounded for posters.
constexpr double judgedDpi = 100;
constexpr int longestJudgedSide = 4000;

Judgement without(Finding picture)
{
    return {picture, 100, 100};
}

/// To be asked when the page was read.
bool hasLostContent(Document& document, int page)
{
    return !document.warnings().empty() && content::LostContent(document).isLost(page);
}

/// ISO 32000-2, 12.5.3: an annotation that is printed, but not shown on a screen.
bool hasAnnotationForPrintOnly(Document& document, int page)
{
    constexpr int hidden = 2;
    constexpr int print = 4;
    constexpr int noView = 32;
    QPDFObjectHandle annotations = document.page(page).getKey("/Annots");
    const int count = annotations.isArray() ? annotations.getArrayNItems() : 0;
    for (int i = 0; i < count; ++i) {
        QPDFObjectHandle annotation = annotations.getArrayItem(i);
        QPDFObjectHandle flags = annotation.isDictionary() ? annotation.getKey("/F") : annotation;
        const int bits = flags.isInteger() ? flags.getIntValueAsInt() : 0;
        if ((bits & (hidden | print | noView)) == (print | noView)) {
            return true;
        }
    }
    return false;
}

/// ISO 32000-2, 8.11.4.4: whether any layer of the document is on when it is printed and else off.
bool hasLayerForPrintOnly(Document& document)
{
    const auto entry = [](QPDFObjectHandle from, const char* key) {
        return from.isDictionary() ? from.getKey(key) : QPDFObjectHandle::newNull();
    };
    QPDFObjectHandle layers = entry(document.catalogEntry("/OCProperties"), "/OCGs");
    const int count = layers.isArray() ? layers.getArrayNItems() : 0;
    for (int i = 0; i < count; ++i) {
        QPDFObjectHandle usage = entry(layers.getArrayItem(i), "/Usage");
        if (entry(entry(usage, "/Print"), "/PrintState").isNameAndEquals("/ON")) {
            return true;
        }
    }
    return false;
}

/// Scans are images over most of the page; what is drawn has no noise.
Allowing allowedOn(Document& document, int page, const content::PaintedContent& painted)
{
    const page_boxes::Rectangle box = page_boxes::box(document, page, page_boxes::Box::Crop);
    double covered = 0;
    for (const content::PaintedImage& image : painted.images) {
        covered += image.area();
    }
    const double whole = (box.right - box.left) * (box.top - box.bottom);
    return covered >= whole / 2 ? Allowing::Noise : Allowing::Nothing;
}

Result<Judgement> judgedByRendering(Document& document, viewer::View& view, int page,
                                    const content::PaintedContent& painted)
{
    const Result<pictures::Raster> picture =
        pagePixels(document, view, page, judgedDpi, Colors::Full, longestJudgedSide);
    if (!picture) {
        return tl::unexpected<Error>(picture.error());
    }
    const Judgement judgement = blankness::judged(*picture, allowedOn(document, page, painted));
    if (!judgement.isBlank()) {
        return judgement;
    }
    const Result<viewer::Viewed*> seen = view.seen(document, page);
    if (!seen || (*seen)->wasDamaged()) {
        return without(Finding::Unreadable);
    }
    return judgement;
}

} // namespace

Result<Judgement> pageJudgement(Document& document, viewer::View& view, int page,
                                Thoroughness thoroughness)
{
    if (Outcome status = hasPage(document, page); !status) {
        return tl::unexpected<Error>(status.error());
    }
    if (document.isLost(page)) {
        return without(Finding::Unreadable);
    }
    try {
        const content::PaintedContent painted = content::paintedContent(document, page);
        if (!painted.paints()) {
            return hasLostContent(document, page) ? without(Finding::Unreadable) : Judgement();
        }
        const auto enough = [&](const pictures::Raster& picture, int rows) {
            return thoroughness == Thoroughness::Whether &&
                   blankness::isClearlyMarked(picture, rows);
        };
        const ScannedPicture scanned = scannedPicture(document, page, painted, enough);
        if (scanned.picture) {
            return blankness::judged(*scanned.picture, Allowing::Noise);
        }
        Result<Judgement> judgement = judgedByRendering(document, view, page, painted);
        if (judgement && judgement->isBlank() &&
            (scanned.isDamaged || hasLostContent(document, page))) {
            return without(Finding::Unreadable);
        }
        if (judgement && judgement->isBlank() &&
            (hasAnnotationForPrintOnly(document, page) || hasLayerForPrintOnly(document))) {
            return without(Finding::OnlyPrinted);
        }
        return judgement;
    } catch (...) {
        return tl::unexpected<Error>(currentExceptionAsError(document.name()));
    }
}

Result<Judgement> LastJudgement::of(Document& document, viewer::View& view, int page,
                                    Thoroughness thoroughness)
{
    // Whoever finds a page blank has seen all of it.
    const bool isThorough = thoroughness_ >= thoroughness || judgement_.isBlank();
    if (page_ != page || revision_ != document.revision() || !isThorough) {
        page_ = 0;
        Result<Judgement> judgement = pageJudgement(document, view, page, thoroughness);
        if (!judgement) {
            return judgement;
        }
        page_ = page;
        revision_ = document.revision();
        thoroughness_ = thoroughness;
        judgement_ = *judgement;
    }
    return judgement_;
}

Result<bool> isBlank(Document& document, viewer::View& view, LastJudgement& last, int page,
                     double tolerance)
{
    const auto thoroughness = tolerance == 0 ? Thoroughness::Whether : Thoroughness::HowMuch;
    return last.of(document, view, page, thoroughness).map([&](const Judgement& judgement) {
        return tolerance < 0 ? judgement.different <= -1 - tolerance
                             : judgement.marked <= tolerance;
    });
}

Result<std::vector<int>> blankPages(Document& document, viewer::View& view, PageRun run)
{
    if (Outcome status = hasPages(document, run); !status) {
        return tl::unexpected<Error>(status.error());
    }
    std::vector<int> blank;
    for (int page = run.first; page < run.first + run.count; ++page) {
        const auto judgement = pageJudgement(document, view, page, Thoroughness::Whether);
        if (!judgement) {
            return tl::unexpected<Error>(judgement.error());
        }
        if (judgement->isBlank()) {
            blank.push_back(page);
        }
    }
    if (static_cast<int>(blank.size()) == document.pageCount()) {
        blank.erase(blank.begin());
    }
    return blank;
}

} // namespace karvel::rendering
