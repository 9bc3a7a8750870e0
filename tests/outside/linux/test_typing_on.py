"""Whatever takes the keyboard from the pane gives it back: what is typed then is asked about when the window closes."""

import subprocess

import pytest
from harness import click, wait_until, xdotool


@pytest.fixture(name="program")
def fixture_program(program):
    """Something is typed in the pane, in front of the references."""
    program.type("int first;")
    return program


def text(block):
    return block.read_text("cp1252")


def save(program, block):
    program.key("alt+f", "s")
    wait_until("the saved text", lambda: "int first;" in text(block))
    program.wait_for("Tessaly")


def type_on_and_close(program, block):
    """The question comes, and what was typed in between is saved."""
    program.type("int later;")
    program.close_and_save()
    assert "int first;int later;" in text(block)


def click_into(program, across, down):
    """Clicks into the window, so many pixels from its corner."""
    click(across, down, window=program.wait_for("Tessaly"))


def test_after_a_save_by_keys(program, block):
    save(program, block)
    type_on_and_close(program, block)


def test_after_a_save_by_the_mouse(program, block):
    program.come_up(lambda: click_into(program, 20, 12))
    program.key("s")
    wait_until("the saved text", lambda: "int first;" in text(block))
    type_on_and_close(program, block)


def test_after_a_save_under_another_name(program, block, home):
    program.key("alt+f", "a")
    program.wait_for("Save Program Source File As")
    other = home / "other.PSF"
    program.type(str(other))
    program.key("Return")
    wait_until("the other file", other.exists)
    program.wait_for("Tessaly")
    type_on_and_close(program, other)


def test_after_a_build_with_its_question_and_its_window(program, block, home):
    program.key("F10")
    program.wait_for("Save As")
    program.key("Return")
    wait_until("the program block", (home / "block.out").exists)
    program.wait_for("Tessaly")
    type_on_and_close(program, block)


def test_after_a_cancelled_open(program, block):
    save(program, block)
    program.key("alt+f", "p")
    program.wait_for("Open Program Source File")
    program.key("Escape")
    program.wait_for("Tessaly")
    type_on_and_close(program, block)


def test_after_menus_that_were_only_looked_at(program, block):
    save(program, block)
    menu = program.come_up(lambda: program.key("alt+f"))
    program.key("Escape", "Escape")
    wait_until("the closed menu", lambda: menu not in program.windows())
    program.key("Alt_L", "Alt_L")
    type_on_and_close(program, block)


def test_after_boxes_and_a_change_of_the_language(program, block):
    save(program, block)
    program.key("alt+h", "Down", "Return")
    program.wait_for("Hot-Keys")
    program.key("Return")
    program.wait_for("Tessaly")
    program.key("F5")
    program.wait_for("Add Function")
    program.key("Escape")
    program.wait_for("Tessaly")
    program.key("alt+l", "e")
    type_on_and_close(program, block)


def test_after_another_window_and_minimising(program, block):
    save(program, block)
    main = program.windows("^Tessaly$")[0]
    with subprocess.Popen(["xmessage", "another program"]) as other:
        window = wait_until("another window", lambda: xdotool("search", "--onlyvisible", "--name", "^xmessage$",
                                                              check=False))[-1]
        xdotool("windowactivate", "--sync", window)
        xdotool("windowactivate", "--sync", main)
        other.kill()
    xdotool("windowminimize", "--sync", main)
    xdotool("windowactivate", "--sync", main)
    program.wait_for("Tessaly")
    type_on_and_close(program, block)
