"""What all tests of the finished programs share: programs, waiting, real keys, pictures, settings, and Wine.

The script that runs the tests sets the variables that are read here. Wine's are $TESSALY_WINE_BITS, or $PSF_WINE, and
$TESSALY_WINE_PREFIX.
"""

import functools
import os
import pathlib
import re
import shlex
import shutil
import subprocess
import tempfile
import threading
import time

ROOT = pathlib.Path(__file__).resolve().parents[2]
EXAMPLES = {"blink": "Blink", "filter": "Filter", "gateway": "Gateway", "serial": "Echo"}
EVENTS = ["OnError", "OnFrame", "OnKey", "OnStart", "OnStop", "OnTimer", "OnTrigger", "OnSerial", "OnMsg"]
KEY = r"HKEY_LOCAL_MACHINE\SOFTWARE\Ostrel\OstrelCompiler"
PATIENCE = int(os.environ.get("TESSALY_PATIENCE", "60"))
BITS = os.environ.get("TESSALY_WINE_BITS") or os.environ.get("PSF_WINE")


def wait_until(what, test, seconds=PATIENCE):
    """The first true answer of test(); what is what the test waits for."""
    deadline = time.monotonic() + seconds
    while True:
        answer = test()
        if answer:
            return answer
        assert time.monotonic() < deadline, f"waited {seconds} s in vain for {what() if callable(what) else what}"
        time.sleep(0.02)


# Programs

def environment(changes):
    """The variables of this process with these changes; None leaves one out."""
    changed = {**os.environ, **changes}
    return {name: str(value) for name, value in changed.items() if value is not None}


def run(*command, env=None, text=False, **options):
    """Runs a program to its end and returns what it wrote and its status; `env` has changes of the variables."""
    if "input" not in options:
        options.setdefault("stdin", subprocess.DEVNULL)
    # Files, not pipes: what the program leaves running would hold the end of a pipe open.
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        done = subprocess.run([str(word) for word in command], env=environment(env or {}), stdout=output, stderr=errors,
                              timeout=2 * PATIENCE, check=False, **options)
        for file in (output, errors):
            file.seek(0)
        done.stdout, done.stderr = output.read(), errors.read()
    if text:
        done.stdout, done.stderr = done.stdout.decode(), done.stderr.decode()
    return done


def settings_text(**values):
    """Settings in the syntax of a registry export: texts as REG_SZ, numbers as REG_DWORD."""
    lines = ["Windows Registry Editor Version 5.00", "", f"[{KEY}]"]
    for name, value in values.items():
        quoted = str(value).replace("\\", "\\\\").replace('"', '\\"')
        lines.append(f'"{name}"=' + (f"dword:{value:08x}" if isinstance(value, int) else f'"{quoted}"'))
    return "\r\n".join(lines) + "\r\n"


def write_settings(path, **values):
    path.write_bytes(settings_text(**values).encode())


def example_file(name, suffix):
    """A file of an example, as example_file("blink", ".PSF")."""
    return ROOT / "examples" / name / (EXAMPLES[name] + suffix)


# The display

def xdotool(*arguments, check=True):
    """The words that it prints."""
    return subprocess.run(["xdotool", *map(str, arguments)], capture_output=True, text=True, timeout=PATIENCE,
                          check=check).stdout.split()


def click(across, down, button=1, window=None):
    """Clicks at a place of the display, or of a window; without the tenth of a second that xdotool rests behind it."""
    where = ["--window", window] if window else []
    xdotool("mousemove", *where, across, down, "click", "--delay", 0, button)


def screenshot(path, *options):
    """Takes a picture of the whole display."""
    path.parent.mkdir(parents=True, exist_ok=True)
    subprocess.run(["import", "-window", "root", *options, path], check=True, timeout=PATIENCE)


def cut_to_the_point(source, cut, made):
    """What a page shows of a picture of the display, in a palette: `cut` is as "x400+0+0". The answer tells pixels."""
    subprocess.run(["convert", source, "-crop", cut, "+repage", "-dither", "None", "-colors", "48", "-strip",
                    f"png8:{made}"], check=True, timeout=PATIENCE)
    return identify(made, "%#")


def wait_until_painted(picture):
    """Until `picture`, which takes one and tells its pixels, only shows a caret that blinks."""
    seen = []

    def is_painted():
        seen.append(picture())
        return len(seen) >= 4 and len(set(seen[-4:])) <= 2

    wait_until("a picture that stays", is_painted)


def hand_out(made, file):
    """Puts a picture for README or the help below the folder $TAKE_PICTURES, if there is one. Whether there is."""
    folder = os.environ.get("TAKE_PICTURES")
    if folder:
        taken = pathlib.Path(folder) / file
        taken.parent.mkdir(parents=True, exist_ok=True)
        shutil.copy(made, taken)
    return bool(folder)


