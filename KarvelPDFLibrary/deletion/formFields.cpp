#include "KarvelPDFLibrary/base/Text.h"
#include "KarvelPDFLibrary/deletion/ButtonStates.h"
#include "KarvelPDFLibrary/deletion/PageAnnotations.h"
#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

/// The fields that lose kids, from their widgets upwards.
class FieldRemover {
public:
    explicit FieldRemover(Removal& removal) : removal_(removal), places_(removal) {}

    void run()
    {
        const std::vector<QPDFObjGen> annotations = removal_.dropped();
        for (const QPDFObjGen& annotation : annotations) {
            leaveParents(annotation.getObj());
        }
        if (aLostPageWent()) {
            dropWidgetsOfLostPages();
        }
        dropEmptyFields();
        dropWidgetsWithoutPage();
        std::size_t withValues = 0;
        for (const int number : touched_) {
            const Field& field = fields_.at(number);
            if (!removal_.isGone(field.object)) {
                putButtonStatesRight(removal_, field.object);
                QPDFObjectHandle value = QPDFObjectHandle(field.object).getKey("/V");
                // A signature's value, the only dictionary, goes in any case.
                withValues += value.isNull() || value.isDictionary() ? 0 : 1;
            }
        }
        if (withValues > 0) {
            removal_.note("the values of " +
                          text::counted(withValues, "form field", "form fields") +
                          " that removed pages showed, too");
        }
    }

private:
    struct Field {
        QPDFObjectHandle object;
        std::unordered_set<int> kids; // those that are left
        bool hasDirectKids = false;
        bool lostKid = false;
    };

    bool aLostPageWent()
    {
        const std::vector<PageEntry>& removed = removal_.document().removedPages();
        return std::any_of(removed.begin(), removed.end(), [this](const PageEntry& page) {
            return removal_.document().pageDoubts().isLost(page.loaded);
        });
    }

    /// What a page listed that can't be read is known only by standing on no other page.
    void dropWidgetsOfLostPages()
    {
        const QPDFObjectHandle form = removal_.catalogEntry("/AcroForm");
        for (const QPDFObjectHandle& field : QPDFObjectHandle(form).getKey("/Fields").aitems()) {
            forEachNode(field, "/Kids", [this](QPDFObjectHandle node) {
                const bool isWidget = node.isIndirect() && !removal_.isGone(node) &&
                                      node.getKey("/Subtype").isNameAndEquals("/Widget");
                if (isWidget && !removal_.isRemainingPage(node.getKey("/P")) &&
                    places_.remainingPageOf(node).isNull()) {
                    removal_.drop(node);
                    leaveParents(node.getObjectID());
                }
            });
        }
    }

    /// An object leaves the fields that have it as a kid.
    void leaveParents(int kid)
    {
        for (QPDFObjectHandle holder : removal_.referrersOf(kid)) {
            if (removal_.mayHave(holder, index::HasKids) && holder.isDictionary()) {
                leave(holder, kid);
            } else if (removal_.mayBeArray(holder) && holder.isArray()) {
                for (QPDFObjectHandle field : removal_.referrersOf(holder.getObjectID())) {
                    if (removal_.mayHave(field, index::HasKids) && field.isDictionary()) {
                        leave(field, kid);
                    }
                }
            }
        }
    }

    void leave(const QPDFObjectHandle& parent, int kid)
    {
        const auto [entry, isNew] = fields_.try_emplace(parent.getObjectID());
        Field& field = entry->second;
        if (isNew) {
            field = fieldOf(parent);
        }
        // The first kid that leaves is found missing already.
        const bool leaves = field.kids.erase(kid) > 0 || (isNew && field.lostKid);
        if (!leaves) {
            return;
        }
        if (isNew || !field.lostKid) {
            touched_.push_back(parent.getObjectID());
        }
        field.lostKid = true;
        if (field.kids.empty() && !field.hasDirectKids) {
            empty_.push_back(parent);
        }
    }

    Field fieldOf(QPDFObjectHandle object)
    {
        Field field;
        field.object = object;
        QPDFObjectHandle kids = object.getKey("/Kids");
        if (!kids.isArray()) {
            return field;
        }
        for (QPDFObjectHandle kid : kids.getArrayAsVector()) {
            if (removal_.isGone(kid)) {
                field.lostKid = true;
            } else if (kid.isIndirect()) {
                field.kids.insert(kid.getObjectID());
            } else {
                // A widget that no page can list is none.
                field.hasDirectKids = field.hasDirectKids || isFieldOrOnPage(kid);
            }
        }
        return field;
    }

