#include "KarvelPDFLibrary/deletion/modules.h"

#include <algorithm>
#include <map>

namespace karvel::deletion {

namespace {

/// What a label range says of its pages (ISO 32000-2, 12.4.2).
struct Label {
    std::string style; // unparsed value of /S; empty for none
    std::string prefix;
    long long number = 1;

    /// Whether the page after one with this label would get `next` from the same range.
    bool goesOnTo(const Label& next) const
    {
        return style == next.style && prefix == next.prefix &&
               (style.empty() || next.number == number + 1);
    }
};

struct Range {
    QPDFObjectHandle dictionary;
    Label first;
};

/// The ranges by the number, from 1, of their first page.
std::map<long long, Range> rangesOf(const QPDFObjectHandle& tree)
{
    std::map<long long, Range> ranges;
    forEachNode(tree, "/Kids", [&](QPDFObjectHandle node) {
        QPDFObjectHandle items = node.getKey("/Nums");
        for (int i = 0; items.isArray() && i + 1 < items.getArrayNItems(); i += 2) {
            QPDFObjectHandle key = items.getArrayItem(i);
            QPDFObjectHandle value = items.getArrayItem(i + 1);
            if (!key.isInteger() || !value.isDictionary()) {
                continue;
            }
            Label label;
            QPDFObjectHandle style = value.getKey("/S");
            QPDFObjectHandle prefix = value.getKey("/P");
            QPDFObjectHandle number = value.getKey("/St");
            label.style = style.isName() ? style.unparseResolved() : std::string();
            label.prefix = prefix.isString() ? prefix.getStringValue() : std::string();
            label.number = number.isInteger() ? number.getIntValue() : 1;
            ranges[key.getIntValue() + 1] = {value, label};
        }
    });
    return ranges;
}

Label labelOf(const std::map<long long, Range>& ranges, int original, int present)
{
    auto range = original > 0 ? ranges.upper_bound(original) : ranges.begin();
    if (range == ranges.begin()) {
        // Before the first range, and for a new page, viewers show the page's number.
        return {"/D", {}, original > 0 ? original : present};
    }
    --range;
    Label label = range->second.first;
    label.number += original - range->first;
    return label;
}

QPDFObjectHandle dictionaryOf(const Label& label)
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
    QPDFObjectHandle tree = removal.catalog().getKey("/PageLabels");
    if (!tree.isDictionary()) {
        return;
    }
    const std::map<long long, Range> ranges = rangesOf(tree);
    QPDFObjectHandle items = QPDFObjectHandle::newArray();
    Label before;
    const PageOrder& order = removal.document().order();
    for (int number = 1; number <= order.count(); ++number) {
        const Label label = labelOf(ranges, order.at(number).original, number);
        if (number == 1 || !before.goesOnTo(label)) {
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
