#include "KarvelPDFLibrary/saving/EscapedNames.h"

#include "KarvelPDFLibrary/objects/References.h"

namespace karvel::saving {

namespace {

bool needsEscape(const std::string& name)
{
    return name.find('#') != std::string::npos;
}

bool needsEscape(const QPDFObjectHandle& object)
{
    QPDFObjectHandle handle = object;
    return !handle.isIndirect() && handle.isName() && needsEscape(handle.getName());
}

std::string escaped(std::string name)
{
    for (std::size_t at = 0; (at = name.find('#', at)) != std::string::npos; at += 3) {
        name.replace(at, 1, "#23");
    }
    return name;
}

} // namespace

std::string nameText(const std::string& name)
{
    return QPDFObjectHandle::newName(needsEscape(name) ? escaped(name) : name).unparse();
}

EscapedNames::EscapedNames(QPDF& file)
{
    try {
        escapeIn(file.getTrailer());
        for (QPDFObjectHandle object : file.getAllObjects()) {
            if (object.isName() && needsEscape(object.getName())) {
                const QPDFObjGen id = object.getObjGen();
                const std::string name = object.getName();
                undo_.emplace_back(
                    [&file, id, name] { file.replaceObject(id, QPDFObjectHandle::newName(name)); });
                file.replaceObject(id, QPDFObjectHandle::newName(escaped(name)));
            } else {
                escapeIn(object);
            }
        }
    } catch (...) {
        undo();
        throw;
    }
}

EscapedNames::~EscapedNames()
{
    undo();
}

void EscapedNames::undo()
{
    for (auto step = undo_.rbegin(); step != undo_.rend(); ++step) {
        (*step)();
    }
    undo_.clear();
}

void EscapedNames::escapeIn(const QPDFObjectHandle& object)
{
    forEachDirectPart(object, [this](QPDFObjectHandle part) {
        if (part.isArray()) {
            escapeItems(part);
        } else if (part.isDictionary()) {
            escapeKeys(part);
        }
    });
}

void EscapedNames::escapeItems(QPDFObjectHandle array)
{
    for (int i = 0; i < array.getArrayNItems(); ++i) {
        const QPDFObjectHandle item = array.getArrayItem(i);
        if (needsEscape(item)) {
            undo_.emplace_back([array, i, item]() mutable { array.setArrayItem(i, item); });
            array.setArrayItem(
                i, QPDFObjectHandle::newName(escaped(QPDFObjectHandle(item).getName())));
        }
    }
}

void EscapedNames::escapeKeys(QPDFObjectHandle dictionary)
{
    for (const auto& [key, value] : dictionary.getDictAsMap()) {
        const bool valueToo = needsEscape(value);
        if (!valueToo && !needsEscape(key)) {
            continue;
        }
        const std::string newKey = escaped(key);
        const QPDFObjectHandle old = value;
        undo_.emplace_back([dictionary, key = key, newKey, old]() mutable {
            dictionary.removeKey(newKey);
            dictionary.replaceKey(key, old);
        });
        dictionary.removeKey(key);
        dictionary.replaceKey(
            newKey,
            valueToo ? QPDFObjectHandle::newName(escaped(QPDFObjectHandle(old).getName())) : old);
    }
}

} // namespace karvel::saving
