"""A folder with program blocks to test by psf, TAP as its readers take it, and XML by a schema."""

import pathlib
import re
import subprocess

import yaml
from harness import ROOT, write_settings
from psf_harness import psf, source

# A compiler whose program takes its script for a shell's: what a case does stands in it.
COMPILER = """#!/bin/bash
: ${TESSALY_C_FILE}
cp -- program "$1"
"""
PROGRAM = """#!/bin/bash
for script; do :; done
case $script in */*) ;; *) script=./$script ;; esac
. "$script"
"""
WAIT = "sleep 0.02"


class Place:
    """A folder that psf works in; with `kit` the compiler is the kit's."""

    def __init__(self, folder, kit=False):
        self.folder = folder
        self.variables = {}
        (folder / "generated").mkdir()
        self.c_file = folder / "generated/program.c"
        self.write("compiler", COMPILER).chmod(0o755)
        self.write("program", PROGRAM).chmod(0o755)
        self.use(ROOT / "kit/compile.sh" if kit else folder / "compiler")

    def use(self, batch):
        write_settings(self.folder / "settings.reg", FCompBat=batch, FCompFileName=self.c_file)

    def write(self, name, text):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(text.encode() if isinstance(text, str) else text)
        return path

    def block(self, name, content=source()):
        self.write(name, content)

    def document(self, name, members):
        """A new document with these texts, which the kit compiles."""
        (self.folder / name).parent.mkdir(exist_ok=True)
        psf("new", self.folder / name)
        for member, text in members.items():
            if member.startswith("functions/"):
                psf("add", self.folder / name, member.split("/")[1])
            psf("set", self.folder / name, member, stdin=text.encode())

    @property
    def options(self):
        return {"cwd": self.folder, "env": {"TESSALY_SETTINGS": str(self.folder / "settings.reg"),
                                            "XDG_CACHE_HOME": str(self.folder / "cache"), **self.variables}}

    def test(self, *arguments, **options):
        return Tap(psf("test", *arguments, **self.options, **options))


class Tap:
    """What psf test printed, taken apart; every line must be one of TAP 14."""

    def __init__(self, result):
        self.status, self.text, self.err = result.status, result.out.decode(), result.err
        lines = self.text.replace("\r\n", "\n").split("\n")
        assert lines[0] == "TAP version 14" and lines.pop() == ""
        self.cases, self.comments = [], []
        block = None
        for line in lines[2:]:
            if block is not None and line != "  ...":
                assert line.startswith("  ")
                block.append(line[2:])
            elif line == "  ---":
                block = []
            elif line == "  ...":
                self.cases[-1][2] = yaml.safe_load("\n".join(block))
                block = None
            elif line.startswith("#"):
                self.comments.append(line[2:])
            else:
                ok, number, name = re.fullmatch(r"(ok|not ok) (\d+) - (.*)", line).groups()
                assert int(number) == len(self.cases) + 1
                assert not re.search(r"(?<!\\)(\\\\)*#", name)
                self.cases.append([ok == "ok", re.sub(r"\\(.)", r"\1", name), None])
        assert block is None and lines[1] == f"1..{len(self.cases)}"
        assert all((found is None) == ok for ok, _, found in self.cases)

    @property
    def names(self):
        return [name for _, name, _ in self.cases]

    @property
    def passed(self):
        return [ok for ok, _, _ in self.cases]

    def failure(self, number=0):
        """What is said of the case with this number that failed."""
        return [found for ok, _, found in self.cases if not ok][number]


def is_valid(path, schema):
    """Whether an XML file is well-formed and as a schema wants it: RELAX NG, XML's own, or a DTD. It lies beside this
    file where its path is not a whole one."""
    kind = {".rng": "--relaxng", ".xsd": "--schema", ".dtd": "--dtdvalid"}[pathlib.Path(schema).suffix]
    words = ["xmllint", "--noout", "--nonet", kind, pathlib.Path(__file__).parent / schema, path]
    return subprocess.run(words, stderr=subprocess.DEVNULL, check=False, timeout=60).returncode == 0
