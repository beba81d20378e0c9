#include "VantoraHost/core/reports/Json.h"

#include "KarvelPDFLibrary/base/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace vantora {

namespace {

void appendUnit(std::string& json, unsigned unit)
{
    json += "\\u";
    for (const unsigned shift : {12U, 8U, 4U, 0U}) {
        json += "0123456789abcdef"[(unit >> shift) & 0xF];
    }
}

bool standsForItself(char character)
{
    return character >= 0x20 && character < 0x7F && character != '"' && character != '\\';
}

std::string jsonString(std::string_view text)
{
    std::string json = "\"";
    if (std::all_of(text.begin(), text.end(), standsForItself)) {
        return json.append(text).append("\"");
    }
    for (const wchar_t wide : karvel::text::toWide(text)) {
        const auto code = static_cast<unsigned>(wide);
        if (code == '"' || code == '\\') {
            json += '\\';
            json += static_cast<char>(code);
        } else if (code >= 0x20 && code < 0x7F) {
            json += static_cast<char>(code);
        } else if (code < 0x10000) {
            appendUnit(json, code);
        } else {
            appendUnit(json, 0xD800 + ((code - 0x10000) >> 10));
            appendUnit(json, 0xDC00 + ((code - 0x10000) & 0x3FF));
        }
    }
    return json + "\"";
}

template <class Items, class Write>
std::string array(const Items& items, Write write)
{
    std::string json = "[";
    for (const auto& item : items) {
        json += (json.size() > 1 ? "," : "") + write(item);
    }
    return json + "]";
}

// std::to_string and printf would follow the locale of the process.
std::string decimal(double number)
{
    if (!std::isfinite(number)) {
        return "null";
    }
    char digits[64];
    const auto end = std::to_chars(digits, digits + sizeof digits, number).ptr;
    return std::string(digits, end);
}

} // namespace

JsonObject& JsonObject::addJson(const char* key, std::string_view json)
{
    members_.append(members_.empty() ? "{\"" : ",\"").append(key).append("\":").append(json);
    return *this;
}

JsonObject& JsonObject::add(const char* key, std::string_view text)
{
    return addJson(key, jsonString(text));
}

JsonObject& JsonObject::add(const char* key, std::int64_t number)
{
    return addJson(key, std::to_string(number));
}

JsonObject& JsonObject::add(const char* key, std::uint64_t number)
{
    return addJson(key, std::to_string(number));
}

JsonObject& JsonObject::add(const char* key, double number)
{
    return addJson(key, decimal(number));
}

JsonObject& JsonObject::add(const char* key, bool value)
{
    return addJson(key, value ? "true" : "false");
}

JsonObject& JsonObject::add(const char* key, const std::vector<int>& numbers)
{
    return addJson(key, array(numbers, [](int number) { return std::to_string(number); }));
}

JsonObject& JsonObject::add(const char* key, const std::vector<std::size_t>& numbers)
{
    return addJson(key, array(numbers, [](std::size_t number) { return std::to_string(number); }));
}

JsonObject& JsonObject::add(const char* key, const std::vector<std::string>& texts)
{
    return addJson(key, array(texts, [](const std::string& text) { return jsonString(text); }));
}

JsonObject& JsonObject::add(const char* key, const JsonObject& object)
{
    return addJson(key, object.text());
}

JsonObject& JsonObject::add(const char* key, const std::vector<JsonObject>& objects)
{
    return addJson(key, array(objects, [](const JsonObject& object) { return object.text(); }));
}

JsonObject& JsonObject::addNull(const char* key)
{
    return addJson(key, "null");
}

} // namespace vantora
