"""Pictures of the windows in both languages, for people to look at: build/screenshots/windows-LANGUAGE-WHAT.png.

Those in README and the help are as the present program makes them, or are taken: see script/pictures.
"""

import pathlib
import shutil
import subprocess

import pytest
from harness import (BITS, ROOT, cut_to_the_point, drive_c, hand_out, identify, screenshot, wait_until,
                     wait_until_painted, windows_path, xdotool)
from windows_harness import BUILD, CODE_TREE, FUNC_BODY, STATUS_BAR, import_registry, install

MENUS = {"en": [("File", "Save Program Source File As"), ("Help", "About"), ("Help", "Hot Keys")],
         "de": [("Datei", "Programmquelldatei speichern unter..."), ("Hilfe", "Info..."), ("Hilfe", "Hot Keys")]}
HELP_SIZE = (960, 380)
CODES = ["en", "de"]
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


def is_on_the_page(program, name, cut, file):
    """The picture, cut to the point and in a palette, is that of the page: at most 100 pixels have another colour.
    A blinking caret is fewer, and a picture in the tool bar is more."""
    made = FOLDER / f"page-{name}.png"

    def take():
        picture(program, name)
        return cut_to_the_point(FOLDER / f"windows-{name}.png", cut, made)

    def others():
        take()
        done = subprocess.run(["compare", "-metric", "AE", "-fuzz", "10%", made, ROOT / file, "null:"], text=True,
                              stderr=subprocess.PIPE, check=False)
        return float(done.stderr) if done.returncode < 2 else float("inf")  # another size
    wait_until_painted(take)
    if not hand_out(made, file):
        wait_until(lambda: f"{file}, but {others()} pixels differ: see script/pictures",
                   lambda: others() <= 100, 15)


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
    install(**installed, Language=["en", "de"].index(language))
    program = open_blink(launch, example)
    shown(program, f"{language}-main", 20)
    if (language, BITS) == ("en", "32"):
        is_on_the_page(program, "en-main", "x310+0+0", "pictures/screenshots/windows-en-main.png")

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


def test_dark_colours_reach_all_of_the_tree_without_the_keyboard(launch, folder, installed, example):
    """The edge of a control is drawn by a theme, which may know only light colours."""
    def colour(paper, ink):
        import_registry(f'[HKEY_CURRENT_USER\\Control Panel\\Colors]\r\n"Window"="{paper}"\r\n"WindowText"="{ink}"\r\n',
                        folder)

    colour("30 30 30", "230 230 230")
    try:
        program = open_blink(launch, example)
        program.click_pane()
        left, top, right, bottom = program.control(CODE_TREE)["rect"]
        lower = f"{right - left - 20}x{(bottom - top) // 3}+{left + 10}+{bottom - (bottom - top) // 2}"

        def brightness():
            screenshot(FOLDER / "windows-dark-tree.png", "-crop", lower, "+repage")
            return float(identify(FOLDER / "windows-dark-tree.png", "%[fx:mean]"))

        wait_until(lambda: f"a dark tree, not one of {brightness()}", lambda: brightness() < 0.2, 15)
        program.click_item("Events")
        wait_until(lambda: f"a dark tree, not one of {brightness()}", lambda: brightness() < 0.2, 15)
    finally:
        colour("255 255 255", "0 0 0")


def choose_group(program, language, *names):
    """The language is chosen once more, which translates the names of the groups."""
    program.choose(*[("Language", "English"), ("Sprache", "Deutsch")][language])
    program.click_item(names[language])


@pytest.mark.skipif(BITS != "32", reason="the help shows the 32-bit program")
@pytest.mark.parametrize("language", [0, 1])
def test_the_picture_of_the_window_in_the_help(launch, folder, installed, example, language):
    """No larger than it must be."""
    install(**installed, Language=language)
    program = open_blink(launch, example)
    choose_group(program, language, "Functions", "Funktionen")
    program.click_item("ChangePace")
    wait_until("the code", lambda: program.pane() != "")
    xdotool("search", "--onlyvisible", "--name", "^Tessaly", "windowsize", *HELP_SIZE)
    wait_until("the smaller window", lambda: size(program.description()["rect"])[0] <= HELP_SIZE[0] + 20)
    name = f"{CODES[language]}-help"
    is_on_the_page(program, name, "x400+0+0", f"help/{CODES[language]}/window.png")


@pytest.mark.skipif(BITS != "32", reason="the help shows the 32-bit program")
@pytest.mark.parametrize("language", [0, 1])
def test_the_picture_of_the_messages_in_the_help(launch, installed, example, language):
    """Two lines of Blink lack their semicolon, and the kit builds it."""
    text = pathlib.Path(example).read_bytes()
    for line in (b"halfPeriod = period;", b"SetLamp(1);\r\n    Start"):
        assert text.count(line) == 1
        text = text.replace(line, line.replace(b";", b"", 1))
    pathlib.Path(example).write_bytes(text)
    install(**{**installed, "FCompBat": f'"{windows_path(ROOT / "kit/compile.bat")}"', "Language": language})
    program = open_blink(launch, example)
    choose_group(program, language, "Events", "Ereignisse")
    program.choose(*BUILD[language])
    wait_until("both errors", lambda: len(program.message_rows()) == 2)
    program.bring()
    for place in ("ChangePace", "OnStart"):
        program.keys("ctrl+j")
        wait_until(place, lambda where=place: program.pane().startswith(f"void {where}("))
    name = f"{CODES[language]}-messages"
    is_on_the_page(program, name, "x647+0+0", f"help/{CODES[language]}/messages.png")


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
