"""Tessaly, installed under Wine: its places, what it says in the registry, and how it comes and goes."""
import os
import pathlib
import re
import shutil

from harness import KEY, drive_c, example_file, reg, registry_value, wait_until, windows_path, wine

DRIVE_C = drive_c()
SETUP = pathlib.Path(os.environ["TESSALY_SETUP"])
FOLDER = DRIVE_C / "Program Files" / "Ostrel" / "Tessaly"
PSF = FOLDER / "bin" / "psf.exe"
START_MENU = DRIVE_C / "ProgramData" / "Microsoft" / "Windows" / "Start Menu" / "Programs" / "Tessaly"
C_FILE = DRIVE_C / "ProgramData" / "Ostrel" / "Tessaly" / "program.c"
UNINSTALL = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\Tessaly"
CLASSES = r"HKLM\SOFTWARE\Classes"
ENVIRONMENT = r"HKLM\SYSTEM\CurrentControlSet\Control\Session Manager\Environment"
PROGID = "Ostrel.Tessaly.PSF"
COMPILER = {"WINEPATH": windows_path(pathlib.Path(os.environ["WINE_GCC"]).parent), "TESSALY_SETTINGS": None, "CC": None}


def read_value(key, name=None):
    """The text of a value, or None."""
    found = registry_value(key, name)
    return found and found[1]


def write_value(key, name, value, kind="REG_SZ"):
    assert reg("add", key, *(["/v", name] if name else ["/ve"]), "/t", kind, "/d", value, "/f").returncode == 0


def user_folder():
    """That of the one user."""
    return next((DRIVE_C / "users").glob("[!P]*"))


def examples_folder():
    """The user's copy of the examples, from the start menu."""
    return user_folder() / "Documents" / "Tessaly Examples"


def processes(program):
    """Those in this Windows that run a program of that name: their folders in the machine's list of processes."""
    here = f"WINEPREFIX={os.environ['TESSALY_WINE_PREFIX']}".encode()
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            words = (process / "cmdline").read_bytes().split(b"\0")
            is_here = here in (process / "environ").read_bytes().split(b"\0")
        except OSError:
            continue
        if is_here and words[0].replace(b"\\", b"/").endswith(b"/" + program.encode()):
            yield process


def is_running(program):
    return any(processes(program))


def copy_example(name, folder):
    """Copies an example and returns its PSF file."""
    folder.mkdir(parents=True, exist_ok=True)
    return pathlib.Path(shutil.copy(example_file(name, ".PSF"), folder))


def install(*options):
    result = wine(windows_path(SETUP), "/S", *options)
    assert result.returncode == 0, result


def uninstall():
    """Runs what the list of installed programs says; the uninstaller works on after it has copied itself away."""
    command = read_value(UNINSTALL, "QuietUninstallString")
    program, options = re.fullmatch(r'"([^"]+)" (/S)', command).groups()
    folder = unix_path(program).parent
    assert wine(program, options).returncode == 0
    wait_until("the removal", lambda: not (folder / "uninstall.exe").exists() and
               read_value(UNINSTALL, "DisplayName") is None)
    # Its copy still runs for a moment, in a folder of its own.
    wait_until("the uninstaller's end", lambda: not is_running("Un.exe"))


def unix_path(path):
    assert path.startswith("C:\\")
    return DRIVE_C / path[3:].replace("\\", "/")


def remove_everything():
    """Whatever a test leaves behind."""
    if is_running("Tessaly.exe"):
        wine("taskkill", "/f", "/im", "Tessaly.exe")
    if read_value(UNINSTALL, "DisplayName") is not None:
        uninstall()
    for key in (KEY, CLASSES + r"\.psf", CLASSES + r"\Other.Psf"):
        reg("delete", key, "/f")
    for folder in (FOLDER, examples_folder(), C_FILE.parent):
        shutil.rmtree(folder, ignore_errors=True)
