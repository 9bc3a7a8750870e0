"""Runs psf, whose path is in $PSF, on files in a fresh folder. A psf.exe runs under Wine, and is given the
paths of this machine, as Wine knows them on its current drive."""

import json
import os
import subprocess
import sys
from functools import reduce

import pytest
from harness import EVENTS, environment, wine, wine_command

PSF = os.environ["PSF"]
IS_EXE = PSF.endswith(".exe")
IS_SANITIZED = "PSF_SANITIZED" in os.environ
STRIDE = 5 if IS_SANITIZED else 1  # of long rows of cases: a start takes ten times as long then
COMMAND = wine_command(PSF) if IS_EXE else [PSF]


def not_on_windows(reason):
    """For a test of something that Windows does not have."""
    return pytest.mark.skipif(IS_EXE, reason=reason)


only_on_windows = pytest.mark.skipif(not IS_EXE, reason="about psf.exe")


class Result:
    def __init__(self, done):
        self.status = done.returncode
        self.out = done.stdout
        self.err = done.stderr.decode()

    def __repr__(self):
        return f"status {self.status}\nout {self.out!r}\nerr {self.err!r}"


def psf(*arguments, stdin=b"", env=None, cwd=None, check_errors=True):
    """What psf answered. Whatever it complains about must be lines that begin with its name."""
    clean = {name: None for name in os.environ if name.startswith(("TESSALY_", "XDG_"))
             and not name.startswith("TESSALY_WINE_")}
    changes = {**clean, **(env or {})}
    if IS_EXE:
        result = Result(wine(PSF, *arguments, input=stdin, env=changes, cwd=cwd))
    else:
        result = Result(subprocess.run([PSF, *map(str, arguments)], input=stdin, capture_output=True,
                                       env=environment(changes), cwd=cwd, timeout=120))
    if check_errors:
        assert all(line.startswith("psf: ") for line in result.err.splitlines()), result
        assert result.err == "" or result.err.endswith("\n"), result
    return result


def is_running(process):
    try:
        with open(f"/proc/{process}/stat", encoding="ascii") as file:
            return file.read().split()[2] != "Z"
    except OSError:
        return False


def shown(file, **options):
    return json.loads(psf("show", "--json", file, **options).out)


def lines(*texts):
    return b"".join(text.encode("cp1252") + b"\r\n" for text in texts)


def source(functions=(), references="int x;", count=None, names=None, events=EVENTS, end="[EndPSF]", extra=b""):
    """The bytes of a PSF; functions are (name, body) or (name, prototype, body)."""
    functions = [f if len(f) == 3 else (f[0], "", f[1]) for f in functions]
    count = f" {len(functions)}" if count is None else count
    names = ",".join(f[0] for f in functions) if names is None else names
    text = lines("[BeginPSF]", "Comment= c", "FileName=", "[GVars]", references, "[GFuncs]", f"NumFuncs={count}",
                 f"FuncNames={names}", "[FuncCode]")
    for name, prototype, body in functions:
        text += lines(f"[{name}]", f"ProtoType={prototype}", f"FuncBody={body}")
    text += lines("[EventCode]")
    for event in events:
        text += lines(f"[{event}]", f"FuncBody=void {event}()", "{", "}")
    return text + (lines(end) if end else b"") + extra


def mark(data):
    """The hash of a content, as the program makes it: words of eight bytes into four lanes in turns."""
    def add(result, word):
        product = (result ^ word) * 0x100000001B3 % 2**64
        return product ^ product >> 32
    basis = 0xCBF29CE484222325
    words = [int.from_bytes(data[start:start + 8], sys.byteorder) for start in range(0, len(data), 8)]
    return reduce(add, [reduce(add, words[lane::4], basis) for lane in range(4)], basis)


def leave(folder, stem, content, seconds=1_700_000_000, reason=0, path="", number=1, process=99, codepage=""):
    """Puts a copy of what is not saved into `folder`, as the window does: a PSF and its origin."""
    escaped = "".join(f"%{ord(c):02x}" if c < " " or c in "\x7f%" else c for c in path)
    text = (f"TessalyRecovery=1\nreason={reason}\npath={escaped}\nfile=\ntime={seconds * 1000}\nnumber={number}\n"
            f"codepage={codepage}\nlanguage=1033\nitem=functions/Blink\ncaret=3\nprocess={process}\nstart=then\n"
            f"copy={len(content)} {mark(content):x}\n").encode()
    (folder / f"{stem}.PSF").write_bytes(content)
    (folder / f"{stem}.origin").write_bytes(text + f"checksum={mark(text):x}\n".encode())
