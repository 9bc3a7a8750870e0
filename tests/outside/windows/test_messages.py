"""From a compiler's message to its line, by real keys and by the mouse."""

import pathlib

import pytest
from harness import ROOT, screenshot, wait_until, windows_path, xdotool
from windows_harness import CODE_TREE, FUNC_BODY, STATUS_BAR, install

ROWS = 402


@pytest.fixture(name="wrong")
def fixture_wrong(folder, example):
    """A program with a mistake in its references and one in an event."""
    block = pathlib.Path(example)
    text = block.read_bytes().replace(b"[GVars]\r\n", b"[GVars]\r\nint one = x;\r\n", 1)
    block.write_bytes(text.replace(b"FuncBody=void OnStart(", b"FuncBody=int two = y;\r\nvoid OnStart(", 1))
    assert b"two" in block.read_bytes()
    return block


def messages(program):
    def shown():
        return next((w for w in program.windows() if w["class"] == "Messages" and w["visible"]), None)
    return wait_until("the messages window", shown)


def gone(program):
    return not any(w["class"] == "Messages" and w["visible"] for w in program.windows())


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


def wait_for_both(folder):
    log = folder / "program.c.log"
    wait_until("both mistakes", lambda: log.exists() and log.read_bytes().count(b"undeclared") == 2)


@pytest.mark.parametrize("language", [0, 1])
def test_mistakes_are_mended_by_keys(launch, folder, installed, wrong, compiler, language):
    install(folder, **{**installed, "FCompBat": compiler, "Language": language})
    program = launch(windows_path(wrong))
    program.choose(*[("Compile", "Build Exe"), ("Compiler", "Exe erstellen")][language])
    window = messages(program)
    for control in (CODE_TREE, FUNC_BODY, STATUS_BAR):
        assert not overlap(window["rect"], program.control(control)["rect"])
    wait_for_both(folder)
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
    wait_until("the end of the messages window", lambda: gone(program))
    assert b"int one = 1;" in wrong.read_bytes() and b"int two = 2;" in wrong.read_bytes()


def test_a_double_click_leads_to_the_line(launch, folder, installed, wrong, compiler):
    install(folder, **{**installed, "FCompBat": compiler})
    program = launch(windows_path(wrong))
    program.choose("Compile", "Build Exe")
    window = messages(program)["window"]
    wait_for_both(folder)
    rows = next(c for c in program.probe.ask("children", window) if c["id"] == ROWS)["rect"]
    xdotool("mousemove", rows[0] + 30, rows[1] + 26, "click", "--repeat", 2, "--delay", 60, 1)
    wait_until("a line with a mistake", lambda: program.pane().startswith(("int one", "int two")))
