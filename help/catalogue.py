"""The program's own texts and menus, read from its tables in C++. A text that has no identifier goes by its name."""

import re
from functools import cache
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
ESCAPES = {"\\n": "\n", "\\t": "\t", '\\"': '"', "\\\\": "\\"}
LITERALS = r'((?:"(?:[^"\\]|\\.)*"\s*)+)'
ROW = re.compile(r"_TEXT\((?:(\w+), )?(\w+),\s*" + LITERALS + r",\s*" + LITERALS + r"\)")


def _joined(literals: str) -> str:
    parts = re.findall(r'"((?:[^"\\]|\\.)*)"', literals)
    return re.sub(r'\\[nt"\\]', lambda match: ESCAPES[match.group()], "".join(parts))


def _rows() -> list[tuple[str, ...]]:
    """Identifier, name in the code, and the literals of both texts of each row."""
    rows = []
    for name in ("app/Texts.def", "app/OwnTexts.def"):
        source = (ROOT / name).read_text(encoding="utf-8")
        found = ROW.findall(source)
        if len(found) != len(re.findall(r"^\w+_TEXT\(", source, re.M)):
            raise ValueError(f"{name} has rows that help/catalogue.py cannot read")
        rows += found
    return rows


@cache
def catalogue() -> dict[str, dict[str, str]]:
    """The texts by identifier and language."""
    return {row[0] or row[1]: {"en": _joined(row[2]), "de": _joined(row[3])} for row in _rows()}


@cache
def names() -> dict[str, str]:
    """What the code calls each identifier's text."""
    return {row[0] or row[1]: row[1] for row in _rows()}


def text(identifier: str, language: str) -> str:
    return catalogue()[identifier][language]


def menu_text(identifier: str, language: str) -> str:
    """A menu's text as the user reads it, without the mark of its access key."""
    return text(identifier, language).replace("&", "")


@cache
def menu_parents() -> dict[str, str]:
    """Each menu item with the menu that it is in; "" for those in the menu bar."""
    source = (ROOT / "ui/MenuTable.h").read_text(encoding="utf-8")
    return dict(re.findall(r'\{"(mnu\w+)", "(\w*)"', source))
