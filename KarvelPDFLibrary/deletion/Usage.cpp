#include "KarvelPDFLibrary/deletion/Usage.h"

#include "KarvelPDFLibrary/objects/NameTree.h"

#include <algorithm>

namespace karvel::deletion {

namespace {

bool isListOfNamed(const std::string& key)
{
    return std::any_of(std::begin(Usage::named), std::end(Usage::named),
                       [&](const char* list) { return key == list; });
}

bool isList(const std::string& key)
{
    return key == "/IDS" || key == "/URLS" || isListOfNamed(key);
}

} // namespace

/// Goes over everything that can be reached from somewhere.
class Usage::Walk {
public:
    Walk(Removal& removal, NumberSet& seen, bool withGone)
        : removal_(removal), seen_(seen), withGone_(withGone)
    {
    }

    /// Takes an object for gone over.
    void pass(const QPDFObjectHandle& object) { seen_.insert(object.getObjectID()); }

    void reachFrom(const QPDFObjectHandle& value)
    {
        if (value.isIndirect()) {
            reach(value.getObjectID());
        } else {
            reach(removal_.objects().referencesIn(value));
        }
        while (!open_.empty()) {
            const int number = open_.back();
            open_.pop_back();
            reach(removal_.objects().references(number));
        }
    }

private:
    void reach(ObjectView::Numbers numbers)
    {
        for (const std::uint32_t number : numbers) {
            reach(static_cast<int>(number));
        }
    }

    void reach(int number)
    {
        if (number > 0 && (withGone_ || !removal_.isGone(number)) && seen_.insert(number)) {
            open_.push_back(number);
        }
    }

    Removal& removal_;
    NumberSet& seen_;
    bool withGone_;
    std::vector<int> open_;
};

Usage::Usage(Removal& removal) : removal_(removal)
{
    QPDFObjectHandle names = removal.catalogEntry("/Names");
    hasLists_ = !removal.catalogEntry("/OCProperties").isNull();
    if (names.isDictionary()) {
        for (const std::string& key : names.getKeys()) {
            hasLists_ = hasLists_ || isList(key);
            if (isListOfNamed(key)) {
                for (auto& [name, value] : readNameTree(names.getKey(key))) {
                    namedThings_.push_back(value);
                }
            }
        }
    }
    if (hasLists_) {
        Walk walk(removal_, before_, true);
        reachFromCatalog(walk);
    }
}

void Usage::look()
{
    if (hasLists_) {
        removal_.changes().settle(); // who asks then goes on from libqpdf's objects
        Walk walk(removal_, now_, false);
        reachFromCatalog(walk);
        reachFromNamed(walk);
    }
}

void Usage::reachFromCatalog(Walk& walk)
{
    // The objects in which the lists stand are gone through here, and entered by no other way.
    QPDFObjectHandle catalog = removal_.catalog();
    QPDFObjectHandle names = catalog.getKey("/Names");
    walk.pass(catalog);
    walk.pass(names);
    for (const auto& [key, value] : catalog.getDictAsMap()) {
        if (key != "/OCProperties" && key != "/Names") {
            walk.reachFrom(value);
        }
    }
    if (names.isDictionary()) {
        for (const auto& [key, value] : names.getDictAsMap()) {
            if (!isList(key)) {
                walk.reachFrom(value);
            }
        }
    }
    walk.reachFrom(removal_.file().getTrailer());
}

/// What stays in the lists is used, with all that it uses.
void Usage::reachFromNamed(Walk& walk)
{
    std::vector<QPDFObjectHandle> open = namedThings_;
    for (bool found = true; found;) {
        const auto ends = [this](const QPDFObjectHandle& thing) { return endedNamed(thing); };
        const auto staying = std::stable_partition(open.begin(), open.end(), ends);
        for (auto thing = staying; thing != open.end(); ++thing) {
            walk.reachFrom(*thing);
        }
        found = staying != open.end();
        open.erase(staying, open.end());
    }
}

bool Usage::endedNamed(QPDFObjectHandle value) const
{
    if (ended(value)) {
        return true;
    }
    QPDFObjectHandle files =
        value.isDictionary() ? value.getKey("/EF") : QPDFObjectHandle::newNull();
    if (!files.isDictionary() || files.getKeys().empty()) {
        return false;
    }
    const auto streams = files.getDictAsMap();
    return std::all_of(streams.begin(), streams.end(),
                       [this](const auto& entry) { return ended(entry.second); });
}

} // namespace karvel::deletion
