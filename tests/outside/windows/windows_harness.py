"""Tessaly.exe as its user meets it: real windows under Wine, real keys and clicks on a display of their own.

The environment comes from script/test-windows: TESSALY_WINE_BITS, TESSALY_EXE, WINDOW_PROBE, PSF, WINEPATH and DISPLAY.
"""

import functools
import json
import os
import subprocess

from harness import KEY, PATIENCE, click, run, wait_until, windows_path, wine_command, xdotool

EXE = os.environ["TESSALY_EXE"]

# The controls' ids.
CODE_TREE, TREE_LABEL, FUNC_LABEL, FUNC_BODY, TOOL_BAR, STATUS_BAR = range(101, 107)
NAME_LABEL, FUNC_VAR_NAME, NAME_OK, NAME_CANCEL = 201, 202, 1, 2
FILE_NAME = (0x480, 0x47C)  # the box for the name in a file dialog, plain or with a list
ROWS = 402  # of the messages
BUILD = [("Compile", "Build Exe"), ("Compiler", "Exe erstellen")]
WM_CLOSE, WM_COMMAND = 0x10, 0x111


def psf(*arguments, stdin=b""):
    done = run(os.environ["PSF"], *arguments, input=stdin)
    assert done.returncode == 0, done
    return done.stdout


def import_registry(text, folder):
    """Imports keys and values, written as in a registry export. Wine's own start of reg.exe is the quickest."""
    file = folder / "import.reg"
    file.write_bytes(("Windows Registry Editor Version 5.00\r\n\r\n" + text).encode("utf-16"))
    process = probe().start(f"reg import {windows_path(file)}")
    wait_until("the import", lambda: probe().ask("status", process) is not None)
    assert probe().ask("status", process) == 0


def install(**settings):
    """Leaves exactly these settings in the registry; without any not even the key."""
    values = [word for name, value in settings.items()
              for word in (name, "number" if isinstance(value, int) else "text", value)]
    assert probe().ask("registry", KEY.removeprefix("HKEY_LOCAL_MACHINE\\"), *values)


class Probe:
    """window_probe.exe, which looks at the windows from inside Wine."""

    def __init__(self):
        self.process = subprocess.Popen(
            wine_command(os.environ["WINDOW_PROBE"]), stdin=subprocess.PIPE, stdout=subprocess.PIPE)
        self.ask("windows", 0)

    def ask(self, *words):
        self.process.stdin.write("\t".join(map(str, words)).encode() + b"\n")
        self.process.stdin.flush()
        line = self.process.stdout.readline()
        assert line, f"the probe ended at {words}"
        answer = json.loads(line)
        if "error" in answer:
            raise LookupError(f"{words}: {answer['error']}")
        return answer["answer"]

    def start(self, *command):
        """Starts a command line, in a folder; returns the process."""
        try:
            return self.ask("start", *command)
        except LookupError as error:
            if "error 1359" not in str(error):
                raise
        # Once in many hundred starts a Wine process is gone before it got to its program; Windows has no such error.
        print("Wine lost a new process; started once more")
        return self.ask("start", *command)

    def end(self):
        self.process.stdin.close()
        self.process.wait(timeout=PATIENCE)


@functools.cache
def probe():
    """The one of this run."""
    return Probe()


class Dialog:
    """A window over the main window: message box, file dialog, name window or About."""

    def __init__(self, program, description):
        self.program = program
        self.window = description["window"]
        self.caption = description["text"]
        self.name = description["class"]
        self.rect = description["rect"]
        self.controls = program.probe.ask("children", self.window)

    def texts(self):
        return [c["text"] for c in self.controls if c["class"] == "Static" and c["text"]]

    def text(self):
        return "\n".join(self.texts())

    def buttons(self):
        return [c["text"].replace("&", "") for c in self.controls if c["class"] == "Button" and c["visible"]]

    def control(self, *ids):
        return next(c for c in self.controls if c["id"] in ids)

    def gone(self):
        return all(w["window"] != self.window for w in self.program.windows())

    def wait_gone(self):
        wait_until(f"the end of the window {self.caption!r}", self.gone)

    def press(self, caption):
        """Clicks a button with the mouse, and waits for the dialog's end."""
        button = next(c for c in self.controls if c["class"] == "Button" and c["text"].replace("&", "") == caption)
        self.program.bring(self.window)
        self.program.click(button["rect"])
        self.wait_gone()

    def choose_file(self, path):
        """Types the path into a file dialog and presses Enter."""
        self.program.bring(self.window)
        box = self.control(*FILE_NAME)
        if path.isascii():
            self.program.keys("ctrl+a", "Delete")
            xdotool("type", "--delay", "3", "--", path)
            wait_until(f"{path} in the file dialog", lambda: self.program.probe.ask("text", box["window"]) == path)
        else:
            self.program.probe.ask("settext", box["window"], path)
        self.program.keys("Return")


