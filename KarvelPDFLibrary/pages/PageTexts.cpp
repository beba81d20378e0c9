#include "KarvelPDFLibrary/pages/PageTexts.h"

#include "KarvelPDFLibrary/index/ValueScanner.h"

#include <cstring>

namespace karvel::pageTree {

namespace {

/// Notes where a page's text says what depends on its place in the tree.
class Places final : public index::ScanSink {
public:
    void reference(std::uint32_t object, std::uint32_t) override { lastReference_ = object; }
    void beforeEntry(std::string_view) override { lastReference_ = 0; }

    void afterEntry(std::string_view key, std::string_view value) override
    {
        if (key == "Parent") {
            isAmbiguous = isAmbiguous || parent.data() != nullptr;
            parent = value;
            return;
        }
        for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
            if (key == inheritableKeys[i] + 1) {
                has[i] = true;
                referenced[i] = value.back() == 'R' ? lastReference_ : 0;
                isAmbiguous = isAmbiguous || value.find("null") != std::string_view::npos;
            }
        }
    }

    std::string_view parent; // the value with the white space before it; no data for none
    std::array<bool, inheritableKeys.size()> has = {};
    std::array<std::uint32_t, inheritableKeys.size()> referenced = {}; // by the whole value
    bool isAmbiguous = false;

private:
    std::uint32_t lastReference_ = 0;
};

} // namespace

bool PageTexts::place(QPDFObjGen page, QPDFObjGen parent, const InheritedSet& inherited)
{
    const auto number = static_cast<std::uint32_t>(page.getObj());
    const bool isKnown = index_.contains(number) && changes_.objects().count(page.getObj()) == 0 &&
                         index_.object(number).kind == index::Kind::Page &&
                         (index_.object(number).flags & index::IsStream) == 0;
    const std::string_view text = isKnown ? texts_.from(number) : std::string_view();
    Places places;
    index::ValueScanner scanner(text, places);
    if (scanner.scan(0) != index::ScanResult::Complete || places.isAmbiguous) {
        return false;
    }
    const std::string parentText = " " + parent.unparse(' ') + " R";
    std::string entries;
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        QPDFObjectHandle value = inherited[i];
        if (!value.isInitialized()) {
            continue;
        }
        if (!places.has[i]) {
            entries += std::string(" ") + inheritableKeys[i] + " " + value.unparse();
        } else if (mayBeNull(places.referenced[i])) {
            return false;
        }
    }
    std::string placed(text.substr(0, scanner.position()));
    if (places.parent.data() == nullptr) {
        entries += " /Parent" + parentText;
    } else {
        placed.replace(static_cast<std::size_t>(places.parent.data() - text.data()),
                       places.parent.size(), parentText);
    }
    placed.insert(std::strlen("<<"), entries);
    if (encrypted_ && index::mayHoldStrings(placed)) {
        return false; // strings in the file are enciphered
    }
    changes_.replaceText(page, std::move(placed));
    return true;
}

bool PageTexts::mayBeNull(std::uint32_t reference) const
{
    return reference != 0 && (!index_.contains(reference) ||
                              (index_.object(reference).flags & index::IsDictionary) == 0);
}

} // namespace karvel::pageTree
