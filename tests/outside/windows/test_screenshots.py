"""Pictures of the windows in both languages, for people to look at: build/screenshots/windows-LANGUAGE-WHAT.png."""

import shutil

import pytest
from harness import BITS, ROOT, drive_c, identify, screenshot, wait_until, xdotool
from windows_harness import CODE_TREE, FUNC_BODY, STATUS_BAR, install

MENUS = {"en": [("File", "Save Program Source File As"), ("Help", "About"), ("Help", "Hot Keys")],
         "de": [("Datei", "Programmquelldatei speichern unter..."), ("Hilfe", "Info..."), ("Hilfe", "Hot Keys")]}
HELP_SIZE = (960, 380)
FOLDER = ROOT / ("build/screenshots" if BITS == "32" else "build/screenshots/64")


def picture(program, name):
    """The main window with whatever lies over it, with its frame. The answer: how many colours it has."""
    wait_until("the display to be painted", lambda: program.probe.ask("send", program.main, 0, 0, 0) == 0)
    file = FOLDER / f"windows-{name}.png"
    screenshot(file, "-trim", "+repage")
    return int(identify(file, "%k"))


def shown(program, name, least):
    """Takes pictures until one has so many colours: painting is done by then."""
    wait_until(f"a picture {name} of {least} colours", lambda: picture(program, name) >= least, 15)


def open_blink(launch, example):
    """The program with a file whose path people can read, and a function of it in the pane."""
    shown_folder = drive_c() / "Blocks"
    shown_folder.mkdir(exist_ok=True)
    shutil.copy(example, shown_folder)
    program = launch("C:\\Blocks\\Blink.PSF")
    program.idle()
    program.click_item("Functions" if "Functions" in program.tree_texts() else "Funktionen")
    program.click_item("ChangePace")
    wait_until("the code", lambda: program.pane() != "")
    return program


@pytest.mark.parametrize("language", ["en", "de"])
def test_pictures_of_all_windows(launch, folder, installed, example, language):
    install(folder, **installed, Language=["en", "de"].index(language))
    program = open_blink(launch, example)
    shown(program, f"{language}-main", 20)

    program.press_key("F5")
    dialog = program.dialog("UserFuncVarFrm")
    program.bring(dialog.window)
    shown(program, f"{language}-name", 20)
    program.keys("Escape")
    dialog.wait_gone()

    save, about, keys = MENUS[language]
    program.choose(*about)
    splash = program.dialog("frmSplash")
    program.bring(splash.window)
    shown(program, f"{language}-about", 20)
    program.keys("space")
    splash.wait_gone()

    program.choose(*keys)
    box = program.dialog()
    shown(program, f"{language}-message", 20)
    box.press("OK")

    program.choose(*save)
    dialog = program.dialog()
    program.bring(dialog.window)
    shown(program, f"{language}-save", 20)


def status_bar_colours(program):
    """Of its place on the screen, whatever else is there."""
    left, top, right, bottom = program.control(STATUS_BAR)["rect"]
    file = FOLDER / "status-bar.png"
    screenshot(file, "-crop", f"{right - left}x{bottom - top}+{left}+{top}", "+repage")
    return int(identify(file, "%k"))


@pytest.mark.skipif(BITS != "32", reason="the help shows the 32-bit program")
@pytest.mark.parametrize("language,again", [("en", ("Language", "English")), ("de", ("Sprache", "Deutsch"))])
def test_the_picture_of_the_help(launch, folder, installed, example, language, again):
    """No larger than it must be. The language is chosen again, which translates the names of the groups."""
    install(folder, **installed, Language=["en", "de"].index(language))
    program = open_blink(launch, example)
    program.choose(*again)
    groups = {"en": "Functions", "de": "Funktionen"}
    program.click_item(groups[language])
    program.click_item("ChangePace")
    wait_until("the code", lambda: program.pane() != "")
    xdotool("search", "--onlyvisible", "--name", "^Tessaly", "windowsize", *HELP_SIZE)
    wait_until("the smaller window", lambda: size(program.description()["rect"])[0] <= HELP_SIZE[0] + 20)
    shown(program, f"{language}-help", 20)
    wait_until("the status bar", lambda: status_bar_colours(program) >= 4)
    picture(program, f"{language}-help")


def size(rect):
    return rect[2] - rect[0], rect[3] - rect[1]


def measures(program):
    """Heights of a line of the tree and of the status bar, width and height of a button."""
    line = next(item for item in program.tree() if item["text"] == "ChangePace")
    return [size(line["rect"])[1], size(program.control(STATUS_BAR)["rect"])[1], *size(program.buttons()[0]["rect"])]


def is_inside(inner, outer):
    return inner[0] >= outer[0] and inner[1] >= outer[1] and inner[2] <= outer[2] and inner[3] <= outer[3]


@pytest.mark.parametrize("percent", [150, 200])
def test_on_a_finer_display_everything_is_larger_and_in_its_place(launch, installed, example, resolution, percent):
    program = open_blink(launch, example)
    before = measures(program)
    program.close()
    program.wait_end()

    resolution(96 * percent // 100)
    program = open_blink(launch, example)
    scales = [now * 100 / then for now, then in zip(measures(program), before)]
    assert all(0.8 * percent <= scale <= 1.1 * percent for scale in scales), scales  # some edges are never wider
    window = program.description()["rect"]
    for control in program.controls.values():
        assert is_inside(control["rect"], window), control
    assert program.control(FUNC_BODY)["rect"][3] <= program.control(STATUS_BAR)["rect"][1]
    assert program.control(CODE_TREE)["rect"][1] >= program.buttons()[0]["rect"][3]
    shown(program, f"{percent}-main", 20)

    program.press_key("F5")
    dialog = program.dialog("UserFuncVarFrm")
    program.bring(dialog.window)
    frame = next(w["rect"] for w in program.windows() if w["window"] == dialog.window)
    assert all(is_inside(control["rect"], frame) for control in dialog.controls), (frame, dialog.controls)
    shown(program, f"{percent}-name", 20)
    program.keys("Escape")
    dialog.wait_gone()

    program.choose("Help", "About")
    splash = program.dialog("frmSplash")
    program.bring(splash.window)
    frame = next(w["rect"] for w in program.windows() if w["window"] == splash.window)
    assert all(is_inside(control["rect"], frame) for control in splash.controls), (frame, splash.controls)
    shown(program, f"{percent}-about", 20)
