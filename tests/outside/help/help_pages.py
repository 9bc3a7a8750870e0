"""The examples in the help's pages, and a place where they are made into program blocks, built and run.

An example is a fenced block with a word that says what it is: c, events, output, sh, bat and so on.
"""

import os
import re

from harness import ROOT, run, write_settings

LANGUAGES = ["en", "de"]
PSF = os.environ["PSF"]


def source(language, name):
    return (ROOT / "help" / language / f"{name}.md").read_text(encoding="utf-8")


def sections(text):
    """The parts of a page by their anchors."""
    parts = re.split(r"^## .*\{#([\w-]+)\}$", text, flags=re.M)
    return dict(zip(parts[1::2], parts[2::2]))


def kinds(text):
    """What each example is."""
    return re.findall(r"^```(\w+)$", text, re.M)


def member(code):
    """The item that a C text belongs to: the function that it begins with, or the references."""
    function = re.match(r"[a-z][\w *]*?[ *](\w+)\([^;{]*\)\s*\{", code)
    if not function:
        return "references"
    return f"{'events' if re.match('On[A-Z]', function[1]) else 'functions'}/{function[1]}"


class Workplace:
    """A folder with the settings of the kit, in which commands run that find psf."""

    def __init__(self, folder):
        self.folder = folder
        folder.mkdir(parents=True, exist_ok=True)
        write_settings(folder / "settings.reg", FCompBat=ROOT / "kit/compile.sh", FCompFileName=folder / "program.c")
        self.env = {"TESSALY_SETTINGS": folder / "settings.reg", "XDG_CACHE_HOME": ROOT / "build/cache",
                    "PATH": f"{os.path.dirname(PSF)}:{os.environ['PATH']}", "CC": None, "CFLAGS": None,
                    "LDFLAGS": None, "LC_ALL": "C.UTF-8"}

    def run(self, *command, **options):
        return run(*command, env={**self.env, **options.pop("env", {})}, cwd=self.folder, text=True, **options)

    def does(self, *command, **options):
        """Runs what must go well without a complaint, and returns what it printed."""
        done = self.run(*command, **options)
        assert (done.returncode, done.stderr) == (0, ""), (command, done)
        return done.stdout

    def write(self, name, text):
        (self.folder / name).write_text(text, encoding="utf-8", newline="")
        return self.folder / name

    def block(self, codes, name="Block"):
        """A program block of the texts, built without a word of the compiler or of a check."""
        file = f"{name}.PSF"
        self.does("psf", "new", "--force", file)
        for code in codes:
            item = member(code)
            if item.startswith("functions/"):
                self.does("psf", "add", file, item.removeprefix("functions/"))
            self.does("psf", "set", "--strict", file, item, input=code.encode())
        assert self.does("psf", "check", "--lint", file) == ""
        assert self.does("psf", "build", file) == ""
        return self.folder / f"{name}.out"
