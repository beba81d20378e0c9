#!/usr/bin/env python3
"""Generates the forwarding operations of the PDF library binding from the function list.

generate_binding.py OUT_DIR

operations.h          member declarations, included inside the class
function_index.h      position of every export in the function table, and the names in lookup order
operations_N.cpp      member definitions, in SOURCES files so that they compile side by side
"""
import sys
from collections import Counter
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[2] / "KarvelPDFLibrary" / "interface"))
from function_list import forwarded, housekeeping, write_if_changed  # noqa: E402

SOURCES = 4
CLASS = "KarvelPDFLibraryCPDylibCPP1311"
ARGUMENT = {"int": "int", "double": "double", "wstring": "const std::wstring&", "string": "const std::string&"}
RESULT = {"int": "int", "double": "double", "wstring": "std::wstring", "string": "std::string"}

# How many functions each family has. A list that differs is not the one this binding was written for.
FAMILIES = {
    "int: no arguments": 88, "int: integers only": 273, "int: reals only": 48, "int: integers and reals": 67,
    "int: at least one wstring": 210, "int: at least one string": 15,
    "double: no arguments": 8, "double: integers only": 30, "double: integers and reals": 1,
    "double: at least one wstring": 5,
    "wstring: no arguments": 15, "wstring: integers only": 51, "wstring: at least one wstring": 20,
    "string: no arguments": 4, "string: integers only": 12, "string: integers and reals": 2,
    "string: at least one wstring": 2, "string: at least one string": 1,
}


def parameters(function):
    return ", ".join(f"{ARGUMENT[argument.kind]} {argument.name}" for argument in function.arguments)


def check_families(functions):
    counted = Counter(function.family for function in functions)
    wrong = [f"{family}: {counted.get(family, 0)} instead of {FAMILIES.get(family, 0)}"
             for family in sorted(FAMILIES.keys() | counted.keys()) if counted.get(family, 0) != FAMILIES.get(family, 0)]
    if wrong:
        sys.exit("the function list does not have the expected families:\n  " + "\n  ".join(wrong))


def declarations(functions):
    lines = ["    // Generated from the function list; included inside the binding class.",
             f"    static constexpr int boundFunctions = {len(functions) + len(housekeeping())};"]
    for function in functions:
        lines += ["", f"    /// {function.summary}", f"    {RESULT[function.result]} {function.name}({parameters(function)});"]
    return "\n".join(lines) + "\n"


def index(functions):
    everything = functions + housekeeping()
    lines = ["// Generated from the function list: the function table's order is the lookup order.", "#pragma once", "",
             "namespace binding {", "", "enum class Function : int {"]
    lines += [f"    {function.name}," for function in everything]
    lines += ["};", "", f"constexpr int forwardedCount = {len(functions)};",
              f"constexpr int functionCount = {len(everything)};", "",
              "constexpr const char* exportNames[functionCount] = {"]
    lines += [f'    "{function.export}",' for function in everything]
    return "\n".join(lines + ["};", "", "} // namespace binding", ""])


def definitions(functions):
    lines = ["// Generated from the function list.", '#include "VantoraApp/binding/Forwarding.h"', "",
             "using binding::Function;", ""]
    for function in functions:
        values = "".join(f", {argument.name}" for argument in function.arguments)
        result = RESULT[function.result]
        lines += [f"{result} {CLASS}::{function.name}({parameters(function)})", "{",
                  f"    return forward<{result}>(Function::{function.name}{values});", "}", ""]
    return "\n".join(lines)


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    out = Path(sys.argv[1])
    functions = forwarded()
    check_families(functions)
    write_if_changed(out / "operations.h", declarations(functions))
    write_if_changed(out / "function_index.h", index(functions))
    for number in range(SOURCES):
        write_if_changed(out / f"operations_{number + 1}.cpp", definitions(functions[number::SOURCES]))


if __name__ == "__main__":
    main()
