"""Names that are offered while one types, by real keys."""

import pathlib

import pytest
from harness import wait_until, windows_path, xdotool


@pytest.fixture(name="program")
def fixture_program(launch, folder, installed, example):
    """The program with the keyboard in an empty line at the end of a function. Its compiler finds a header."""
    (folder / "include").mkdir()
    (folder / "include/mine.h").write_text("int MineToSend(int first, char *second);\n")
    (folder / "compile.bat.includes").write_text("include\n")
    block = pathlib.Path(example)
    block.write_bytes(block.read_bytes().replace(b"[GVars]\r\n", b'[GVars]\r\n#include "mine.h"\r\n', 1))
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    program.keys("ctrl+End", "Return")
    return program


def type_text(program, text):
    xdotool("type", "--delay", "5", "--", text)
    wait_until(lambda: f"{text!r} at the end of {program.pane()!r}", lambda: program.pane().endswith(text))


def is_shown(program, name):
    return any(window["class"] == name for window in program.windows())


def come(program, name):
    wait_until(f"{name} to come", lambda: is_shown(program, name))


def go(program, name):
    wait_until(f"{name} to go", lambda: not is_shown(program, name))


def test_a_name_of_a_header_comes_up_and_enter_takes_it(program):
    type_text(program, "Min")
    come(program, "Suggestions")
    program.keys("Return")
    go(program, "Suggestions")
    wait_until("the name in the text", lambda: program.pane().endswith("\nMineToSend"))
    type_text(program, "(1, ")
    come(program, "ParameterHint")
    type_text(program, "buffer);")
    go(program, "ParameterHint")


def test_ctrl_and_blank_ask_and_escape_takes_back(program):
    program.keys("ctrl+space")
    come(program, "Suggestions")
    program.keys("Escape")
    go(program, "Suggestions")
    type_text(program, "halfP")
    come(program, "Suggestions")
    program.keys("Tab")
    wait_until("the name in the text", lambda: program.pane().endswith("\nhalfPeriod"))
