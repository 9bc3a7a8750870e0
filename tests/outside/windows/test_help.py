"""Hot keys, help and About."""

import re

import pytest
from harness import ROOT, wait_until, windows_path
from windows_harness import import_registry, install

HOT_KEYS = ("<F2>\tSelect Code Viewer\n<F3>\tSelect Global References, Function Code, Event Code\n<F4>\tAdd Function\n"
            "<F5>\tDelete Current Function\n<F10>\tBuild Exe\n\n<CTRL-C>\tCopy Text\n<CTRL-V>\tPaste Text\n"
            "<CTRL-X>\tCut Text")


def test_the_hot_keys_are_listed(launch, installed):
    program = launch()
    program.choose("Help", "Hot Keys")
    box = program.dialog()
    assert (box.caption, box.text().replace("\r\n", "\n"), box.buttons()) == ("Hot-Keys", HOT_KEYS, ["OK"])


@pytest.mark.parametrize("language, menu", [(0, "Help"), (1, "Hilfe")])
def test_no_line_of_the_hot_keys_is_broken(launch, folder, installed, language, menu):
    install(**installed, Language=language)
    program = launch()
    program.choose(menu, "Hot Keys")
    box = program.dialog()
    text = next(c for c in box.controls if c["class"] == "Static" and c["text"])
    left, top, right, bottom = text["rect"]
    width, height = program.probe.ask("measure", text["window"], "message")
    assert right - left >= width
    assert bottom - top == height  # and there is no room for one more
    button = box.control(1)["rect"]
    above, below = button[1] - bottom, box.rect[3] - button[3]
    assert 0 < above < 2 * below, "the button right under the text"
    beside = (button[0] - box.rect[0], box.rect[2] - button[2])
    assert abs(beside[0] - beside[1]) < button[2] - button[0], "the button in the middle"
    assert text["rect"][0] > box.rect[0] and text["rect"][2] < box.rect[2]
    box.press("OK")


def test_about_shows_title_and_version_and_any_key_closes_it(launch, installed):
    program = launch()
    program.choose("Help", "About")
    about = program.dialog("frmSplash")
    texts = about.texts()
    assert '"Tessaly"' in texts
    assert any(re.fullmatch(r"Version \d+\.\d+\.\d+", text) for text in texts), texts
    program.bring(about.window)
    program.keys("x")
    about.wait_gone()
    program.idle()


def test_a_click_closes_about_too(launch, installed):
    program = launch()
    program.choose("Help", "About")
    about = program.dialog("frmSplash")
    program.bring(about.window)
    rect = next(w["rect"] for w in program.windows() if w["window"] == about.window)
    program.click(rect)
    about.wait_gone()
    program.idle()


def other_windows(program, probe):
    return [w for w in probe.ask("windows", 0) if w["process"] != program.process and w["text"]]


def help_is_shown(program, probe, known):
    return [w for w in other_windows(program, probe) if w["window"] not in known and "help" in w["text"].lower()]


def test_f1_and_the_help_command_open_the_help_file(launch, probe, folder, installed):
    # Wine knows how to show a text, but not which files are texts.
    import_registry('[HKEY_CLASSES_ROOT\\.txt]\r\n@="txtfile"\r\n', folder)
    program = launch()
    for ask_for_help in (lambda: program.press_key("F1"), lambda: program.choose("Help", "Open")):
        known = {w["window"] for w in other_windows(program, probe)}
        ask_for_help()
        shown = wait_until(lambda: f"the help among {other_windows(program, probe)}",
                           lambda: help_is_shown(program, probe, known))
        for window in shown:
            probe.ask("post", window["window"], 0x10, 0, 0)
        wait_until("the end of the help", lambda: not help_is_shown(program, probe, known))


def html_help(program):
    """The window of a compiled help file, which is the program's own."""
    return next((w for w in program.windows() if w["class"] == "HH Parent"), None)


@pytest.fixture
def compiled_help(folder, installed):
    """A program that has its real help file."""
    install(**{**installed, "FHelp": windows_path(f"{ROOT}/build/release/help/Tessaly-en.chm")})


def test_a_compiled_help_file_has_a_window_beside_the_program(launch, compiled_help, example):
    program = launch(windows_path(example))
    program.press_key("F1")
    window = wait_until("the help", lambda: html_help(program))
    assert "Tessaly" in window["text"]
    program.bring(window["window"])
    program.probe.ask("post", window["window"], 0x10, 0, 0)
    wait_until("the end of the help", lambda: html_help(program) is None)
    program.edit("SetLamp", "/* after the help */")


def test_the_program_ends_also_while_its_help_is_open(launch, compiled_help, example):
    program = launch(windows_path(example))
    program.press_key("F1")
    wait_until("the help", lambda: html_help(program))
    program.close()
    assert program.wait_end() == 0


@pytest.mark.parametrize("name", ["missing.chm", "missing.hlp", "missing.txt", "broken.chm", "broken.hlp"])
def test_after_a_help_file_that_cannot_be_shown_the_program_is_usable(launch, probe, folder, installed, example, name):
    if name.startswith("broken"):
        (folder / name).write_bytes(b"no help file\r\n")
    install(**{**installed, "FHelp": windows_path(folder / name)})
    program = launch(windows_path(example))
    known = {w["window"] for w in probe.ask("windows", 0)}
    program.press_key("F1")
    if name.endswith("hlp"):  # Windows' own help complains
        complaint = wait_until("the complaint", lambda: [
            w for w in probe.ask("windows", 0) if w["class"] == "#32770" and w["window"] not in known])[0]
        assert complaint["process"] != program.process
        probe.ask("post", complaint["window"], 0x10, 0, 0)
        wait_until("the complaint's end", lambda: all(
            w["window"] != complaint["window"] for w in probe.ask("windows", 0)))
    program.edit("SetLamp", "/* after the help */")  # arrives when F1 has been worked off
    program.press_key("F5")
    program.dialog("UserFuncVarFrm").press("Cancel")
