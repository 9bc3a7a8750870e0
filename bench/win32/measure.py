#!/usr/bin/env python3
"""Times starts under Wine and writes the Windows table: measure.py TOOLS TESSALY.EXE README.md RUNS

All cases are measured in one session in random turns, with another program of the same Wine running all the time. Exit
status: 0 done, 1 a target was missed, 2 something could not be measured; then the README stays as it is. Called by
script/bench-windows, which sets up the display.
"""

import glob
import os
import re
import shutil
import statistics
import subprocess
import sys
import time

from desktop import (copy_rows, keystroke_rows, list_rows, load_average, machine, sample_in_turns, spread,
                     write_large_file)
from table import Verdict, publish, table

BEGIN = "<!-- windows table: made by script/bench-windows, do not edit -->"
END = "<!-- end of windows table -->"
WORDPAD = r"C:\Program Files\Windows NT\Accessories\wordpad.exe"
RARITY = 3  # only each third round opens the large file: notepad takes long for it

NOTEPAD = 1.0  # at most, times notepad's start
BARE = 1.05  # at most, times the bare window's start
LARGE = 0.1  # at most, times what notepad takes for the large file
KEYSTROKE_MS = 8  # at most
MEMORY_MB = 12  # at most, private, and MEMORY_FILES times the file
MEMORY_FILES = 3
PROGRAM_MB = 2.5  # less, stripped

REST = 300  # ms in which a program at rest needs less than
REST_CPU = 3  # ms of CPU time
PATIENCE = 120_000  # ms

SETTINGS = r"""Windows Registry Editor Version 5.00

[HKEY_LOCAL_MACHINE\SOFTWARE\Ostrel\OstrelCompiler]
"FCompBat"="C:\\compile.bat"
"FCompFileName"="C:\\program.c"
"FHelp"="C:\\help.chm"
"""


def fail(message):
    print(f"measure.py: {message}", file=sys.stderr)
    sys.exit(2)


def windows_path(path):
    return "Z:" + os.path.abspath(path).replace("/", "\\")


def wine(*arguments, **options):
    return subprocess.Popen(["script/wine", "32", *arguments], **options)


def install(tools):
    """The settings of a complete installation: no message at the start."""
    file = f"{tools}/settings.reg"
    with open(file, "w", encoding="utf-16") as out:
        out.write(SETTINGS)
    if wine("reg", "import", windows_path(file), stdout=subprocess.DEVNULL).wait() != 0:
        fail("the settings could not be written")


def process_folder(program):
    """The folder in /proc of the one process that runs the program."""
    name = program.split("\\")[-1].lower()
    found = []
    for folder in glob.glob("/proc/[0-9]*"):
        try:
            with open(f"{folder}/cmdline", "rb") as file:
                command = file.read().split(b"\0")[0].decode(errors="replace").lower()
        except (FileNotFoundError, ProcessLookupError):
            continue
        is_it = command.replace("/", "\\").split("\\")[-1] == name
        if is_it and os.environ["TESSALY_WINE_PREFIX"] in prefix_of(folder):
            found.append(folder)
    if len(found) != 1:
        fail(f"{len(found)} processes run {name}, where one was expected")
    return found[0]


def prefix_of(folder):
    with open(f"{folder}/environ", "rb") as file:
        found = re.search(rb"(?:^|\0)WINEPREFIX=([^\0]*)", file.read())
    return os.fsdecode(found.group(1)) if found else ""


def total(path, pattern):
    with open(path, encoding="ascii", errors="replace") as file:
        return sum(int(number) for number in re.findall(pattern, file.read()))


def cpu_time(process):
    """Milliseconds of all threads, exactly; what Wine itself tells about another process is far too little."""
    return time.clock_gettime(~process << 3 | 2) * 1e3  # the number of the process's CPU clock, as the kernel makes it


def wait_for_rest(process):
    """(when, CPU ms used then): the begin of the first rest from now on."""
    samples = []
    first = 0
    while True:
        samples.append((now(), cpu_time(process)))
        while samples[-1][1] - samples[first][1] > REST_CPU:
            first += 1
        if samples[-1][0] - samples[first][0] >= REST:
            return samples[first], first == 0
        if samples[-1][0] - samples[0][0] > PATIENCE:
            fail("a program does not come to rest")
        time.sleep(0.002)


def now():
    """The clock that Wine makes QueryPerformanceCounter of, in milliseconds."""
    return time.clock_gettime(time.CLOCK_MONOTONIC_RAW) * 1e3


