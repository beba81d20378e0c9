#include "KarvelPDFLibrary/objects/ObjectView.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"
#include "KarvelPDFLibrary/objects/References.h"

namespace karvel {

ObjectView::ObjectView(QPDF& file, Changes& changes, const index::ReferenceIndex* index,
                       io::ByteSource* source)
    : file_(file), changes_(changes), index_(index)
{
    if (index_ != nullptr) {
        texts_.emplace(file_, *index_, *source);
    }
}

QPDFObjGen ObjectView::idOf(int number) const
{
    int generation = 0;
    if (index_ == nullptr) {
        const auto known = otherThanZero_.find(number);
        generation = known == otherThanZero_.end() ? 0 : known->second;
    } else if (index_->contains(static_cast<std::uint32_t>(number))) {
        generation = index_->object(static_cast<std::uint32_t>(number)).generation;
    }
    return QPDFObjGen(number, generation);
}

void ObjectView::note(QPDFObjGen id)
{
    if (id.getGen() != 0) {
        otherThanZero_[id.getObj()] = id.getGen();
    } else if (!otherThanZero_.empty()) {
        otherThanZero_.erase(id.getObj());
    }
}

void ObjectView::add(QPDFObjGen reference)
{
    if (index_ == nullptr) {
        note(reference);
    }
    const bool meansNull = idOf(reference.getObj()) != reference;
    found_.push_back(meansNull ? 0 : static_cast<std::uint32_t>(reference.getObj()));
}

ObjectView::Numbers ObjectView::references(int number)
{
    if (const index::IndexedObject* object = unchanged(number)) {
        return indexed(*object);
    }
    const std::string* text = changedText(number);
    if (text == nullptr) {
        return referencesIn(object(number));
    }
    found_.clear();
    for (const index::Reference& reference : index::referencesIn(*text)) {
        add(QPDFObjGen(static_cast<int>(reference.object), static_cast<int>(reference.generation)));
    }
    return found();
}

ObjectView::Numbers ObjectView::referencesIn(const QPDFObjectHandle& value)
{
    found_.clear();
    forEachReference(value,
                     [this](const QPDFObjectHandle& reference) { add(reference.getObjGen()); });
    return found();
}

std::string_view ObjectView::text(int number)
{
    if (unchanged(number) != nullptr) {
        return texts_->from(static_cast<std::uint32_t>(number));
    }
    const std::string* text = changedText(number);
    return text == nullptr ? std::string_view() : changedText_ = *text + " endobj ";
}

QPDFObjectHandle ObjectView::object(int number)
{
    return changes_.kind(number) == Changes::Kind::Removed ? QPDFObjectHandle::newNull()
                                                           : changes_.present(idOf(number));
}

} // namespace karvel
