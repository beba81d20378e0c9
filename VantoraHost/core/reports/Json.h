#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace vantora {

/// Writes JSON on one line, in ASCII, with the members in the order in which they are added (the
/// JSON classes of Qt sort them). A byte that is not part of valid UTF-8, as file names may hold,
/// becomes a lone surrogate \udc80 to \udcff, so that the name can be had back from the text;
/// Python's "surrogateescape" reads it so. Keys are written as they stand: they must need no
/// escape.
class JsonObject {
public:
    JsonObject& add(const char* key, std::string_view text);
    JsonObject& add(const char* key, const char* text) { return add(key, std::string_view(text)); }
    JsonObject& add(const char* key, std::int64_t number);
    JsonObject& add(const char* key, int number) { return add(key, std::int64_t{number}); }
    JsonObject& add(const char* key, std::uint64_t number);
    JsonObject& add(const char* key, double number);
    JsonObject& add(const char* key, bool value);
    JsonObject& add(const char* key, const std::vector<int>& numbers);
    JsonObject& add(const char* key, const std::vector<std::size_t>& numbers);
    JsonObject& add(const char* key, const std::vector<std::string>& texts);
    JsonObject& add(const char* key, const JsonObject& object);
    JsonObject& add(const char* key, const std::vector<JsonObject>& objects);
    JsonObject& addNull(const char* key);

    /// A value that is JSON already.
    JsonObject& addJson(const char* key, std::string_view json);

    /// The value, or null when there is none.
    template <class T>
    JsonObject& add(const char* key, const std::optional<T>& value)
    {
        return value ? add(key, *value) : addNull(key);
    }

    /// The object; more may be added afterwards.
    std::string text() const { return members_ + (members_.empty() ? "{}" : "}"); }

private:
    std::string members_;
};

} // namespace vantora
