"""The installer's window: what it asks, and what its last page says. Pictures of it go to build/screenshots/."""

import pathlib
import subprocess

import pytest
from harness import (KEY, ROOT, click, environment, identify, registry_value, screenshot, wait_until, windows_path,
                     wine_command)
from installation import COMPILER, ENVIRONMENT, PSF, SETUP, remove_everything, write_value
from windows.windows_harness import probe

WORDS = {
    "en": {"caption": "Tessaly Setup", "welcome": "Welcome to", "components": "Choose Components",
           "folder": "Choose Install Location", "end": "Tessaly is installed", "path": "psf in every command window",
           "in path": "psf is in the PATH", "compiler": "C compiler: ", "no compiler": "There is no C compiler yet",
           "kept": "These settings were there and stay as they are"},
    "de": {"caption": "Installation von Tessaly", "welcome": "Willkommen", "components": "Komponenten ausw",
           "folder": "Zielverzeichnis ausw", "end": "Tessaly ist installiert",
           "path": "psf in jeder Eingabeaufforderung", "in path": "psf ist im PATH", "compiler": "C-Compiler: ",
           "no compiler": "Noch gibt es keinen C-Compiler",
           "kept": "Diese Einstellungen gab es schon"},
}
TREE, NEXT = 1032, 1


class Wizard:
    """One run of the installer with its window, as far as the page of components."""

    def __init__(self, language, **variables):
        self.language, self.words = language, WORDS[language]
        command = wine_command(windows_path(SETUP), f"/LANG={language}")
        self.process = subprocess.Popen(command, env=environment({**COMPILER, **variables}))
        self.window = wait_until("the wizard", self.find)
        self.wait_for("welcome")
        self.next()
        self.wait_for("components")
        self.tree = next(each["window"] for each in self.controls() if each["id"] == TREE)

    def find(self):
        return next((each["window"] for each in probe().ask("windows", 0)
                     if each["text"].startswith(self.words["caption"])), None)

    def controls(self):
        return [each for each in probe().ask("children", self.window) if each["visible"]]

    def text(self):
        return "\n".join(each["text"] for each in self.controls())

    def wait_for(self, page):
        wait_until(lambda: f"{page} in {self.text()!r}", lambda: self.words[page] in self.text())

    def next(self):
        """What a click on the right button does, whatever its caption is: next, install or finish."""
        probe().ask("post", self.window, 0x111, NEXT, 0)  # WM_COMMAND

    def components(self):
        return probe().ask("tree", self.tree)

    def install(self):
        """Goes on to the last page and returns what it says."""
        self.next()
        self.wait_for("folder")
        self.next()
        self.wait_for("end")
        return self.text()

    def picture(self, name, other_than=None):
        """Takes one of the window when it is painted and stands still, and returns what tells it from others."""
        file = ROOT / f"build/screenshots/installer-{self.language}-{name}.png"
        seen = []

        def is_painted():
            screenshot(file, "-trim", "+repage")
            seen.append(identify(file, "%#"))
            return int(identify(file, "%k")) >= 20 and seen[-2:-1] == seen[-1:] and seen[-1] != other_than
        wait_until("a painted window", is_painted)
        return seen[-1]

    def end(self):
        self.next()
        assert self.process.wait(timeout=60) == 0


@pytest.fixture(name="start", autouse=True)
def fixture_start():
    started = []

    def start(*arguments, **variables):
        started.append(Wizard(*arguments, **variables))
        return started[-1]
    yield start
    for wizard in started:
        if wizard.process.poll() is None:
            wizard.process.kill()
            wizard.process.wait()
    remove_everything()


@pytest.mark.parametrize("language", ["en", "de"])
def test_psf_in_the_path_is_offered_and_the_last_page_names_the_compiler_that_the_kit_takes(start, language):
    wizard = start(language)
    assert [item["text"].startswith(wizard.words["path"]) for item in wizard.components()] == [False, True]
    wizard.picture("components")
    text = wizard.install()
    wizard.picture("end")
    gcc = windows_path(pathlib.Path(COMPILER["WINEPATH"][2:].replace("\\", "/")) / "gcc.exe")
    assert wizard.words["in path"] in text
    assert wizard.words["compiler"] + gcc in text
    assert wizard.words["no compiler"] not in text and wizard.words["kept"] not in text
    wizard.end()
    assert registry_value(ENVIRONMENT, "PATH")[1].endswith(";" + windows_path(PSF.parent))


@pytest.mark.parametrize("language", ["en", "de"])
def test_the_last_page_says_how_to_get_a_compiler_and_which_settings_were_kept(start, language):
    write_value(KEY, "FCompBat", r"C:\R&D\compile.bat")
    write_value(KEY, "FHelp", r"C:\R&D\help.chm")
    wizard = start(language, WINEPATH=None)
    text = wizard.install()
    wizard.picture("kept")
    assert wizard.words["no compiler"] in text and "MinGW-w64" in text
    assert wizard.words["compiler"] not in text
    kept = text[text.index(wizard.words["kept"]):]
    assert kept.splitlines()[1:3] == [r"FCompBat = C:\R&D\compile.bat", r"FHelp = C:\R&D\help.chm"]
    wizard.end()


def test_psf_is_not_added_to_the_path_when_its_box_is_cleared(start):
    before = registry_value(ENVIRONMENT, "PATH")
    wizard = start("en")
    ticked = wizard.picture("ticked")
    item = wizard.components()[1]["rect"]
    click(item[0] - 8, (item[1] + item[3]) // 2)
    wizard.picture("cleared", other_than=ticked)
    text = wizard.install()
    assert "PATH" not in text
    wizard.end()
    assert registry_value(ENVIRONMENT, "PATH") == before
