"""The installer under Wine, silently: what it puts where, what it leaves alone, and that it all goes again."""
import os
import pathlib
import re
import shutil
import struct
import subprocess

import pytest
from harness import (EXAMPLES, KEY, drive_c, example_file, plays_as_expected, reg, registry_value, wait_until,
                     windows_path, wine, wine_command, xdotool)

DRIVE_C = drive_c()
SETUP = pathlib.Path(os.environ["TESSALY_SETUP"])
VERSION = re.search(r"-([0-9.]+)-setup", SETUP.name).group(1)
FOLDER = DRIVE_C / "Program Files" / "Ostrel" / "Tessaly"
EXAMPLES_FOLDER = DRIVE_C / "users" / "Public" / "Documents" / "Tessaly Examples"
START_MENU = DRIVE_C / "ProgramData" / "Microsoft" / "Windows" / "Start Menu" / "Programs" / "Tessaly"
C_FILE = DRIVE_C / "ProgramData" / "Ostrel" / "Tessaly" / "program.c"
UNINSTALL = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\Tessaly"
CLASSES = r"HKLM\SOFTWARE\Classes"
PROGID = "Ostrel.Tessaly.PSF"
COMPILER = {"WINEPATH": windows_path(pathlib.Path(os.environ["WINE_GCC"]).parent), "TESSALY_SETTINGS": None, "CC": None}


def read_value(key, name=None):
    """The text of a value, or None."""
    found = registry_value(key, name)
    return found and found[1]


def write_value(key, name, value):
    assert reg("add", key, *(["/v", name] if name else ["/ve"]), "/d", value, "/f").returncode == 0


def is_running(program):
    """Whether a Windows program of that name runs, as the machine's list of processes has it."""
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            words = (process / "cmdline").read_bytes().split(b"\0")
        except OSError:
            continue
        if words[0].replace(b"\\", b"/").endswith(b"/" + program.encode()):
            return True
    return False


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


def files():
    """All files and folders of the disk but the temporary ones, in which the uninstaller leaves its copy."""
    return {str(path.relative_to(DRIVE_C)) for path in DRIVE_C.rglob("*") if "Temp" not in path.parts}


def registry(folder):
    """The machine's part of the registry, as text."""
    exported = folder / "software.reg"
    result = reg("export", r"HKLM\SOFTWARE", windows_path(exported), "/y")
    assert result.returncode == 0, result
    return exported.read_bytes().decode("utf-16").split("\r\n")


@pytest.fixture
def windows_without_tessaly():
    """Ends as it began, whatever a test leaves behind."""
    yield
    if is_running("Tessaly.exe"):
        wine("taskkill", "/f", "/im", "Tessaly.exe")
    if read_value(UNINSTALL, "DisplayName") is not None:
        uninstall()
    for key in (KEY, CLASSES + r"\.psf", CLASSES + r"\Other.Psf"):
        reg("delete", key, "/f")
    for folder in (FOLDER, EXAMPLES_FOLDER, C_FILE.parent):
        shutil.rmtree(folder, ignore_errors=True)


pytestmark = pytest.mark.usefixtures("windows_without_tessaly")


@pytest.mark.parametrize("language, number", [("en", "0x0"), ("de", "0x1")])
def test_the_five_settings_are_written(language, number):
    install(f"/LANG={language}")
    values = {name: read_value(KEY, name) for name in ("FCompBat", "FCompFileName", "FHelp", "FProgBlkIcon")}
    assert values == {
        "FCompBat": f'"{windows_path(FOLDER)}\\kit\\compile.bat"',
        "FCompFileName": windows_path(C_FILE),
        "FHelp": f"{windows_path(FOLDER)}\\help\\Tessaly-{language}.chm",
        "FProgBlkIcon": f"{windows_path(FOLDER)}\\Tessaly.ico",
    }
    assert read_value(KEY, "Language") == number
    for value in values.values():
        assert unix_path(value.strip('"')).parent.is_dir()
        assert unix_path(value.strip('"')).is_file() or value == windows_path(C_FILE)


