"""What the measurements of the desktop programs share: the large file, summaries, and their tables in README.md."""

import datetime
import os
import platform
import random
import re
import statistics
import subprocess
import sys
import tempfile

FUNCTIONS = 1000
FILE_BYTES = 10_000_000
COPY_MS = {100_000: 0.3, 10_000_000: 1}  # at most, in the median, for a document of so many bytes
LIST_MS = 30  # less, in the median, in a document of 100,000 functions
EVENTS = ("OnError", "OnFrame", "OnKey", "OnStart", "OnStop", "OnTimer", "OnTrigger", "OnSerial", "OnMsg")

# As the bodies of program blocks are written; {0} and {1} are numbers.
LINES = (
    "    int count{0} = ReadChannel({1});",
    "    if (count{0} > limit[{1}]) {{",
    '        Print("channel {1}: %d is above the limit\\n", count{0});',
    "        SetOutput({1}, 0x{0:02X});",
    "    }}",
    "    /* step {0}: the value settles after {1} ms */",
    "    total += samples[{0}] * {1} + Filter(samples[{0} + 1], 0.{1}f);",
    "    for (int i = 0; i < {1}; ++i) {{",
    "        history[i] = history[i + 1]; // the oldest goes",
    "    }}",
    "",
)


def body(number):
    """The lines of one function, which are FILE_BYTES / FUNCTIONS bytes with their line breaks, more or less."""
    lines = [f"void Function{number:04}(void)", "{"]
    size = sum(len(line) + 2 for line in lines)
    while size < FILE_BYTES // FUNCTIONS - 60:
        line = LINES[len(lines) % len(LINES)].format(len(lines), number)
        lines.append(line)
        size += len(line) + 2
    return lines + ["}"]


def write_large_file(path):
    """Writes a PSF of FUNCTIONS functions and returns its size in bytes."""
    names = [f"Function{number:04}" for number in range(FUNCTIONS)]
    text = ["[BeginPSF]", "Comment= bench", "FileName=", "[GVars]", "int total;", "[GFuncs]", f"NumFuncs= {FUNCTIONS}",
            "FuncNames=" + ",".join(names), "[FuncCode]"]
    for number, name in enumerate(names):
        first, *others = body(number)
        text += [f"[{name}]", "ProtoType=", "FuncBody=" + first, *others]
    text.append("[EventCode]")
    for event in EVENTS:
        text += [f"[{event}]", f"FuncBody=void {event}()", "{", "}"]
    with open(path, "wb") as file:
        file.write("".join(line + "\r\n" for line in text + ["[EndPSF]"]).encode("cp1252"))
    return os.path.getsize(path)


def sample_in_turns(cases, runs, measure, rarer=(), rarity=1):
    """{name: [what `measure` returned for each run]}; the cases take random turns.

    A first round warms up and does not count. The cases in `rarer` are run only every `rarity`th time.
    """
    samples = {name: [] for name in cases}
    for turn in range(-1, runs):
        for name in random.sample(list(cases), len(cases)):
            if turn >= 0 and turn % rarity != 0 and name in rarer:
                continue
            sample = measure(cases[name])
            if turn >= 0:
                samples[name].append(sample)
    return samples


def spread(values, digits=0):
    """The median, the least and the greatest."""
    return f"{statistics.median(values):.{digits}f} ({min(values):.{digits}f}-{max(values):.{digits}f})"


def printed_by(command):
    """The words of each line that the command prints."""
    typist = subprocess.run(command, capture_output=True, text=True)
    if typist.returncode != 0:
        print(typist.stderr, file=sys.stderr, end="")
        sys.exit(2)
    return [line.split() for line in typist.stdout.splitlines()]


def keystroke_rows(command, most, verdict):
    """Rows of the targets table from what the command, `keystroke`, prints: "one" or "all" and milliseconds, a key a
    line. `most` are milliseconds, too."""
    texts = {"one": "Keystroke in 10,000 lines, ms", "all": "The same where all in view changes its colour, ms"}
    keys = printed_by(command)
    rows = []
    for changed, text in texts.items():
        times = [float(time) for kind, time in keys if kind == changed]
        rows.append([text, spread(times, 2), f"at most {most}",
                     verdict(statistics.median(times) <= most)])
    return rows


def copy_rows(command, verdict):
    """Rows of the targets table from what the command, `keystroke FOLDER`, prints: the bytes of the document, "with" or
    "without" and milliseconds, a key a line. Copies make no key quicker: where they seem to, nothing is shown."""
    with tempfile.TemporaryDirectory(dir=os.getcwd() + "/build") as folder:
        keys = printed_by([*command, folder])
    rows = []
    for size, most in COPY_MS.items():
        times = {kind: statistics.median(float(time) for bytes_, of, time in keys if (int(bytes_), of) == (size, kind))
                 for kind in ("with", "without")}
        more = times["with"] - times["without"]
        rows.append([f"What copies add to a keystroke, {size // 1000:,} KB, ms",
                     f"{more:.2f} to {times['without']:.2f}", f"at most {most}", verdict(-most <= more <= most)])
    return rows


def list_rows(command, verdict):
    """Rows of the targets table from what the command, `keystroke FOLDER list`, prints: "select", "add" or "copy" and
    milliseconds."""
    with tempfile.TemporaryDirectory(dir=os.getcwd() + "/build") as folder:
        samples = [(kind, float(time)) for kind, time in printed_by([*command, folder, "list"])]
    texts = {"select": "Select one of 100,000 functions, ms", "add": "Add one to them, ms"}
    rows = []
    for kind, text in texts.items():
        times = [time for of, time in samples if of == kind]
        rows.append([text, spread(times, 1), f"less than {LIST_MS}", verdict(statistics.median(times) < LIST_MS)])
    copies = [time for of, time in samples if of == "copy"]
    return rows + [["The copy that is written behind that, ms", spread(copies, 1), "", ""]]


def machine():
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"^model name\s*:\s*(.*)", file.read(), re.MULTILINE)
    return (f"{datetime.date.today()}: {platform.system()} {platform.release()}, "
            f"{model.group(1) if model else platform.machine()}, {os.cpu_count()} cores")


def load_average():
    return f"{os.getloadavg()[0]:.2f}"
