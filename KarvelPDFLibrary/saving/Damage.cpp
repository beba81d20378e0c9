#include "KarvelPDFLibrary/saving/Damage.h"

#include <algorithm>
#include <string>

namespace karvel::saving {

namespace {

bool wasEmptied(QPDFObjectHandle stream)
{
    return stream.isStream() && stream.getRawStreamData()->getSize() == 0;
}

class ContentCheck {
public:
    explicit ContentCheck(Document& document) : document_(document)
    {
        const Warnings& warnings = document.warnings();
        streamsEmptied_ =
            std::any_of(warnings.begin(), warnings.end(), [](const std::string& text) {
                return text.find("unable to recover stream data") != std::string::npos;
            });
    }

    bool isLost(QPDFObjectHandle part)
    {
        if (part.isNull() && part.isIndirect()) {
            return document_.wasReconstructed() ||
                   document_.file().getXRefTable().count(part.getObjGen()) > 0;
        }
        return streamsEmptied_ && wasEmptied(part);
    }

private:
    Document& document_;
    bool streamsEmptied_ = false;
};

} // namespace

Outcome pagesAreWhole(Document& document)
{
    if (document.warnings().empty()) {
        return {};
    }
    ContentCheck check(document);
    for (int number = 1; number <= document.pageCount(); ++number) {
        // The reference itself is looked at: a lost object reads as if the key were absent.
        QPDFObjectHandle contents = document.page(number).getDictAsMap()["/Contents"];
        if (!contents.isInitialized()) {
            continue;
        }
        bool lost = check.isLost(contents);
        if (contents.isArray()) {
            for (const QPDFObjectHandle& part : contents.getArrayAsVector()) {
                lost = lost || check.isLost(part);
            }
        }
        if (lost) {
            return fail(ErrorCode::NotPdf, document.name() + ": damaged: the content of page " +
                                               std::to_string(number) + " cannot be recovered");
        }
    }
    return {};
}

} // namespace karvel::saving
