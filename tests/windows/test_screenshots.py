"""Pictures of the windows in both languages, for people to look at: build/screenshots/windows-LANGUAGE-WHAT.png."""

import os
import shutil
import subprocess

import pytest

from windows_harness import BITS, ROOT, install, wait_until

MENUS = {"en": [("File", "Save Program Source File As"), ("Help", "About"), ("Help", "Hot Keys")],
         "de": [("Datei", "Programmquelldatei speichern unter..."), ("Hilfe", "Info..."), ("Hilfe", "Hot Keys")]}
FOLDER = f"{ROOT}/build/screenshots" if BITS == "32" else f"{ROOT}/build/screenshots/64"


def picture(program, name):
    """The main window with whatever lies over it, with its frame. The answer: how many colours it has."""
    wait_until("the display to be painted", lambda: program.probe.ask("send", program.main, 0, 0, 0) == 0)
    file = f"{FOLDER}/windows-{name}.png"
    os.makedirs(FOLDER, exist_ok=True)
    subprocess.run(["import", "-window", "root", "-trim", "+repage", file], check=True, timeout=60)
    done = subprocess.run(["identify", "-format", "%k", file], check=True, timeout=60, capture_output=True)
    return int(done.stdout)


def shown(program, name, least):
    """Takes pictures until one has so many colours: painting is done by then."""
    wait_until(f"a picture {name} of {least} colours", lambda: picture(program, name) >= least, 15)


@pytest.mark.parametrize("language", ["en", "de"])
def test_pictures_of_all_windows(launch, folder, installed, example, language):
    install(folder, **installed, Language=["en", "de"].index(language))
    shown_folder = f"{os.environ['TESSALY_WINE_PREFIX']}/drive_c/Blocks"  # whose name people can read
    os.makedirs(shown_folder, exist_ok=True)
    shutil.copy(example, shown_folder)
    program = launch("C:\\Blocks\\Blink.PSF")
    program.idle()
    program.click_item("Functions" if "Functions" in program.tree_texts() else "Funktionen")
    program.click_item("ChangePace")
    wait_until("the code", lambda: program.pane() != "")
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
