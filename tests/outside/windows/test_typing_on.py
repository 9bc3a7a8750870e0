"""Whatever takes the keyboard from the pane gives it back: what is typed then is asked about when the window closes."""

import pytest
from harness import click, wait_until, windows_path, xdotool
from windows_harness import TOOL_BAR


@pytest.fixture(name="program")
def fixture_program(launch, installed, example):
    """The program with the keyboard in the pane, in front of a function, where something is typed."""
    program = launch(windows_path(example))
    program.edit("SetLamp", "first ")
    return program


def text(example):
    with open(example, encoding="cp1252") as file:
        return file.read()


def saved(program):
    wait_until("the file to be saved", lambda: program.panels()[1] == "File was saved successfully!")
    program.idle()


def leave_menus(program):
    """As many Esc as menus are open, and one for the bar."""
    while program.probe.ask("focus", program.main)["menu"]:
        was_open = program.has_open_menu()
        program.keys("Escape")
        wait_until("a menu to close", lambda: program.has_open_menu() != was_open or
                   not program.probe.ask("focus", program.main)["menu"])


def type_on_and_close(program, example):
    """The question comes, and what was typed in between is saved."""
    program.bring()
    xdotool("type", "--delay", "5", "--", "later ")
    wait_until("the typed text", lambda: "first later void SetLamp" in program.pane())
    program.close()
    box = program.dialog()
    assert box.caption == "Save Dialog"
    box.press("Yes")
    assert program.wait_end() == 0
    assert "first later void SetLamp" in text(example)


def test_after_a_save_by_keys(program, example):
    program.choose("File", "Save Program Source File")
    saved(program)
    type_on_and_close(program, example)


def test_after_a_save_by_the_mouse(program, example):
    left, top, _, _ = program.controls[TOOL_BAR]["rect"]
    click(left + 20, top - 8)  # the first menu
    wait_until("the menu to drop down", program.has_open_menu)
    program.keys("s")
    saved(program)
    type_on_and_close(program, example)


def test_after_a_build_with_its_question(program, example):
    program.press_key("F10")
    program.dialog().press("Yes")
    wait_until("the end of the build", lambda: program.panels()[1] == "Compilation Complete!")
    program.bring()
    leave_menus(program)
    type_on_and_close(program, example)


def test_after_a_cancelled_open(program, example):
    program.choose("File", "Save Program Source File")
    saved(program)
    program.choose("File", "Open Program Source File")
    program.dialog().press("Cancel")
    type_on_and_close(program, example)


def test_after_a_declined_deletion(program, example):
    program.choose("File", "Save Program Source File")
    saved(program)
    program.press_button(2)
    program.dialog().press("No")
    program.press_key("F4")
    program.dialog().press("No")
    type_on_and_close(program, example)


def test_after_menus_and_boxes(program, example):
    program.choose("File", "Save Program Source File")
    saved(program)
    program.keys("alt+f")
    wait_until("the menu to drop down", program.has_open_menu)
    leave_menus(program)
    program.choose("Help", "Hot Keys")
    program.dialog().press("OK")
    program.press_key("F5")
    program.dialog("UserFuncVarFrm").press("Cancel")
    type_on_and_close(program, example)
