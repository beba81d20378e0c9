#include "KarvelPDFLibrary/pages/TabOrder.h"

#include <string>

namespace karvel::pages {

namespace {

constexpr const char* names[] = {"", "/R", "/C", "/S", "/A", "/W"};

} // namespace

TabOrder tabOrder(Document& document, int page)
{
    QPDFObjectHandle value = document.page(page).getKey("/Tabs");
    const std::string name = value.isName() ? value.getName() : std::string();
    for (int code = 1; code <= largestTabOrder; ++code) {
        if (name == names[code]) {
            return static_cast<TabOrder>(code);
        }
    }
    return TabOrder::Unset;
}

void setTabOrder(Document& document, int page, TabOrder order)
{
    QPDFObjectHandle dictionary = document.editPage(page);
    if (order == TabOrder::Unset) {
        dictionary.removeKey("/Tabs");
    } else {
        dictionary.replaceKey("/Tabs", QPDFObjectHandle::newName(names[static_cast<int>(order)]));
    }
}

} // namespace karvel::pages
