"""From a compiler's message to its line, by real keys and by the mouse."""

import re

import pytest
from harness import click, example_file, run, wait_until, xdotool
from linux_harness import write_all_settings

TITLES = ["Messages of the build", "Meldungen zum Erstellen"]
SAVE = ["Save As", "Speichern Unter.."]


@pytest.fixture(name="wrong")
def fixture_wrong(home):
    """A program with a mistake in its references and one in an event."""
    block = home / "wrong.PSF"
    text = example_file("blink", ".PSF").read_bytes()
    text = text.replace(b"[GVars]\r\n", b"[GVars]\r\nint one = x;\r\n", 1)
    block.write_bytes(text.replace(b"FuncBody=void OnStart(", b"FuncBody=int two = y;\r\nvoid OnStart(", 1))
    assert b"two" in block.read_bytes()
    return block


def messages(program, language=0):
    return wait_until("the messages window", lambda: program.windows(f"^{TITLES[language]}$"))[0]


def wait_for_both(home):
    log = home / ".local/state/tessaly/build.log"
    wait_until("both mistakes", lambda: log.read_text().count("undeclared") == 2)


def edges(window):
    """Left, top, right, bottom of its frame. What xdotool tells of a window's place has the frame in it twice."""
    told = run("xwininfo", "-id", window, text=True).stdout
    left, top, width, height = (int(re.search(rf"{what}: *(-?\d+)", told)[1])
                                for what in ("upper-left X", "upper-left Y", "Width", "Height"))
    frame = re.findall(r"\d+", run("xprop", "-notype", "-id", window, "_NET_FRAME_EXTENTS", text=True).stdout)
    before, behind, above, below = map(int, frame)
    return left - before, top - above, left + width + behind, top + height + below


def build_mended(program, block):
    program.key("F10")
    program.wait_for(SAVE[0])
    program.key("Return")
    wait_until("the program block", block.with_suffix(".out").exists)
    assert b"int one = 1;" in block.read_bytes() and b"int two = 2;" in block.read_bytes()
    assert not program.windows(f"^{TITLES[0]}$")


@pytest.fixture(name="broken")
def fixture_broken(home):
    """A program in which a function and an event lack a semicolon each."""
    block = home / "broken.PSF"
    text = example_file("blink", ".PSF").read_bytes()
    for right in (b"halfPeriod = period;", b"SetLamp(1);"):
        assert text.count(right) == 1
        text = text.replace(right, right[:-1])
    block.write_bytes(text)
    return block


def wait_for_mended(program, broken, language):
    wait_until("the program block", broken.with_suffix(".out").exists)
    for text in (b"halfPeriod = period;\r\n", b"SetLamp(1);\r\n"):
        assert text in broken.read_bytes()
    wait_until("the end of the messages window", lambda: not program.windows(f"^{TITLES[language]}$"))


@pytest.mark.parametrize("scale", [1, 2])
@pytest.mark.parametrize("language", [0, 1])
def test_what_a_compiler_finds_is_mended_by_the_keyboard_alone(start, home, broken, picture, language, scale):
    write_all_settings(home, Language=language)
    program = start(broken, QT_SCALE_FACTOR=str(scale))
    program.wait_for("Tessaly")
    program.key("F10")
    messages(program, language)
    program.wait_for("Tessaly")  # it still has the keyboard
    log = home / ".local/state/tessaly/build.log"
    wait_until("both mistakes", lambda: log.read_text().count("error:") == 2)
    picture(f"messages-{'en' if language == 0 else 'de'}-{scale}00")
    program.key("alt+Tab")
    program.wait_for(TITLES[language])
    program.key("Return")
    program.wait_for("Tessaly")
    program.type(";")
    picture(f"message-line-{'en' if language == 0 else 'de'}-{scale}00")
    program.key("ctrl+j")
    program.type(";")
    program.key("F10")
    program.wait_for(SAVE[language])
    program.key("Return")
    wait_for_mended(program, broken, language)


