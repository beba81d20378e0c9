#include "KarvelPDFLibrary/page_tree/PageTexts.h"

#include "KarvelPDFLibrary/index/DictionaryText.h"
#include "KarvelPDFLibrary/index/ValueScanner.h"

namespace karvel::pageTree {

bool PageTexts::place(QPDFObjGen page, QPDFObjGen parent, const InheritedSet& inherited)
{
    const auto number = static_cast<std::uint32_t>(page.getObj());
    const bool isKnown = index_.contains(number) && !changes_.kind(page.getObj()) &&
                         index_.object(number).kind == index::Kind::Page &&
                         (index_.object(number).flags & index::IsStream) == 0;
    const auto text = isKnown ? index::DictionaryText::read(texts_.from(number)) : std::nullopt;
    if (!text) {
        return false;
    }
    std::vector<index::DictionaryText::Entry> entries = {{"Parent", parent.unparse(' ') + " R"}};
    for (std::size_t i = 0; i < inheritableKeys.size(); ++i) {
        QPDFObjectHandle value = inherited[i];
        const char* key = inheritableKeys[i] + 1;
        if (!value.isInitialized()) {
            continue;
        }
        const std::string_view own = text->value(key);
        if (own.empty()) {
            entries.push_back({key, value.unparse()});
        } else if (mayBeNull(own)) {
            return false;
        }
    }
    return changes_.replaceText(page, text->with(entries));
}

bool PageTexts::mayBeNull(std::string_view value) const
{
    const auto reference = index::readReference(value);
    if (!reference) {
        return value.find("null") != std::string_view::npos;
    }
    const std::uint32_t object = index_.targetOf(*reference);
    return object == 0 || (index_.object(object).flags & index::IsDictionary) == 0;
}

} // namespace karvel::pageTree
