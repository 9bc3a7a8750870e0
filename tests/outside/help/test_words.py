"""The check of words in texts for users finds what it is for, and leaves code and quoted texts of the window alone."""

import re
import sys

import pytest
from harness import ROOT, run
from help_pages import PSF

sys.path.insert(0, str(ROOT / "help"))

import words  # noqa: E402


def complaints(folder, text, name="page.md", language="en"):
    page = folder / language / name
    page.parent.mkdir(exist_ok=True)
    page.write_text(text, encoding="utf-8")
    texts = {page: words.prose(page, language)}
    found = words.wrong_names(texts, language) + words.wrong_spellings(texts, language)
    return [(line, word) for _, line, word, _ in sorted(found)]


@pytest.mark.parametrize("language,text,word", [
    ("en", "title: A page\n\nFix it.\nThis line goes behind the first.\n", "behind"),
    ("en", "title: A page\n\nFix it.\nThis line is mispelt.\n", "mispelt"),
    ("en", "title: A page\n\nOne reads `a` here,\nand a host kit there.\n", "host kit"),
    ("de", "title: Eine Seite\n\nEs geht,\ngleich ob jetzt oder später.\n", "gleich ob"),
    ("de", "title: Eine Seite\n\nEs geht\nohne Außnahme.\n", "Außnahme")])
def test_a_wrong_word_is_found_with_its_line(tmp_path, language, text, word):
    assert complaints(tmp_path, text, language=language) == [(4, word)]


@pytest.mark.parametrize("text", [
    "title: A page\nindex: blank#blank; sneeked", "title: A page\n\nRun `blank behind xyzzy`.\n",
    "title: A page\n\n```\nxyzzy behind\n```\n", "title: A page\n\nLike this:\n\n    xyzzy behind\n\n    xyzzy\n",
    "title: A page\n\nSee [the page](xyzzy.md#behind).\n", "title: A page\n\nChoose Save Program Source File As.\n",
    "title: A page\n\nA stand-in stands for another.\n"])
def test_code_links_and_quoted_texts_are_not_checked(tmp_path, text):
    assert complaints(tmp_path, text) == ([(2, "sneeked")] if "sneeked" in text else [])


def test_of_a_man_page_the_running_text_is_checked(tmp_path):
    text = ".Sh NAME\n.Nm xyzzy\n.Nd mend it\nFirst,\n.Fl xyzzy\nblank.\n.Bd -literal\nxyzzy\n.Ed\n"
    assert complaints(tmp_path, text, "page.1") == [(3, "mend"), (6, "blank")]


def test_the_glossary_may_tell_other_names_and_words_of_both_languages(tmp_path):
    text = "title: Words\n\nThe blank is a Leerzeichen, not a xyzzy.\n"
    assert complaints(tmp_path, text, "glossary.md") == [(3, "xyzzy")]


def test_there_is_a_rule_for_what_to_use_instead():
    for language in words.DICTIONARIES:
        assert len(words._rules(language)) > 10
        assert all(use for _, use, _ in words._rules(language))


def test_psf_uses_the_same_words_where_it_helps():
    def help_text(*command):
        return run(PSF, *command, "--help", text=True).stdout
    commands = re.findall(r"^  ([a-z-]+) ", help_text().split("commands:")[-1].split("COMMANDS:")[-1], re.M)
    assert {"new", "test", "recover"} <= set(commands)
    for text in [help_text(), *map(help_text, commands)]:
        assert words.wrong_words(text, "en") == []


@pytest.mark.parametrize("name", ["kit/compile.sh", "kit/compile.bat", "kit/include/vexlib.h", "kit/include/tornem.h",
                                  "packaging/linux/settings.reg", "packaging/linux/open-examples"])
def test_so_do_the_files_that_users_open(name):
    assert words.wrong_words((ROOT / name).read_text(encoding="utf-8"), "en") == []
