#include "KarvelPDFLibrary/deletion/ParentTree.h"

#include "KarvelPDFLibrary/deletion/PageAnnotations.h"
#include "KarvelPDFLibrary/deletion/Trees.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

/// An object's key into the tree; -1 when it has none.
long long keyOf(QPDFObjectHandle object)
{
    if (object.isStream()) {
        object = object.getDict();
    }
    if (!object.isDictionary()) {
        return -1;
    }
    for (const char* name : {"/StructParents", "/StructParent"}) {
        QPDFObjectHandle value = object.getKey(name);
        if (value.isInteger()) {
            return value.getIntValue();
        }
    }
    return -1;
}

} // namespace

ParentTree::ParentTree(Removal& removal, QPDFObjectHandle root, QPDFObjectHandle owner)
    : removal_(removal), owner_(std::move(owner)), tree_(root.getKey("/ParentTree"))
{
    if (tree_.isDictionary()) {
        collectKeys();
        collectElements();
    }
}

void ParentTree::collectKeys()
{
    Document& document = removal_.document();
    if (const index::ReferenceIndex* index = document.index()) {
        for (const index::StructureKey& entry : index->structureKeys()) {
            const auto number = static_cast<int>(entry.object);
            if (removal_.unchanged(number) != nullptr) {
                noteKey(number, entry.key >= 0 ? entry.key : keyOf(removal_.object(number)));
            }
        }
        for (const int number : document.changes().numbers()) {
            noteKey(number, keyOf(removal_.object(number)));
        }
    } else {
        for (const QPDFObjectHandle& object : removal_.formerObjectsWith(index::HasStructure)) {
            noteKey(object.getObjectID(), keyOf(object));
        }
    }
    noteDirectAnnotations();
    // A key that something else has too says nothing about what goes.
    for (const long long key : keysInUse_) {
        goneKeys_.erase(key);
    }
}

void ParentTree::noteKey(int object, long long key)
{
    if (key < 0) {
        return;
    }
    if (removal_.isGone(object)) {
        goneKeys_[key] = removal_.isRemovedPage(object) ? object : 0;
    } else {
        keysInUse_.insert(key);
    }
}

void ParentTree::noteDirectAnnotations()
{
    for (const QPDFObjectHandle& page : removal_.removedPagesWith(index::HasAnnotations)) {
        if (removal_.indexedAnnotationsOf(page.getObjectID())) {
            continue; // all of them have numbers
        }
        for (const QPDFObjectHandle& annotation : annotationsIn(page)) {
            if (!annotation.isIndirect() && keyOf(annotation) >= 0) {
                goneKeys_[keyOf(annotation)] = 0;
            }
        }
    }
}

void ParentTree::collectElements()
{
    if (goneKeys_.empty()) {
        return;
    }
    forEachNode(tree_, "/Kids", [this](QPDFObjectHandle node) {
        QPDFObjectHandle items = node.getKey("/Nums");
        for (int i = 0; items.isArray() && i + 1 < items.getArrayNItems(); i += 2) {
            QPDFObjectHandle key = items.getArrayItem(i);
            if (key.isInteger() && goneKeys_.count(key.getIntValue()) > 0) {
                collectElementsUnder(key.getIntValue(), items.getArrayItem(i + 1));
            }
        }
    });
    std::sort(markedContent_.begin(), markedContent_.end());
}

void ParentTree::collectElementsUnder(long long key, QPDFObjectHandle value)
{
    const int page = goneKeys_.at(key);
    if (!value.isArray()) {
        elements_.push_back(value);
        return;
    }
    knownPages_.insert(page);
    const std::vector<QPDFObjectHandle> elements = value.getArrayAsVector();
    int last = 0;
    for (std::size_t i = 0; i < elements.size(); ++i) {
        const int element = elements[i].getObjectID();
        if (element == 0) {
            continue;
        }
        markedContent_.emplace_back(element, static_cast<long long>(i));
        if (element != last) {
            elements_.push_back(elements[i]);
        }
        last = element;
    }
}

bool ParentTree::holds(int element, long long markedContent) const
{
    return std::binary_search(markedContent_.begin(), markedContent_.end(),
                              std::make_pair(element, markedContent));
}

ParentTree::Loss ParentTree::lossOf(QPDFObjectHandle value) const
{
    if (!removal_.mayBeArray(value) || !removal_.mayReferToGone(value) || !value.isArray()) {
        return removal_.isGone(value) ? Loss::All : Loss::None;
    }
    bool lost = false;
    bool left = false;
    for (const QPDFObjectHandle& element : value.getArrayAsVector()) {
        const bool gone = removal_.isGone(element);
        lost = lost || gone;
        left = left || (element.isIndirect() && !gone);
    }
    return !lost ? Loss::None : left ? Loss::Some : Loss::All;
}

/// Places in an array are numbers of marked content: what goes leaves its place empty.
void ParentTree::emptyPlacesIn(QPDFObjectHandle node)
{
    QPDFObjectHandle items = node.getKey("/Nums");
    for (int i = 1; items.isArray() && i < items.getArrayNItems(); i += 2) {
        QPDFObjectHandle value = items.getArrayItem(i);
        if (lossOf(value) != Loss::Some) {
            continue;
        }
        for (int place = 0; place < value.getArrayNItems(); ++place) {
            if (removal_.isGone(value.getArrayItem(place))) {
                value.setArrayItem(place, QPDFObjectHandle::newNull());
            }
        }
        for (const QPDFObjectHandle& holder : {value, items, node, owner_}) {
            if (holder.isIndirect()) {
                removal_.changes().edit(holder);
                break;
            }
        }
    }
}

void ParentTree::prune(bool elementsWent)
{
    if (!tree_.isDictionary() || (goneKeys_.empty() && !elementsWent)) {
        return;
    }
    forEachNode(tree_, "/Kids", [this](const QPDFObjectHandle& node) { emptyPlacesIn(node); });
    pruneTree(removal_, tree_, owner_, "/Nums",
              [this](QPDFObjectHandle key, const QPDFObjectHandle& value) {
                  return goesIf((key.isInteger() && goneKeys_.count(key.getIntValue()) > 0) ||
                                lossOf(value) == Loss::All);
              });
}

} // namespace karvel::deletion