def test_an_installation_that_is_removed_leaves_files_and_registry_as_they_were(tmp_path):
    files_before, registry_before = files(), registry(tmp_path)
    install("/LANG=de")
    assert files() != files_before
    assert registry(tmp_path) != registry_before
    uninstall()
    assert files() ^ files_before == set()
    assert registry(tmp_path) == registry_before


DYNAMIC_BASE, NX_COMPATIBLE, TERMINAL_SERVER_AWARE, LARGE_ADDRESS_AWARE = 0x40, 0x100, 0x8000, 0x20


def flags_of_program(path):
    """The characteristics of a PE file and those for the loader, and the size of its relocations."""
    data = path.read_bytes()
    header = struct.unpack_from("<I", data, 0x3C)[0]
    characteristics, magic = struct.unpack_from("<HH", data, header + 22)
    directories = header + 24 + {0x10B: 96, 0x20B: 112}[magic]
    relocations = struct.unpack_from("<I", data, directories + 5 * 8 + 4)[0]
    return characteristics, struct.unpack_from("<H", data, header + 24 + 70)[0], relocations


def test_the_installed_programs_are_hardened():
    install("/LANG=en")
    for name in ("Tessaly.exe", "psf.exe"):
        characteristics, for_loader, relocations = flags_of_program(FOLDER / name)
        assert characteristics & LARGE_ADDRESS_AWARE, name
        wanted = DYNAMIC_BASE | NX_COMPATIBLE | TERMINAL_SERVER_AWARE
        assert for_loader & wanted == wanted, (name, hex(for_loader))
        assert relocations > 0, name  # without them it cannot be put anywhere else
        assert b"stack smashing detected" in (FOLDER / name).read_bytes(), name
    for path in (SETUP, FOLDER / "uninstall.exe"):
        wanted = DYNAMIC_BASE | NX_COMPATIBLE | TERMINAL_SERVER_AWARE
        assert flags_of_program(path)[1] & wanted == wanted, path


def test_the_list_of_installed_programs_has_a_full_entry():
    install("/LANG=en")
    folder = windows_path(FOLDER)
    names = ("DisplayName", "DisplayVersion", "DisplayIcon", "Publisher", "InstallLocation", "UninstallString",
             "QuietUninstallString", "NoModify", "NoRepair")
    assert [read_value(UNINSTALL, name) for name in names] == [
        "Tessaly", VERSION, f"{folder}\\Tessaly.ico", "Ostrel", folder, f'"{folder}\\uninstall.exe"',
        f'"{folder}\\uninstall.exe" /S', "0x1", "0x1",
    ]
    kilobytes = sum(path.stat().st_size for path in FOLDER.rglob("*") if path.is_file()) / 1024
    assert abs(int(read_value(UNINSTALL, "EstimatedSize"), 16) - kilobytes) < 10
    assert re.fullmatch(r"20\d{6}", read_value(UNINSTALL, "InstallDate"))


@pytest.mark.parametrize("language, names", [
    ("en", ["Examples.lnk", "Tessaly Help.lnk", "Tessaly.lnk"]),
    ("de", ["Beispiele.lnk", "Tessaly-Hilfe.lnk", "Tessaly.lnk"]),
])
def test_the_start_menu_has_the_program_its_help_and_the_examples_in_one_language(language, names):
    install("/LANG=de" if language == "en" else "/LANG=en")
    install(f"/LANG={language}")
    assert sorted(path.name for path in START_MENU.iterdir()) == names


