"""The PDF library's function list as Python objects, and how its kinds of values are written in C and C++."""
import csv
import re
from dataclasses import dataclass
from pathlib import Path

HERE = Path(__file__).resolve().parent


@dataclass
class Argument:
    kind: str  # int, double, wstring, string; buffer and bytes in housekeeping functions
    name: str


@dataclass
class Function:
    module: str
    result: str
    name: str
    arguments: list
    summary: str

    @property
    def export(self):
        return "KPL" + self.name

    @property
    def family(self):
        """The function's family by result and argument kinds, as the binding groups them."""
        kinds = {argument.kind for argument in self.arguments}
        for strings in ("string", "wstring"):
            if strings in kinds:
                return f"{self.result}: at least one {strings}"
        names = {frozenset(): "no arguments", frozenset({"int"}): "integers only",
                 frozenset({"double"}): "reals only", frozenset({"int", "double"}): "integers and reals"}
        return f"{self.result}: {names[frozenset(kinds)]}"


def _read(path):
    functions = []
    with open(path, newline="", encoding="utf-8") as file:
        for row in csv.DictReader(file):
            arguments = [Argument(*text.split()) for text in filter(None, re.split(r",\s*", row["arguments"]))]
            functions.append(Function(row.get("module", ""), row["result"], row["name"], arguments, row["summary"]))
    return functions


def forwarded():
    """The functions that a binding forwards, in lookup order."""
    return _read(HERE / "pdf-library-functions.csv")


def housekeeping():
    """The functions that a binding calls itself, in lookup order."""
    return _read(HERE / "housekeeping-functions.csv")


C_ARGUMENT = {"int": "int", "double": "double", "wstring": "const wchar_t*", "string": "const char*",
              "buffer": "char*", "bytes": "const char*"}
C_RESULT = {"int": "int", "double": "double", "wstring": "wchar_t*", "string": "char*", "buffer": "char*"}


def c_signature(function):
    """The function's declaration at the C interface, without the semicolon."""
    arguments = [] if function.name == "CreateLibrary" else ["int instance"]
    arguments += [f"{C_ARGUMENT[argument.kind]} {argument.name}" for argument in function.arguments]
    return f"{C_RESULT[function.result]} {function.export}({', '.join(arguments)})"


def write_if_changed(path, text):
    """Writes a generated file; an unchanged one keeps its time, so that nothing is built again for it."""
    path = Path(path)
    path.parent.mkdir(parents=True, exist_ok=True)
    if not path.exists() or path.read_text(encoding="utf-8") != text:
        path.write_text(text, encoding="utf-8")
