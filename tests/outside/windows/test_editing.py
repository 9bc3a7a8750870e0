"""The keys that edit, pressed on a real keyboard."""

from harness import wait_until, xdotool


def write(program, *lines):
    """Types lines, and Enter behind each."""
    for line in lines:
        xdotool("type", "--delay", "5", "--", line)
        program.keys("Return")


def shown(program, text):
    wait_until(lambda: f"{text!r} in {program.pane()!r}", lambda: program.pane().startswith(text))


def test_enter_indents_and_a_brace_goes_back(program):
    write(program, "if (a) {", "b;", "}")
    shown(program, "if (a) {\r\n    b;\r\n}\r\nvoid SetLamp")


def test_lines_are_commented_out_moved_doubled_and_deleted(program):
    write(program, "one;", "two;")
    program.keys("Up", "ctrl+slash")
    shown(program, "one;\r\n// two;\r\nvoid SetLamp")
    program.keys("alt+Up")
    shown(program, "// two;\r\none;\r\nvoid SetLamp")
    program.keys("ctrl+shift+d")
    shown(program, "// two;\r\n// two;\r\none;\r\nvoid SetLamp")
    program.keys("ctrl+shift+k", "ctrl+shift+k")
    shown(program, "// two;\r\nvoid SetLamp")
    program.keys("ctrl+z", "ctrl+z", "ctrl+z")
    shown(program, "// two;\r\none;\r\nvoid SetLamp")
    program.keys("ctrl+y")
    shown(program, "// two;\r\n// two;\r\none;\r\nvoid SetLamp")
    program.keys("ctrl+shift+z")
    shown(program, "// two;\r\none;\r\nvoid SetLamp")


def test_tab_moves_selected_lines_and_else_is_text(program):
    write(program, "one;", "two;")
    program.keys("ctrl+Home", "shift+Down", "shift+Down", "Tab")
    shown(program, "\tone;\r\n\ttwo;\r\nvoid SetLamp")
    program.keys("shift+Tab")
    shown(program, "one;\r\ntwo;\r\nvoid SetLamp")
    program.keys("ctrl+Home", "Tab")
    shown(program, "\tone;\r\ntwo;\r\nvoid SetLamp")


def test_ctrl_s_saves(program, example):
    write(program, "first;")
    program.keys("ctrl+s")
    wait_until("the file to be saved", lambda: program.panels()[1] == "File was saved successfully!")
    with open(example, "rb") as file:
        assert b"first;\r\nvoid SetLamp" in file.read()


def test_who_comes_back_to_an_item_goes_on_where_he_was(program):
    write(program, "first;")
    program.click_item("OnStart()")
    program.click_item("SetLamp")
    program.press_key("F3")
    write(program, "second;")
    shown(program, "first;\r\nsecond;\r\nvoid SetLamp")
    program.keys("ctrl+z", "ctrl+z", "ctrl+z", "ctrl+z")
    shown(program, "void SetLamp")
