#include "Directness.h"

#include <qpdf/QPDF.hh>
#include <qpdf/QPDFWriter.hh>

#include <functional>
#include <map>

namespace support {

namespace {

using Replace = std::function<QPDFObjectHandle(QPDFObjectHandle)>;

/// Gives every value in an object, except in parts that are objects themselves, to `replace`.
void forEachValue(QPDFObjectHandle part, const Replace& replace)
{
    const auto visit = [&](QPDFObjectHandle value,
                           const std::function<void(QPDFObjectHandle)>& put) {
        QPDFObjectHandle instead = replace(value);
        if (!instead.isNull()) {
            put(instead);
            value = instead;
        }
        if (!value.isIndirect()) {
            forEachValue(value, replace);
        }
    };
    if (part.isStream()) {
        part = part.getDict();
    }
    if (part.isArray()) {
        for (int i = 0; i < part.getArrayNItems(); ++i) {
            visit(part.getArrayItem(i),
                  [&](const QPDFObjectHandle& value) { part.setArrayItem(i, value); });
        }
    } else if (part.isDictionary()) {
        for (const auto& [key, value] : part.getDictAsMap()) {
            visit(value, [&, name = key](const QPDFObjectHandle& instead) {
                part.replaceKey(name, instead);
            });
        }
    }
}

std::string written(QPDF& file)
{
    QPDFWriter writer(file);
    writer.setOutputMemory();
    writer.setStaticID(true);
    writer.setObjectStreamMode(qpdf_o_disable);
    writer.write();
    const std::shared_ptr<Buffer> buffer = writer.getBufferSharedPointer();
    return std::string(reinterpret_cast<const char*>(buffer->getBuffer()), buffer->getSize());
}

} // namespace

std::string withDirectObjects(const std::string& pdf)
{
    QPDF file;
    file.processMemoryFile("document", pdf.data(), pdf.size());
    std::map<QPDFObjGen, int> places;
    for (const QPDFObjectHandle& object : file.getAllObjects()) {
        forEachValue(object, [&](const QPDFObjectHandle& value) {
            places[value.getObjGen()] += value.isIndirect() ? 1 : 0;
            return QPDFObjectHandle::newNull();
        });
    }
    const Replace direct = [&](QPDFObjectHandle value) {
        const bool must = value.isStream() || value.isPageObject() || value.isPagesObject();
        return value.isIndirect() && places[value.getObjGen()] == 1 && !must
                   ? value.shallowCopy()
                   : QPDFObjectHandle::newNull();
    };
    for (const QPDFObjectHandle& object : file.getAllObjects()) {
        forEachValue(object, direct);
    }
    return written(file);
}

std::string withIndirectObjects(const std::string& pdf)
{
    QPDF file;
    file.processMemoryFile("document", pdf.data(), pdf.size());
    const std::vector<QPDFObjectHandle> objects = file.getAllObjects();
    const Replace indirect = [&](QPDFObjectHandle value) {
        if (value.isIndirect() || !(value.isArray() || value.isDictionary())) {
            return QPDFObjectHandle::newNull();
        }
        forEachValue(value, indirect);
        return file.makeIndirectObject(value);
    };
    for (const QPDFObjectHandle& object : objects) {
        forEachValue(object, indirect);
    }
    return written(file);
}

} // namespace support
