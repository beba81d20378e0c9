#pragma once

#include "VantoraApp/binding/KarvelPDFLibraryCPDylibCPP1311.h"

#include <string>
#include <variant>
#include <vector>

enum class Kind { integer, real, wide, bytes };

/// In the order of the kinds.
using Outcome = std::variant<int, double, std::wstring, std::string>;

/// Argument values that are different at every position and in every kind.
struct ArgumentValues {
    bool nulInBytes = false;
    bool emptyStrings = false;

    static int integer(int position) { return position * -100'000'001; }
    static double real(int position) { return position * 1000.25; }

    std::wstring wide(int position) const
    {
        return emptyStrings ? std::wstring()
                            : L"wide \u0416\U0001F4C4 " + std::to_wstring(position);
    }

    std::string bytes(int position) const
    {
        const std::string text = "bytes \xE9 " + std::to_string(position);
        return emptyStrings ? std::string() : nulInBytes ? text + '\0' + "tail" : text;
    }
};

/// One forwarder of the binding and a call of it.
struct ForwarderRow {
    std::string name;
    Kind result;
    std::vector<Kind> arguments;
    Outcome (*call)(KarvelPDFLibraryCPDylibCPP1311&, const ArgumentValues&);
};

/// All forwarders, in the order of the function list.
const std::vector<ForwarderRow>& forwarderRows();
