"""Rounds of work and sudden ends with the real Windows program."""

import pathlib
import time

from harness import click, recovery_folder, wait_until, windows_path
from kill_rounds import EVENTS, IDLE, LETTERS, Rounds, read_bytes, read_members, use_of, whole_copies
from windows_harness import EXE, FILE_NAME, FUNC_BODY, Dialog, Program, install, probe
from x11 import Display

SHOWN = ["References", *EVENTS[:-1]]  # OnMsg has no item


class WindowsRounds(Rounds):
    def __init__(self, folder, seed):
        super().__init__(folder, recovery_folder(), seed)
        batch = folder / "batch.bat"
        batch.write_text(f"@echo built>>{windows_path(self.built)}\r\n")
        install(FCompBat=windows_path(batch), FCompFileName=windows_path(folder / "program.c"),
                FHelp=windows_path(folder))
        self.display = Display()
        self.is_left = False  # the last click into an item

    # The program

    def open(self):
        self.program = Program(windows_path(self.path)).wait_main()

    def kill(self):
        self.program.kill()

    def end(self):
        if self.program and self.program.status() is None:
            self.kill()

    def copies(self):
        return whole_copies(self.recovery, self.program.process)

    def left(self):
        return [told for told, _ in whole_copies(self.recovery) if told["process"] != str(self.program.process)]

    def come_back(self):
        if self.next_path and self.next_path.exists():
            self.path = self.next_path
        self.next_path = None
        self.program = Program(windows_path(self.path) if self.path else "")

        def answer():
            assert self.program.status() is None, f"it ended by itself: {self.program.status()}"
            shown = self.program.windows()
            asked = next((w for w in shown if w["class"] == "#32770" and w["text"] == "Recovery"), None)
            return asked or not self.left() and next((w for w in shown if w["class"] == "VornMainFrm"), None)

        window = self.wait("a question, or none", answer)
        if window["class"] == "VornMainFrm":
            self.program.wait_main()
            return read_members(self.path), False
        wait_until("the buttons", lambda: probe().ask("children", window["window"]))
        Dialog(self.program, window).press("Yes")
        self.program.wait_main()
        told, texts = self.wait("the copy of what came back", self.copies)[-1]
        assert told["path"] in ("", self.path and windows_path(self.path)), told
        self.path = self.path if told["path"] else None
        return texts, True

    # What a user does

    def front(self, window=None):
        """Waits until the window has the keyboard."""
        window = window or self.program.main

        def has_keyboard():
            state = probe().ask("focus", window)
            return state["front"] == window and self.display.focus()[0] == state["display"]
        self.wait("the window to have the keyboard", has_keyboard)

    def dialog(self, *classes):
        """The dialog that comes, in front."""
        found = self.wait("a dialog", lambda: next((w for w in self.program.windows() if w["class"] in classes), None))
        self.wait("its controls", lambda: probe().ask("children", found["window"]))
        self.front(found["window"])
        return Dialog(self.program, found)

    def select(self, text):
        """Wine loses a click that comes right behind another: a user clicks again. Two in one place would be a double
        click, which closes a group."""
        self.front()
        left, top, right, bottom = next(item["rect"] for item in self.program.tree() if item["text"] == text)
        clicked = 0

        def is_selected():
            nonlocal clicked
            is_done = self.program.selected() == text
            if not is_done and time.monotonic() > clicked + 1:
                self.is_left = not self.is_left
                click(left + 4 if self.is_left else right - 4, (top + bottom) // 2)
                clicked = time.monotonic()
            return is_done

        self.wait(f"{text} to be selected", is_selected)
        self.took()

    def item(self, name):
        return name + "()" if name in EVENTS else name

    def do_selecting(self):
        self.select(self.item(self.random.choice([*SHOWN, *self.names(), "Functions", "Events"])))

    def do_typing(self):
        name = self.random.choice([*SHOWN, *self.names()])
        self.select(self.item(name))
        rect = self.program.controls[FUNC_BODY]["rect"]
        click(rect[0] + 20, rect[1] + 8)
        self.wait("the pane to have the focus", lambda: self.program.focus() == FUNC_BODY)
        self.display.key("ctrl+Home")
        old, typed = self.texts()[name], ""
        for number in range(self.random.randint(1, 30)):
            letter = self.random.choice(LETTERS)
            typed += letter
            self.change(name, typed + old)
            self.display.key(letter)
            if number % 7 == 0:
                self.wait_for_pane(name)
            self.tick()
        self.wait_for_pane(name)
        self.rest(2 * IDLE)

    def wait_for_pane(self, name):
        """Until the window has taken what was typed."""
        self.wait(f"{name} in the pane", lambda: self.program.pane().replace("\r\n", "\n").rstrip("\n") ==
                  self.texts()[name])
        self.took()

    def do_adding(self):
        self.select("Events")  # which stores what the pane holds
        self.display.key("F5")
        dialog = self.dialog("UserFuncVarFrm")
        self.names_made += 1
        name = f"made{self.names_made}"
        self.display.key(*name)
        self.wait("the name", lambda: name in [c["text"] for c in probe().ask("children", dialog.window)])
        self.change(name, f"void {name}(void)\n{{\n\n}}")
        self.display.key("Return")
        self.wait("the function", lambda: self.program.selected() == name)
        self.took()

    def do_deleting(self):
        name = self.random.choice(self.names())
        self.select(name)
        self.display.key("F4")
        self.dialog("#32770")
        self.change(name, None)
        self.display.key("Return")
        self.wait("the function to go", lambda: name not in self.program.functions())
        self.took()

    def name_file(self, dialog):
        self.next_path = self.new_path()
        probe().ask("settext", dialog.control(*FILE_NAME)["window"], windows_path(self.next_path))
        self.display.key("Return")

    def is_saved(self):
        saved = self.next_path or self.path
        self.wait("the file to be what was typed", lambda: read_members(saved) == self.texts())
        self.path, self.next_path = saved, None
        self.wait("the end of the save", lambda: not self.program.dialogs() and not self.program.has_open_menu())
        self.took()

    def do_saving(self):
        self.front()
        self.display.key("alt+f")
        self.wait("the menu", self.program.has_open_menu)
        self.display.key("s")
        if not self.path:
            self.name_file(self.dialog("#32770"))
        self.is_saved()

    def do_building(self):
        before = self.built.stat().st_size if self.built.exists() else 0
        answered = set()
        self.front()
        self.display.key("F10")

        def is_built():
            for window in self.program.dialogs():
                if window["window"] not in answered:
                    answered.add(window["window"])
                    dialog = self.dialog("#32770")
                    if dialog.caption == "Save As":
                        self.display.key("Return")
                    else:
                        self.name_file(dialog)
            return self.built.exists() and self.built.stat().st_size > before

        self.wait("the build", is_built)
        if answered:
            self.is_saved()
        self.front()
        while probe().ask("focus", self.program.main)["menu"]:  # F10 is also the key of the menu bar
            self.display.key("Escape")
            self.wait("the menu bar to be left", lambda: not probe().ask("focus", self.program.main)["menu"])
        self.took()

    # Figures

    def use(self):
        """Wine's process is one of this system, whose command line begins with the program as it was started."""
        [process] = [folder.name for folder in pathlib.Path("/proc").glob("[0-9]*")
                     if read_bytes(folder / "cmdline").startswith(windows_path(EXE).encode())]
        return {**use_of(process), "GDI objects": probe().ask("gdi", self.program.process)}
