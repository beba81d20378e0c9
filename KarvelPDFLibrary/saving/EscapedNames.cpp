#include "KarvelPDFLibrary/saving/EscapedNames.h"

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

/// Goes through an object and the direct ones in it.
void EscapedNames::escapeIn(const QPDFObjectHandle& object)
{
    std::vector<QPDFObjectHandle> open = {object};
    bool outermost = true;
    while (!open.empty()) {
        QPDFObjectHandle part = open.back();
        open.pop_back();
        if (part.isIndirect() && !outermost) {
            continue;
        }
        outermost = false;
        if (part.isStream()) {
            part = part.getDict();
        }
        if (part.isArray()) {
            const int count = part.getArrayNItems();
            for (int i = 0; i < count; ++i) {
                const QPDFObjectHandle item = part.getArrayItem(i);
                if (needsEscape(item)) {
                    undo_.emplace_back([part, i, item]() mutable { part.setArrayItem(i, item); });
                    part.setArrayItem(
                        i, QPDFObjectHandle::newName(escaped(QPDFObjectHandle(item).getName())));
                } else {
                    open.push_back(item);
                }
            }
        } else if (part.isDictionary()) {
            escapeKeys(part);
            for (const auto& [key, value] : part.getDictAsMap()) {
                open.push_back(value);
            }
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
