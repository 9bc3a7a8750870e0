"""From a compiler's message to its line, by real keys and by the mouse."""

import pytest
from harness import example_file, wait_until, xdotool
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
    """Left, top, right, bottom, without the frame."""
    words = dict(word.split("=") for word in xdotool("getwindowgeometry", "--shell", window))
    left, top = int(words["X"]), int(words["Y"])
    return left, top, left + int(words["WIDTH"]), top + int(words["HEIGHT"])


def build_mended(program, block, language):
    program.key("F10")
    program.wait_for(SAVE[language])
    program.key("Return")
    wait_until("the program block", block.with_suffix(".out").exists)
    assert b"int one = 1;" in block.read_bytes() and b"int two = 2;" in block.read_bytes()
    assert not program.windows(f"^{TITLES[language]}$")


@pytest.mark.parametrize("scale", [1, 2])
@pytest.mark.parametrize("language", [0, 1])
def test_mistakes_are_mended_by_keys(start, home, wrong, picture, language, scale):
    write_all_settings(home, Language=language)
    program = start(wrong, QT_SCALE_FACTOR=str(scale))
    program.wait_for("Tessaly")
    program.key("F10")
    messages(program, language)
    program.wait_for("Tessaly")  # it still has the keyboard
    wait_for_both(home)
    picture(f"messages-{'en' if language == 0 else 'de'}-{scale}00")
    program.key("ctrl+j")
    program.key("Delete")
    program.type("1")
    picture(f"message-line-{'en' if language == 0 else 'de'}-{scale}00")
    program.key("ctrl+j")
    program.key("Delete")
    program.type("2")
    build_mended(program, wrong, language)


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


class Mouse:
    """It finds its way by what a screen reader is told."""

    def __init__(self, spoken):
        self.spoken = spoken

    def find(self, role, name):
        return wait_until(f"the {role} {name}", lambda: self.spoken("--where", role, name))[0].split()

    def click(self, role, name, times=1):
        xdotool("mousemove", *self.find(role, name), "click", "--repeat", times, "--delay", 60, 1)


@pytest.mark.parametrize("language", [0, 1])
def test_what_a_compiler_finds_is_mended_by_the_mouse_alone(start, home, broken, spoken, language):
    """But for the character that was missing."""
    write_all_settings(home, Language=language)
    mouse = Mouse(spoken)
    program = start(broken, **spoken.session)
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
    wait_until("the program block", broken.with_suffix(".out").exists)
    for text in (b"halfPeriod = period;\r\n", b"SetLamp(1);\r\n"):
        assert text in broken.read_bytes()
    wait_until("the end of the messages window", lambda: not program.windows(f"^{TITLES[language]}$"))


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
    build_mended(program, wrong, 0)


def test_it_stands_beside_the_window_or_in_a_part_kept_free(start, home, wrong, picture):
    program = start(wrong)
    main = program.wait_for("Tessaly")
    xdotool("windowsize", "--sync", main, 700, 400, "windowmove", "--sync", main, 20, 40)
    program.key("F10")
    below = edges(messages(program))
    assert below[1] >= edges(main)[3]
    xdotool("windowactivate", "--sync", messages(program))
    program.key("Escape")
    wait_until("the end of the messages window", lambda: not program.windows(f"^{TITLES[0]}$"))
    program.wait_for("Tessaly")
    xdotool("windowsize", "--sync", main, "100%", "100%")
    program.key("ctrl+j")
    messages(program)
    picture("messages-maximised")


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
    program.key("F2", "Home", "F3", "ctrl+Home")
    program.type("int typed;")
    program.key("alt+F4")
    program.wait_for("Save Dialog")
    program.key("Return")
    assert program.wait_for_end() == 0
    assert b"int typed;" in wrong.read_bytes()


def test_without_a_folder_for_the_state_messages_come_all_the_same(start, home, wrong):
    (home / ".local").mkdir(exist_ok=True)
    (home / ".local/state").write_text("in the way")
    program = start(wrong, TMPDIR=home / "run")
    program.wait_for("Tessaly")
    program.key("F10")
    messages(program)
    assert list((home / "run").glob("tessaly-*/build.log"))