    void dropEmptyFields()
    {
        while (!empty_.empty()) {
            QPDFObjectHandle field = empty_.back();
            empty_.pop_back();
            if (!removal_.isGone(field)) {
                removal_.drop(field);
                leaveParents(field.getObjectID());
            }
        }
    }

    /// A field that lost widgets, and whose other widgets are on no page, goes too: it can't be
    /// seen anywhere any more.
    void dropWidgetsWithoutPage()
    {
        const std::vector<int> touched = touched_;
        for (const int number : touched) {
            const Field& field = fields_.at(number);
            if (removal_.isGone(field.object) || field.hasDirectKids) {
                continue;
            }
            std::vector<QPDFObjectHandle> kids =
                QPDFObjectHandle(field.object).getKey("/Kids").getArrayAsVector();
            kids.erase(std::remove_if(kids.begin(), kids.end(),
                                      [this](auto& kid) { return removal_.isGone(kid); }),
                       kids.end());
            if (std::none_of(kids.begin(), kids.end(),
                             [this](auto& kid) { return isFieldOrPlaced(kid); })) {
                for (const QPDFObjectHandle& kid : kids) {
                    removal_.drop(kid);
                }
                empty_.push_back(field.object);
            }
        }
        dropEmptyFields();
    }

    bool isFieldOrOnPage(QPDFObjectHandle kid)
    {
        return kid.isDictionary() && (kid.hasKey("/T") || kid.hasKey("/Kids") ||
                                      removal_.isRemainingPage(kid.getKey("/P")));
    }

    bool isFieldOrPlaced(QPDFObjectHandle kid)
    {
        return isFieldOrOnPage(kid) ||
               (kid.isDictionary() && !places_.remainingPageOf(kid).isNull());
    }

    Removal& removal_;
    PageAnnotations places_;
    std::unordered_map<int, Field> fields_; // by number
    std::vector<int> touched_;              // those that lost kids
    std::vector<QPDFObjectHandle> empty_;
};

/// Whether an array had items and all of them are gone.
bool isLost(Removal& removal, QPDFObjectHandle array)
{
    if (!array.isArray() || array.getArrayNItems() == 0) {
        return false;
    }
    const std::vector<QPDFObjectHandle> items = array.getArrayAsVector();
    return std::all_of(items.begin(), items.end(),
                       [&](const QPDFObjectHandle& item) { return removal.isGone(item); });
}

/// XFA data (ISO 32000-1, 12.7.8) has texts and values of all pages in a form of its own. Where
/// there are fields beside it the form works without it; where pages are made from it only when
/// they are shown, the document would not.
void removeXfa(Removal& removal, QPDFObjectHandle form)
{
    QPDFObjectHandle catalog = removal.catalog();
    QPDFObjectHandle fields = form.getKey("/Fields");
    QPDFObjectHandle needsRendering = catalog.getKey("/NeedsRendering");
    if (!fields.isArray() || fields.getArrayNItems() == 0 ||
        (needsRendering.isBool() && needsRendering.getBoolValue())) {
        removal.warn("the form's XFA data was left as it is and may hold content of removed pages");
        return;
    }
    removal.changes().edit(form.isIndirect() ? form : catalog);
    form.removeKey("/XFA");
    QPDFObjectHandle names = catalog.getKey("/Names");
    if (names.isDictionary() && names.hasKey("/XFAImages")) {
        removal.changes().edit(names.isIndirect() ? names : catalog);
        names.removeKey("/XFAImages");
    }
    removal.warn("the form's XFA data, which describes removed pages too, was removed; the form's "
                 "fields on other pages stay");
}

} // namespace

void removeFormFields(Removal& removal)
{
    QPDFObjectHandle form = removal.catalogEntry("/AcroForm");
    if (!form.isDictionary()) {
        return;
    }
    FieldRemover(removal).run();
    if (form.hasKey("/XFA")) {
        removeXfa(removal, form);
    }
    if (isLost(removal, form.getKey("/Fields")) && !form.hasKey("/XFA")) {
        removal.changes().edit(removal.catalog()).removeKey("/AcroForm");
        removal.drop(form);
    } else if (isLost(removal, form.getKey("/CO"))) {
        removal.changes().edit(form.isIndirect() ? form : removal.catalog());
        form.removeKey("/CO");
    }
}

} // namespace karvel::deletion
