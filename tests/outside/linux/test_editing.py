"""The keys that edit, pressed on a real keyboard: what they did is in the file that is saved then."""

from harness import wait_until


def saved(program, block, text):
    """Saves by the key, and waits until this is in the file."""
    program.key("ctrl+s")
    wait_until(lambda: f"{text!r} in {block.read_bytes()!r}", lambda: text.encode() in block.read_bytes())


def type_lines(program, *lines):
    for line in lines:
        program.type(line)
        program.key("Return")


def test_enter_indents_and_a_brace_goes_back(program, block):
    type_lines(program, "if (a) {", "b;", "}")
    saved(program, block, "if (a) {\r\n\tb;\r\n}\r\n")


def test_lines_are_commented_out_moved_doubled_and_deleted(program, block):
    type_lines(program, "one;", "two;")
    program.key("Up", "ctrl+slash")
    saved(program, block, "one;\r\n// two;\r\n")
    program.key("alt+Up")
    saved(program, block, "// two;\r\none;\r\n")
    program.key("ctrl+shift+d")
    saved(program, block, "// two;\r\n// two;\r\none;\r\n")
    program.key("ctrl+shift+k", "ctrl+shift+k")
    saved(program, block, "[GVars]\r\n// two;\r\n/* Blink")
    program.key("ctrl+z", "ctrl+z", "ctrl+z")
    saved(program, block, "// two;\r\none;\r\n")
    program.key("ctrl+y")
    saved(program, block, "// two;\r\n// two;\r\none;\r\n")
    program.key("ctrl+shift+z")
    saved(program, block, "// two;\r\none;\r\n")


def test_tab_moves_selected_lines_and_else_is_text(program, block):
    type_lines(program, "one;", "two;")
    program.key("ctrl+Home", "shift+Down", "shift+Down", "Tab")
    saved(program, block, "\tone;\r\n\ttwo;\r\n")
    program.key("shift+Tab")
    saved(program, block, "one;\r\ntwo;\r\n")
    program.key("ctrl+Home", "Tab")
    saved(program, block, "\tone;\r\ntwo;\r\n")


def test_who_comes_back_to_an_item_goes_on_where_he_was(program, block):
    program.type("first;")
    program.key("F2", "Down", "Down", "F3")
    program.type("second;")
    saved(program, block, "FuncBody=second;void SetLamp")
    program.key("F2", "Home", "F3")
    program.type(" third;")
    saved(program, block, "first; third;/* Blink")
    program.key("ctrl+z", "ctrl+z")
    saved(program, block, "[GVars]\r\n/* Blink")
