"""The address for reports, which is set when packages are made: on the page, or a sentence that there is none."""

import sys

import pytest
from harness import ROOT
from help_pages import LANGUAGES

sys.path.insert(0, str(ROOT / "help"))

import topics  # noqa: E402

NONE = {"en": "has not set an address", "de": "keine Adresse für Meldungen"}


def where(language, contact):
    page = next(topic for topic in topics.load_topics(topics.LANGUAGES[language], contact)
                if topic.name == "reporting")
    return page.body.partition('id="where"')[2]


@pytest.mark.parametrize("language", LANGUAGES)
def test_an_address_that_is_set_is_told(language):
    text = where(language, "help_desk@example.com")
    assert "help_desk@example.com" in text.replace("&#64;", "@").replace("&#46;", ".").replace("&#95;", "_")
    assert NONE[language] not in text


@pytest.mark.parametrize("language", LANGUAGES)
def test_without_an_address_the_page_says_so_and_names_none(language):
    text = where(language, "tessaly@ostrel.invalid")
    assert NONE[language] in text and "invalid" not in text


def test_the_address_is_the_one_that_is_set_for_packages():
    assert "--contact ${TESSALY_CONTACT}" in (ROOT / "help/CMakeLists.txt").read_text(encoding="utf-8")
    assert "set(TESSALY_CONTACT " in (ROOT / "CMakeLists.txt").read_text(encoding="utf-8")