class Mouse:
    """It finds its way by what a screen reader is told."""

    def __init__(self, spoken, scale=1):
        self.spoken, self.scale = spoken, scale

    def find(self, role, name):
        """Left, top, right, bottom."""
        found = wait_until(f"the {role} {name}", lambda: self.spoken("--where", role, name))
        return [self.scale * int(edge) for edge in found[0].split()]

    def click(self, role, name, times=1):
        left, top, right, bottom = self.find(role, name)
        xdotool("mousemove", (left + right) // 2, (top + bottom) // 2, "click", "--repeat", times, "--delay", 60, 1)


@pytest.mark.parametrize("language, scale", [(0, 1), (1, 1), (0, 2), (1, 2)])
def test_what_a_compiler_finds_is_mended_by_the_mouse_alone(start, home, broken, spoken, language, scale):
    """But for the character that was missing."""
    write_all_settings(home, Language=language)
    mouse = Mouse(spoken, scale)
    program = start(broken, QT_SCALE_FACTOR=str(scale), **spoken.session)
    program.wait_for("Tessaly")

    def build():
        mouse.click("menu item", ["Compile", "Compiler"][language])
        mouse.click("menu item", ["Build Exe", "Exe erstellen"][language])

    build()
    messages(program, language)
    for row in ("ChangePace", "OnStart()"):
        mouse.click("table cell", row, times=2)
        program.wait_for("Tessaly")
        program.type(";")
    build()
    program.wait_for(SAVE[language])
    mouse.click("push button", ["Yes", "Ja"][language])
    wait_for_mended(program, broken, language)


def test_a_double_click_and_enter_lead_to_the_line(start, home, wrong):
    program = start(wrong)
    program.wait_for("Tessaly")
    program.key("F10")
    window = messages(program)
    wait_for_both(home)
    row = edges(window)
    assert row[3] - row[1] > 100
    xdotool("mousemove", "--window", window, 60, 54, "click", "--repeat", 2, "--delay", 60, 1)
    program.wait_for("Tessaly")
    program.key("Delete")
    program.type("1")
    xdotool("windowactivate", "--sync", window)
    program.key("Down", "Return")
    program.wait_for("Tessaly")
    program.key("Delete")
    program.type("2")
    build_mended(program, wrong)


def test_a_row_is_copied_and_pasted_into_the_pane(start, home, wrong):
    program = start(wrong)
    program.wait_for("Tessaly")
    program.key("F10")
    window = messages(program)
    wait_for_both(home)
    xdotool("mousemove", "--window", window, 60, 54, "click", "--repeat", 2, "--delay", 60, 1)
    program.wait_for("Tessaly")
    xdotool("windowactivate", "--sync", window)
    program.key("Down", "ctrl+c", "Escape")
    program.wait_for("Tessaly")
    program.key("ctrl+Home", "ctrl+v", "F10")
    program.wait_for(SAVE[0])
    program.key("Return")
    pasted = b"[GVars]\r\nError\tOnStart()\t1\t"
    wait_until("the row in the references", lambda: pasted in wrong.read_bytes())


def overlap(one, other):
    return one[0] < other[2] and other[0] < one[2] and one[1] < other[3] and other[1] < one[3]


@pytest.mark.parametrize("scale, places", [
    (1, [(700, 400, 20, 40), (1270, 770, 0, 0)]),
    (2, [(600, 300, 300, 220), (700, 500, 300, 180), (1000, 540, 150, 170), (1270, 770, 0, 0)])])
def test_it_lies_neither_over_the_tree_nor_over_the_status_bar(start, wrong, spoken, picture, scale, places):
    mouse = Mouse(spoken, scale)
    program = start(wrong, QT_SCALE_FACTOR=str(scale), **spoken.session)
    main = program.wait_for("Tessaly")
    for width, height, left, top in places:
        xdotool("windowsize", "--sync", main, width, height, "windowmove", "--sync", main, left, top)
        program.key("F10")
        window = messages(program)
        picture(f"messages-{scale}00-{width}-{height}")
        left, top, right, bottom = place = edges(window)
        assert bottom - top >= 150 and right - left >= 300
        for role, name in [("tree", "Code Viewer"), ("status bar", "")]:
            assert not overlap(place, mouse.find(role, name)), f"{place} over the {role}, window {edges(main)}"
        xdotool("windowactivate", "--sync", window)
        program.key("Escape")
        program.wait_for("Tessaly")


def test_a_click_in_the_main_window_does_not_cover_it(start, wrong):
    program = start(wrong)
    main = program.wait_for("Tessaly")
    program.key("F10")
    window = messages(program)
    xdotool("windowactivate", "--sync", window)
    click(20, 200, window=main)
    program.wait_for("Tessaly")
    stacked = run("xprop", "-root", "-notype", "_NET_CLIENT_LIST_STACKING", text=True).stdout
    assert [int(each, 16) for each in re.findall("0x[0-9a-f]+", stacked)][-2:] == [int(main), int(window)]


def test_a_menu_stays_open_when_they_come(start, home, wrong, picture):
    program = start(wrong)
    program.go_to_references()
    menu = program.come_up(lambda: program.key("shift+F10"))  # which builds, too
    wait_for_both(home)
    picture("menu-before-messages")
    assert menu in program.windows() and not program.windows(f"^{TITLES[0]}$")
    program.key("Escape")
    messages(program)


def test_a_compiler_gone_wild_disturbs_nothing(start, home, wrong):
    """300,000 lines with colours and control characters, the last one half a line."""
    compiler = home / "wild.sh"
    compiler.write_text("#!/bin/sh\nawk 'BEGIN { for (i = 0; i < 300000; i++) "
                        'printf "\\033[31mprogram.c:%d:1: warning: odd \\007\\033[0m\\n", i; printf "half" }\'\n')
    compiler.chmod(0o700)
    write_all_settings(home, FCompBat=compiler)
    program = start(wrong)
    program.wait_for("Tessaly")
    program.key("F10")
    messages(program)
    log = home / ".local/state/tessaly/build.log"
    wait_until("all of the output", lambda: log.read_text().endswith("half"))
    program.go_to_references()
    program.type("int typed;")
    program.close_and_save()
    assert b"int typed;" in wrong.read_bytes()


def test_without_a_folder_for_the_state_messages_come_all_the_same(start, home, wrong):
    (home / ".local").mkdir(exist_ok=True)
    (home / ".local/state").write_text("in the way")
    program = start(wrong, TMPDIR=home / "run")
    program.wait_for("Tessaly")
    program.key("F10")
    messages(program)
    assert list((home / "run").glob("tessaly-*/build.log"))
