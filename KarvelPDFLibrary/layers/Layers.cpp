#include "KarvelPDFLibrary/layers/Layers.h"

#include <unordered_set>

namespace karvel::layers {

int count(Document& document)
{
    QPDFObjectHandle properties = document.catalog().getKey("/OCProperties");
    QPDFObjectHandle groups = properties.isDictionary() ? properties.getKey("/OCGs") : properties;
    std::unordered_set<int> layers;
    for (int i = groups.isArray() ? groups.getArrayNItems() : 0; i-- > 0;) {
        QPDFObjectHandle group = groups.getArrayItem(i);
        if (group.isIndirect() && group.isDictionary()) {
            layers.insert(group.getObjectID());
        }
    }
    return static_cast<int>(layers.size());
}

} // namespace karvel::layers
