"""The installer under Wine, silently: what it puts where, what it leaves alone, and that it all goes again."""
import shutil
import subprocess

import pytest
from harness import KEY, ROOT, plays_as_expected, reg, wait_until, windows_path, wine, wine_command, xdotool
from installation import (CLASSES, COMPILER, C_FILE, DRIVE_C, FOLDER, PROGID, PSF, SETUP, START_MENU, UNINSTALL,
                          copy_example, examples_folder, install, is_running, processes, read_value, remove_everything,
                          uninstall, unix_path, user_folder, write_value)


def files():
    """All files and folders of the disk but the temporary ones, in which the uninstaller leaves its copy."""
    return {str(path.relative_to(DRIVE_C)) for path in DRIVE_C.rglob("*") if "Temp" not in path.parts}


def registry(folder):
    """The machine's part of the registry, as text."""
    exported = folder / "software.reg"
    result = reg("export", r"HKLM\SOFTWARE", windows_path(exported), "/y")
    assert result.returncode == 0, result
    return exported.read_bytes().decode("utf-16").split("\r\n")


def shown_folder(name):
    return xdotool("search", "--onlyvisible", "--name", f"{name}$", check=False)


def open_by_start_menu(entry, name):
    """Chooses an entry of the start menu, and closes the folder that it opens."""
    assert wine("start", windows_path(START_MENU / f"{entry}.lnk")).returncode == 0
    window = wait_until("the folder", lambda: shown_folder(name))[0]
    xdotool("windowfocus", "--sync", window, "key", "alt+F4")
    wait_until("its end", lambda: not shown_folder(name))


@pytest.fixture
def windows_without_tessaly():
    """Ends as it began, whatever a test leaves behind."""
    yield
    remove_everything()


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
    for written in (C_FILE, C_FILE.with_name("program.c.log")):  # by a build
        written.write_text("")
    uninstall()
    assert files() ^ files_before == set()
    assert registry(tmp_path) == registry_before


@pytest.mark.parametrize("language, names", [
    ("en", ["Examples.lnk", "Kept texts.lnk", "Tessaly Help.lnk", "Tessaly.lnk"]),
    ("de", ["Aufbewahrte Texte.lnk", "Beispiele.lnk", "Tessaly-Hilfe.lnk", "Tessaly.lnk"]),
])
def test_the_start_menu_has_the_program_its_help_the_examples_and_kept_texts_in_one_language(language, names):
    install("/LANG=de" if language == "en" else "/LANG=en")
    install(f"/LANG={language}")
    assert sorted(path.name for path in START_MENU.iterdir()) == names


def test_the_entry_for_kept_texts_makes_and_opens_the_folder_of_the_user():
    install("/LANG=en")
    local = unix_path(wine("cmd", "/c", "echo %LOCALAPPDATA%").stdout.decode().strip())
    kept = local / "Ostrel" / "Tessaly" / "Recovery" / "kept"
    assert not kept.exists()
    try:
        for _ in ("not there yet", "there"):
            open_by_start_menu("Kept texts", "kept")
            assert kept.is_dir()
        (kept / "Blink.PSF").write_text("kept")
        uninstall()
        assert (kept / "Blink.PSF").read_text() == "kept"
    finally:
        shutil.rmtree(local / "Ostrel", ignore_errors=True)


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
    assert (DRIVE_C / "Tools" / "Tessaly" / "bin" / "psf.exe").is_file()
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


@pytest.mark.parametrize("option", ["/LANG=fr", "/PATH=maybe"])
def test_a_wrong_option_is_refused(option):
    assert wine(windows_path(SETUP), "/S", option).returncode == 2
    assert not FOLDER.exists()


def test_files_of_the_user_stay():
    install()
    own = FOLDER / "kit" / "own.h"
    own.write_text("own")
    install()
    uninstall()
    assert own.read_text() == "own"


def test_the_entry_for_the_examples_gives_the_user_copies_that_are_his():
    install("/LANG=en")
    copies = examples_folder()
    assert not copies.exists()
    open_by_start_menu("Examples", "Tessaly Examples")
    files = {path.relative_to(copies): path for path in copies.rglob("*") if path.is_file()}
    assert len(files) == 13
    for name, path in files.items():
        ours = (ROOT / "examples" / name).read_bytes()
        assert path.read_bytes() == (ours.replace(b"\n", b"\r\n") if name.suffix == ".md" else ours), name
    changed, deleted = copies / "blink" / "Blink.PSF", copies / "filter" / "Filter.PSF"
    changed.write_bytes(b"mine")
    deleted.unlink()
    open_by_start_menu("Examples", "Tessaly Examples")
    assert changed.read_bytes() == b"mine"
    assert deleted.exists()
    uninstall()
    assert changed.read_bytes() == b"mine"


def test_the_entry_for_the_program_starts_it_in_the_folder_of_the_user():
    install("/LANG=en")
    assert wine("start", windows_path(START_MENU / "Tessaly.lnk")).returncode == 0
    wait_until("the window", lambda: xdotool("search", "--onlyvisible", "--name", "^Tessaly$", check=False))
    [process] = processes("Tessaly.exe")
    assert (process / "cwd").samefile(user_folder())
    assert wine("taskkill", "/im", "Tessaly.exe").returncode == 0
    wait_until("the program's end", lambda: not is_running("Tessaly.exe"))


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
    shutil.copy(PSF, running)
    psf_file = copy_example("blink", tmp_path)
    command = wine_command(windows_path(running), "set", windows_path(psf_file), "references")
    with subprocess.Popen(command, stdin=subprocess.PIPE) as process:
        try:
            wait_until("the program's start", lambda: is_running("Tessaly.exe"))
            PSF.write_bytes(b"old")
            assert wine(windows_path(SETUP), "/S").returncode == 2
            assert PSF.read_bytes() == b"old"
            wine(windows_path(FOLDER / "uninstall.exe"), "/S", f"_?={windows_path(FOLDER)}")
            assert running.exists()
            assert read_value(UNINSTALL, "DisplayName") == "Tessaly"
        finally:
            process.stdin.close()
            process.wait(timeout=60)
    install()
