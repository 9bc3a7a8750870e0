"""Checks the words of all texts for users: help/words.py [FILE...]. Prints FILE:LINE, the word, and what to use.

words-LANGUAGE.txt has one name for each thing. hunspell knows the dictionary's words and spelling-LANGUAGE.txt the
field's own. Code, quoted texts of the window and entries of the index are not checked against the first.
"""

import re
import subprocess
import sys
from functools import cache
from pathlib import Path

HERE = Path(__file__).resolve().parent
ROOT = HERE.parent
sys.path.insert(0, str(HERE))
sys.dont_write_bytecode = True

import catalogue  # noqa: E402

DICTIONARIES = {"en": "en_GB", "de": "de_DE"}
PAGES = sorted(HERE.glob("??/*.md"))
OTHER_TEXTS = ["README.md", "kit/README.md", "examples/README.md", "programs/psf/psf.1", "packaging/linux/tessaly.1"]
CODE = re.compile(r"```.*?```|(?:(?<=\n\n)|(?<=^))(?: {4}[^\n]*\n|\n(?= {4}))+|``.+?``|`[^`]+`|<kbd>.*?</kbd>"
                  r"|<(?:code|pre)\b.*?</(?:code|pre)>|<[^>]*>|\]\([^)]*\)|\{[^}\n]*\}|\w+://\S+", re.S)
MAN_CODE = re.compile(r"^\.Bd.*?^\.Ed|^\.(?!(?:Nd|Sh|Ss|Dq|Em) )[^\n]*|^\.\w+|\\&|\\\(..|\\f.", re.S | re.M)
WORD = re.compile(r"[^\W\d_]+(?:['’][^\W\d_]+)*")


def _without(pattern: re.Pattern, text: str) -> str:
    """The text with as many lines, and nothing in them where the pattern fits."""
    return pattern.sub(lambda match: " · " + "\n" * match.group().count("\n"), text)


@cache
def _quoted(language: str) -> re.Pattern:
    """The window's texts that are more than a word. Line breaks of the page may be in them."""
    texts = {catalogue.menu_text(name, each) for name in catalogue.catalogue() for each in ("en", language)}
    longest = sorted((text.strip() for text in texts if " " in text.strip()), key=len, reverse=True)
    return re.compile("|".join(r"\s+".join(map(re.escape, text.split())) for text in longest), re.I)


def prose(path: Path, language: str) -> str:
    """What of a file is running text, line by line as in the file."""
    head, gap, body = path.read_text(encoding="utf-8").partition("\n\n")
    text = re.sub(r"^title:|#[\w-]+(?=;|$)", "", head, flags=re.M) + gap + body
    return _without(_quoted(language), _without(MAN_CODE if path.suffix == ".1" else CODE, text))


@cache
def _rules(language: str) -> list[tuple[re.Pattern, str, re.Pattern | None]]:
    rules = []
    for line in (HERE / f"words-{language}.txt").read_text(encoding="utf-8").splitlines():
        if not line.startswith("#"):
            wrong, use, *passes = line.split(" = ")
            wrong, passes = (re.compile(rf"(?<!\w)(?:{each})(?!\w)".replace(" ", r"\s+"), re.I) if each else None
                             for each in (wrong, "".join(passes)))
            rules.append((wrong, use, passes))
    return rules


def wrong_words(text: str, language: str) -> list[tuple[int, str, str]]:
    """Line, word, and what to use, of all that the list does not want."""
    text = re.sub(r"^index: .*", "", text, flags=re.M)
    found = []
    for wrong, use, passes in _rules(language):
        allowed = _without(passes, text) if passes else text
        found += [(allowed.count("\n", 0, match.start()) + 1, " ".join(match.group().split()), f"use {use}")
                  for match in wrong.finditer(allowed)]
    return sorted(found)


def _plain(word: str) -> str:
    return re.sub(r"'s?$", "", word.replace("’", "'"))


def misspelt(words: set[str], language: str) -> set[str]:
    """Those that neither the dictionary nor the list of the field's words has."""
    known = (HERE / f"spelling-{language}.txt").read_text(encoding="utf-8").split()
    asked = sorted(words - {*known, *(word.capitalize() for word in known)})
    done = subprocess.run(["hunspell", "-d", DICTIONARIES[language], "-i", "utf-8", "-l"], input="\n".join(asked),
                          check=True, capture_output=True, text=True, encoding="utf-8")
    return set(done.stdout.split())


def _is_name(word: str) -> bool:
    """Of the program's code, or an abbreviation: Print is no such, OnFrame and PSF are."""
    return len(word) < 2 or word[1:] != word[1:].lower()


def wrong_spellings(texts: dict[Path, str], language: str) -> list[tuple[Path, int, str, str]]:
    places = [(path, number, _plain(word)) for path, text in texts.items()
              for number, line in enumerate(text.replace("\nindex:", "\n", 1).splitlines(), 1)
              for word in WORD.findall(line)]
    wrong = misspelt({word for _, _, word in places if not _is_name(word)}, language)
    both = set.intersection(*(misspelt(wrong, each) for each in DICTIONARIES))
    places = [place for place in places if place[0].stem != "glossary" or place[2] in both]
    return [(path, number, word, f"is in no dictionary, nor in help/spelling-{language}.txt")
            for path, number, word in places if word in wrong]


def wrong_names(texts: dict[Path, str], language: str) -> list[tuple[Path, int, str, str]]:
    # The glossary is there to tell the other names.
    return [(path, *each) for path, text in texts.items() if path.stem != "glossary"
            for each in wrong_words(text, language)]


def _language(path: Path) -> str:
    return "de" if path.parent.name == "de" else "en"


def complaints(paths: list[Path], checks: list) -> list[str]:
    found = []
    for language in DICTIONARIES:
        texts = {path: prose(path, language) for path in paths if _language(path) == language}
        found += [each for check in checks for each in check(texts, language)]
    return [f"{path.relative_to(ROOT)}:{number}: “{word}”: {what}" for path, number, word, what in sorted(found)]


def refuse_wrong_words() -> None:
    """For the build of the help, which is to need no dictionary."""
    found = complaints(PAGES, [wrong_names])
    if found:
        raise ValueError("words that help/words-*.txt does not want:\n" + "\n".join(found))


def main() -> None:
    paths = [Path(name).resolve() for name in sys.argv[1:]]
    found = complaints(paths or [*PAGES, *(ROOT / name for name in OTHER_TEXTS)], [wrong_names, wrong_spellings])
    print(*found, sep="\n", end="\n" if found else "")
    sys.exit(bool(found))


if __name__ == "__main__":
    main()
