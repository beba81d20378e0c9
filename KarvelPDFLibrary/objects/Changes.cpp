#include "KarvelPDFLibrary/objects/Changes.h"

#include "KarvelPDFLibrary/base/LargeVectors.h"
#include "KarvelPDFLibrary/index/ReferenceIndex.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <algorithm>
#include <climits>
#include <qpdf/QPDFExc.hh>
#include <stdexcept>

namespace karvel {

void Changes::record(QPDFObjGen number, Kind kind)
{
    ++revision_;
    const auto at = static_cast<std::size_t>(number.getObj());
    if (at >= kinds_.size()) {
        growLarge(kinds_, at + 1);
        kinds_.resize(at + 1, unchanged);
    }
    const std::optional<Kind> before = this->kind(number.getObj());
    if (!before) {
        appendLarge(numbers_, number.getObj());
    }
    if (!(before == Kind::Added && kind == Kind::Changed)) {
        kinds_[at] = static_cast<std::uint8_t>(kind);
    }
}

/// libqpdf reads an object stream whole when one of its members is first needed, and then puts back
/// what was put in a member's place before. So the old value is read first.
void Changes::put(QPDFObjGen number, const QPDFObjectHandle& value)
{
    file_.get().getObject(number).getTypeCode();
    file_.get().replaceObject(number, value);
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
    return file_.get().getTrailer();
}

/// Fails for numbers that are far above what the document needs: tables go by them.
void Changes::checkNumber(std::uint64_t number)
{
    const std::size_t added = numbers_.size();
    if (number > INT_MAX ||
        (index::isOutOfProportion(number, added) &&
         index::isOutOfProportion(number, file_.get().getXRefTable().size() + added))) {
        throw QPDFExc(qpdf_e_damaged_pdf, file_.get().getFilename(), "", 0,
                      "it refers to object " + std::to_string(number - 1) + ", which is not there");
    }
}

QPDFObjectHandle Changes::withNumber(const QPDFObjectHandle& direct)
{
    if (!highestNumber_) {
        return file_.get().makeIndirectObject(direct);
    }
    QPDFObjectHandle object;
    do { // libqpdf gives numbers to objects as well
        checkNumber(++*highestNumber_);
        object = file_.get().getObject(static_cast<int>(*highestNumber_), 0);
    } while (!object.isNull());
    file_.get().replaceObject(object.getObjGen(), direct);
    return object;
}

QPDFObjectHandle Changes::add(const QPDFObjectHandle& direct)
{
    QPDFObjectHandle added = direct.isIndirect() ? direct : withNumber(direct);
    checkNumber(static_cast<std::uint64_t>(added.getObjectID()));
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
    appendLarge(removed_, number);
    record(number, Kind::Removed);
}

bool Changes::isThere(const QPDFObjectHandle& object) const
{
    QPDFObjectHandle handle = object;
    return kind(object.getObjectID()) != Kind::Removed && !handle.isNull();
}

bool Changes::replaceText(QPDFObjGen number, std::string text)
{
    if (file_.isEncrypted() && index::mayHoldStrings(text)) {
        return false;
    }
    texts_[number.getObj()] = {number.getGen(), std::move(text)};
    record(number, Kind::Changed);
    return true;
}

const std::string* Changes::text(int number) const
{
    const auto found = texts_.find(number);
    return found == texts_.end() ? nullptr : &found->second.second;
}

/// What is not changed by the text stays the same object, for those who hold it.
void Changes::build(int number)
{
    const auto found = texts_.find(number);
    if (found == texts_.end()) {
        return;
    }
    const auto& [generation, text] = found->second;
    QPDFObjectHandle present = file_.get().getObject(QPDFObjGen(number, generation));
    QPDFObjectHandle value = QPDFObjectHandle::parse(&file_.get(), text);
    for (const std::string& key : present.getKeys()) {
        if (!value.hasKey(key)) {
            present.removeKey(key);
        }
    }
    for (const auto& [key, entry] : value.getDictAsMap()) {
        QPDFObjectHandle changed = entry;
        if (present.getKey(key).unparse() != changed.unparse()) {
            present.replaceKey(key, changed);
        }
    }
    texts_.erase(found);
}

QPDFObjectHandle Changes::present(QPDFObjGen number)
{
    build(number.getObj());
    return file_.get().getObject(number);
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
