#pragma once

#include "KarvelPDFLibrary/base/Error.h"
#include "KarvelPDFLibrary/base/Text.h"
#include "KarvelPDFLibrary/instance/Instance.h"

#include <climits>
#include <string>
#include <type_traits>

/// The one place where calls of the C interface enter and leave: it finds the instance, lets no
/// exception out, turns a failure into the empty value and the last error, and keeps string
/// results for the caller.
namespace karvel::boundary {

/// Runs `body(Instance&)`, which returns a Result or Outcome. Nothing but that result leaves: a
/// failure or exception is kept as the instance's last error.
template <class Body>
auto guarded(int number, Body&& body) noexcept
    -> tl::expected<typename std::invoke_result_t<Body, Instance&>::value_type, int>
{
    try {
        const std::shared_ptr<Instance> instance = instances::find(number);
        if (!instance) {
            return tl::unexpected<int>(0);
        }
        try {
            auto result = body(*instance);
            if (result) {
                if constexpr (std::is_void_v<typename decltype(result)::value_type>) {
                    return {};
                } else {
                    return std::move(*result);
                }
            }
            instance->lastError = std::move(result.error());
        } catch (...) {
            instance->lastError = currentExceptionAsError({});
        }
    } catch (...) {
        // Nothing is left to say it with: the caller sees the empty value.
    }
    return tl::unexpected<int>(0);
}

/// An integer function: the body's number, 1 for an Outcome that succeeded; `failure` otherwise.
template <class Body>
int integer(int number, Body&& body, int failure = 0) noexcept
{
    const auto result = guarded(number, std::forward<Body>(body));
    if (!result) {
        return failure;
    }
    if constexpr (std::is_void_v<typename decltype(result)::value_type>) {
        return 1;
    } else {
        return static_cast<int>(*result);
    }
}

template <class Body>
double real(int number, Body&& body) noexcept
{
    const auto result = guarded(number, std::forward<Body>(body));
    return result ? *result : 0.0;
}

/// A function with a wide string result; the body returns UTF-8.
template <class Body>
wchar_t* wideString(int number, Body&& body) noexcept
{
    const auto result = guarded(number, [&](Instance& instance) -> Result<wchar_t*> {
        instance.wideResult.clear();
        Result<std::string> text = body(instance);
        if (!text) {
            return tl::unexpected<Error>(std::move(text.error()));
        }
        instance.wideResult = text::toWide(*text);
        if (instance.wideResult.size() > INT_MAX) {
            instance.wideResult.clear();
            return fail(ErrorCode::OutOfMemory, "the text is too long for the interface");
        }
        return instance.wideResult.data();
    });
    return result ? *result : nullptr;
}

/// A function with a byte string result.
template <class Body>
char* byteString(int number, Body&& body) noexcept
{
    const auto result = guarded(number, [&](Instance& instance) -> Result<char*> {
        instance.byteResult.clear();
        Result<std::string> bytes = body(instance);
        if (!bytes) {
            return tl::unexpected<Error>(std::move(bytes.error()));
        }
        if (bytes->size() > INT_MAX) {
            return fail(ErrorCode::OutOfMemory,
                        "the result is larger than the interface can return");
        }
        instance.byteResult = std::move(*bytes);
        return instance.byteResult.data();
    });
    return result ? *result : nullptr;
}

/// The value of a wide string argument as UTF-8. The buffer that carried it is freed: callers of
/// the interface do not release those.
std::string takeWide(Instance& instance, const wchar_t* argument);

/// The value of a byte string argument: a buffer's bytes, or the bytes up to the NUL.
std::string bytesOf(const Instance& instance, const char* argument);

/// What a function answers that this version does not have.
template <class Value>
Value unavailable(int number, const char* name) noexcept
{
    guarded(number, [&](Instance& instance) -> Outcome {
        instance.wideResult.clear();
        instance.byteResult.clear();
        return fail(ErrorCode::NotAvailable,
                    std::string(name) + ": function not available in this version");
    });
    return Value{};
}

} // namespace karvel::boundary
