"""The pictures of the window in the help, in both languages. script/pictures hands them out."""

import pathlib
import tempfile

import pytest
from harness import (ROOT, cut_to_the_point, example_file, hand_out, identify, screenshot, wait_until,
                     wait_until_painted, xdotool)
from linux_harness import write_all_settings

CODES = ["en", "de"]
TITLES = ["Messages of the build", "Meldungen zum Erstellen"]


@pytest.fixture(name="folder")
def fixture_folder():
    """Its path is one that people can read."""
    with tempfile.TemporaryDirectory(prefix="blocks-") as folder:
        yield pathlib.Path(folder)


def take(name, language, cut):
    """The picture of what the display shows."""
    shown = ROOT / f"build/screenshots/linux-{CODES[language]}-{name}.png"
    made = ROOT / f"build/screenshots/page-linux-{CODES[language]}-{name}.png"

    def picture():
        screenshot(shown, "-trim", "+repage")
        return cut_to_the_point(shown, cut, made)

    wait_until_painted(picture)
    assert int(identify(made, "%k")) >= 20
    hand_out(made, f"help/{CODES[language]}/{name}.png")


def choose_group(program, language, group):
    """The language is chosen once more, which translates the names of the groups. The one whose letters are typed
    names what is over the pane."""
    window = program.wait_for("Tessaly")
    program.key(*[("alt+l", "e"), ("alt+s", "d")][language])
    program.wait_for("Tessaly")
    program.key("F2")
    program.type(group[language])
    xdotool("windowsize", "--sync", window, 960, 380)


@pytest.mark.parametrize("language", [0, 1])
def test_the_picture_of_the_window_in_the_help(start, home, folder, language):
    write_all_settings(home, Language=language)
    block = folder / "Blink.PSF"
    block.write_bytes(example_file("blink", ".PSF").read_bytes())
    program = start(block)
    choose_group(program, language, ["fun", "fun"])
    program.key("Down", "Down")
    take("window", language, "x400+0+0")


@pytest.mark.parametrize("language", [0, 1])
def test_the_picture_of_the_messages_in_the_help(start, home, folder, language):
    """Two lines of Blink lack their semicolon."""
    text = example_file("blink", ".PSF").read_bytes()
    for line in (b"halfPeriod = period;", b"SetLamp(1);\r\n    Start"):
        assert text.count(line) == 1
        text = text.replace(line, line.replace(b";", b"", 1))
    block = folder / "Blink.PSF"
    block.write_bytes(text)
    write_all_settings(home, Language=language)
    program = start(block)
    choose_group(program, language, ["ev", "er"])
    program.key("F10")
    wait_until("the messages window", lambda: program.windows(f"^{TITLES[language]}$"))
    log = home / ".local/state/tessaly/build.log"
    wait_until("both errors", lambda: log.read_text().count("error:") == 2)
    program.wait_for("Tessaly")
    program.key("ctrl+j", "ctrl+j")
    take("messages", language, "x647+0+0")
