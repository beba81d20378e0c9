#pragma once

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// Values one after the other in bytes, for processes of one program and one machine: numbers as
/// they are in memory, lists and texts with their length before them. What is packed by types is
/// unpacked by the same ones.
namespace vantora {

/// The fields of a struct that is packed: a specialisation has a function `of` that returns them as
/// a tuple of references.
template <class T>
struct PackedFields;

/// The last enumerator of an enumeration that is packed, whose first one is 0.
template <class T>
struct LastOf;

class Packer {
public:
    template <class... T>
    Packer& operator()(const T&... values)
    {
        (put(values), ...);
        return *this;
    }

    std::string bytes() && { return std::move(bytes_); }

private:
    template <class T>
    void put(const T& value)
    {
        if constexpr (std::is_arithmetic_v<T>) {
            bytes_.append(reinterpret_cast<const char*>(&value), sizeof value);
        } else if constexpr (std::is_enum_v<T>) {
            put(static_cast<std::uint8_t>(value));
        } else if constexpr (!std::is_empty_v<T>) {
            std::apply(*this, PackedFields<T>::of(value));
        }
    }
    void put(const std::string& text)
    {
        put(text.size());
        bytes_ += text;
    }
    void put(const std::filesystem::path& path) { put(path.native()); }
    template <class T>
    void put(const std::optional<T>& value)
    {
        put(value.has_value());
        if (value) {
            put(*value);
        }
    }
    template <class T>
    void put(const std::vector<T>& values)
    {
        putAll(values);
    }
    template <class T>
    void put(const std::set<T>& values)
    {
        putAll(values);
    }
    template <class A, class B>
    void put(const std::pair<A, B>& both)
    {
        (*this)(both.first, both.second);
    }
    template <class... T>
    void put(const std::variant<T...>& value)
    {
        put(static_cast<std::uint8_t>(value.index()));
        std::visit([this](const auto& one) { put(one); }, value);
    }
    template <class List>
    void putAll(const List& values)
    {
        put(values.size());
        for (const auto& value : values) {
            put(value);
        }
    }

    std::string bytes_;
};

/// Takes nothing on trust: a number that counts or names something is not negative, and nothing
/// gets more memory than what has come can fill.
class Unpacker {
public:
    explicit Unpacker(std::string_view bytes) : rest_(bytes) {}

    /// Whether all of them could be read; once one could not, none can.
    template <class... T>
    bool operator()(T&... values)
    {
        return (get(values) && ...);
    }

    /// Whether everything is read.
    bool atEnd() const { return rest_.empty(); }

private:
    template <class T>
    bool get(T& value)
    {
        if constexpr (std::is_same_v<T, bool>) {
            std::uint8_t byte = 0;
            const bool read = get(byte) && byte <= 1;
            value = byte == 1;
            return read;
        } else if constexpr (std::is_arithmetic_v<T>) {
            if (rest_.size() < sizeof value) {
                return false;
            }
            std::memcpy(&value, rest_.data(), sizeof value);
            rest_.remove_prefix(sizeof value);
            return isSensible(value);
        } else if constexpr (std::is_enum_v<T>) {
            std::uint8_t number = 0;
            const bool read =
                get(number) && number <= static_cast<std::uint8_t>(LastOf<T>::enumerator);
            value = read ? static_cast<T>(number) : value;
            return read;
        } else if constexpr (std::is_empty_v<T>) {
            return true;
        } else {
            return std::apply(*this, PackedFields<T>::of(value));
        }
    }
    static bool isSensible(int value) { return value >= 0; }
    static bool isSensible(double value) { return std::isfinite(value); }
    template <class T>
    static bool isSensible(T /*value*/)
    {
        return true;
    }
    bool get(std::string& text)
    {
        std::size_t size = 0;
        if (!get(size) || size > rest_.size()) {
            return false;
        }
        text.assign(rest_.data(), size);
        rest_.remove_prefix(size);
        return true;
    }
    bool get(std::filesystem::path& path)
    {
        std::string text;
        const bool read = get(text);
        path = std::move(text);
        return read;
    }
    template <class T>
    bool get(std::optional<T>& value)
    {
        bool has = false;
        return get(has) && (!has || get(value.emplace()));
    }
    template <class T>
    bool get(std::vector<T>& values)
    {
        std::size_t count = 0;
        bool read = get(count);
        values.clear();
        for (; read && count > 0; --count) {
            read = get(values.emplace_back());
        }
        return read;
    }
    template <class T>
    bool get(std::set<T>& values)
    {
        std::vector<T> all;
        const bool read = get(all);
        values = std::set<T>(all.begin(), all.end());
        return read;
    }
    template <class A, class B>
    bool get(std::pair<A, B>& both)
    {
        return (*this)(both.first, both.second);
    }
    template <class... T>
    bool get(std::variant<T...>& value)
    {
        std::uint8_t index = 0;
        if (!get(index)) {
            return false;
        }
        std::uint8_t next = 0;
        return ((index == next++ && get(value.template emplace<T>())) || ...);
    }

    std::string_view rest_;
};

/// The value that these bytes are, to the last of them; none where they are none.
template <class T>
std::optional<T> unpacked(std::string_view bytes)
{
    std::optional<T> value(std::in_place);
    Unpacker unpack(bytes);
    return unpack(*value) && unpack.atEnd() ? std::move(value) : std::nullopt;
}

template <class... T>
std::string packed(const T&... values)
{
    return std::move(Packer()(values...)).bytes();
}

} // namespace vantora
