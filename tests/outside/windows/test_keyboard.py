"""Access keys, and the keys that Windows has a use for beside the program's."""

import pytest
from harness import wait_until, windows_path
from windows_harness import FUNC_BODY, install


def in_menu(program):
    return program.probe.ask("focus", program.main)["menu"]


def leave_menus(program):
    """As many Esc as menus are open, and one for the bar."""
    while in_menu(program):
        was_open = program.has_open_menu()
        program.keys("Escape")
        wait_until("a menu to close", lambda: program.has_open_menu() != was_open or not in_menu(program))


@pytest.mark.parametrize("language, key", [(0, "alt+f"), (0, "alt+c"), (0, "alt+l"), (0, "alt+h"),
                                           (1, "alt+d"), (1, "alt+c"), (1, "alt+s"), (1, "alt+h")])
def test_alt_and_a_letter_opens_a_menu_and_esc_gives_the_keyboard_back(launch, folder, installed, example, language,
                                                                       key):
    install(**installed, Language=language)
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    program.keys(key)
    wait_until("the menu to drop down", program.has_open_menu)
    leave_menus(program)
    program.type_at_start("typed ")
    assert program.focus() == FUNC_BODY


@pytest.mark.parametrize("language, keys, title", [(0, ("alt+f", "p"), "Open Program Source File"),
                                                   (0, ("alt+f", "a"), "Save Program Source File As"),
                                                   (1, ("alt+d", "u"), "Programmquelldatei speichern unter")])
def test_the_letter_of_an_item_chooses_it(launch, folder, installed, example, language, keys, title):
    install(**installed, Language=language)
    program = launch(windows_path(example))
    program.bring()
    program.keys(keys[0])
    wait_until("the menu to drop down", program.has_open_menu)
    program.keys(keys[1])
    assert program.dialog().caption == title


def test_f10_builds_and_then_goes_on_to_the_menu_bar_until_esc(launch, installed, example):
    """No key that the program acts on is kept from Windows, for which F10 is the key of the menu bar."""
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    program.press_key("F10")
    wait_until("the end of the build", lambda: program.panels()[1] == "Compilation Complete!")
    wait_until("the menu bar to have the keyboard", lambda: in_menu(program))
    assert not program.has_open_menu()
    leave_menus(program)
    program.type_at_start("typed ")
    assert program.focus() == FUNC_BODY
    program.choose("Help", "Hot Keys")
    program.dialog().press("OK")


def test_the_tool_bars_buttons_tell_their_names(launch, probe, installed, example):
    program = launch(windows_path(example))
    program.click_item("Functions")
    wait_until("the buttons", lambda: len(program.buttons()) == 2)
    assert [button["text"] for button in program.buttons()] == ["Add Function", "Delete"]
    for button in program.buttons():
        program.point_at(button["rect"])
        wait_until(lambda: f"the tool tip {button['text']} in {program.windows()}", lambda: any(
            w["class"] == "tooltips_class32" and w["text"] == button["text"] for w in program.windows()), 15)
