"""The real program on a real X display, worked with real keys. Run by script/test-linux-desktop, which gives $DISPLAY
and $TESSALY (the program)."""

import os
import resource
import signal
import subprocess

from harness import PATIENCE, ROOT, environment, wait_until, write_settings, xdotool


class Program:
    """A running copy of the program. `limits` are those of the system, as {resource.RLIMIT_AS: bytes}."""

    def __init__(self, home, arguments, limits, variables):
        own = {name: None for name in ("TESSALY_SETTINGS", "XDG_CONFIG_HOME", "XDG_STATE_HOME", "XDG_CACHE_HOME")}
        own |= {"HOME": home, "XDG_RUNTIME_DIR": home / "run", "XDG_CONFIG_DIRS": home / "system",
                "PATH": f"{home}/bin:{os.environ['PATH']}", "QT_QPA_PLATFORM": "xcb"}

        def set_limits():
            for number in (signal.SIGINT, signal.SIGHUP):  # ignored in the background, or by nohup
                signal.signal(number, signal.SIG_DFL)
            for limit, size in limits.items():
                resource.setrlimit(limit, (size, resource.getrlimit(limit)[1]))

        self.process = subprocess.Popen([os.environ["TESSALY"], *map(str, arguments)],
                                        env=environment({**own, **variables}), preexec_fn=set_limits)

    def windows(self, title=""):
        """Those with this in their titles, or all, as menus have none."""
        named = ["--all", "--name", title] if title else []
        return xdotool("search", "--onlyvisible", "--pid", self.process.pid, *named, check=False)

    def come_up(self, ask):
        """Does this, and returns the window that then comes up, such as a menu."""
        before = self.windows()
        ask()
        return wait_until("one more window", lambda: next((w for w in self.windows() if w not in before), None))

    def wait_for(self, title):
        """Waits for a window with this title that has the keyboard, and returns its number."""

        def active():
            found = xdotool("getactivewindow", check=False)
            names = xdotool("getactivewindow", "getwindowname", check=False)
            return names == title.split() and xdotool("getwindowfocus", check=False) == found and found[0]

        return wait_until(f"a window “{title}” with the keyboard", active)

    def key(self, *keys):
        for key in keys:
            xdotool("key", "--clearmodifiers", key)

    def type(self, text):
        xdotool("type", "--clearmodifiers", "--delay", "15", text)

    def go_to_references(self):
        """The keyboard is in the pane then, at their beginning."""
        self.wait_for("Tessaly")
        self.key("F2", "Home", "F3", "ctrl+Home")

    def close_and_save(self):
        """Closes the window by the key, and answers the question with yes."""
        self.key("alt+F4")
        self.wait_for("Save Dialog")
        self.key("Return")
        assert self.wait_for_end() == 0

    def wait_for_end(self):
        return self.process.wait(PATIENCE)

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


def make_home(folder):
    """A user's home on a machine with the kit set up for all users and a browser that notes what it opens."""
    (folder / "run").mkdir(mode=0o700)
    (folder / "bin").mkdir()
    browser = folder / "bin/xdg-open"
    browser.write_text(f'#!/bin/sh\necho "$1" >> "{folder}/opened"\n')
    browser.chmod(0o700)
    make_opener(folder, "Network;WebBrowser;")
    for language in ("en", "de"):
        (folder / "help" / language).mkdir(parents=True)
        (folder / "help" / language / "index.html").write_text("help")
    (folder / "system/tessaly").mkdir(parents=True)
    write_all_settings(folder)
    return folder


def write_all_settings(home, **others):
    """The kit's for all users, with these changes."""
    settings = {"FCompBat": ROOT / "kit/compile.sh", "FCompFileName": "~/.cache/tessaly/program.c",
                "FHelp": home / "help"}
    write_settings(home / "system/tessaly/settings.reg", **{**settings, **others})
