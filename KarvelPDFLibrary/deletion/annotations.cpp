#include "KarvelPDFLibrary/deletion/PageAnnotations.h"
#include "KarvelPDFLibrary/deletion/modules.h"

namespace karvel::deletion {

namespace {

bool isSubtype(QPDFObjectHandle dictionary, const char* subtype)
{
    QPDFObjectHandle value = dictionary.getKey("/Subtype");
    return value.isName() && value.getName() == subtype;
}

/// What makes a widget of a field (ISO 32000-2, tables 166 and 191); the rest is the field's.
constexpr const char* widgetKeys[] = {"/Subtype", "/Rect", "/P",  "/NM", "/M",  "/F", "/AP", "/AS",
                                      "/Border",  "/C",    "/BS", "/H",  "/MK", "/A", "/OC"};

class AnnotationRemover {
public:
    explicit AnnotationRemover(Removal& removal) : removal_(removal), places_(removal) {}

    void run()
    {
        for (QPDFObjectHandle page : removal_.removedPagesWith(index::HasAnnotations)) {
            takeThoseOf(page);
        }
        takeThoseThatNamePages();
        // File attachments need no more: what they embed is out of reach then, but for files that
        // the name tree holds as the document's own (ISO 32000-2, 7.11.4).
        while (!pending_.empty()) {
            QPDFObjectHandle annotation = pending_.back();
            pending_.pop_back();
            takeWhatBelongsTo(annotation);
            if (pending_.empty()) {
                takeDirectOnes();
            }
        }
    }

private:
    void takeThoseOf(const QPDFObjectHandle& page)
    {
        const auto numbers = removal_.indexedAnnotationsOf(page.getObjectID());
        if (!numbers) {
            for (const QPDFObjectHandle& annotation : annotationsIn(page)) {
                take(annotation);
            }
            return;
        }
        for (const std::uint32_t number : *numbers) {
            const auto object = static_cast<int>(number);
            if (object == 0 || removal_.isGone(object)) {
                continue;
            }
            if (removal_.isHeldByGoneOnly(object) && !removal_.mayHave(object, index::HasPopup)) {
                removal_.drop(object); // nothing else has to do with it
            } else {
                take(removal_.object(object));
            }
        }
    }

    /// An annotation of a removed page goes, unless a page that remains shows it too.
    void take(QPDFObjectHandle annotation)
    {
        if (!annotation.isIndirect()) {
            takePopupOf(annotation);
            return;
        }
        if (removal_.isGone(annotation)) {
            return;
        }
        QPDFObjectHandle page = places_.remainingPageOf(annotation);
        if (!page.isNull()) {
            rehome(annotation, page);
        } else if (isFieldWithKids(annotation)) {
            for (const char* key : widgetKeys) {
                removal_.changes().edit(annotation).removeKey(key);
            }
        } else {
            removal_.drop(annotation);
            pending_.push_back(annotation);
        }
    }

    void rehome(QPDFObjectHandle annotation, const QPDFObjectHandle& page)
    {
        if (annotation.isDictionary() && removal_.isRemovedPage(annotation.getKey("/P"))) {
            removal_.changes().edit(annotation).replaceKey("/P", page);
        }
    }

    bool isFieldWithKids(QPDFObjectHandle annotation)
    {
        if (!removal_.mayHave(annotation, index::HasKids) || !annotation.isDictionary()) {
            return false;
        }
        QPDFObjectHandle kids = annotation.getKey("/Kids");
        return kids.isArray() && kids.getArrayNItems() > 0;
    }

    /// Widgets need not be listed by their page to be known as its own.
    void takeThoseThatNamePages()
    {
        for (const int number : removal_.pageReferrers()) {
            if (!removal_.mayHave(number, index::HasPlace) ||
                !removal_.mayHave(number, index::HasSubtype)) {
                continue;
            }
            QPDFObjectHandle object = removal_.object(number);
            if (object.isDictionary() && object.getKey("/Subtype").isName() &&
                removal_.isRemovedPage(object.getKey("/P"))) {
                take(object);
            }
        }
    }

    /// Popups and replies go with their annotation, wherever they stand (ISO 32000-2, 12.5.6.2).
    void takeWhatBelongsTo(QPDFObjectHandle annotation)
    {
        for (QPDFObjectHandle object : removal_.referrersOf(annotation.getObjectID())) {
            if (belongsTo(object, annotation)) {
                removal_.drop(object);
                pending_.push_back(object);
            } else if (removal_.isRemainingPage(object) ||
                       (removal_.mayBeArray(object) && object.isArray())) {
                lists_.push_back(object);
            }
        }
        if (removal_.mayHave(annotation, index::HasPopup)) {
            takePopupOf(annotation);
        }
    }

    static bool belongsTo(QPDFObjectHandle object, const QPDFObjectHandle& annotation)
    {
        if (!object.isDictionary()) {
            return false;
        }
        const int number = annotation.getObjectID();
        return object.getKey("/IRT").getObjectID() == number ||
               (isSubtype(object, "/Popup") && object.getKey("/Parent").getObjectID() == number);
    }

    /// Popups and replies without a number of their own, in the lists of pages.
    void takeDirectOnes()
    {
        for (QPDFObjectHandle& holder : lists_) {
            QPDFObjectHandle list = holder.isArray() ? holder : holder.getKey("/Annots");
            const bool elsewhere = list.isIndirect() && !holder.isArray();
            if (!list.isArray() || elsewhere || !looked_.insert(holder.getObjectID()).second) {
                continue;
            }
            std::vector<QPDFObjectHandle> kept;
            for (QPDFObjectHandle item : list.getArrayAsVector()) {
                const bool goes =
                    !item.isIndirect() && item.isDictionary() &&
                    (removal_.isGone(item.getKey("/IRT")) ||
                     (isSubtype(item, "/Popup") && removal_.isGone(item.getKey("/Parent"))));
                if (goes) {
                    takePopupOf(item);
                } else {
                    kept.push_back(item);
                }
            }
            if (static_cast<int>(kept.size()) != list.getArrayNItems()) {
                removal_.changes().edit(holder);
                list.setArrayFromVector(kept);
            }
        }
        lists_.clear();
    }

    void takePopupOf(QPDFObjectHandle annotation)
    {
        if (!annotation.isDictionary()) {
            return;
        }
        QPDFObjectHandle popup = annotation.getKey("/Popup");
        if (popup.isIndirect() && !removal_.isGone(popup) && isSubtype(popup, "/Popup")) {
            removal_.drop(popup);
            pending_.push_back(popup);
        }
    }

    Removal& removal_;
    PageAnnotations places_;
    std::vector<QPDFObjectHandle> pending_;
    std::vector<QPDFObjectHandle> lists_; // pages and arrays that may have direct annotations
    std::unordered_set<int> looked_;      // those that were looked through
};

} // namespace

void removeAnnotations(Removal& removal)
{
    AnnotationRemover(removal).run();
}

} // namespace karvel::deletion
