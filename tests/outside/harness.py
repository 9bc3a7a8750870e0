"""What all tests of the finished programs share: programs, waiting, real keys, pictures, settings, and Wine.

The script that runs the tests sets the variables that are read here. Wine's are $TESSALY_WINE_BITS, or $PSF_WINE, and
$TESSALY_WINE_PREFIX.
"""

import contextlib
import os
import pathlib
import subprocess
import tempfile
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


def wine_command(*arguments):
    return [str(ROOT / "script/wine"), BITS, *map(str, arguments)]


def wine(*arguments, **options):
    """Runs a Windows program to its end, as run() does."""
    return run(*wine_command(*arguments), **options)


@contextlib.contextmanager
def running_wine():
    """Keeps Wine running: a start of it takes longer than most programs."""
    with subprocess.Popen(wine_command("cmd"), stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                          stderr=subprocess.DEVNULL) as shell:
        assert shell.stdout.readline()  # it is up
        wine("cmd", "/c", "exit")  # and so is what only a second program starts
        yield
        shell.stdin.close()


def reg(*arguments):
    """Runs reg.exe. Very rarely Wine loses a new process or it hangs, so it is tried twice."""
    try:
        done = wine("reg", *arguments)
        if b"Application could not be started" not in done.stdout:
            return done
    except subprocess.TimeoutExpired:
        pass
    return wine("reg", *arguments)


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
