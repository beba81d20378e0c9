#include "KarvelPDFLibrary/deletion/ButtonStates.h"

#include "KarvelPDFLibrary/form_fields/FieldAttributes.h"

#include <set>

namespace karvel::deletion {

namespace {

/// The states that a widget can show besides being off: the names of its normal appearances.
std::set<std::string> statesOf(QPDFObjectHandle widget)
{
    std::set<std::string> states;
    QPDFObjectHandle appearances =
        widget.isDictionary() ? widget.getKey("/AP") : QPDFObjectHandle::newNull();
    QPDFObjectHandle normal =
        appearances.isDictionary() ? appearances.getKey("/N") : QPDFObjectHandle::newNull();
    if (normal.isDictionary()) {
        states = normal.getKeys();
        states.erase("/Off");
    }
    return states;
}

/// A widget that is left, with its place among the kids before and now.
struct Kept {
    QPDFObjectHandle widget;
    int before;
    int now;
};

class ButtonField {
public:
    ButtonField(Removal& removal, QPDFObjectHandle field)
        : removal_(removal), field_(std::move(field))
    {
        const std::vector<QPDFObjectHandle> kids = field_.getKey("/Kids").getArrayAsVector();
        kidCount_ = static_cast<int>(kids.size());
        for (int i = 0; i < kidCount_; ++i) {
            const QPDFObjectHandle& kid = kids[static_cast<std::size_t>(i)];
            if (!removal_.isGone(kid)) {
                kept_.push_back({kid, i, static_cast<int>(kept_.size())});
            } else {
                lostStates_.merge(statesOf(kid));
            }
        }
        for (const Kept& kept : kept_) {
            for (const std::string& state : statesOf(kept.widget)) {
                lostStates_.erase(state);
            }
        }
    }

    void putRight()
    {
        putValueRight("/V", QPDFObjectHandle::newName("/Off"));
        putValueRight("/DV", QPDFObjectHandle::newNull());
        QPDFObjectHandle options = field_.getKey("/Opt");
        if (options.isArray() && options.getArrayNItems() == kidCount_ &&
            static_cast<int>(kept_.size()) < kidCount_) {
            keepOptions(options);
        }
    }

private:
    /// A value that names a state which went with the last widget that had it.
    void putValueRight(const char* key, const QPDFObjectHandle& replacement)
    {
        QPDFObjectHandle value = field_.getKey(key);
        if (value.isName() && lostStates_.count(value.getName()) > 0) {
            removal_.changes().edit(field_).replaceKey(key, replacement);
        }
    }

    void keepOptions(QPDFObjectHandle options)
    {
        QPDFObjectHandle kids = QPDFObjectHandle::newArray();
        QPDFObjectHandle left = QPDFObjectHandle::newArray();
        for (const Kept& kept : kept_) {
            kids.appendItem(kept.widget);
            left.appendItem(options.getArrayItem(kept.before));
        }
        const bool numbered = statesAreNumbers();
        removal_.changes().edit(field_);
        field_.replaceKey("/Kids", kids);
        field_.replaceKey("/Opt", left);
        if (!numbered) {
            return;
        }
        // In this order no new number is still in use as an old one.
        std::string value = nameIn(field_, "/V");
        std::string standard = nameIn(field_, "/DV");
        for (const Kept& kept : kept_) {
            if (kept.before == kept.now) {
                continue;
            }
            const std::string before = "/" + std::to_string(kept.before);
            const std::string now = "/" + std::to_string(kept.now);
            renameStates(kept.widget, before, now);
            value = value == before ? now : value;
            standard = standard == before ? now : standard;
        }
        setName(field_, "/V", value);
        setName(field_, "/DV", standard);
    }

    /// With /Opt, the name of a widget's state may be its number among the kids.
    bool statesAreNumbers() const
    {
        for (const Kept& kept : kept_) {
            if (statesOf(kept.widget) != std::set<std::string>{"/" + std::to_string(kept.before)}) {
                return false;
            }
        }
        return true;
    }

    static std::string nameIn(QPDFObjectHandle dictionary, const char* key)
    {
        QPDFObjectHandle value = dictionary.getKey(key);
        return value.isName() ? value.getName() : std::string();
    }

    static void setName(QPDFObjectHandle dictionary, const char* key, const std::string& name)
    {
        if (!name.empty()) {
            dictionary.replaceKey(key, QPDFObjectHandle::newName(name));
        }
    }

    void renameStates(QPDFObjectHandle widget, const std::string& before, const std::string& now)
    {
        const QPDFObjectHandle owner = widget.isIndirect() ? widget : field_;
        if (nameIn(widget, "/AS") == before) {
            removal_.changes().edit(owner);
            setName(widget, "/AS", now);
        }
        QPDFObjectHandle appearances = widget.getKey("/AP");
        const QPDFObjectHandle holder = appearances.isIndirect() ? appearances : owner;
        for (const char* key : {"/N", "/R", "/D"}) {
            QPDFObjectHandle states = appearances.getKey(key);
            if (!states.isDictionary() || !states.hasKey(before)) {
                continue;
            }
            // What other widgets may use too stays as it is for them.
            QPDFObjectHandle own = states.shallowCopy();
            own.replaceKey(now, states.getKey(before));
            own.removeKey(before);
            removal_.changes().edit(holder);
            appearances.replaceKey(key, own);
        }
    }

    Removal& removal_;
    QPDFObjectHandle field_;
    int kidCount_ = 0;
    std::vector<Kept> kept_;
    std::set<std::string> lostStates_;
};

} // namespace

void putButtonStatesRight(Removal& removal, QPDFObjectHandle field)
{
    if (field.getKey("/Kids").isArray() && form_fields::fieldType(field) == "/Btn") {
        ButtonField(removal, field).putRight();
    }
}

} // namespace karvel::deletion
