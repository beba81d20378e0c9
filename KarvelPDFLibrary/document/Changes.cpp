#include "KarvelPDFLibrary/document/Changes.h"

#include <stdexcept>

namespace karvel {

void Changes::record(QPDFObjGen number, Kind kind)
{
    ++revision_;
    const auto [entry, isNew] = objects_.emplace(number.getObj(), kind);
    if (!isNew && !(entry->second == Kind::Added && kind == Kind::Changed)) {
        entry->second = kind;
    }
}

QPDFObjectHandle Changes::edit(const QPDFObjectHandle& object)
{
    QPDFObjectHandle handle = object;
    if (!handle.isIndirect()) {
        throw std::logic_error("only an object with a number can be changed by itself");
    }
    record(handle.getObjGen(), Kind::Changed);
    return handle;
}

QPDFObjectHandle Changes::editTrailer()
{
    ++revision_;
    trailerChanged_ = true;
    return file_.getTrailer();
}

QPDFObjectHandle Changes::add(const QPDFObjectHandle& direct)
{
    QPDFObjectHandle added = direct.isIndirect() ? direct : file_.makeIndirectObject(direct);
    record(added.getObjGen(), Kind::Added);
    return added;
}

void Changes::replace(QPDFObjGen number, const QPDFObjectHandle& value)
{
    file_.replaceObject(number, value);
    record(number, Kind::Changed);
}

void Changes::remove(QPDFObjGen number)
{
    unsettled_.push_back(number);
    record(number, Kind::Removed);
}

void Changes::settle()
{
    for (const QPDFObjGen& number : unsettled_) {
        file_.replaceObject(number, QPDFObjectHandle::newNull());
    }
    unsettled_.clear();
}

} // namespace karvel
