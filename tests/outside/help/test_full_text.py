"""Full-text search in the CHM files, asked through a reader of such files that is not ours."""

import html
import os
import re
from pathlib import Path

import pytest
from chm import chm
from harness import ROOT

HELP = Path(os.environ["HELP"])
TOPICS = (ROOT / "help/order.txt").read_text(encoding="utf-8").split()


@pytest.fixture(name="book", params=["en", "de"])
def fixture_book(request):
    file = chm.CHMFile()
    assert file.LoadCHM(str(HELP / f"Tessaly-{request.param}.chm"))
    yield request.param, file
    file.CloseCHM()


# The reader tells of pages with the word in their titles alone where there are such; these words are in no title.
def found(file, word, titles=False):
    """The pages that have the word."""
    pages = file.Search(word.encode("cp1252"), True, titles)[1]
    return {Path(page.decode()).stem for page in pages.values()}


def texts(language):
    """The words of each page, as in its title and its text."""
    for name in TOPICS:
        source = (HELP / "html" / language / f"{name}.html").read_text(encoding="utf-8")
        source = source.split("<main")[1].split("</main>")[0]
        text = re.sub(r"<(?:h1|nav).*?</(?:h1|nav)>|<[^>]*>", " ", source, flags=re.S)
        yield name, set(re.findall(r"[a-zäöüß]{4,}", html.unescape(text).lower()))


def test_words_are_found_on_all_their_pages_whether_they_have_umlauts_or_not(book):
    language, file = book
    words = ["without", "prototype", "character"] if language == "en" else [
        "über", "löschen", "schließen", "rückgängig", "geändert", "ungespeicherte", "zurück", "zeichen"]
    titles = {name: source for name, source in texts(language)}
    for word in words:
        pages = found(file, word)
        wanted = {name for name, source in titles.items() if word in source}
        assert len(wanted) > 1 and wanted <= pages, (word, wanted - pages)


def test_words_in_titles_are_found(book):
    language, file = book
    word, page = ("menus", "menus") if language == "en" else ("menüs", "menus")
    assert found(file, word, titles=True) == {page}


def test_what_no_page_has_is_not_found(book):
    _, file = book
    for word in ("qque", "rqqueckgqqaengig", "ckg", "xyzzy"):
        assert found(file, word) == set(), word


def test_all_pages_can_still_be_read(book):
    language, file = book
    for name in TOPICS:
        there, unit = file.ResolveObject(f"/{name}.html".encode())
        assert there == 0
        length, text = file.RetrieveObject(unit)
        assert length == unit.length and text.startswith(f'<!DOCTYPE html>\n<html lang="{language}">'.encode())