def test_the_file_type_opens_with_the_bare_path_as_command_line():
    install("/LANG=de")
    assert read_value(CLASSES + r"\.PSF") == PROGID
    assert read_value(f"{CLASSES}\\{PROGID}") == "Programmquelldatei"
    assert read_value(f"{CLASSES}\\{PROGID}\\shell\\open\\command") == f'"{windows_path(FOLDER)}\\Tessaly.exe" %1'
    assert read_value(f"{CLASSES}\\{PROGID}\\DefaultIcon") == f"{windows_path(FOLDER)}\\Tessaly.ico"
    app_path = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\Tessaly.exe"
    assert read_value(app_path) == f"{windows_path(FOLDER)}\\Tessaly.exe"


def test_a_file_type_that_another_program_holds_stays_with_it():
    write_value(CLASSES + r"\.psf", None, "Other.Psf")
    write_value(CLASSES + r"\.psf\OpenWithProgids", "Other.Psf", "")
    install()
    assert read_value(CLASSES + r"\.psf") == "Other.Psf"
    assert read_value(CLASSES + r"\.psf\OpenWithProgids", PROGID) == ""
    uninstall()
    assert read_value(CLASSES + r"\.psf") == "Other.Psf"
    assert read_value(CLASSES + r"\.psf\OpenWithProgids", "Other.Psf") == ""
    assert read_value(CLASSES + r"\.psf\OpenWithProgids", PROGID) is None


def test_a_file_type_that_another_program_takes_later_stays_with_it():
    install()
    write_value(CLASSES + r"\.psf", None, "Other.Psf")
    install()
    uninstall()
    assert read_value(CLASSES + r"\.psf") == "Other.Psf"


def test_the_settings_of_another_compiler_are_neither_replaced_nor_removed():
    write_value(KEY, "FCompBat", r"C:\target\compile.bat")
    install()
    assert read_value(KEY, "FCompBat") == r"C:\target\compile.bat"
    assert read_value(KEY, "FCompFileName") == windows_path(C_FILE)
    write_value(KEY, "FCompFileName", r"C:\target\program.c")
    install()
    assert read_value(KEY, "FCompFileName") == r"C:\target\program.c"
    uninstall()
    assert read_value(KEY, "FCompBat") == r"C:\target\compile.bat"
    assert read_value(KEY, "FCompFileName") == r"C:\target\program.c"
    assert read_value(KEY, "FHelp") is None
    assert read_value(KEY, "Language") is None


def test_an_update_follows_the_program_and_its_language():
    install("/LANG=de", r"/D=C:\Tools\Tessaly")
    assert (DRIVE_C / "Tools" / "Tessaly" / "psf.exe").is_file()
    install()
    assert not FOLDER.exists()
    assert read_value(KEY, "Language") == "0x1"
    assert read_value(KEY, "FHelp") == r"C:\Tools\Tessaly\help\Tessaly-de.chm"
    install("/LANG=en")
    assert read_value(KEY, "Language") == "0x0"
    assert read_value(KEY, "FHelp") == r"C:\Tools\Tessaly\help\Tessaly-en.chm"
    uninstall()
    assert not (DRIVE_C / "Tools" / "Tessaly").exists()
    (DRIVE_C / "Tools").rmdir()


def test_an_update_removes_what_only_the_older_version_had():
    install()
    (FOLDER / "kit" / "old.h").write_text("old")
    with open(FOLDER / "files.txt", "r+b") as listed:
        lines = listed.read()
        listed.seek(0)
        listed.write(b"kit\\old.h\r\n" + lines)
    install()
    assert not (FOLDER / "kit" / "old.h").exists()
    assert (FOLDER / "kit" / "compile.bat").exists()


def test_a_language_that_there_is_not_is_refused():
    assert wine(windows_path(SETUP), "/S", "/LANG=fr").returncode == 2
    assert not FOLDER.exists()


