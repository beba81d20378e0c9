#pragma once

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"
#include "VantoraApp/binding/function_index.h"

#include <array>
#include <tuple>
#include <type_traits>

/// How a call of the binding becomes a call of the library. Only the binding's own sources include
/// this: the templates are instantiated there, once for each list of arguments.
namespace binding {

/// The type in which a value crosses the library's C interface.
template <class Value>
struct Crossing {
    using argument = Value;
    using result = Value;
};

template <>
struct Crossing<std::wstring> {
    using argument = const wchar_t*;
    using result = wchar_t*;
};

template <>
struct Crossing<std::string> {
    using argument = const char*;
    using result = char*;
};

} // namespace binding

/// The library's buffers that carry byte strings of one call. They are released in the arguments'
/// order after the call, and also when an exception ends it early.
template <std::size_t Count>
class KarvelPDFLibraryCPDylibCPP1311::ReleasedBuffers {
public:
    explicit ReleasedBuffers(KarvelPDFLibraryCPDylibCPP1311& binding) : binding_(binding) {}
    ReleasedBuffers(const ReleasedBuffers&) = delete;
    ReleasedBuffers& operator=(const ReleasedBuffers&) = delete;

    ~ReleasedBuffers()
    {
        for (std::size_t i = 0; i < used_; ++i) {
            binding_.function<int(int, const char*)>(binding::Function::ReleaseBuffer)(
                binding_.instanceID, buffers_[i]);
        }
    }

    int convert(int value) { return value; }
    double convert(double value) { return value; }
    const wchar_t* convert(const std::wstring& text) { return binding_.WideStringParm(text); }

    const char* convert(const std::string& text)
    {
        int bufferUsed = 0;
        const char* pointer = binding_.StringParm(text, bufferUsed);
        if (bufferUsed != 0) {
            buffers_[used_++] = pointer;
        }
        return pointer;
    }

private:
    KarvelPDFLibraryCPDylibCPP1311& binding_;
    std::array<const char*, Count> buffers_{};
    std::size_t used_ = 0;
};

template <class Signature>
Signature* KarvelPDFLibraryCPDylibCPP1311::function(binding::Function function) const
{
    return reinterpret_cast<Signature*>(functionTable[static_cast<int>(function)]);
}

template <class Result, class Raw>
Result KarvelPDFLibraryCPDylibCPP1311::copied(Raw raw)
{
    using binding::Function;
    if constexpr (std::is_same_v<Result, std::wstring>) {
        return WideStringResult(raw, function<int(int)>(Function::StringResultLength)(instanceID));
    } else if constexpr (std::is_same_v<Result, std::string>) {
        const int length = function<int(int)>(Function::AnsiStringResultLength)(instanceID);
        return raw == nullptr || length <= 0 ? std::string()
                                             : std::string(raw, static_cast<std::size_t>(length));
    } else {
        return raw;
    }
}

template <class Result, class... Arguments>
Result KarvelPDFLibraryCPDylibCPP1311::forward(binding::Function function,
                                               const Arguments&... arguments)
{
    using binding::Crossing;
    if (loadFailed) {
        return Result();
    }
    constexpr std::size_t byteStrings = (0 + ... + std::is_same_v<Arguments, std::string>);
    ReleasedBuffers<byteStrings> buffers(*this);
    // Braces, because they evaluate the conversions from left to right.
    const std::tuple<typename Crossing<Arguments>::argument...> converted{
        buffers.convert(arguments)...};
    using Signature =
        typename Crossing<Result>::result(int, typename Crossing<Arguments>::argument...);
    const auto call = this->function<Signature>(function);
    return std::apply([&](auto... raw) { return copied<Result>(call(instanceID, raw...)); },
                      converted);
}
