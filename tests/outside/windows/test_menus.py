"""The menus that come up at the pane and the tree, asked for and used with real keys and a real mouse."""

from harness import click, wait_until
from windows_harness import FUNC_BODY


def use_menu(program, ask, letter):
    """Asks for a menu, waits until it is open, and chooses by an access key."""
    ask()
    wait_until("a menu", program.has_open_menu)
    program.keys(letter)
    wait_until("the menu to go", lambda: not program.has_open_menu())


def shown(program, text):
    wait_until(lambda: f"{text!r} in {program.pane()!r}", lambda: program.pane().startswith(text))


def test_the_menu_key_opens_the_menu_of_the_pane(program):
    use_menu(program, lambda: program.keys("Menu"), "m")
    shown(program, "// void SetLamp")
    use_menu(program, lambda: program.keys("Menu"), "u")
    shown(program, "void SetLamp")


def test_the_right_button_opens_the_menu_of_the_pane(program):
    rect = program.controls[FUNC_BODY]["rect"]
    use_menu(program, lambda: click((rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2, 3), "a")
    program.keys("x")
    shown(program, "x")
    assert program.pane().strip() == "x"


def test_the_right_button_opens_the_menu_of_an_item_of_the_tree(program):
    rect = next(item["rect"] for item in program.tree() if item["text"] == "Functions")
    use_menu(program, lambda: click((rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2, 3), "a")
    dialog = program.dialog("UserFuncVarFrm")
    program.bring(dialog.window)
    program.keys("Escape")
    dialog.wait_gone()
    assert program.selected() == "Functions"
