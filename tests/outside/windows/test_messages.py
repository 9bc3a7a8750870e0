"""From a compiler's message to its line, by real keys and by the mouse."""

import pathlib

import pytest
from harness import ROOT, screenshot, wait_until, windows_path, xdotool
from windows_harness import BUILD, CODE_TREE, FUNC_BODY, STATUS_BAR, install


@pytest.fixture(name="wrong")
def fixture_wrong(folder, example):
    """A program with a mistake in its references and one in an event."""
    block = pathlib.Path(example)
    text = block.read_bytes().replace(b"[GVars]\r\n", b"[GVars]\r\nint one = x;\r\n", 1)
    block.write_bytes(text.replace(b"FuncBody=void OnStart(", b"FuncBody=int two = y;\r\nvoid OnStart(", 1))
    assert b"two" in block.read_bytes()
    return block


def messages(program):
    return wait_until("the messages window", program.messages)


def wait_gone(program):
    wait_until("the end of the messages window", lambda: not program.messages())


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


@pytest.fixture(name="compiler")
def fixture_compiler(folder):
    """A batch file that finds both mistakes. The kit's would wait for a key."""
    c_file = windows_path(folder / "program.c")
    (folder / "said.txt").write_text(f"{c_file}:11:11: error: 'x' undeclared\n{c_file}:74:11: error: 'y' undeclared\n")
    file = folder / "look.bat"
    file.write_bytes(b'@copy "%~dp0said.txt" "%~dp0program.c.log" >nul\r\n')
    return windows_path(file)


def wait_for_both(program):
    wait_until("both mistakes", lambda: len(program.message_rows()) == 2)


@pytest.mark.parametrize("language", [0, 1])
def test_mistakes_are_mended_by_keys(launch, folder, installed, wrong, compiler, language):
    install(**{**installed, "FCompBat": compiler, "Language": language})
    program = launch(windows_path(wrong))
    program.choose(*BUILD[language])
    window = messages(program)
    for control in (CODE_TREE, FUNC_BODY, STATUS_BAR):
        assert not overlap(window["rect"], program.control(control)["rect"])
    wait_for_both(program)
    program.bring()  # it still has the keyboard
    screenshot(ROOT / f"build/screenshots/windows-messages-{language}.png", "-trim", "+repage")
    program.keys("ctrl+j")
    wait_until("the references", lambda: program.pane().startswith("int one = x;"))
    program.bring()
    program.keys("Delete", "1")
    program.keys("ctrl+j")
    wait_until("the event", lambda: program.pane().startswith("int two = y;"))
    program.keys("Delete", "2")
    wait_until("the mended text", lambda: program.pane().startswith("int two = 2;"))
    screenshot(ROOT / f"build/screenshots/windows-message-line-{language}.png", "-trim", "+repage")
    (folder / "said.txt").write_text("")  # nothing is wrong any more
    program.press_key("F10")
    program.dialog().press("Yes")
    wait_gone(program)
    assert b"int one = 1;" in wrong.read_bytes() and b"int two = 2;" in wrong.read_bytes()


def test_on_a_small_screen_it_lies_neither_over_the_tree_nor_over_the_status_bar(
        launch, installed, wrong, compiler, resolution):
    resolution(192)
    install(**{**installed, "FCompBat": compiler})
    program = launch(windows_path(wrong))
    on_display = program.probe.ask("focus", program.main)["display"]
    for width, height, left, top in [(600, 300, 300, 220), (900, 520, 150, 160), (1270, 770, 0, 0)]:
        before = program.description()["rect"]
        xdotool("windowsize", on_display, width, height, "windowmove", on_display, left, top)
        wait_until("another place", lambda before=before: program.description()["rect"] != before)
        program.press_key("F10")
        window = messages(program)
        wait_for_both(program)
        screenshot(ROOT / f"build/screenshots/windows-messages-small-{height}.png")
        left, top, right, bottom = messages(program)["rect"]
        assert bottom - top >= 150 and right - left >= 300
        for control in (CODE_TREE, STATUS_BAR):
            place = program.control(control)["rect"]
            assert not overlap((left, top, right, bottom), place), program.description()["rect"]
        program.bring()
        program.keys("Escape")  # F10 has gone on to the menu bar
        program.keys("alt+Tab")
        program.bring(window["window"])
        program.keys("Escape")
        wait_gone(program)


def wait_for_pane(program, test):
    """The pane shows this, and Windows has given it the keyboard. The display may still name the window of the click:
    Wine takes keys from each of its windows, and tells no window manager of a change between two of one program."""
    wait_until(lambda: f"a line in {program.pane()!r}", lambda: test(program.pane()))
    wait_until("the pane to have the keyboard", lambda: program.focus() == FUNC_BODY and
               program.probe.ask("focus", program.main)["front"] == program.main)


