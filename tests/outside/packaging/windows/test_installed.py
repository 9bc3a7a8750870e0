"""What a silent installation has, looked at without changing it."""
import re
import struct

import pytest
from harness import EXAMPLES, ROOT, plays_as_expected, windows_path, wine
from installation import (CLASSES, COMPILER, FOLDER, PROGID, PSF, SETUP, UNINSTALL, copy_example, install, read_value,
                          remove_everything)

VERSION = re.search(r"-([0-9.]+)-setup", SETUP.name).group(1)


@pytest.fixture(scope="module", autouse=True)
def german_installation():
    install("/LANG=de")
    yield
    remove_everything()


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
    for program in (FOLDER / "Tessaly.exe", PSF):
        name = program.name
        characteristics, for_loader, relocations = flags_of_program(program)
        assert characteristics & LARGE_ADDRESS_AWARE, name
        wanted = DYNAMIC_BASE | NX_COMPATIBLE | TERMINAL_SERVER_AWARE
        assert for_loader & wanted == wanted, (name, hex(for_loader))
        assert relocations > 0, name  # without them it cannot be put anywhere else
        assert b"stack smashing detected" in program.read_bytes(), name
    for path in (SETUP, FOLDER / "uninstall.exe", FOLDER / "examples.exe"):
        wanted = DYNAMIC_BASE | NX_COMPATIBLE | TERMINAL_SERVER_AWARE
        assert flags_of_program(path)[1] & wanted == wanted, path


@pytest.mark.parametrize("language", ["en", "de"])
def test_what_the_help_says_of_places_is_true(language):
    page = (ROOT / "help" / language / "install.md").read_text(encoding="utf-8")
    rows = [line for line in page.splitlines() if line.endswith(("in the folder |", "im Ordner |"))]
    places = [place for row in rows for place in re.findall(r"`([^`]*)`", row)]
    assert len(places) == 7
    assert [place for place in places if not (FOLDER / place.replace("\\", "/")).is_file()] == []


def test_the_licence_of_all_that_is_in_the_programs_comes_with_them():
    licences = (FOLDER / "LICENSE.txt").read_text(encoding="utf-8")
    for holder in ("the Tessaly developers", "Henry Schreiner", "Niels Lohmann", "mingw-w64 project"):
        assert holder in licences


def test_the_list_of_installed_programs_has_a_full_entry():
    folder = windows_path(FOLDER)
    contact = re.search(r"^TESSALY_CONTACT:STRING=(.+)", (ROOT / "build/windows/CMakeCache.txt").read_text(), re.M)[1]
    names = ("DisplayName", "DisplayVersion", "DisplayIcon", "Publisher", "Contact", "InstallLocation",
             "UninstallString", "QuietUninstallString", "NoModify", "NoRepair")
    assert [read_value(UNINSTALL, name) for name in names] == [
        "Tessaly", VERSION, f"{folder}\\Tessaly.ico", "Ostrel", contact, folder, f'"{folder}\\uninstall.exe"',
        f'"{folder}\\uninstall.exe" /S', "0x1", "0x1",
    ]
    kilobytes = sum(path.stat().st_size for path in FOLDER.rglob("*") if path.is_file()) / 1024
    assert abs(int(read_value(UNINSTALL, "EstimatedSize"), 16) - kilobytes) < 10
    assert re.fullmatch(r"20\d{6}", read_value(UNINSTALL, "InstallDate"))


def test_the_file_type_opens_with_the_bare_path_as_command_line():
    assert read_value(CLASSES + r"\.PSF") == PROGID
    assert read_value(f"{CLASSES}\\{PROGID}") == "PSF-Datei"
    assert read_value(f"{CLASSES}\\{PROGID}\\shell\\open\\command") == f'"{windows_path(FOLDER)}\\Tessaly.exe" %1'
    assert read_value(f"{CLASSES}\\{PROGID}\\DefaultIcon") == f"{windows_path(FOLDER)}\\Tessaly.ico"
    app_path = r"HKLM\SOFTWARE\Microsoft\Windows\CurrentVersion\App Paths\Tessaly.exe"
    assert read_value(app_path) == f"{windows_path(FOLDER)}\\Tessaly.exe"


@pytest.mark.parametrize("name", EXAMPLES)
def test_the_installed_psf_builds_an_example_by_the_installed_batch_file(name, tmp_path):
    psf_file = copy_example(name, tmp_path)
    result = wine(windows_path(PSF), "build", windows_path(psf_file), env=COMPILER)
    assert (result.returncode, result.stdout, result.stderr) == (0, b"", b"")
    plays_as_expected(psf_file.with_suffix(".out"), name)


def test_a_mistake_is_shown_where_it_was_made(tmp_path):
    psf_file = copy_example("blink", tmp_path / "a b")
    program = windows_path(PSF)
    text = b"void OnKey(char character)\r\n{\r\n    int broken = ;\r\n}\r\n"
    wrong = wine(program, "set", windows_path(psf_file), "events/OnKey", input=text)
    assert wrong.returncode == 0, wrong
    result = wine(program, "build", windows_path(psf_file), env=COMPILER)
    assert result.returncode == 1
    assert b"error: expected expression before" in result.stdout
    assert b"Press any key" not in result.stdout
    assert not psf_file.with_suffix(".out").exists()
