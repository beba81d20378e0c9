#include "VantoraHost/verification/Kept.h"

#include <algorithm>
#include <qpdf/QPDFWriter.hh>

namespace vantora::verification {

namespace {

// The file before without what had to go from its kept pages: links to removed pages, popups and
// replies of theirs, and what shows that a signature holds.
std::string withoutWhatGoes(const Both& both)
{
    const auto isDeadLink = [&](const QPDFObjectHandle& annotation) {
        return isNamed(annotation, "/Subtype", "/Link") &&
               both.split.leadsToRemoved(both.targets.of(annotation)) &&
               valueOf(valueOf(annotation, "/A"), "/Next").isNull();
    };
    for (const int place : both.split.kept()) {
        QPDFObjectHandle page = both.split.file().pages()[static_cast<std::size_t>(place)].object;
        std::vector<QPDFObjectHandle> stay;
        for (QPDFObjectHandle annotation : annotationsOf(page)) {
            if (isDeadLink(annotation) || both.judgement.goes(annotation) ||
                both.judgement.goes(valueOf(annotation, "/IRT"))) {
                continue;
            }
            const QPDFObjectHandle field =
                valueOf(annotation, "/FT").isNull() ? valueOf(annotation, "/Parent") : annotation;
            if (isNamed(field, "/FT", "/Sig") && !valueOf(field, "/V").isNull()) {
                annotation.removeKey("/AP");
            }
            stay.push_back(annotation);
        }
        if (page.hasKey("/Annots")) {
            page.replaceKey("/Annots", QPDFObjectHandle::newArray(stay));
        }
    }
    QPDFWriter writer(both.split.file().qpdf());
    writer.setOutputMemory();
    writer.setPreserveEncryption(false);
    writer.setStreamDataMode(qpdf_s_preserve);
    writer.write();
    const auto buffer = writer.getBufferSharedPointer();
    return {reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize()};
}

struct Difference {
    int number = 0;
    int numberAfter = 0;
    bool inText = false;
    bool inPicture = false;
};

// False where either can't be shown.
bool compareView(const Viewed& before, const Viewed& after, Difference& page)
{
    const auto text = before.text(page.number);
    const auto picture = before.picture(page.number);
    const auto textAfter = after.text(page.numberAfter);
    const auto pictureAfter = after.picture(page.numberAfter);
    page.inText = text.has_value() != textAfter.has_value() || (text && *text != *textAfter);
    page.inPicture = picture.has_value() != pictureAfter.has_value() ||
                     (picture && !(*picture == *pictureAfter));
    return text && picture;
}

} // namespace

void compareViews(const Both& both, const Viewed* before, const Viewed* after)
{
    const auto shown = [](const Viewed* view, PdfFile& file) {
        return view && view->pages() == static_cast<int>(file.pages().size());
    };
    if (!shown(before, both.split.file()) || !shown(after, both.after)) {
        both.findings.notTold("what pages show: poppler can't open one of the files, or counts its "
                              "pages differently");
        return;
    }
    std::vector<Difference> different;
    Difference page;
    for (const int place : both.split.kept()) {
        page.number = place + 1;
        ++page.numberAfter;
        if (!compareView(*before, *after, page) && !page.inText && !page.inPicture) {
            both.findings.notTold("what page " + std::to_string(page.number) +
                                  " shows, which can't be rendered");
        }
        if (page.inText || page.inPicture) {
            different.push_back(page);
        }
    }
    if (different.empty()) {
        return;
    }
    const std::string expected = withoutWhatGoes(both);
    const auto viewed = view(expected, "");
    for (Difference& one : different) {
        if (viewed) {
            compareView(*viewed, *after, one);
        }
        const std::string where =
            numberText(QPDFObjectHandle(
                           both.after.pages()[static_cast<std::size_t>(one.numberAfter - 1)].object)
                           .getObjGen());
        if (one.inText) {
            both.findings.add(Kind::KeptText, one.number, where, "its text has changed");
        }
        if (one.inPicture) {
            both.findings.add(Kind::KeptPicture, one.number, where, "it looks different");
        }
    }
}

} // namespace vantora::verification
