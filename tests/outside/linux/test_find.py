"""Finding and replacing by real keys."""

import shutil

import pytest
from harness import example_file, wait_until
from linux_harness import write_all_settings


@pytest.fixture(name="block")
def fixture_block(home):
    return shutil.copy(example_file("blink", ".PSF"), home / "find.PSF")


def references(block):
    return block.read_bytes().partition(b"[GVars]\r\n")[2].partition(b"[GFuncs]")[0]


@pytest.mark.parametrize("language", [0, 1])
def test_all_of_a_text_is_replaced_and_a_line_gone_to(start, home, block, picture, language):
    write_all_settings(home, Language=language)
    program = start(block)
    program.wait_for("Tessaly")
    program.key("F2", "Home", "F3", "ctrl+h")
    program.type("slowest")
    program.key(*["Tab"] * 6)
    program.type("Longest")
    picture(f"find-{['en', 'de'][language]}")
    program.key("Return", "Escape", "ctrl+g")
    program.type("2")
    program.key("Return")
    program.type("int second;")
    program.key("ctrl+s")
    wait_until("the saved text", lambda: b"second" in block.read_bytes())
    assert b"#define Longest 2000" in references(block)
    assert references(block).split(b"\r\n")[1] == b"int second;"


def test_the_places_in_the_whole_document_are_listed(start, home, block, picture):
    program = start(block)
    program.wait_for("Tessaly")
    program.key("ctrl+shift+f")
    program.type("halfPeriod")
    program.key("Return")
    wait_until("the places", lambda: program.windows("^Places found$"))
    program.wait_for("Tessaly")
    picture("places")
    program.key("ctrl+j", "ctrl+j", "Home")
    program.type("x")
    program.key("ctrl+s")
    wait_until("the saved text", lambda: b"x    halfPeriod = period;" in block.read_bytes() or
               b"xlong halfPeriod" in block.read_bytes())
