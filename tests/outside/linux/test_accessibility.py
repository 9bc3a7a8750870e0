"""What a screen reader says of the window, through the accessibility service of the system."""

import os
import pathlib
import subprocess

import pytest
from harness import example_file, wait_until


READER = pathlib.Path(__file__).parent / "spoken.py"


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


def test_every_control_has_a_name(start, spoken):
    program = start(example_file("blink", ".PSF"), **spoken.session)
    program.wait_for("Tessaly")
    program.key("F2", "Up", "Up")

    def says(line, role):
        wait_until(f"“{line}” to be said", lambda: line in spoken(role))

    says("tree: Code Viewer", "tree")
    says("text: Event Code", "text")
    says("push button: Add Function", "push button")
    says("push button: Delete", "push button")
    says("status bar: ", "status bar")
    assert f"label: File={example_file('blink', '.PSF')}" in spoken("label")
    program.key("alt+l", "g")
    says("tree: Ereignistypauswahl", "tree")
    says("push button: Funktion hinzufügen", "push button")
    program.key("F5")
    program.wait_for("Funktion hinzufügen")
    says("text: Bitte Namen der Funktion die Sie erzeugen wollen eintragen", "text")
    says("push button: Abbruch", "push button")
