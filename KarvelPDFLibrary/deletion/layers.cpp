#include "KarvelPDFLibrary/deletion/Usage.h"
#include "KarvelPDFLibrary/deletion/modules.h"

namespace karvel::deletion {

namespace {

class LayerRemover {
public:
    LayerRemover(Removal& removal, QPDFObjectHandle properties)
        : removal_(removal), properties_(std::move(properties)),
          owner_(properties_.isIndirect() ? properties_ : removal.catalog())
    {
    }

    void run(const Usage& usage)
    {
        QPDFObjectHandle groups = properties_.getKey("/OCGs");
        bool lost = false;
        for (int i = 0; groups.isArray() && i < groups.getArrayNItems(); ++i) {
            QPDFObjectHandle group = groups.getArrayItem(i);
            if (usage.ended(group)) {
                removal_.drop(group);
                lost = true;
            }
        }
        if (!lost) {
            return;
        }
        prune(properties_, owner_, "/OCGs", false);
        pruneConfiguration(properties_.getKey("/D"), owner_);
        QPDFObjectHandle configurations = properties_.getKey("/Configs");
        if (configurations.isArray()) {
            for (const QPDFObjectHandle& one : configurations.getArrayAsVector()) {
                pruneConfiguration(one, configurations.isIndirect() ? configurations : owner_);
            }
        }
    }

private:
    /// ISO 32000-2, table 99.
    void pruneConfiguration(QPDFObjectHandle configuration, const QPDFObjectHandle& holder)
    {
        if (!configuration.isDictionary()) {
            return;
        }
        const QPDFObjectHandle owner = configuration.isIndirect() ? configuration : holder;
        for (const char* key : {"/ON", "/OFF", "/Locked"}) {
            prune(configuration, owner, key, false);
        }
        for (const char* key : {"/Order", "/RBGroups"}) {
            prune(configuration, owner, key, true);
        }
        QPDFObjectHandle automatic = configuration.getKey("/AS");
        if (!automatic.isArray()) {
            return;
        }
        const QPDFObjectHandle place = automatic.isIndirect() ? automatic : owner;
        std::vector<QPDFObjectHandle> kept;
        for (const QPDFObjectHandle& application : automatic.getArrayAsVector()) {
            const QPDFObjectHandle of = application.isIndirect() ? application : place;
            if (!QPDFObjectHandle(application).isDictionary() ||
                !prune(application, of, "/OCGs", false)) {
                kept.push_back(application);
            }
        }
        if (static_cast<int>(kept.size()) != automatic.getArrayNItems()) {
            removal_.changes().edit(place);
            automatic.setArrayFromVector(kept);
        }
    }

    /// Takes groups that are gone out of an array, and out of arrays in it where it is nested.
    /// Returns whether it lost all that it had.
    bool prune(QPDFObjectHandle dictionary, const QPDFObjectHandle& owner, const char* key,
               bool nested)
    {
        QPDFObjectHandle array = dictionary.getKey(key);
        if (!array.isArray()) {
            return false;
        }
        lost_ = false;
        const std::vector<QPDFObjectHandle> kept = left(array, nested, 0);
        if (!lost_) {
            return false;
        }
        removal_.changes().edit(owner);
        dictionary.replaceKey(key, QPDFObjectHandle::newArray(kept));
        return kept.empty();
    }

    /// What is left of an array. An array in it that is left without groups goes with its label,
    /// and one that belonged to a group that goes gives up its place to its items.
    std::vector<QPDFObjectHandle> left(QPDFObjectHandle array, bool nested, int depth)
    {
        std::vector<QPDFObjectHandle> kept;
        bool parentWent = false;
        for (QPDFObjectHandle item : array.getArrayAsVector()) {
            if (removal_.isGone(item)) {
                lost_ = true;
                parentWent = true;
                continue;
            }
            if (!nested || !item.isArray() || depth > mostLevels) {
                kept.push_back(item);
                parentWent = false;
                continue;
            }
            const bool before = lost_;
            lost_ = false;
            const std::vector<QPDFObjectHandle> below = left(item, true, depth + 1);
            const bool labelled = item.getArrayNItems() > 0 && item.getArrayItem(0).isString();
            if (parentWent && !labelled) {
                kept.insert(kept.end(), below.begin(), below.end());
            } else if (!lost_) {
                kept.push_back(item);
            } else if (hasGroup(below)) {
                kept.push_back(QPDFObjectHandle::newArray(below));
            }
            lost_ = lost_ || before || parentWent;
            parentWent = false;
        }
        return kept;
    }

    static bool hasGroup(const std::vector<QPDFObjectHandle>& items)
    {
        for (const QPDFObjectHandle& item : items) {
            if (!QPDFObjectHandle(item).isString()) {
                return true;
            }
        }
        return false;
    }

    /// More levels than anybody nests; deeper ones are left as they are.
    static constexpr int mostLevels = 100;

    Removal& removal_;
    QPDFObjectHandle properties_;
    QPDFObjectHandle owner_;
    bool lost_ = false;
};

} // namespace

void removeLayers(Removal& removal, const Usage& usage)
{
    QPDFObjectHandle properties = removal.catalogEntry("/OCProperties");
    if (properties.isDictionary()) {
        LayerRemover(removal, properties).run(usage);
    }
}

} // namespace karvel::deletion