def measure(tools, case):
    """(ms until visible, answers, usable, CPU ms until usable, private bytes) of one start."""
    size, program, *arguments = case
    before = now()
    timer = wine(f"{tools}/start_timer.exe", program, *arguments, stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                 bufsize=0)
    line = timer.stdout.readline().split()
    if len(line) != 3:
        timer.communicate()
        fail(f"{program} could not be timed")
    start, visible, answers = map(float, line)
    if not before <= start <= answers <= now():
        fail("the clocks of Wine and of Linux differ")
    folder = process_folder(program)
    (usable, cpu), is_at_once = wait_for_rest(int(folder.split("/")[-1]))
    usable = answers if is_at_once else usable
    timer.stdin.write(b"\n")
    asked = now()
    if float(timer.stdout.readline() or "inf") - asked > REST:
        fail(f"{program} came to rest, but does not answer")
    private = total(f"{folder}/smaps_rollup", r"Private_(?:Clean|Dirty): +(\d+) kB") * 1024
    if total(f"{folder}/io", r"rchar: (\d+)") < size:
        fail(f"{program} has not read its file")
    timer.communicate()
    return visible - start, answers - start, usable - start, cpu, private


def case_rows(samples):
    rows = []
    for name, runs in samples.items():
        columns = list(zip(*runs))
        rows.append([name, *(spread(column) for column in columns[:4]), spread([n / 1e6 for n in columns[4]], 1)])
    return rows


def target_rows(samples, size, program_size, verdict):
    usable = {name: statistics.median(run[2] for run in runs) for name, runs in samples.items()}
    ours = usable["**Tessaly**"]
    memory = statistics.median(run[4] for run in samples["**Tessaly**, 10 MB"]) / 1e6
    most = MEMORY_MB + MEMORY_FILES * size / 1e6
    rows = []
    for text, value, target in (("Start / notepad's", ours / usable["notepad"], NOTEPAD),
                                ("Start / bare window's", ours / usable["bare window"], BARE),
                                ("Open 10 MB / notepad's",
                                 usable["**Tessaly**, 10 MB"] / usable["notepad, 10 MB"], LARGE)):
        rows.append([text, f"{value:.2f}", f"at most {target}", verdict(value <= target)])
    rows.append(["Private memory with 10 MB, MB", f"{memory:.1f}", f"at most {most:.0f}", verdict(memory <= most)])
    rows.append(["Program, stripped, MB", f"{program_size / 1e6:.2f}", f"less than {PROGRAM_MB}",
                 verdict(program_size < PROGRAM_MB * 1e6)])
    return rows


def stripped_size(tools, exe):
    stripped = shutil.copy(exe, f"{tools}/stripped.exe")
    subprocess.run(["i686-w64-mingw32-strip", stripped], check=True)
    return os.path.getsize(stripped)


def main(tools, exe, readme, runs):
    before = load_average()
    large = f"{tools}/large.PSF"
    size = write_large_file(large)
    tessaly = windows_path(exe)
    cases = {
        "**Tessaly**": (0, tessaly),
        "bare window": (0, windows_path(f"{tools}/bare_window.exe")),
        "notepad": (0, "notepad.exe"),
        "wordpad": (0, WORDPAD),
        "**Tessaly**, 10 MB": (size, tessaly, windows_path(large)),
        "notepad, 10 MB": (size, "notepad.exe", windows_path(large)),
    }
    keeper = wine("cmd", stdin=subprocess.PIPE, stdout=subprocess.DEVNULL)  # Wine's server stays up
    install(tools)
    samples = sample_in_turns(cases, runs, lambda case: measure(tools, case), rarer=list(cases)[4:], rarity=RARITY)
    verdict = Verdict()
    targets = target_rows(samples, size, stripped_size(tools, exe), verdict)
    typist = ["script/wine", "32", f"{tools}/keystroke.exe"]
    targets += keystroke_rows(typist, KEYSTROKE_MS, verdict) + copy_rows(typist, verdict)
    targets += list_rows(typist, verdict)
    keeper.communicate(b"exit\r\n")
    version = subprocess.run(["script/wine", "32", "--version"], capture_output=True, text=True, check=True)
    lines = [f"Measured on {machine()}, {version.stdout.strip()}, 32 bits; load average before the run {before}.",
             f"Medians of {runs} starts, {len(samples['notepad, 10 MB'])} with the file of {size / 1e6:.1f} MB, "
             "the fastest and the slowest in brackets.", ""]
    lines += table(["", "visible, ms", "answers, ms", "usable, ms", "CPU until then, ms", "private MB"],
                   case_rows(samples))
    lines += ["", *table(["", "", "target", ""], targets)]
    return publish(readme, BEGIN, END, "\n".join(lines), verdict)


if __name__ == "__main__":
    if len(sys.argv) != 5:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:4], int(sys.argv[4])))
