"""What the tests of the kit's batch file and of the installer share: Windows programs under Wine, and their registry.

script/test-packages sets the variables: WINE_BITS is 32 or 64, WINE_GCC the path of a gcc.exe that works under Wine.
"""
import os
import pathlib
import shutil
import subprocess
import tempfile
import time

ROOT = pathlib.Path(__file__).resolve().parents[4]
BITS = os.environ["TESSALY_WINE_BITS"]
GCC = pathlib.Path(os.environ["WINE_GCC"])
PSF = os.environ["PSF"]
PREFIX = pathlib.Path(os.environ["TESSALY_WINE_PREFIX"])
DRIVE_C = PREFIX / "drive_c"
SETTINGS = r"HKLM\SOFTWARE\Ostrel\OstrelCompiler"
EXAMPLES = {"blink": "Blink", "filter": "Filter", "gateway": "Gateway", "serial": "Echo"}


def windows_path(path):
    path = pathlib.Path(path)
    if path.is_relative_to(DRIVE_C):
        return "C:\\" + str(path.relative_to(DRIVE_C)).replace("/", "\\")
    return "Z:" + str(path).replace("/", "\\")


def wine_command(*arguments):
    return [str(ROOT / "script" / "wine"), BITS, *map(str, arguments)]


def wine_environment(changes):
    environment = dict(os.environ)
    for name, value in changes.items():
        environment.pop(name, None)
        if value is not None:
            environment[name] = str(value)
    return environment


def wine(*arguments, environment=None, **options):
    """Runs a Windows program to its end; the environment holds what to change in ours, None to leave a variable out."""
    if "input" not in options:
        options.setdefault("stdin", subprocess.DEVNULL)
    # Files, not pipes: a process that Windows leaves running would hold the end of a pipe open.
    with tempfile.TemporaryFile() as output, tempfile.TemporaryFile() as errors:
        result = subprocess.run(
            wine_command(*arguments), env=wine_environment(environment or {}), stdout=output, stderr=errors,
            timeout=120, **options,
        )
        for file in (output, errors):
            file.seek(0)
        result.stdout, result.stderr = output.read(), errors.read()
    return result


def is_running(program):
    """Whether a Windows program of that name runs, as the machine's list of processes has it."""
    for process in pathlib.Path("/proc").glob("[0-9]*"):
        try:
            words = (process / "cmdline").read_bytes().split(b"\0")
        except OSError:
            continue
        if words[0].replace(b"\\", b"/").endswith(b"/" + program.encode()):
            return True
    return False


def read_value(key, name=None):
    """A value of the registry as reg.exe prints it, or None; without a name the default value."""
    result = wine("reg", "query", key, *(["/v", name] if name else ["/ve"]))
    if result.returncode != 0:
        return None
    for line in result.stdout.decode("cp1252").splitlines():
        parts = line.strip().split(None, 2)
        if len(parts) >= 2 and parts[1].startswith("REG_"):
            return parts[2] if len(parts) > 2 else ""
    return None


def write_value(key, name, value, kind="REG_SZ"):
    named = ["/v", name] if name else ["/ve"]
    result = wine("reg", "add", key, *named, "/t", kind, "/d", value, "/f")
    assert result.returncode == 0, result


def delete_key(key):
    wine("reg", "delete", key, "/f")


def wait_until(condition, what, seconds=60):
    deadline = time.monotonic() + seconds
    while not condition():
        assert time.monotonic() < deadline, f"not within {seconds} s: {what}"
        time.sleep(0.05)


def copy_example(name, folder):
    """Copies an example and returns its PSF file."""
    folder.mkdir(parents=True, exist_ok=True)
    for file in (ROOT / "examples" / name).iterdir():
        if file.suffix != ".out":
            shutil.copy(file, folder)
    return folder / f"{EXAMPLES[name]}.PSF"


def check_plays_as_expected(program, name):
    """The program, made from an example, plays its event script and prints what it must."""
    example = ROOT / "examples" / name / EXAMPLES[name]
    result = wine(windows_path(program), windows_path(example.with_suffix(".events")))
    assert (result.returncode, result.stderr) == (0, b"")
    assert result.stdout == example.with_suffix(".expected").read_bytes()
