#!/usr/bin/env python3
"""Generates the recording library's exports and the rows that drive every forwarder of the binding.

generate_recording_sources.py OUT_DIR

recording_exports.cpp   every function of the list at the C interface, recording its call
forwarder_rows.cpp      for every forwarder a call with values that tell its arguments' positions
"""
import sys
from pathlib import Path

sys.path.insert(0, str(Path(__file__).resolve().parents[3] / "KarvelPDFLibrary" / "interface"))
from function_list import C_RESULT, c_signature, forwarded, write_if_changed  # noqa: E402

VALUE = {"int": "integer", "double": "real", "wstring": "wide", "string": "bytes"}


def exports(functions):
    lines = ["// Generated from the function list.", '#include "RecordedCall.h"', ""]
    for function in functions:
        names = "".join(f", {argument.name}" for argument in function.arguments)
        lines += [f'RECORDED {c_signature(function)}', "{",
                  f'    return recordedCall<{C_RESULT[function.result]}>("{function.name}", instance{names});', "}", ""]
    return "\n".join(lines)


def rows(functions):
    lines = ["// Generated from the function list.", '#include "ForwarderRows.h"', "",
             "using Binding = KarvelPDFLibraryCPDylibCPP1311;", "",
             "const std::vector<ForwarderRow>& forwarderRows()", "{",
             "    static const std::vector<ForwarderRow> rows = {"]
    for function in functions:
        kinds = ", ".join(f"Kind::{VALUE[argument.kind]}" for argument in function.arguments)
        values = ", ".join(f"a.{VALUE[argument.kind]}({position})"
                           for position, argument in enumerate(function.arguments, 1))
        unused = " a" if values else ""
        lines += [f'        {{"{function.name}", Kind::{VALUE[function.result]}, {{{kinds}}},',
                  f"         [](Binding& b, const ArgumentValues&{unused}) -> Outcome "
                  f"{{ return b.{function.name}({values}); }}}},"]
    return "\n".join(lines + ["    };", "    return rows;", "}", ""])


def main():
    if len(sys.argv) != 2:
        sys.exit(__doc__)
    out = Path(sys.argv[1])
    write_if_changed(out / "recording_exports.cpp", exports(forwarded()))
    write_if_changed(out / "forwarder_rows.cpp", rows(forwarded()))


if __name__ == "__main__":
    main()
