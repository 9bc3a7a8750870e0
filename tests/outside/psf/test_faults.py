"""Every call that psf makes of the system fails in turn, once and from then on for ever, and every allocation.
Whatever happens, a file is the old one or the new one, nothing else lies beside it, and a failure is told, in lines and
by a status.

$PSF_FAULTS names the library that makes the calls fail. Of many calls a random few are tried, with PSF_FAULTS_ALL=1
all."""

import os
import random
import shlex
import shutil
import stat
import subprocess

import pytest
from harness import write_settings
from psf_harness import COMMAND, psf, source

LIBRARY = os.environ.get("PSF_FAULTS")
ALL = bool(os.environ.get("PSF_FAULTS_ALL"))
CALLS = ["malloc", "open", "read", "write", "short-write", "close", "fsync", "rename", "link", "flock", "chmod",
         "chown", "stat", "readlink", "pipe", "spawn", "poll", "waitpid", "ioctl"]

pytestmark = pytest.mark.skipif(not LIBRARY, reason="no library to make calls fail")

# A name and its arguments, its standard input, and the files that it may change.
COMMANDS = {
    "new": (["new", "New.PSF"], b"", ["New.PSF"]),
    "new --force": (["new", "--force", "Main.PSF"], b"", ["Main.PSF"]),
    "show": (["show", "Main.PSF"], b"", []),
    "show member": (["show", "Main.PSF", "functions/Main"], b"", []),
    "show --json": (["show", "--json", "Main.PSF"], b"", []),
    "set": (["set", "Main.PSF", "functions/Main"], b"int Main()\r\n{\r\n}\r\n" * 200, ["Main.PSF"]),
    "add": (["add", "Main.PSF", "Added"], b"", ["Main.PSF"]),
    "delete": (["delete", "Main.PSF", "Main"], b"", ["Main.PSF"]),
    "resave": (["resave", "Main.PSF", "Link.PSF"], b"", ["Target.PSF"]),
    "generate": (["generate", "Main.PSF"], b"", []),
    "generate -o": (["generate", "Main.PSF", "-o", "Out.c"], b"", ["Out.c"]),
    "check": (["check", "Main.PSF"], b"", []),
    "text": (["text", "Main.PSF"], b"", []),
    "rename": (["rename", "Main.PSF", "Other", "Another"], b"", ["Main.PSF"]),
    "tidy": (["tidy", "Main.PSF"], b"", ["Main.PSF"]),
    "merge": (["merge", "Target.PSF", "Main.PSF", "Target.PSF"], b"", ["Main.PSF"]),
    "build": (["build", "Main.PSF"], b"", ["C.c"]),
}  # fmt: skip


class Place:
    """A folder with files to work on, made anew for each run."""

    def __init__(self, path):
        self.path = path
        self.count = path.parent / "count"

    def fill(self):
        shutil.rmtree(self.path, ignore_errors=True)
        self.path.mkdir()
        body = "void Main()\r\n{\r\n" + "    Work();\r\n" * 50 + "}"
        for name in ("Main.PSF", "Target.PSF"):
            (self.path / name).write_bytes(source([("Main", body), ("Other", "void Other()\r\n{\r\n}")]))
            (self.path / name).chmod(0o640)
        (self.path / "Link.PSF").symlink_to("Target.PSF")
        # More than a pipe holds: it cannot end before it is read.
        (self.path / "compile").write_bytes(b'#!/bin/sh\necho "C.c:1:1: error: x"\nprintf "%070000d\\n" 0\n')
        (self.path / "compile").chmod(0o755)
        write_settings(self.path / "settings.reg", FCompBat="./compile", FCompFileName="C.c")

    def files(self):
        return {p.name: (p.read_bytes(), stat.S_IMODE(p.stat().st_mode)) for p in self.path.iterdir()}

    def run(self, command, call, at, for_ever=False):
        arguments, stdin, _ = COMMANDS[command]
        self.fill()
        env = {"LD_PRELOAD": LIBRARY, "FAILING_CALL": call, "FAILING_AT": str(at), "FAILING_COUNT": str(self.count),
               "TESSALY_SETTINGS": "settings.reg"}
        if for_ever:
            env["FAILING_EVER"] = "1"
        return psf(*arguments, stdin=stdin, env=env, cwd=self.path)


def picked(count, command, call):
    """Which of so many calls fail: the first and last few, and some between."""
    numbers = list(range(1, count + 1))
    if ALL or count <= 12:
        return numbers
    between = random.Random(f"{command} {call}").sample(numbers[4:-2], 6)
    return numbers[:4] + sorted(between) + numbers[-2:]


@pytest.mark.parametrize("command", COMMANDS)
def test_whatever_fails_a_file_is_old_or_new_and_the_failure_is_told(command, tmp_path):
    place = Place(tmp_path / "place")
    place.fill()
    old = place.files()
    for call in CALLS:
        good = place.run(command, call, 0)
        new = place.files()
        count = int(place.count.read_text())
        for at in picked(count, command, call):
            for for_ever in (False, True):
                result = place.run(command, call, at, for_ever)
                now = place.files()
                what = f"{call} number {at}{' and all later ones' if for_ever else ''}: {result}"
                judge(command, old, new, now, good, result, what)


def judge(command, old, new, now, good, result, what):
    assert result.status >= 0, what
    assert result.status not in (134, 139), what
    # Settings that cannot be read are told by themselves, and then that there is no compiler.
    assert result.err.count("\n") <= (2 if command == "build" else 1), what
    if result.err == "":
        assert (result.status, result.out) == (good.status, good.out), what
        assert now == new, what
    else:
        assert result.status not in (0, 1), what
    changed = COMMANDS[command][2]
    if command == "build":  # the C file is written in place, as the window does it
        now, old, new = ({k: v for k, v in files.items() if k != "C.c"} for files in (now, old, new))
    assert now in (old, new), (what, sorted(now))
    assert changed == [] or command == "build" or old != new


@pytest.mark.parametrize("arguments", ["show Large.PSF", "show Large.PSF references", "show --json Large.PSF",
                                       "generate Large.PSF", "check Large.PSF", "build Large.PSF", "add Large.PSF Name",
                                       "delete Large.PSF Main", "set Large.PSF references", "resave Large.PSF Out.PSF"])
def test_a_file_that_there_is_no_memory_for_is_not_called_damaged(tmp_path, arguments):
    large = tmp_path / "Large.PSF"
    large.write_bytes(source([("Main", "void Main()\r\n{\r\n" + "    Work();\r\n" * 1_500_000 + "}")]))
    size = large.stat().st_size
    done = subprocess.run(["bash", "-c", f"ulimit -v 20000; exec {shlex.join(COMMAND)} {arguments}"], input=b"int x;",
                          capture_output=True, timeout=60, cwd=tmp_path)
    assert done.returncode == 2
    assert done.stderr == b"psf: Large.PSF: out of memory\n"
    assert [(p.name, p.stat().st_size) for p in tmp_path.iterdir()] == [("Large.PSF", size)]
