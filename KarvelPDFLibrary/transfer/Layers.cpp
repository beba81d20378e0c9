#include "KarvelPDFLibrary/transfer/Layers.h"

#include "KarvelPDFLibrary/transfer/Editing.h"

#include <algorithm>
#include <unordered_set>

namespace karvel::transfer {

namespace {

QPDFObjectHandle propertiesOf(Document& document)
{
    QPDFObjectHandle properties = document.catalogEntry("/OCProperties");
    return properties.isDictionary() ? properties : QPDFObjectHandle::newDictionary();
}

QPDFObjectHandle defaultsOf(Document& document)
{
    QPDFObjectHandle defaults = propertiesOf(document).getKey("/D");
    return defaults.isDictionary() ? defaults : QPDFObjectHandle::newDictionary();
}

bool lists(QPDFObjectHandle array, const QPDFObjectHandle& object)
{
    const std::vector<QPDFObjectHandle> items = itemsOf(array);
    return std::any_of(items.begin(), items.end(), [&](const QPDFObjectHandle& item) {
        return item.isIndirect() && item.getObjectID() == object.getObjectID();
    });
}

/// The layers that an order lists, in groups of whatever depth (ISO 32000-2, table 99).
std::unordered_set<int> inOrder(const QPDFObjectHandle& order)
{
    std::unordered_set<int> layers;
    std::unordered_set<int> seen;
    std::vector<QPDFObjectHandle> waiting = {order};
    while (!waiting.empty()) {
        QPDFObjectHandle item = waiting.back();
        waiting.pop_back();
        if (!item.isArray()) {
            layers.insert(item.getObjectID());
        } else if (!item.isIndirect() || seen.insert(item.getObjectID()).second) {
            const std::vector<QPDFObjectHandle> items = item.getArrayAsVector();
            waiting.insert(waiting.end(), items.begin(), items.end());
        }
    }
    return layers;
}

bool isHiddenAtFirst(QPDFObjectHandle defaults)
{
    return defaults.getKey("/BaseState").isNameAndEquals("/OFF");
}

} // namespace

bool Layers::isShown(const QPDFObjectHandle& layer) const
{
    QPDFObjectHandle defaults = defaultsOf(from_);
    return isHiddenAtFirst(defaults) ? lists(defaults.getKey("/ON"), layer)
                                     : !lists(defaults.getKey("/OFF"), layer);
}

void Layers::copyAll(bool whole)
{
    std::unordered_set<int> seen;
    for (QPDFObjectHandle layer : itemsOf(propertiesOf(from_).getKey("/OCGs"))) {
        if (!layer.isIndirect() || !layer.isDictionary() ||
            !seen.insert(layer.getObjectID()).second) {
            continue;
        }
        const QPDFObjectHandle copy = whole ? copier_.copy(layer) : copier_.copied(layer);
        if (copy.isInitialized()) {
            layers_.emplace_back(layer, copy);
        }
    }
}

void Layers::join()
{
    QPDFObjectHandle present = propertiesOf(to_).getKey("/OCGs");
    layers_.erase(std::remove_if(layers_.begin(), layers_.end(),
                                 [&](const auto& layer) { return lists(present, layer.second); }),
                  layers_.end());
    if (layers_.empty()) {
        return;
    }
    QPDFObjectHandle properties = editCatalogDictionary(to_, "/OCProperties");
    QPDFObjectHandle all = editArray(to_, properties, "/OCGs");
    QPDFObjectHandle defaults = editDictionary(to_, properties, "/D");
    QPDFObjectHandle order = editArray(to_, defaults, "/Order");
    QPDFObjectHandle sourceDefaults = defaultsOf(from_);
    const std::unordered_set<int> ordered = inOrder(sourceDefaults.getKey("/Order"));
    for (const auto& [source, copy] : layers_) {
        all.appendItem(copy);
        if (ordered.count(source.getObjectID()) > 0) {
            order.appendItem(copy);
        }
        const bool shown = isShown(source);
        if (shown == isHiddenAtFirst(defaults)) {
            editArray(to_, defaults, shown ? "/ON" : "/OFF").appendItem(copy);
        }
        if (lists(sourceDefaults.getKey("/Locked"), source)) {
            editArray(to_, defaults, "/Locked").appendItem(copy);
        }
    }
    for (const QPDFObjectHandle& group : itemsOf(sourceDefaults.getKey("/RBGroups"))) {
        std::vector<QPDFObjectHandle> copies;
        for (const auto& [source, copy] : layers_) {
            if (lists(group, source)) {
                copies.push_back(copy);
            }
        }
        if (copies.size() > 1) {
            editArray(to_, defaults, "/RBGroups").appendItem(QPDFObjectHandle::newArray(copies));
        }
    }
}

} // namespace karvel::transfer