def double_click(rect):
    xdotool("mousemove", rect[0] + 5, (rect[1] + rect[3]) // 2, "click", "--repeat", 2, "--delay", 60, 1)


def test_a_double_click_leads_to_the_line_with_the_keyboard(launch, installed, wrong, compiler):
    install(**{**installed, "FCompBat": compiler})
    program = launch(windows_path(wrong))
    program.choose(*BUILD[0])
    wait_for_both(program)
    for number, begin in [(1, "int two"), (0, "int one")] * 3:
        double_click(program.message_rows()[number]["rect"])
        wait_for_pane(program, lambda text, begin=begin: text.startswith(begin))
        program.keys("a")
        wait_for_pane(program, lambda text, begin=begin: text.startswith(f"{begin} = a"))


def test_a_row_is_copied_and_pasted_into_the_pane(launch, installed, wrong, compiler):
    install(**{**installed, "FCompBat": compiler})
    program = launch(windows_path(wrong))
    program.choose(*BUILD[0])
    wait_for_both(program)
    double_click(program.message_rows()[0]["rect"])
    wait_for_pane(program, lambda text: text.startswith("int one"))
    rect = program.message_rows()[1]["rect"]
    xdotool("mousemove", rect[0] + 5, (rect[1] + rect[3]) // 2, "click", 1)
    wait_until("the list to have the keyboard",
               lambda: program.probe.ask("focus", program.main)["front"] != program.main)
    program.keys("ctrl+c", "Escape")
    wait_for_pane(program, lambda text: text.startswith("int one"))
    program.keys("ctrl+Home", "ctrl+v")
    wait_for_pane(program, lambda text: text.startswith("Error\tOnStart()\t1\t'y' undeclared"))


def test_where_the_mouse_rests_on_a_mark_its_message_comes_up(launch, installed, wrong, compiler):
    install(**{**installed, "FCompBat": compiler})
    program = launch(windows_path(wrong))
    program.choose(*BUILD[0])
    wait_for_both(program)
    program.bring()
    program.keys("ctrl+j")
    wait_until("the references", lambda: program.pane().startswith("int one = x;"))
    left, top, _, _ = program.control(FUNC_BODY)["rect"]

    def tips():
        return [w["text"] for w in program.windows() if w["class"] == "NameTip" and w["visible"]]

    xdotool("mousemove", left + 10, top + 8, "mousemove", left + 11, top + 10)
    wait_until(lambda: f"the message in {tips()}", lambda: tips() == ["Error: 'x' undeclared"])
    screenshot(ROOT / "build/screenshots/windows-message-tip.png", "-trim", "+repage")
    xdotool("mousemove", left + 11, top + 60)
    wait_until("the end of the message", lambda: not tips())


# With the kit and a real compiler, which is on the PATH.

@pytest.fixture(name="broken")
def fixture_broken(example):
    """A function and an event that lack a semicolon each, at the end of a line."""
    block = pathlib.Path(example)
    text = block.read_bytes()
    for right in (b"halfPeriod = period;", b"SetLamp(1);"):
        assert text.count(right) == 1
        text = text.replace(right, right[:-1])
    block.write_bytes(text)
    return block


class Mending:
    """The program with the messages of a build that found both mistakes."""

    def __init__(self, program, language):
        self.program = program
        self.kind = ["Error", "Fehler"][language]

    def see_both(self):
        rows = self.program.message_rows
        wait_until(lambda: f"both mistakes in {rows()}", lambda: [row["cells"][:3] for row in rows()] == [
            [self.kind, "ChangePace", "5"], [self.kind, "OnStart()", "3"]])
        self.program.bring()  # it still has the keyboard

    def wait_for(self, text):
        wait_for_pane(self.program, lambda pane: text in pane)

    def end(self, block):
        wait_gone(self.program)
        wait_until("the program block", block.with_suffix(".out").exists)
        text = block.read_bytes()
        assert b"halfPeriod = period;\r\n" in text and b"SetLamp(1);\r\n" in text


@pytest.fixture(name="mending")
def fixture_mending(launch, folder, installed, broken, resolution):
    def start(language, percent):
        resolution(96 * percent // 100)
        install(**{**installed, "FCompBat": windows_path(ROOT / "kit/compile.bat"), "Language": language})
        return Mending(launch(windows_path(broken)), language)
    return start


@pytest.mark.parametrize("percent", [100, 200])
@pytest.mark.parametrize("language", [0, 1])
def test_what_a_compiler_finds_is_mended_by_the_keyboard_alone(mending, broken, language, percent):
    user = mending(language, percent)
    program = user.program
    program.press_key("F10")
    user.see_both()
    program.keys("Escape")  # F10 has gone on to the menu bar
    screenshot(ROOT / f"build/screenshots/windows-mistakes-{language}-{percent}.png", "-trim", "+repage")
    program.keys("alt+Tab")
    program.bring(messages(program)["window"])
    program.keys("Return")
    user.wait_for("halfPeriod = period\r\n")
    program.keys("semicolon")
    user.wait_for("halfPeriod = period;\r\n")
    program.keys("ctrl+j")
    user.wait_for("SetLamp(1)\r\n")
    screenshot(ROOT / f"build/screenshots/windows-mistake-{language}-{percent}.png", "-trim", "+repage")
    program.keys("semicolon")
    user.wait_for("SetLamp(1);\r\n")
    program.keys("F10")
    question = program.dialog()
    program.bring(question.window)
    program.keys("Return")
    user.end(broken)


@pytest.mark.parametrize("percent", [100, 200])
@pytest.mark.parametrize("language", [0, 1])
def test_what_a_compiler_finds_is_mended_by_the_mouse_alone(mending, broken, language, percent):
    """But for the character that was missing."""
    user = mending(language, percent)
    program = user.program
    program.click_menu(*BUILD[language])
    user.see_both()
    for row, text in enumerate(["halfPeriod = period", "SetLamp(1)"]):
        double_click(program.message_rows()[row]["rect"])
        user.wait_for(f"{text}\r\n")
        program.click(program.control(FUNC_BODY)["rect"])  # anywhere
        double_click(program.message_rows()[row]["rect"])
        user.wait_for(f"{text}\r\n")
        program.keys("semicolon")
        user.wait_for(f"{text};\r\n")
    program.click_menu(*BUILD[language])
    program.dialog().press("Yes")
    user.end(broken)
