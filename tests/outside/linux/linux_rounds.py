"""Rounds of work and sudden ends with the real Linux window."""

import pathlib

from harness import wait_until
from kill_rounds import EVENTS, IDLE, LETTERS, Rounds, read_members, use_of, whole_copies
from linux_harness import Program, make_home, write_all_settings
from x11 import Display

MAIN, ASK, ADD, SAVE_FIRST, SAVE_AS = "Tessaly", "Recovery", "Add Function", "Save As", "Save Program Source File As"


def written(path):
    """When; None for no file."""
    return path.stat().st_mtime_ns if path and path.exists() else None


class LinuxRounds(Rounds):
    def __init__(self, folder, seed):
        super().__init__(make_home(folder), folder / ".local/state/tessaly/recovery", seed)
        (folder / "tmp").mkdir()
        batch = folder / "batch.sh"
        batch.write_text(f"#!/bin/sh\necho >> '{self.built}'\n")
        batch.chmod(0o700)
        write_all_settings(folder, FCompBat=batch, FCompFileName=folder / "program.c")
        self.display = Display()
        self.main = self.at = None

    # The program

    def open(self):
        self.start(self.path)
        self.wait("the window", lambda: self.is_front(MAIN))

    def start(self, *arguments):
        self.at = None
        self.program = Program(self.folder, arguments, {}, {"TMPDIR": self.folder / "tmp", "SESSION_MANAGER": None})

    def kill(self):
        self.program.kill()
        # The next program's windows may have the same numbers.
        wait_until("the end of its windows", lambda: self.main is None or self.display.title(self.main) is None)

    def end(self):
        if self.program:
            self.kill()

    def is_front(self, *titles):
        """The title of the window that has the keyboard, if it is one of these."""
        assert not self.has_ended(), f"it ended by itself: {self.program.process.returncode}"
        window, title = self.display.focus()
        if title == MAIN:
            self.main = window
        return title if title in titles else None

    def has_ended(self):
        return self.program.process.poll() is not None

    def settle(self):
        self.display.taken(self.main, self.tick)

    # After an end

    def copies(self):
        return whole_copies(self.recovery, self.program.process.pid)

    def left(self):
        """The copies of earlier programs."""
        own = str(self.program.process.pid)
        return [told for told, _ in whole_copies(self.recovery) if told["process"] != own]

    def come_back(self):
        if self.next_path and self.next_path.exists():
            self.path = self.next_path
        self.next_path = None
        self.start(*([self.path] if self.path else []))
        if self.kind == "building":
            # What it was about to start was a copy of it for a moment, and held its lock.
            self.wait("a window", lambda: self.has_ended() or self.is_front(ASK, MAIN))
            if self.has_ended():
                self.start(*([self.path] if self.path else []))

        # Without a question what is left of earlier programs goes. The window may be in front before the question is.
        def answer():
            return self.is_front(ASK) or self.is_front(MAIN) if not self.left() else self.is_front(ASK)

        if self.wait("a question, or none", answer) != ASK:
            return read_members(self.path), False
        self.display.key("Return")
        self.wait("the window", lambda: self.is_front(MAIN))
        told, texts = self.wait("the copy of what came back", self.copies)[-1]
        self.path = pathlib.Path(told["path"]) if told["path"] else None
        return texts, True

    # What a user does

    def select(self, row):
        self.at = None
        self.display.key("F2", "Home", *["Down"] * row)
        self.settle()
        self.took()

    def rows(self):
        return 3 + len(self.names()) + len(EVENTS) - 1

    def do_selecting(self):
        self.select(self.random.randrange(self.rows()))

    def do_typing(self):
        if self.at is None or self.random.random() < 0.3:
            names = self.names()
            name = self.random.choice(["References", *names, *EVENTS[:-1]])
            self.select(0 if name == "References" else 2 + names.index(name) if name in names else
                        3 + len(names) + EVENTS.index(name))
            self.display.key("F3", "ctrl+Home")
            self.settle()
            self.at = (name, 0)
        burst = self.random.choice([1, 1, 3, 10])  # so many keys before the window is looked at
        pace = self.random.choice([0, 0, 0.01, 0.05])
        for number in range(self.random.randint(1, 40)):
            name, caret = self.at
            text = self.texts()[name]
            letter = self.random.choice(LETTERS)
            self.change(name, text[:caret] + letter + text[caret:])
            self.display.key(letter)
            self.at = (name, caret + 1)
            if number % burst == 0:
                self.settle()
                self.took()
                self.rest(pace)
            self.tick()
        self.settle()
        self.took()
        self.rest(2 * IDLE)

    def do_adding(self):
        # Another row stores what the pane holds. The first one may be the one that it shows.
        self.select(self.random.randrange(1, self.rows()))
        self.display.key("F5")
        self.wait("the question for a name", lambda: self.is_front(ADD))
        self.names_made += 1
        name = f"made{self.names_made}"
        self.display.key(*name)
        self.change(name, f"void {name}(void)\n{{\n\n}}")
        self.display.key("Return")
        self.leave_dialog()

    def do_deleting(self):
        name = self.random.choice(self.names())
        self.select(2 + self.names().index(name))
        self.display.key("F4")
        self.wait("the question", lambda: self.is_front("Delete function"))
        self.change(name, None)
        self.display.key("Return")
        self.leave_dialog()

    def leave_dialog(self):
        self.wait("the window", lambda: self.is_front(MAIN))
        self.settle()
        self.took()

    def name_file(self):
        self.next_path = self.new_path()
        self.display.key(*str(self.next_path))
        self.display.key("Return")

    def is_saved(self, before):
        """The model's own check: a save that nobody disturbed."""
        saved = self.next_path or self.path
        self.wait(lambda: f"what was typed in the file: {self.difference(read_members(saved), self.texts())}",
                  lambda: written(saved) != before and read_members(saved) == self.texts())
        self.path, self.next_path = saved, None
        self.settle()

    def do_saving(self):
        self.at = None
        before = written(self.path)
        self.display.key("alt+f", "s")
        if not self.path:
            self.wait("the question for a name", lambda: self.is_front(SAVE_AS))
            self.name_file()
        self.leave_dialog()
        self.is_saved(before)

    def do_building(self):
        self.at = None
        saved_before = written(self.path)
        before = self.built.stat().st_size if self.built.exists() else 0
        answered = set()
        self.display.key("F10")

        def built():
            title = self.is_front(SAVE_FIRST, SAVE_AS)
            if title and title not in answered:
                answered.add(title)
                if title == SAVE_AS:
                    self.name_file()
                else:
                    self.display.key("Return")
            return self.built.exists() and self.built.stat().st_size > before

        self.wait("the build", built)
        self.leave_dialog()
        if answered:
            self.is_saved(saved_before)

    # Figures

    def use(self):
        return use_of(self.program.process.pid)
