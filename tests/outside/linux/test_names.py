"""Names that are offered while one types, by real keys."""

import pytest
from harness import wait_until


@pytest.fixture(name="program")
def fixture_program(start, block):
    """The program with the keyboard in an empty line at the end of OnKey."""
    program = start(block)
    program.wait_for("Tessaly")
    program.key("F2")
    program.type("onk")
    program.key("F3", "ctrl+End", "Return")
    return program


def saved(program, block, text):
    program.key("ctrl+s")
    wait_until(f"“{text}” in the file", lambda: text in block.read_text("cp1252"))


def test_a_name_of_the_kit_comes_up_and_enter_takes_it(program, block, picture):
    names = program.come_up(lambda: program.type("Sen"))
    picture("names")
    program.key("Return")
    wait_until("the list gone", lambda: names not in program.windows())
    parameters = program.come_up(lambda: program.type("(&frame, "))
    picture("parameters")
    program.type("1);")
    wait_until("the parameters gone", lambda: parameters not in program.windows())
    saved(program, block, "SendFrame(&frame, 1);")


def test_ctrl_and_blank_ask_and_escape_takes_back(program, block):
    names = program.come_up(lambda: program.key("ctrl+space"))
    program.key("Escape")
    wait_until("the list gone", lambda: names not in program.windows())
    program.type("Print")
    saved(program, block, "\nPrint")
