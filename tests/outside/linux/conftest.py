"""Homes and programs that are gone at the end of the test, and pictures."""

import functools
import shutil
import os
import pathlib
import subprocess

import pytest
from harness import ROOT, example_file, identify, screenshot, wait_until
from linux_harness import Program, make_home, make_opener

READER = pathlib.Path(__file__).parent / "spoken.py"


@pytest.fixture(name="home")
def fixture_home(tmp_path):
    return make_home(tmp_path)


@pytest.fixture(name="opener")
def fixture_opener(home):
    return functools.partial(make_opener, home)


@pytest.fixture(name="start")
def fixture_start(home):
    programs = []

    def start(*arguments, limits=None, **variables):
        programs.append(Program(home, arguments, limits or {}, variables))
        return programs[-1]

    yield start
    for program in programs:
        program.kill()


@pytest.fixture(name="block")
def fixture_block(home):
    """A file of its own, to be changed."""
    return shutil.copy(example_file("blink", ".PSF"), home / "block.PSF")


@pytest.fixture(name="program")
def fixture_program(start, block):
    """The program with the keyboard in the pane, at the beginning of the references."""
    program = start(block)
    program.go_to_references()
    return program


@pytest.fixture(name="picture")
def fixture_picture():
    """Takes a picture of the whole screen once it stands still."""

    def picture(name):
        path = ROOT / f"build/screenshots/linux-{name}.png"
        earlier = []

        def still():
            screenshot(path)
            earlier.append(identify(path, "%#"))
            return len(earlier) > 1 and earlier[-1] == earlier[-2]

        wait_until("a screen that stands still", still)
        return path

    return picture


@pytest.fixture(name="spoken")
def fixture_spoken(home):
    """A session of D-Bus of its own with the accessibility service: its variables, and what is said there."""
    variables = {**os.environ, "HOME": str(home), "XDG_RUNTIME_DIR": str(home / "run")}
    bus = subprocess.Popen(["dbus-daemon", "--session", "--nofork", "--print-address",
                            f"--address=unix:dir={home}/run"], env=variables, stdout=subprocess.PIPE, text=True)
    session = {"DBUS_SESSION_BUS_ADDRESS": bus.stdout.readline().strip(), "QT_LINUX_ACCESSIBILITY_ALWAYS_ON": "1"}

    def spoken(*roles):
        done = subprocess.run(["/usr/bin/python3", READER, *roles], env={**variables, **session}, capture_output=True,
                              text=True, timeout=60, check=False)
        return done.stdout.splitlines()

    spoken.session = session
    spoken()  # starts the service, which the program looks for when it begins
    yield spoken
    bus.kill()
    bus.wait()
