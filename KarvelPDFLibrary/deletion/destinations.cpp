#include "KarvelPDFLibrary/deletion/Trees.h"
#include "KarvelPDFLibrary/deletion/modules.h"

namespace karvel::deletion {

namespace {

/// The dictionary of PDF 1.1 (ISO 32000-2, 12.3.2.4), whose keys are names.
void pruneOldDictionary(Removal& removal)
{
    QPDFObjectHandle names = removal.catalogEntry("/Dests");
    if (!names.isDictionary()) {
        return;
    }
    bool changed = false;
    for (const auto& [name, destination] : names.getDictAsMap()) {
        if (removal.leadsToRemovedPage(destination)) {
            removal.goneNames.insert(name);
            names.removeKey(name);
            changed = true;
        }
    }
    if (changed) {
        removal.changes().edit(names.isIndirect() ? names : removal.catalog());
    }
}

void pruneNameTree(Removal& removal)
{
    QPDFObjectHandle names = removal.catalogEntry("/Names");
    QPDFObjectHandle tree = names.isDictionary() ? names.getKey("/Dests") : names;
    if (!tree.isDictionary()) {
        return;
    }
    const QPDFObjectHandle owner = names.isIndirect() ? names : removal.catalog();
    const bool empty = pruneTree(
        removal, tree, owner, "/Names",
        [&](QPDFObjectHandle name, QPDFObjectHandle destination) {
            const bool goes = removal.leadsToRemovedPage(destination);
            if (goes && name.isString()) {
                removal.goneNames.insert(name.getStringValue());
            }
            return goesIf(goes);
        },
        [&](int node) { return removal.leadsToRemainingPages(node); });
    if (empty && !removal.goneNames.empty()) {
        removal.changes().edit(owner);
        names.removeKey("/Dests");
    }
}

} // namespace

void removeNamedDestinations(Removal& removal)
{
    // No name leads to another name: what is collected on the way changes no verdict.
    pruneOldDictionary(removal);
    pruneNameTree(removal);
}

} // namespace karvel::deletion