class Program:
    """One run of Tessaly.exe, or of a copy of it, in a folder. The command line is passed as it stands."""

    def __init__(self, command_line="", exe=EXE, folder=None):
        self.probe = probe()
        command = f"{windows_path(exe)} {command_line}".strip()
        self.process = self.probe.start(command, *([windows_path(folder)] if folder else []))
        self.main = None

    # Its end

    def status(self):
        return self.probe.ask("status", self.process)

    def wait_end(self):
        wait_until("the program's end", lambda: self.status() is not None)
        return self.status()

    def kill(self):
        self.probe.ask("kill", self.process)
        return self.wait_end()

    # Its windows

    def windows(self):
        return self.probe.ask("windows", self.process)

    def wait_main(self):
        def shown():
            assert self.status() is None, f"the program ended with {self.status()}"
            return next((w for w in self.windows() if w["class"] == "VornMainFrm"), None)
        self.main = wait_until("the main window", shown)["window"]
        self.controls = {c["id"]: c for c in self.probe.ask("children", self.main)}
        return self

    def dialog(self, name=None):
        """The dialog that is shown or comes: a standard one, or one of the window class `name`."""
        def found():
            return next((w for w in self.windows() if w["class"] == (name or "#32770")), None)
        shown = wait_until(lambda: f"a dialog over {[w['text'] for w in self.windows()]}", found)
        wait_until("the dialog's controls", lambda: self.probe.ask("children", shown["window"]) or self.gone(shown))
        return Dialog(self, shown)

    def gone(self, description):
        return all(w["window"] != description["window"] for w in self.windows())

    def dialogs(self):
        return [w for w in self.windows() if w["class"] in ("#32770", "UserFuncVarFrm", "frmSplash")]

    def idle(self):
        """No dialog is there, and the main window has worked off its messages."""
        wait_until(lambda: f"no dialog, but {self.dialogs()}", lambda: not self.dialogs())
        wait_until("the main window to take input", lambda: self.description()["enabled"])

    def description(self):
        return next(w for w in self.windows() if w["window"] == self.main)

    def control(self, control_id):
        """How the control is now."""
        return next(c for c in self.probe.ask("children", self.main) if c["id"] == control_id)

    def text(self, control_id):
        return self.probe.ask("text", self.controls[control_id]["window"])

    def caption(self):
        return self.probe.ask("text", self.main)

    def panels(self):
        return self.probe.ask("panels", self.controls[STATUS_BAR]["window"])

    def buttons(self):
        return self.probe.ask("buttons", self.controls[TOOL_BAR]["window"])

    def tree(self):
        return self.probe.ask("tree", self.controls[CODE_TREE]["window"])

    def tree_texts(self):
        return [("  " * item["level"]) + item["text"] for item in self.tree()]

    def functions(self, group="Functions"):
        texts = self.tree_texts()
        after = texts[texts.index(group) + 1:]
        return [t.strip() for t in after[:next(i for i, t in enumerate(after + [""]) if not t.startswith("  "))]]

    def selected(self):
        return next((item["text"] for item in self.tree() if item["selected"]), None)

    def pane(self):
        return self.text(FUNC_BODY)

    def focus(self):
        focused = self.probe.ask("focus", self.main)["focus"]
        return next((c["id"] for c in self.controls.values() if c["window"] == focused), None)

    # Real input

    def bring(self, window=None):
        """Waits until the window has the keyboard: what is typed goes to it. Wine says so too early."""
        window = window or self.main

        def has_keyboard():
            state = self.probe.ask("focus", window)
            return state["front"] == window and int(xdotool("getwindowfocus", "-f")[0]) == state["display"]
        wait_until("the window to have the keyboard", has_keyboard)

    def keys(self, *names):
        xdotool("key", "--delay", "10", *names)

    def click(self, rect):
        click((rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2)

    def point_at(self, rect):
        """Moves the mouse there, in two steps: the first may be where it was."""
        xdotool("mousemove", rect[0], rect[1], "mousemove", (rect[0] + rect[2]) // 2, (rect[1] + rect[3]) // 2)

    def press_key(self, name):
        self.bring()
        self.keys(name)

    def click_item(self, text):
        self.bring()
        self.click(next(item["rect"] for item in self.tree() if item["text"] == text))
        wait_until(f"{text} to be selected", lambda: self.selected() == text)

    def click_pane(self):
        self.bring()
        rect = self.controls[FUNC_BODY]["rect"]
        self.click([rect[0] + 20, rect[1] + 4, rect[0] + 22, rect[1] + 16])
        wait_until("the pane to have the focus", lambda: self.focus() == FUNC_BODY)

    def type_at_start(self, text):
        """Types in front of what the pane holds."""
        before = self.pane()
        self.keys("ctrl+Home")
        xdotool("type", "--delay", "5", "--", text)
        expected = text.replace("\n", "\r\n") + before
        wait_until(lambda: f"the typed text in {self.pane()!r}", lambda: self.pane() == expected)

    def edit(self, item, text):
        self.click_item(item)
        self.click_pane()
        self.type_at_start(text)

    def press_button(self, number):
        self.bring()
        self.click(self.buttons()[number - 1]["rect"])

    # What a compiler says

    def messages(self):
        """The window of the messages, and nothing while it is not shown."""
        return next((w for w in self.windows() if w["class"] == "Messages" and w["visible"]), None)

    def message_rows(self):
        window = self.messages()
        rows = [c for c in self.probe.ask("children", window["window"]) if c["id"] == ROWS] if window else []
        return self.probe.ask("rows", rows[0]["window"]) if rows else []

    # Menus

    def menu(self):
        return self.probe.ask("menu", self.main)

    def choose(self, *path):
        """Chooses a menu item by its captions, with the keys that they underline."""
        self.bring()
        item = self.find(self.menu(), path[0])
        self.keys("alt+" + self.access_key(item))
        for caption in path[1:]:
            wait_until(f"the menu {path[0]} to drop down", self.has_open_menu)
            item = self.find(item["items"], caption)
            self.keys(self.access_key(item))

    def click_menu(self, *path):
        """The same with the mouse alone."""
        self.click(self.find(self.menu(), path[0])["rect"])
        for depth, caption in enumerate(path[1:], 1):
            wait_until(f"the menu {path[0]} to drop down", self.has_open_menu)
            items = self.menu()
            for above in path[:depth]:
                items = self.find(items, above)["items"]
            self.click(self.find(items, caption)["rect"])

    def has_open_menu(self):
        return any(w["class"] == "#32768" for w in self.windows())

    @staticmethod
    def find(items, caption):
        return next(item for item in items if item["text"].replace("&", "") == caption)

    @staticmethod
    def access_key(item):
        letter = item["text"][item["text"].index("&") + 1].lower()
        return {"ö": "odiaeresis"}.get(letter, letter)

    # Commands that most tests need

    def open_file(self, path):
        self.choose("File", "Open Program Source File")
        self.dialog().choose_file(windows_path(path))

    def add_function(self, name, how="F5"):
        self.press_key(how)
        dialog = self.dialog("UserFuncVarFrm")
        self.bring(dialog.window)
        xdotool("type", "--delay", "5", "--", name)
        box = dialog.control(FUNC_VAR_NAME)
        wait_until("the typed name", lambda: self.probe.ask("text", box["window"]) == name)
        self.keys("Return")
        return dialog

    def close(self):
        """Closes the main window as its frame does."""
        self.probe.ask("post", self.main, WM_CLOSE, 0, 0)
