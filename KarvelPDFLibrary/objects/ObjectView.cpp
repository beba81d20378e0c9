#include "KarvelPDFLibrary/objects/ObjectView.h"

#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"
#include "KarvelPDFLibrary/objects/References.h"

namespace karvel {

ObjectView::ObjectView(io::ObjectFile& file, Changes& changes, const index::ReferenceIndex* index,
                       io::ByteSource* source, index::DecodedStreams* streams)
    : file_(file), changes_(changes), index_(index)
{
    if (index_ != nullptr) {
        texts_.emplace(*streams, *index_, *source);
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
    const index::IndexedObject* object = unchanged(number);
    const bool isNode = object != nullptr && object->kind == index::Kind::PageNode;
    const auto at = static_cast<std::uint32_t>(number);
    const index::KidsOfNode* node = isNode ? index_->kidsOf(at) : nullptr;
    if (object != nullptr && node == nullptr) {
        return texts_->from(at);
    }
    const std::string* text = node != nullptr ? &node->text : changedText(number);
    return text == nullptr ? std::string_view() : keptText_ = *text + " endobj ";
}

QPDFObjectHandle ObjectView::object(int number)
{
    return changes_.kind(number) == Changes::Kind::Removed ? QPDFObjectHandle::newNull()
                                                           : changes_.present(idOf(number));
}

void ObjectView::edit(QPDFObjGen id, const std::vector<Entry>& entries)
{
    std::optional<std::string> text = editedText(id.getObj(), entries);
    if (!text || !changes_.replaceText(id, std::move(*text))) {
        editObject(id, entries);
    }
}

std::optional<std::string> ObjectView::editedText(int number, const std::vector<Entry>& entries)
{
    const index::IndexedObject* object = unchanged(number);
    if (object == nullptr || (object->flags & index::IsStream) != 0) {
        return std::nullopt;
    }
    const auto dictionary = index::DictionaryText::read(text(number));
    if (!dictionary) {
        return std::nullopt;
    }
    std::vector<index::DictionaryText::Entry> changed;
    for (const Entry& entry : entries) {
        const std::string_view own =
            entry.onlyWhereNull ? dictionary->value(entry.key) : std::string_view();
        if (own.empty()) {
            changed.push_back({entry.key, entry.value});
        } else if (mayBeNull(own)) {
            return std::nullopt;
        }
    }
    return dictionary->with(changed);
}

bool ObjectView::mayBeNull(std::string_view value) const
{
    const auto reference = index::readReference(value);
    if (!reference) {
        return value.find("null") != std::string_view::npos;
    }
    const std::uint32_t object = index_->targetOf(*reference);
    return object == 0 || (index_->object(object).flags & index::IsDictionary) == 0;
}

void ObjectView::editObject(QPDFObjGen id, const std::vector<Entry>& entries)
{
    QPDFObjectHandle object = changes_.edit(changes_.present(id));
    QPDFObjectHandle dictionary = object.isStream() ? object.getDict() : object;
    for (const Entry& entry : entries) {
        const std::string key = "/" + std::string(entry.key);
        if (entry.value.empty()) {
            dictionary.removeKey(key);
        } else if (!entry.onlyWhereNull || !dictionary.hasKey(key)) {
            dictionary.replaceKey(
                key,
                QPDFObjectHandle::parse(&file_.get(), "[" + entry.value + "]").getArrayItem(0));
        }
    }
}

} // namespace karvel
