#!/usr/bin/env python3
"""Times starts on the Linux desktop and writes its table: measure.py BINARIES README.md RUNS

BINARIES is the folder with tessaly and the programs made beside it. Exit status: 0 done, 1 a target was missed, 2
something could not be measured; then the README stays as it is. Called by script/bench-linux-desktop, which sets up the
display.
"""

import os
import statistics
import subprocess
import sys
import tempfile

from desktop import (copy_rows, keystroke_rows, list_rows, load_average, machine, sample_in_turns, spread,
                     write_large_file)
from table import Verdict, publish, table

BEGIN = "<!-- Linux desktop table: made by script/bench-linux-desktop, do not edit -->"
END = "<!-- end of Linux desktop table -->"

MINIMAL = 1.15  # at most, times the minimal Qt window's start
OTHERS = ("SciTE", "Geany")  # not slower than these
LARGE_MS = 150  # at most, until the large file is open
KEYSTROKE_MS = 4  # at most

SETTINGS = r"""Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\SOFTWARE\Ostrel\OstrelCompiler]
"FCompBat"="/bin/true"
"FCompFileName"="/dev/null"
"FHelp"="/dev/null"
"""


def set_up_home(folder):
    """A user who has a complete installation and no desktop services, in this process's environment."""
    settings = f"{folder}/settings.reg"
    with open(settings, "w", encoding="utf-8") as file:
        file.write(SETTINGS)
    for name in [name for name in os.environ if name.startswith("XDG_")]:
        del os.environ[name]
    os.environ.pop("DBUS_SESSION_BUS_ADDRESS", None)
    os.environ.update(HOME=folder, XDG_RUNTIME_DIR=folder, TESSALY_SETTINGS=settings, NO_AT_BRIDGE="1",
                      LC_ALL="C.UTF-8")


def measure(binaries, case):
    """(ms until visible, answers, usable, CPU ms until usable, peak bytes, private bytes) of one start."""
    title, size, *command = case
    timer = subprocess.run([f"{binaries}/window_timer", title, str(size), *command], capture_output=True, text=True)
    if timer.returncode != 0:
        print(timer.stderr, file=sys.stderr, end="")
        sys.exit(2)
    return tuple(map(float, timer.stdout.split()))


def case_rows(samples):
    rows = []
    for name, runs in samples.items():
        columns = list(zip(*runs))
        rows.append([name, *(spread(column) for column in columns[:4]),
                     *(f"{statistics.median(column) / 1e6:.1f}" for column in columns[4:])])
    return rows


def target_rows(samples, keystrokes, verdict):
    usable = {name: statistics.median(run[2] for run in runs) for name, runs in samples.items()}
    ours = usable["**Tessaly**"]
    ratio = ours / usable["minimal Qt window"]
    rows = [["Start / minimal Qt window's", f"{ratio:.2f}", f"at most {MINIMAL}", verdict(ratio <= MINIMAL)]]
    for other in OTHERS:
        ratio = ours / usable[other]
        rows.append([f"Start / {other}'s", f"{ratio:.2f}", "less than 1", verdict(ratio < 1)])
    large = usable["**Tessaly**, 10 MB"]
    rows.append(["Open 10 MB, ms", f"{large:.0f}", f"at most {LARGE_MS}", verdict(large <= LARGE_MS)])
    return rows + keystrokes


def main(binaries, readme, runs):
    before = load_average()
    verdict = Verdict()
    with tempfile.TemporaryDirectory() as folder:
        set_up_home(folder)
        large = f"{folder}/large.PSF"
        size = write_large_file(large)
        tessaly = f"{binaries}/tessaly"
        cases = {
            "**Tessaly**": ("Tessaly", 0, tessaly),
            "minimal Qt window": ("Minimal Qt", 0, f"{binaries}/minimal_qt"),
            "SciTE": ("SciTE", 0, "scite"),
            "Geany": ("Geany", 0, "geany", "-i"),
            "**Tessaly**, 10 MB": ("Tessaly", size, tessaly, large),
            "SciTE, 10 MB": ("large.PSF", size, "scite", large),
            "Geany, 10 MB": ("large.PSF", size, "geany", "-i", large),
        }
        samples = sample_in_turns(cases, runs, lambda case: measure(binaries, case))
        typist = [f"{binaries}/keystroke"]
        keystrokes = keystroke_rows(typist, KEYSTROKE_MS, verdict) + copy_rows(typist, verdict)
        keystrokes += list_rows(typist, verdict)
    lines = [f"Measured on {machine()}; load average before the run {before}.",
             f"Medians of {runs} starts, the fastest and the slowest in brackets; the file has {size / 1e6:.1f} MB.",
             ""]
    lines += table(["", "visible, ms", "answers, ms", "usable, ms", "CPU until then, ms", "peak MB", "private MB"],
                   case_rows(samples))
    lines += ["", *table(["", "", "target", ""], target_rows(samples, keystrokes, verdict))]
    return publish(readme, BEGIN, END, "\n".join(lines), verdict)


if __name__ == "__main__":
    if len(sys.argv) != 4:
        sys.exit(__doc__)
    sys.exit(main(sys.argv[1], sys.argv[2], int(sys.argv[3])))
