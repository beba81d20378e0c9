#include "KarvelPDFLibrary/layers/Layers.h"

#include <unordered_set>
#include <vector>

namespace karvel::layers {

namespace {

std::vector<QPDFObjectHandle> layersOf(Document& document)
{
    QPDFObjectHandle properties = document.catalogEntry("/OCProperties");
    QPDFObjectHandle groups = properties.isDictionary() ? properties.getKey("/OCGs") : properties;
    std::vector<QPDFObjectHandle> layers;
    std::unordered_set<int> seen;
    for (int i = 0; groups.isArray() && i < groups.getArrayNItems(); ++i) {
        QPDFObjectHandle group = groups.getArrayItem(i);
        if (group.isIndirect() && group.isDictionary() && seen.insert(group.getObjectID()).second) {
            layers.push_back(group);
        }
    }
    return layers;
}

} // namespace

int count(Document& document)
{
    return static_cast<int>(layersOf(document).size());
}

Result<std::string> nameOf(Document& document, int layer)
{
    std::vector<QPDFObjectHandle> layers = layersOf(document);
    if (layer < 1 || static_cast<std::size_t>(layer) > layers.size()) {
        return fail(ErrorCode::NotFound,
                    document.name() + ": has no layer " + std::to_string(layer));
    }
    QPDFObjectHandle name = layers[static_cast<std::size_t>(layer) - 1].getKey("/Name");
    return name.isString() ? name.getUTF8Value() : std::string();
}

} // namespace karvel::layers
