"""The real program on a real X display, worked with real keys. Run by script/test-linux-desktop, which gives $DISPLAY,
$TESSALY (the program), $KIT, $EXAMPLES and $SCREENSHOTS
(folders)."""

import os
import pathlib
import resource
import subprocess
import time

import pytest

DEADLINE = 30
EXAMPLE = pathlib.Path(os.environ["EXAMPLES"]) / "blink"


def until(condition, what):
    """Waits until condition() gives something true, and returns that."""
    end = time.monotonic() + DEADLINE
    while time.monotonic() < end:
        result = condition()
        if result:
            return result
        time.sleep(0.02)
    raise AssertionError(f"not within {DEADLINE} s: {what}")


def xdotool(*arguments):
    done = subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True, check=False)
    return done.stdout.split()


class Program:
    """A running copy of the program. `limits` are those of the system, as {resource.RLIMIT_AS: bytes}."""

    def __init__(self, home, arguments, limits, variables):
        unwanted = ("TESSALY_SETTINGS", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME")
        environment = {
            **{name: value for name, value in os.environ.items() if name not in unwanted},
            "HOME": str(home),
            "XDG_RUNTIME_DIR": str(home / "run"),
            "XDG_CONFIG_DIRS": str(home / "system"),
            "PATH": f"{home}/bin:{os.environ['PATH']}",
            "QT_QPA_PLATFORM": "xcb",
            **variables,
        }

        def set_limits():
            for limit, size in limits.items():
                resource.setrlimit(limit, (size, size))

        self.process = subprocess.Popen([os.environ["TESSALY"], *map(str, arguments)], env=environment,
                                        preexec_fn=set_limits)

    def windows(self, title=""):
        return xdotool("search", "--onlyvisible", "--pid", self.process.pid, "--name", title)

    def wait_for(self, title):
        """Waits for a window with this title that has the keyboard, and returns its number."""

        def active():
            found = xdotool("getactivewindow")
            names = subprocess.run(["xdotool", "getactivewindow", "getwindowname"], capture_output=True, text=True,
                                   check=False).stdout.strip()
            return found and names == title and xdotool("getwindowfocus") == found and found[0]

        return until(active, f"a window “{title}” with the keyboard")

    def key(self, *keys):
        for key in keys:
            xdotool("key", "--clearmodifiers", key)

    def type(self, text):
        xdotool("type", "--clearmodifiers", "--delay", "15", text)

    def wait_for_end(self):
        return self.process.wait(DEADLINE)

    def kill(self):
        if self.process.poll() is None:
            self.process.kill()
        self.process.wait()


def make_opener(home, categories):
    """Has a program of these categories open HTML files."""
    asked = home / "bin/xdg-mime"
    asked.write_text("#!/bin/sh\n[ \"$*\" = 'query default text/html' ] && echo opener.desktop\n")
    asked.chmod(0o700)
    entry = home / ".local/share/applications/opener.desktop"
    entry.parent.mkdir(parents=True, exist_ok=True)
    entry.write_text(f"[Desktop Entry]\nType=Application\nName=Opener\nCategories={categories}\n")


@pytest.fixture(name="home")
def fixture_home(tmp_path):
    """A user's home on a machine with the kit set up for all users and a browser that notes what it opens."""
    (tmp_path / "run").mkdir(mode=0o700)
    (tmp_path / "bin").mkdir()
    browser = tmp_path / "bin/xdg-open"
    browser.write_text(f'#!/bin/sh\necho "$1" >> "{tmp_path}/opened"\n')
    browser.chmod(0o700)
    make_opener(tmp_path, "Network;WebBrowser;")
    for language in ("en", "de"):
        (tmp_path / "help" / language).mkdir(parents=True)
        (tmp_path / "help" / language / "index.html").write_text("help")
    settings = tmp_path / "system/tessaly/settings.reg"
    settings.parent.mkdir(parents=True)
    settings.write_text(
        "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Ostrel\\OstrelCompiler]\n"
        f'"FCompBat"="{os.environ["KIT"]}/compile.sh"\n'
        '"FCompFileName"="~/.cache/tessaly/program.c"\n'
        f'"FHelp"="{tmp_path}/help"\n'
    )
    return tmp_path


@pytest.fixture(name="start")
def fixture_start(home):
    programs = []

    def start(*arguments, limits=None, **variables):
        programs.append(Program(home, arguments, limits or {}, variables))
        return programs[-1]

    yield start
    for program in programs:
        program.kill()


@pytest.fixture(name="picture")
def fixture_picture():
    """Takes a picture of the whole screen once it stands still."""

    def picture(name):
        folder = pathlib.Path(os.environ["SCREENSHOTS"])
        folder.mkdir(parents=True, exist_ok=True)
        path = folder / f"linux-{name}.png"
        earlier = []

        def still():
            subprocess.run(["import", "-window", "root", path], check=True)
            earlier.append(subprocess.run(["identify", "-format", "%#", path], capture_output=True, text=True,
                                          check=True).stdout)
            return len(earlier) > 1 and earlier[-1] == earlier[-2]

        until(still, "a screen that stands still")
        return path

    return picture