def identify(path, what):
    """About a picture: "%k" is how many colours it has, "%#" is the same for the same pixels."""
    return subprocess.run(["identify", "-format", what, path], check=True, timeout=PATIENCE, capture_output=True,
                          text=True).stdout


# Wine

def drive_c():
    return pathlib.Path(os.environ["TESSALY_WINE_PREFIX"]) / "drive_c"


def windows_path(path):
    """A path of this machine as Windows writes it."""
    path = pathlib.Path(path)
    if "TESSALY_WINE_PREFIX" in os.environ and path.is_relative_to(drive_c()):
        return "C:\\" + str(path.relative_to(drive_c())).replace("/", "\\")
    return "Z:" + str(path).replace("/", "\\")


def recovery_folder():
    """Where the program of this Windows installation keeps its copies."""
    return next((drive_c() / "users").glob("[!P]*")) / "AppData/Local/Ostrel/Tessaly/Recovery"


def wine_command(*arguments):
    return [str(ROOT / "script/wine"), BITS, *map(str, arguments)]


class WineShell:
    """A shell beside Wine, in its root: it starts a program in less than half the time that script/wine takes."""

    def __init__(self):
        self.process = subprocess.Popen(wine_command("sh"), stdin=subprocess.PIPE, stdout=subprocess.PIPE, text=True,
                                        errors="surrogateescape")

    def run(self, *words, stdin=b"", env=None, cwd=None):
        """Runs a program to its end; `env` has changes of the variables."""
        changes = [f"--unset={name}" if value is None else f"{name}={value}" for name, value in (env or {}).items()]
        changes.sort(reverse=True, key=lambda change: change.startswith("-"))
        command = (f'timeout {2 * PATIENCE} env {shlex.join(changes)} "$WINELOADER" '
                   f"{shlex.join(map(str, words))}")
        with tempfile.TemporaryDirectory() as folder:
            given, output, errors = (pathlib.Path(folder) / name for name in ("in", "out", "err"))
            given.write_bytes(stdin)
            self.process.stdin.write(f"(cd {shlex.quote(str(cwd or os.getcwd()))} && "
                                     f"exec {command} <{given} >{output} 2>{errors}); echo $?\n")
            self.process.stdin.flush()
            status = self.process.stdout.readline()
            assert status, f"Wine's shell ended at {words}"
            assert int(status) != 124, f"{words} took over {2 * PATIENCE} s"
            return subprocess.CompletedProcess(words, int(status), output.read_bytes(), errors.read_bytes())


SHELLS = threading.local()


def wine(*arguments, input=b"", env=None, cwd=None):
    """Runs a Windows program to its end, as run() does; `env` has changes of the variables."""
    if not hasattr(SHELLS, "own"):
        SHELLS.own = WineShell()
    return SHELLS.own.run(*arguments, stdin=input, env=env, cwd=cwd)


class WindowsShell:
    """A running cmd.exe. It keeps Wine running, whose start takes longer than most programs, and can start programs
    when a PATH in the registry is too long for Wine to start anything else."""

    def __init__(self):
        self.process = subprocess.Popen(wine_command("cmd", "/q"), stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                                        stderr=subprocess.DEVNULL)
        self.run("ver")
        wine("cmd", "/c", "exit")  # so that what only a second program starts is there, too

    def run(self, *words):
        """Runs a program to its end; the status is 0 or 1."""
        # Wine's cmd reads a line at a time only when no other is there yet.
        line = " ".join(f'"{word}"' for word in words) + " & if errorlevel 1 (echo #1#) else echo #0#\r\n"
        self.process.stdin.write(line.encode("cp437"))
        self.process.stdin.flush()
        output = []
        while not output or not re.search(rb"#[01]# *\r\n$", output[-1]):
            output.append(self.process.stdout.readline())
            assert output[-1], f"cmd.exe ended at {words}"
        return subprocess.CompletedProcess(words, int(output[-1].strip(b"# \r\n")), b"".join(output[:-1]))

    def end(self):
        self.process.stdin.close()
        self.process.wait(timeout=PATIENCE)


@functools.cache
def windows_shell():
    """The one of this run."""
    return WindowsShell()


def reg(*arguments):
    return windows_shell().run("reg", *arguments)


def registry_value(key, name=None):
    """A value as reg.exe shows it, (type, text), or None; without a name the default value of the key."""
    done = reg("query", key, *(["/v", name] if name else ["/ve"]))
    for line in done.stdout.decode("cp437").splitlines():
        words = line.strip().split(None, 2)
        if len(words) >= 2 and words[1].startswith("REG_"):
            return words[1], words[2] if len(words) > 2 else ""
    assert done.returncode != 0, done
    return None


def plays_as_expected(program, name):
    """A Windows program, made from an example, plays its event script and prints what it must."""
    done = wine(windows_path(program), windows_path(example_file(name, ".events")))
    assert (done.returncode, done.stderr) == (0, b"")
    assert done.stdout == example_file(name, ".expected").read_bytes()
