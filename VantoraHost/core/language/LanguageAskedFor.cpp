#include "VantoraHost/core/language/Language.h"

#include <string_view>

namespace vantora {

namespace {

std::string_view valueOf(const std::function<const char*(const char*)>& variable, const char* name)
{
    const char* value = variable(name);
    return value ? value : "";
}

/// The first two letters of a locale such as de_AT.UTF-8@euro; the whole where it is another name.
std::string_view languageOf(std::string_view locale)
{
    return locale.substr(0, locale.find_first_of("_.@"));
}

} // namespace

std::string languageAskedFor(const std::function<const char*(const char*)>& variable)
{
    std::string_view locale;
    for (const char* name : {"LC_ALL", "LC_MESSAGES", "LANG"}) {
        locale = locale.empty() ? valueOf(variable, name) : locale;
    }
    if (locale.empty() || locale == "C" || locale == "POSIX") {
        return {};
    }
    std::string_view wanted = valueOf(variable, "LANGUAGE");
    wanted = wanted.empty() ? locale : wanted;
    while (!wanted.empty()) {
        const std::size_t end = wanted.find(':');
        const std::string_view language = languageOf(wanted.substr(0, end));
        if (language == "de") {
            return "de";
        }
        if (language == "en" || language == "C") {
            return {};
        }
        wanted = end == std::string_view::npos ? "" : wanted.substr(end + 1);
    }
    return {};
}

} // namespace vantora
