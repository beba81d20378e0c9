#pragma once

#include "Recording.h"

#include <stdexcept>
#include <type_traits>

#define RECORDED extern "C" __attribute__((visibility("default")))

/// The library's one recording.
RECORDED Recording* recording();

std::string described(int value);
std::string described(double value);
std::string described(const wchar_t* argument);
std::string described(const char* argument);

/// Writes down a call and overwrites the results of the one before.
void note(const std::string& call);

/// The integer or text that the test wants the function to answer next, if it wants one.
std::optional<int> nextAnswer(const char* name);
std::optional<std::wstring> nextText(const char* name);

template <class Result, class... Arguments>
Result recordedCall(const char* name, int instance, Arguments... arguments)
{
    std::string call = std::string(name) + "(" + std::to_string(instance);
    ((call += ", " + described(arguments)), ...);
    note(call + ")");
    Recording& record = *recording();
    if (record.throws && sizeof...(arguments) > 0) {
        throw std::runtime_error("thrown by the recording library");
    }
    if constexpr (std::is_same_v<Result, int>) {
        return nextAnswer(name).value_or(integerResultOf(name));
    } else if constexpr (std::is_same_v<Result, double>) {
        return realResultOf(name);
    } else if constexpr (std::is_same_v<Result, wchar_t*>) {
        record.wideResult = nextText(name).value_or(wideResultOf(name));
        return record.nullResults ? nullptr : record.wideResult.data();
    } else {
        record.byteResult = byteResultOf(name);
        return record.nullResults ? nullptr : record.byteResult.data();
    }
}
