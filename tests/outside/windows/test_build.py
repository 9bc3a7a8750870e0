"""Build: what is generated, and what the batch file is started with."""

import os
import shutil

from harness import ROOT, example_file, wait_until, wine, windows_path
from windows_harness import install, psf

SAVE_FIRST = ("Save As", "Program source code must be saved to a file before compiling\nDo you wish to do this now?",
              ["Yes", "No"])


def seen(box):
    return box.caption, box.text().replace("\r\n", "\n"), box.buttons()


def received(folder):
    """The arguments that the batch file wrote down."""
    file = folder / "received.txt"
    wait_until("the batch file", file.exists)
    return file.read_bytes().decode("ascii").strip()


def wait_complete(program):
    wait_until(lambda: f"the end of the build in {program.panels()}",
               lambda: program.panels()[1] == "Compilation Complete!")


def test_f10_builds_a_saved_file_without_a_question(launch, folder, installed, example):
    program = launch(windows_path(example))
    program.press_key("F10")
    wait_complete(program)
    assert received(folder) == f'"{windows_path(folder / "Blink.out")}"'
    assert (folder / "program.c").read_bytes() == psf("generate", example)


def test_the_menu_builds_too_and_blanks_stay_within_the_quotes(launch, folder, installed, example):
    file = shutil.move(example, folder / "two words.psf")
    program = launch(windows_path(file))
    program.choose("Compile", "Build Exe")
    wait_complete(program)
    assert received(folder) == f'"{windows_path(folder / "two words.out")}"'


def test_a_build_with_unsaved_edits_saves_when_that_is_wanted(launch, folder, installed, example):
    generated = psf("generate", example)  # what a reload of the saved file gives has more blank lines
    program = launch(windows_path(example))
    program.edit("References", "/* unsaved */")
    program.press_key("F10")
    box = program.dialog()
    assert seen(box) == SAVE_FIRST
    box.press("Yes")
    wait_complete(program)
    received(folder)
    assert b"[GVars]\r\n/* unsaved *//* Blink" in (folder / "Blink.PSF").read_bytes()
    assert (folder / "program.c").read_bytes() == generated.replace(b"/* Blink", b"/* unsaved *//* Blink", 1)


def test_a_build_with_unsaved_edits_builds_nothing_when_saving_is_declined(launch, folder, installed, example):
    program = launch(windows_path(example))
    program.edit("References", "/* unsaved */")
    program.press_key("F10")
    program.dialog().press("No")
    wait_until("the message", lambda: program.panels()[1] == "Command canceled!")
    program.idle()
    assert not (folder / "program.c").exists()
    assert not (folder / "received.txt").exists()


def test_a_build_of_a_new_document_asks_for_its_name(launch, folder, installed):
    program = launch()
    program.press_key("F10")
    program.dialog().press("Yes")
    program.dialog().choose_file(windows_path(folder / "fresh.PSF"))
    wait_complete(program)
    assert received(folder) == f'"{windows_path(folder / "fresh.out")}"'


def test_without_a_compiler_setting_nothing_is_built(launch, folder, installed, example):
    install(FHelp=installed["FHelp"], FCompBat=installed["FCompBat"])
    program = launch(windows_path(example), wait=False)
    program.dialog().press("OK")
    program.wait_main()
    program.press_key("F10")
    box = program.dialog()
    assert seen(box) == ("Error", "The compiler could not be found!  Please reinstall the software!", ["OK"])
    box.press("OK")
    assert not (folder / "received.txt").exists()


def test_a_c_file_that_cannot_be_written_is_reported(launch, folder, installed, example):
    install(**{**installed, "FCompFileName": windows_path(folder / "missing" / "program.c")})
    program = launch(windows_path(example))
    program.press_key("F10")
    box = program.dialog()
    assert seen(box) == ("Error", "This installation has been corrupted.  Please reinstall the software.", ["OK"])


def test_a_batch_file_that_cannot_be_started_gives_no_message(launch, folder, installed, example):
    install(**{**installed, "FCompBat": windows_path(folder / "missing.bat")})
    program = launch(windows_path(example))
    program.press_key("F10")
    wait_until("the C file", (folder / "program.c").exists)
    program.idle()
    program.choose("Help", "Hot Keys")  # comes when the build has ended
    program.dialog().press("OK")
    assert program.panels()[1] == "File was opened successfully!"


def test_what_compiles_is_started_with_a_maximised_window(launch, folder, installed, example):
    style = folder / "style.txt"
    install(**{**installed, "FCompBat": f'{windows_path(os.environ["WINDOW_PROBE"])} {windows_path(style)}'})
    program = launch(windows_path(example))
    program.press_key("F10")
    wait_until("the started program's answer", style.exists)
    assert style.read_text() == "3"


def test_the_kits_batch_file_makes_a_program_that_runs(launch, folder, installed, example):
    """The whole way, with a real compiler, which is on the PATH."""
    install(**{**installed, "FCompBat": windows_path(f"{ROOT}/kit/compile.bat")})
    program = launch(windows_path(example))
    program.press_key("F10")
    wait_complete(program)
    expected = example_file("blink", ".expected").read_bytes()
    wait_until(lambda: f"the program's output in {printed(folder)}", lambda: printed(folder) == expected)


def printed(folder):
    """What the built program prints; b"" while the compiler has not finished it."""
    if not (folder / "Blink.out").exists():
        return b""
    shutil.copy(folder / "Blink.out", folder / "Blink.exe")
    done = wine(str(folder / "Blink.exe"), windows_path(example_file("blink", ".events")))
    return done.stdout.replace(b"\r\n", b"\n")
