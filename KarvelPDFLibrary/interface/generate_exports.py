#!/usr/bin/env python3
"""Generates the PDF library's C interface from the function list.

generate_exports.py code EXPORTS_DIR OUT_DIR   exports.h, unsupported.cpp and exports.map
generate_exports.py header EXPORTS_DIR FILE    the header for C programs
generate_exports.py page EXPORTS_DIR FILE      the page that says which functions this version answers
generate_exports.py check EXPORTS_DIR FILE     fails when that page is out of date

A function is answered when a source file in EXPORTS_DIR defines it; every other function gets a
definition that fails with the code for "function not available in this version".
"""
import re
import sys
import textwrap
from pathlib import Path

from function_list import c_signature, forwarded, housekeeping, write_if_changed

DEFINITION = re.compile(r"^[\w* ]+\bKPL(\w+)\(int\b|^int KPL(CreateLibrary)\(", re.MULTILINE)


def answered(exports_dir):
    names = set()
    for source in sorted(Path(exports_dir).glob("*.cpp")):
        for match in DEFINITION.finditer(source.read_text(encoding="utf-8")):
            names.add(match.group(1) or match.group(2))
    unknown = names - {function.name for function in forwarded() + housekeeping()}
    if unknown:
        sys.exit(f"defined in {exports_dir} but not in the function list: {', '.join(sorted(unknown))}")
    return names


def header():
    lines = ["// Generated from the function list. The contract that all functions share is in",
             "// KarvelPDFLibrary/interface/conventions.md.", "#pragma once", "",
             '#define KPL_EXPORT __attribute__((visibility("default")))', "",
             "#ifdef __cplusplus", 'extern "C" {', "#else", "#include <wchar.h>", "#endif", ""]
    for function in forwarded() + housekeeping():
        lines += [f"/// {function.summary}", f"KPL_EXPORT {c_signature(function)};", ""]
    return "\n".join(lines + ["#ifdef __cplusplus", "}", "#endif", ""])


CONTRACT = """/*
 * The PDF library's C interface. Generated from the function list.
 *
 * An instance is made by KPLCreateLibrary and ended by KPLReleaseLibrary; its number is the first
 * argument of all other functions. Instances are independent; one is used by one thread at a time.
 *
 * A function that returns int answers 1 for success and 0 for failure, unless its line says otherwise.
 * KPLLastErrorCode and KPLLastErrorText explain the last failure. No exception leaves the library.
 *
 * A text that is returned belongs to the library and is valid until the instance's next call other than
 * KPLStringResultLength and KPLAnsiStringResultLength, which tell its length.
 *
 * A const wchar_t* argument is null, for an empty text, or a buffer of the library, which the call takes
 * over and frees: KPLCreateBuffer makes one for a number of bytes, KPLAddToBuffer fills it, with
 * 4 bytes a character and without a NUL. A const char* argument ends at its NUL byte; with NUL bytes in it,
 * it is such a buffer as well, which KPLReleaseBuffer frees after the call.
 *
 * Pages and indices count from 1, lengths are in points. The file conventions.md, beside the
 * documentation, has the codes and all else that functions have in common.
 */"""


def public_header(names):
    guard = "KARVEL_PDF_LIBRARY_H"
    lines = [CONTRACT, f"#ifndef {guard}", f"#define {guard}", "",
             "#ifdef __cplusplus", 'extern "C" {', "#else", "#include <wchar.h>", "#endif", ""]
    for function in housekeeping() + forwarded():
        note = "" if function.name in names else "; not available in this version: fails with code 13"
        summary = f"/** {function.summary.rstrip('.')}{note}. */"
        lines += [*textwrap.wrap(summary, 110, subsequent_indent="    ", break_long_words=False, break_on_hyphens=False),
                  f"{c_signature(function).replace('()', '(void)')};", ""]
    return "\n".join(lines + ["#ifdef __cplusplus", "}", "#endif", "", "#endif", ""])


def unsupported(names):
    lines = ["// Generated from the function list: the functions that this version does not answer.",
             '#include "exports.h"', "", '#include "KarvelPDFLibrary/exports/Boundary.h"',
             '#include "KarvelPDFLibrary/exports/WideArguments.h"', "",
             "// The arguments of a function that is not available are not looked at; buffers in wide",
             "// string arguments are freed, as callers expect.",
             '#pragma GCC diagnostic ignored "-Wunused-parameter"', ""]
    for function in forwarded():
        if function.name not in names:
            kind = {"int": "int", "double": "double", "wstring": "wchar_t*", "string": "char*"}[function.result]
            wide = ", ".join(argument.name for argument in function.arguments if argument.kind == "wstring")
            lines += [f"{c_signature(function)}", "{"]
            lines += [f"    karvel::boundary::freeWide(instance, {{{wide}}});"] if wide else []
            lines += [f'    return karvel::boundary::unavailable<{kind}>(instance, "{function.name}");', "}", ""]
    return "\n".join(lines)


def export_map():
    names = "\n".join(f"        {function.export};" for function in forwarded() + housekeeping())
    return "{\n    global:\n" + names + "\n    local:\n        *;\n};\n"


def page(names):
    modules = {}
    for function in forwarded():
        modules.setdefault(function.module, []).append(function)
    total = sum(len(functions) for functions in modules.values())
    here = sum(function.name in names for function in forwarded())
    lines = ["# Functions of the PDF library", "",
             "Generated by `KarvelPDFLibrary/interface/generate_exports.py page`; do not edit. "
             f"This version answers {here} of {total} functions. Every other function is exported too and fails "
             'with code 13, "function not available in this version".', "",
             "| Module | Answered | Of |", "|---|---|---|"]
    for module, functions in modules.items():
        lines.append(f"| [{module}](#{module}) | {sum(f.name in names for f in functions)} | {len(functions)} |")
    for module, functions in modules.items():
        lines += ["", f"## {module}", ""]
        there = [function for function in functions if function.name in names]
        missing = [function.name for function in functions if function.name not in names]
        if there:
            lines += ["| Function | What it does |", "|---|---|"]
            for function in there:
                arguments = ", ".join(f"{argument.kind} {argument.name}" for argument in function.arguments)
                summary = function.summary.replace("|", "\\|")
                lines.append(f"| {function.result} `{function.name}({arguments})` | {summary} |")
        if missing:
            lines += ([""] if there else []) + ["Not available: " + ", ".join(f"`{name}`" for name in missing) + "."]
    return "\n".join(lines) + "\n"


def main():
    if len(sys.argv) != 4 or sys.argv[1] not in ("code", "header", "page", "check"):
        sys.exit(__doc__)
    names = answered(sys.argv[2])
    target = Path(sys.argv[3])
    if sys.argv[1] == "page":
        write_if_changed(target, page(names))
        return
    if sys.argv[1] == "header":
        write_if_changed(target, public_header(names))
        return
    if sys.argv[1] == "check":
        if not target.exists() or target.read_text(encoding="utf-8") != page(names):
            sys.exit(f"{target} is out of date: run generate_exports.py page {sys.argv[2]} {target}")
        return
    write_if_changed(target / "exports.h", header())
    write_if_changed(target / "unsupported.cpp", unsupported(names))
    write_if_changed(target / "exports.map", export_map())


if __name__ == "__main__":
    main()
