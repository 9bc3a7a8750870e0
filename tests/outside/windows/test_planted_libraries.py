"""Libraries of Windows' names beside the program and in the current folder, which anybody may have put there."""

import os
import pathlib
import shutil

import pytest
from harness import ROOT, wait_until, windows_path
from windows_harness import EXE, import_registry, install

PLANTED = pathlib.Path(os.environ["WINDOW_PROBE"]).with_name("planted.dll")
# What the program loads by name, and what Windows does for it. Not what Windows loads before the program begins.
LIBRARIES = [
    "msftedit.dll", "riched20.dll", "usp10.dll", "comdlg32.dll", "shell32.dll", "ole32.dll", "oleacc.dll",
    "propsys.dll", "hhctrl.ocx", "itss.dll", "mshtml.dll", "winspool.drv", "dwmapi.dll", "shcore.dll",
]


@pytest.fixture
def planted(folder):
    """A copy of the program that takes such libraries from its own folder first, and a current folder that has them."""
    own, current = folder / "own", folder / "current"
    for place in (own, current):
        place.mkdir()
        for name in LIBRARIES:
            shutil.copy(PLANTED, place / name)
    shutil.copy(EXE, own / "Planted.exe")
    overrides = "".join(f'"{name.removesuffix(".dll")}"="native,builtin"\r\n' for name in LIBRARIES)
    key = r"HKEY_CURRENT_USER\Software\Wine\AppDefaults\Planted.exe\DllOverrides"
    import_registry(f"[{key}]\r\n{overrides}", folder)
    return {"exe": own / "Planted.exe", "folder": current}


def test_no_library_is_taken_from_the_program_s_folder_or_the_current_one(launch, folder, installed, planted, example):
    install(**{**installed, "FHelp": windows_path(f"{ROOT}/build/release/help/Tessaly-en.chm")})
    program = launch(windows_path(example), **planted)
    program.choose("File", "Open Program Source File")
    program.dialog().press("Cancel")
    program.press_key("F1")
    wait_until("the help", lambda: any(w["class"] == "HH Parent" for w in program.windows()))
    program.close()
    assert program.wait_end() == 0
    assert sorted(str(mark.relative_to(folder)) for mark in folder.rglob("*.ran")) == []
