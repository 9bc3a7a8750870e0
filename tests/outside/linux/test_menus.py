"""The menus that come up at the pane and the tree, asked for and used with real keys and a real mouse."""

from harness import click, wait_until, xdotool


def use_menu(program, ask, letter):
    """Chooses by an access key."""
    menu = program.come_up(ask)
    program.key(letter)
    wait_until("the menu to go", lambda: menu not in program.windows())


def saved(program, block, text):
    """Saves by the key, and waits until this is in the file."""
    program.key("ctrl+s")
    wait_until(lambda: f"{text!r} in {block.read_bytes()!r}", lambda: text.encode() in block.read_bytes())


def right_click_into_pane():
    """Well right of the tree and well above the status bar."""
    place = dict(word.split("=") for word in xdotool("getactivewindow", "getwindowgeometry", "--shell"))
    click(int(place["X"]) + int(place["WIDTH"]) * 3 // 4, int(place["Y"]) + int(place["HEIGHT"]) // 2, 3)


def test_the_menu_key_opens_the_menu_of_the_pane(program, block):
    use_menu(program, lambda: program.key("Menu"), "a")
    program.type("two;")
    saved(program, block, "[GVars]\r\ntwo;")
    use_menu(program, lambda: program.key("Menu"), "m")
    saved(program, block, "[GVars]\r\n// two;")


def test_the_right_button_opens_the_menu_of_the_pane(program, block):
    use_menu(program, right_click_into_pane, "a")
    program.type("three;")
    saved(program, block, "[GVars]\r\nthree;")


def test_the_menu_key_opens_the_menu_of_the_tree(program, block):
    program.key("F2", "Down")  # to the functions
    program.come_up(lambda: program.key("Menu"))
    program.key("a")
    program.wait_for("Add Function")
    program.type("FromTheMenu")
    program.key("Return")
    program.wait_for("Tessaly")
    saved(program, block, "FromTheMenu")
