"""The glossary: every word that the window always shows is in it, in both languages."""

import sys

import pytest
from harness import ROOT
from help_pages import LANGUAGES, sections, source

sys.path.insert(0, str(ROOT / "help"))

import catalogue  # noqa: E402


def rows(language, part):
    table = sections(source(language, "glossary"))[part].strip().splitlines()[2:]
    return [[cell.strip() for cell in line.strip("|").split("|")] for line in table]


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_menus_groups_and_captions_are_there(language):
    named = "".join(cell for row in rows(language, "window") for cell in row)
    for identifier in catalogue.catalogue():
        if identifier.startswith(("mnu", "node", "lbl")):
            assert f"{{en:{identifier}}}" in named and f"{{de:{identifier}}}" in named, identifier


def test_both_pages_pair_the_same_words():
    english = {(row[0], row[1]) for row in rows("en", "words")}
    german = {(row[1], row[0]) for row in rows("de", "words")}
    assert english == german and len(english) == len(rows("en", "words"))
