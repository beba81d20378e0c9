#include "KarvelPDFLibrary/deletion/modules.h"

namespace karvel::deletion {

namespace {

/// Whether the page after one with a label would get another one from the same range.
bool goesOn(const PageLabel& label, const PageLabel& next)
{
    return label.style == next.style && label.prefix == next.prefix &&
           (label.style.empty() || next.number == label.number + 1);
}

PageLabel labelOf(const PageLabelRanges& ranges, int original, int present)
{
    // Before the first range, and for a new page, viewers show the page's number.
    const auto label = original > 0 ? ranges.labelOf(original) : std::nullopt;
    return label.value_or(PageLabel{"/D", {}, original > 0 ? original : present});
}

QPDFObjectHandle dictionaryOf(const PageLabel& label)
{
    QPDFObjectHandle dictionary = QPDFObjectHandle::newDictionary();
    if (!label.style.empty()) {
        dictionary.replaceKey("/S", QPDFObjectHandle::newName(label.style));
        if (label.number != 1) {
            dictionary.replaceKey("/St", QPDFObjectHandle::newInteger(label.number));
        }
    }
    if (!label.prefix.empty()) {
        dictionary.replaceKey("/P", QPDFObjectHandle::newString(label.prefix));
    }
    return dictionary;
}

} // namespace

void keepPageLabels(Removal& removal)
{
    QPDFObjectHandle tree = removal.catalogEntry("/PageLabels");
    if (!tree.isDictionary()) {
        return;
    }
    const PageLabelRanges ranges = removal.document().pageLabels();
    QPDFObjectHandle items = QPDFObjectHandle::newArray();
    PageLabel before;
    const PageOrder& order = removal.document().order();
    for (int number = 1; number <= order.count(); ++number) {
        const PageLabel label = labelOf(ranges, order.at(number).original, number);
        if (number == 1 || !goesOn(before, label)) {
            items.appendItem(QPDFObjectHandle::newInteger(number - 1));
            items.appendItem(dictionaryOf(label));
        }
        before = label;
    }
    QPDFObjectHandle labels = QPDFObjectHandle::newDictionary();
    labels.replaceKey("/Nums", items);
    if (tree.isIndirect()) {
        removal.changes().replace(tree.getObjGen(), labels);
    } else {
        removal.changes().edit(removal.catalog()).replaceKey("/PageLabels", labels);
    }
}

} // namespace karvel::deletion
