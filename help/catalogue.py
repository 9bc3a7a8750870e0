"""The program's own texts and menus, read from its tables in C++."""

import re
from functools import cache
from pathlib import Path

ROOT = Path(__file__).resolve().parent.parent
ESCAPES = {"\\n": "\n", "\\t": "\t", '\\"': '"', "\\\\": "\\"}
LITERALS = r'((?:"(?:[^"\\]|\\.)*"\s*)+)'
ROW = re.compile(r'\{\s*"(\w+)"\s*,\s*' + LITERALS + r",\s*" + LITERALS + r"\}")


def _joined(literals: str) -> str:
    parts = re.findall(r'"((?:[^"\\]|\\.)*)"', literals)
    return re.sub(r'\\[nt"\\]', lambda match: ESCAPES[match.group()], "".join(parts))


@cache
def catalogue() -> dict[str, dict[str, str]]:
    """The texts by identifier and language."""
    source = (ROOT / "app/CatalogueTable.h").read_text(encoding="utf-8")
    table = source[source.index("CatalogueRows[]") : source.index("TextMembers[]")]
    texts = {row[0]: {"en": _joined(row[1]), "de": _joined(row[2])} for row in ROW.findall(table)}
    if len(texts) != len(re.findall(r'\{\s*"\w+"\s*,', table)):
        raise ValueError("app/CatalogueTable.h has rows that help/catalogue.py cannot read")
    return texts


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