def test_files_of_the_user_stay():
    install()
    own = FOLDER / "kit" / "own.h"
    own.write_text("own")
    changed = EXAMPLES_FOLDER / "blink" / "Blink.PSF"
    changed.write_bytes(changed.read_bytes() + b" ")
    built = EXAMPLES_FOLDER / "filter" / "Filter.out"
    built.write_text("built")
    content = changed.read_bytes()
    install()
    assert changed.read_bytes() == content
    uninstall()
    assert own.read_text() == "own"
    assert changed.read_bytes() == content
    assert built.exists()
    assert {path.name for path in EXAMPLES_FOLDER.rglob("*") if path.is_file()} == {"Blink.PSF", "Filter.out"}


@pytest.mark.parametrize("name", EXAMPLES)
def test_the_installed_psf_builds_an_example_by_the_installed_batch_file(name):
    install()
    psf_file = EXAMPLES_FOLDER / name / f"{EXAMPLES[name]}.PSF"
    result = wine(windows_path(FOLDER / "psf.exe"), "build", windows_path(psf_file), env=COMPILER)
    assert (result.returncode, result.stdout, result.stderr) == (0, b"", b"")
    plays_as_expected(psf_file.with_suffix(".out"), name)
    psf_file.with_suffix(".out").unlink()


def test_a_mistake_is_shown_where_it_was_made(tmp_path):
    install()
    psf_file = copy_example("blink", tmp_path / "a b")
    program = windows_path(FOLDER / "psf.exe")
    text = b"void OnKey(char character)\r\n{\r\n    int broken = ;\r\n}\r\n"
    wrong = wine(program, "set", windows_path(psf_file), "events/OnKey", input=text)
    assert wrong.returncode == 0, wrong
    result = wine(program, "build", windows_path(psf_file), env=COMPILER)
    assert result.returncode == 1
    assert b"error: expected expression before" in result.stdout
    assert b"Press any key" not in result.stdout
    assert not psf_file.with_suffix(".out").exists()


def test_a_double_clicked_file_opens_and_f10_builds_it_by_the_installed_batch_file(tmp_path):
    install("/LANG=de")
    psf_file = copy_example("filter", tmp_path / "a b")
    program = psf_file.with_suffix(".out")
    # What the Explorer does with a double click.
    assert wine("start", windows_path(psf_file), env={**COMPILER, "TESSALY_NO_PAUSE": "1"}).returncode == 0
    windows = ["search", "--onlyvisible", "--name", "^Tessaly$"]
    window = wait_until("the window", lambda: xdotool(*windows, check=False))[-1]

    def has_begun():
        xdotool("windowfocus", window, "key", "F10")
        return C_FILE.exists()
    wait_until("the begin of a build", has_begun)
    wait_until("the compiler's end", lambda: program.exists() and not is_running("gcc.exe"))
    plays_as_expected(program, "filter")
    assert wine("taskkill", "/im", "Tessaly.exe").returncode == 0
    wait_until("the program's end", lambda: not is_running("Tessaly.exe"))


def test_nothing_is_replaced_or_removed_while_the_program_runs(tmp_path):
    install()
    # The program itself would need its window looked after; a copy of psf that waits for its input runs as well.
    running = FOLDER / "Tessaly.exe"
    shutil.copy(FOLDER / "psf.exe", running)
    psf_file = copy_example("blink", tmp_path)
    command = wine_command(windows_path(running), "set", windows_path(psf_file), "references")
    with subprocess.Popen(command, stdin=subprocess.PIPE) as process:
        try:
            wait_until("the program's start", lambda: is_running("Tessaly.exe"))
            (FOLDER / "psf.exe").write_bytes(b"old")
            assert wine(windows_path(SETUP), "/S").returncode == 2
            assert (FOLDER / "psf.exe").read_bytes() == b"old"
            wine(windows_path(FOLDER / "uninstall.exe"), "/S", f"_?={windows_path(FOLDER)}")
            assert running.exists()
            assert read_value(UNINSTALL, "DisplayName") == "Tessaly"
        finally:
            process.stdin.close()
            process.wait(timeout=60)
    install()
