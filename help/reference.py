"""The reference of the runtime library, made of what the kit's headers declare and say.

English is the headers' own comments. German is in de/runtime.txt: each entry begins with its name and the mark of what
it renders, so the build fails when an entry lacks one or the header has changed since. A page puts entries in by

    {call:SendFrame}      the declaration, and what the comment says
    {about:DataFrame}     what the comment says
    {fields:DataFrame}    a row of a table for each field: name, type, meaning
    {values:VEX_OK}       a row for each constant that is defined with this one: name, value, meaning
"""

import hashlib
import re
from dataclasses import dataclass
from functools import cache
from pathlib import Path

HERE = Path(__file__).resolve().parent
HEADERS = [HERE.parent / "kit" / "include" / name for name in ("vexlib.h", "tornem.h")]
GERMAN = HERE / "de" / "runtime.txt"

# A comment and the lines right below it.
BLOCK = re.compile(r"^/\*((?:[^*]|\*(?!/))*)\*/\n((?:(?!/\*)[^\n]+\n)+)", re.M)
FUNCTION = re.compile(r"^(?:[A-Z_]{2,} )*((?:const )?[A-Za-z][\w ]*?[ *]+(?!kit_)(\w+)\([^;{]*\))(?:;| \{)$", re.M)
FIELD = re.compile(r"^    (\w+) (\w+)((?:\[\d+\])?); +/\* (.*?) \*/$", re.M)
VALUE = re.compile(r"^#define (VEX_\w+) \(?(-?\d+)\)?(?: +/\* (.*?) \*/)?$", re.M)

# What else is code in a comment.
CODE = r"DataFrame frame = \{0\}|--\w+|(?:\d+-)?0x[0-9A-F]+|%lld|\b(?:VEX_\w+|printf|memset|NULL)\b"


@dataclass(frozen=True)
class Entry:
    name: str
    group: str  # the first name that is declared with it
    declaration: str
    comment: str

    @property
    def mark(self) -> str:
        return hashlib.sha256(f"{self.declaration}\n{self.comment}".encode()).hexdigest()[:8]


def _plain_comment(text: str) -> str:
    return " ".join(line.strip().removeprefix("*").strip() for line in text.strip().splitlines()).strip()


def _functions(body: str, comment: str) -> list[Entry]:
    found = FUNCTION.findall(body)
    declaration = "\n".join(" ".join(line.split()) + ";" for line, _ in found)
    return [Entry(found[0][1], found[0][1], declaration, comment)] if found else []


def _fields(body: str, comment: str) -> list[Entry]:
    struct = re.search(r"^typedef struct (\w+) \{", body, re.M)
    if not struct:
        return []
    found = [Entry(f"{struct[1]}.{name}", struct[1], type_name + size, text)
             for type_name, name, size, text in FIELD.findall(body)]
    if len(found) != body.count("\n    "):
        raise ValueError(f"a field of {struct[1]} has no comment")
    return [Entry(struct[1], struct[1], "", comment), *found]


def _values(body: str, comment: str) -> list[Entry]:
    found = VALUE.findall(body)
    return [Entry(name, found[0][0], value, text or (comment if len(found) == 1 else ""))
            for name, value, text in found]


@cache
def entries() -> dict[str, Entry]:
    """All that the headers declare with a comment, by its name; two functions below one comment are one entry."""
    found = []
    for header in HEADERS:
        for comment, body in BLOCK.findall(header.read_text(encoding="utf-8")):
            comment = _plain_comment(comment)
            found += _functions(body, comment) + _fields(body, comment) + _values(body, comment)
    if any(not entry.comment for entry in found):
        raise ValueError(f"no comment: {[entry.name for entry in found if not entry.comment]}")
    return {entry.name: entry for entry in found}


@cache
def _german() -> dict[str, str]:
    texts, wrong = {}, []
    for part in GERMAN.read_text(encoding="utf-8").split("\n\n")[1:]:
        head, _, text = part.strip().partition("\n")
        name, _, mark = head.partition(" ")
        texts[name] = " ".join(text.split())
        if name not in entries():
            wrong.append(f"{name} is in no header")
        elif mark != entries()[name].mark:
            wrong.append(f"{name} has changed in its header; the mark of what it is now is {entries()[name].mark}")
    wrong += [f"{name} {entries()[name].mark} is missing" for name in entries() if name not in texts]
    if wrong:
        raise ValueError(f"{GERMAN}: " + "; ".join(wrong))
    return texts


def _marked_up(text: str) -> str:
    """A comment as Markdown that means nothing but itself, with names as code."""
    names = "|".join(name for name in entries() if "." not in name)
    parts = re.split(rf"({CODE}|\b(?:{names})\b(?:\(\w*\))?)", text)
    parts[0] = parts[0][:1].upper() + parts[0][1:]
    return "".join(f"`{part}`" if number % 2 else re.sub(r"[\\`*_|<>&\[\]]", lambda each: f"&#{ord(each[0])};", part)
                   for number, part in enumerate(parts))


def _meaning(entry: Entry, language: str) -> str:
    return _german()[entry.name] if language == "de" else _marked_up(entry.comment)


def _call(entry: Entry, language: str) -> str:
    code = "\n".join("    " + line for line in entry.declaration.splitlines())
    return f"{code}\n\n{_meaning(entry, language)}\n"


def _rows(group: str, language: str) -> str:
    rows = [entry for entry in entries().values() if entry.group == group and entry.declaration]
    return "\n".join(f"| `{entry.name.rpartition('.')[2]}` | `{entry.declaration}` | "
                     f"{_meaning(entry, language)} |" for entry in rows)


def put_in(source: str, language: str) -> str:
    """A page's Markdown with the entries that it names."""
    source = re.sub(r"^\{about:(\w+)\}$", lambda match: _meaning(entries()[match[1]], language), source, flags=re.M)
    source = re.sub(r"^\{call:(\w+)\}$", lambda match: _call(entries()[match[1]], language), source, flags=re.M)
    return re.sub(r"^\{(?:fields|values):(\w+)\}$", lambda match: _rows(match[1], language), source, flags=re.M)
