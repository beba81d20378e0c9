#include "KarvelPDFLibrary/transfer/Editing.h"

namespace karvel::transfer {

QPDFObjectHandle editDictionary(Document& document, QPDFObjectHandle holder, const std::string& key)
{
    QPDFObjectHandle dictionary = holder.getKey(key);
    if (!dictionary.isDictionary()) {
        dictionary = QPDFObjectHandle::newDictionary();
        holder.replaceKey(key, dictionary);
    }
    return dictionary.isIndirect() ? document.changes().edit(dictionary) : dictionary;
}

QPDFObjectHandle editArray(Document& document, QPDFObjectHandle holder, const std::string& key)
{
    QPDFObjectHandle array = holder.getKey(key);
    if (!array.isArray()) {
        array = QPDFObjectHandle::newArray();
        holder.replaceKey(key, array);
    }
    return array.isIndirect() ? document.changes().edit(array) : array;
}

QPDFObjectHandle editCatalogDictionary(Document& document, const std::string& key)
{
    QPDFObjectHandle dictionary = document.catalog().getKey(key);
    if (dictionary.isDictionary() && dictionary.isIndirect()) {
        return document.changes().edit(dictionary);
    }
    dictionary = document.changes().add(
        dictionary.isDictionary() ? dictionary.shallowCopy() : QPDFObjectHandle::newDictionary());
    document.changes().edit(document.catalog()).replaceKey(key, dictionary);
    return dictionary;
}

std::vector<QPDFObjectHandle> itemsOf(QPDFObjectHandle array)
{
    return array.isArray() ? array.getArrayAsVector() : std::vector<QPDFObjectHandle>();
}

} // namespace karvel::transfer
