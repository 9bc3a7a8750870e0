"""One probe for the whole run; no program and no setting of one test is left to the next."""

import shutil

import pytest
from harness import example_file, recovery_folder, windows_path
from windows_harness import Program, import_registry, install, probe


@pytest.fixture(scope="session", name="probe")
def fixture_probe():
    yield probe()
    probe().end()


@pytest.fixture(autouse=True)
def no_copies(probe):
    """A program that was killed leaves a copy, and the next start would ask for it."""
    shutil.rmtree(recovery_folder(), ignore_errors=True)


@pytest.fixture
def folder(tmp_path):
    return tmp_path


@pytest.fixture
def example(folder):
    """A copy of an example that may be changed."""
    return shutil.copy(example_file("blink", ".PSF"), folder)


@pytest.fixture
def batch(folder):
    """A batch file that writes down the command line it got."""
    file = folder / "compile.bat"
    file.write_bytes(b'@echo off\r\necho %*>"%~dp0received.new"\r\nren "%~dp0received.new" received.txt\r\n')
    return file


@pytest.fixture
def installed(folder, batch):
    """The settings of a good installation."""
    settings = {"FCompBat": windows_path(batch), "FCompFileName": windows_path(folder / "program.c"),
                "FHelp": windows_path(folder / "help.txt")}
    (folder / "help.txt").write_text("Help\n")
    install(**settings)
    return settings


@pytest.fixture
def german_keyboard(keyboard):
    """For programs that are started after it."""
    keyboard("de")


@pytest.fixture
def resolution(folder):
    """Sets the resolution of the display, in dots per inch, for programs that are started after it."""
    def change(dpi):
        import_registry(f'[HKEY_CURRENT_USER\\Control Panel\\Desktop]\r\n"LogPixels"=dword:{dpi:08x}\r\n', folder)
    yield change
    change(96)


@pytest.fixture
def launch(probe):
    """Starts the program; every one that still runs at the end of the test is killed."""
    started = []

    def start(command_line="", wait=True, **place):
        program = Program(command_line, **place)
        started.append(program)
        return program.wait_main() if wait else program

    yield start
    for program in started:
        if program.status() is None:
            program.kill()


@pytest.fixture(name="program")
def fixture_program(launch, installed, example):
    """The program with the keyboard in the pane, at the beginning of a function."""
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    program.keys("ctrl+Home")
    return program
