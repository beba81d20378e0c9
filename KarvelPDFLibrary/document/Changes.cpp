#include "KarvelPDFLibrary/document/Changes.h"

#include "KarvelPDFLibrary/index/ReferenceIndex.h"

#include <qpdf/QPDFExc.hh>
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

/// libqpdf reads an object stream whole when one of its members is first needed, and then puts back
/// what was put in a member's place before. So the old value is read first.
void Changes::put(QPDFObjGen number, const QPDFObjectHandle& value)
{
    file_.getObject(number).getTypeCode();
    file_.replaceObject(number, value);
}

QPDFObjectHandle Changes::edit(const QPDFObjectHandle& object)
{
    QPDFObjectHandle handle = object;
    if (!handle.isIndirect()) {
        throw std::logic_error("only an object with a number can be changed by itself");
    }
    build(handle.getObjectID());
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
    // libqpdf gives numbers above those of references to nothing.
    const auto number = static_cast<std::uint64_t>(added.getObjectID());
    if (index::isOutOfProportion(number, objects_.size()) &&
        index::isOutOfProportion(number, file_.getXRefTable().size() + objects_.size())) {
        throw QPDFExc(qpdf_e_damaged_pdf, file_.getFilename(), "", 0,
                      "it refers to object " + std::to_string(number - 1) + ", which is not there");
    }
    record(added.getObjGen(), Kind::Added);
    return added;
}

void Changes::replace(QPDFObjGen number, const QPDFObjectHandle& value)
{
    texts_.erase(number.getObj());
    put(number, value);
    record(number, Kind::Changed);
}

void Changes::remove(QPDFObjGen number)
{
    texts_.erase(number.getObj());
    removed_.push_back(number);
    record(number, Kind::Removed);
}

bool Changes::isThere(const QPDFObjectHandle& object) const
{
    const auto found = objects_.find(object.getObjectID());
    const bool removed = found != objects_.end() && found->second == Kind::Removed;
    QPDFObjectHandle handle = object;
    return !removed && !handle.isNull();
}

void Changes::replaceText(QPDFObjGen number, std::string text)
{
    texts_[number.getObj()] = {number.getGen(), std::move(text)};
    record(number, Kind::Changed);
}

const std::string* Changes::text(int number) const
{
    const auto found = texts_.find(number);
    return found == texts_.end() ? nullptr : &found->second.second;
}

void Changes::build(int number)
{
    const auto found = texts_.find(number);
    if (found != texts_.end()) {
        const auto& [generation, text] = found->second;
        put(QPDFObjGen(number, generation), QPDFObjectHandle::parse(&file_, text));
        texts_.erase(found);
    }
}

void Changes::settle()
{
    while (!texts_.empty()) {
        build(texts_.begin()->first);
    }
    for (const QPDFObjGen& number : removed_) {
        put(number, QPDFObjectHandle::newNull());
    }
    removed_.clear();
}

} // namespace karvel
