#!/usr/bin/env python3
"""Turns the results of tessaly_bench into the table of bench/README.md: table.py RESULTS.json README.md

Prints the table, too. Every figure comes from the results; only the targets stand here. Exit status 1 when a target is
missed, 2 when a case is missing or failed; then the README stays as it is.
"""

import datetime
import json
import os
import platform
import re
import statistics
import sys

BEGIN = "<!-- table: made by script/bench, do not edit -->"
END = "<!-- end of table -->"

LOAD_SPEED = {"ideal": 0.8, "inih": 2.5, "gkeyfile": 4.0}  # at least, ours beside each
LOAD_PEAK = 2.5  # at most, times the size of the file
WRITE_SPEED = 0.7  # at least, beside one write()
GROWTH = 12.0  # at most, for ten times as many functions
BUILD = 1.25  # at most, beside the same compile by hand
TEST = 1.3  # at most, beside the same compilers and programs by hand
TEST_JOBS = 1.8  # at least, how much sooner two jobs are done than one
FLEET = 4.0  # times the processor time of reading the files
FLEET_LARGEST = 206_000
FLEET_PEAK = 2.0
MERGE_SECONDS = 0.05
HUGE_PEAK = 2.2
HOSTILE_SECONDS = 0.010  # less
HOSTILE_PEAK = 10e6  # bytes, less
COMPLETION_SECONDS = 0.005  # less
FIND_SECONDS = 0.100  # less

LOADERS = {
    "tessaly": "**Tessaly**",
    "ideal": "ideal loop",
    "iconv": "`iconv -f CP1252 -t UTF-8`",
    "dos2unix": "`dos2unix -n`",
    "inih": "inih, INI",
    "gkeyfile": "GLib GKeyFile, INI",
}
COMMANDS = ("iconv", "dos2unix")


class Case:
    def __init__(self):
        self.seconds = []
        self.peaks = []
        self.bytes = 0
        self.items = 0

    def add(self, run):
        unit = {"ns": 1e-9, "us": 1e-6, "ms": 1e-3, "s": 1.0}[run["time_unit"]]
        self.seconds.append(run["real_time"] * unit)
        self.peaks.append(run["peak_bytes"])
        self.bytes = run["bytes"]
        self.items = run["items"]

    @property
    def time(self):
        return statistics.median(self.seconds)

    @property
    def speed(self):
        return self.bytes / self.time

    @property
    def peak(self):
        return statistics.median(self.peaks)

    def range_text(self):
        return f"{milliseconds(self.time)} ({milliseconds(min(self.seconds))}-{milliseconds(max(self.seconds))})"


class Verdict:
    """Judges rows and remembers whether all were good."""

    def __init__(self):
        self.missed = 0

    def __call__(self, good):
        self.missed += not good
        return "met" if good else "**missed**"


def publish(path, begin, end, text, verdict):
    """Puts `text` between the lines `begin` and `end` of the file, prints it, and returns the exit status."""
    with open(path, encoding="utf-8") as file:
        before, rest = file.read().split(begin)
    after = rest.split(end)[1]
    with open(path, "w", encoding="utf-8") as file:
        file.write(f"{before}{begin}\n\n{text}\n\n{end}{after}")
    print(text)
    if verdict.missed:
        print(f"\n{verdict.missed} targets missed", file=sys.stderr)
    return 1 if verdict.missed else 0


def milliseconds(seconds):
    value = seconds * 1e3
    return f"{value:.0f}" if value >= 100 else f"{value:.1f}" if value >= 10 else f"{value:.3f}"


def read_cases(results):
    cases = {}
    for run in results["benchmarks"]:
        if run["run_type"] != "iteration":
            continue
        if run.get("error_occurred"):
            sys.exit(f"table.py: {run['name']}: {run['error_message']}")
        name = re.sub(r"/iterations:.*", "", run["name"])
        cases.setdefault(name, Case()).add(run)
    return cases


def table(head, rows):
    """The lines of a Markdown table, padded so that its source reads well, too."""
    widths = [max(len(row[i]) for row in [head, *rows]) for i in range(len(head))]
    rule = ["-" * width for width in widths]
    return ["| " + " | ".join(cell.ljust(width) for cell, width in zip(row, widths)) + " |"
            for row in [head, rule, *rows]]


def load_rows(cases, verdict):
    ours = cases["load/tessaly"]
    rows = []
    for key, name in LOADERS.items():
        case = cases["load/" + key]
        ratio = ours.speed / case.speed
        cells = [name, case.range_text(), f"{case.speed / 1e6:.0f}"]
        cells.append("" if key in COMMANDS else f"{case.peak / 2**20:.0f}")
        cells.append("" if key == "tessaly" else f"{ratio:.2f}")
        target = LOAD_SPEED.get(key)
        cells += [f"at least {target}", verdict(ratio >= target)] if target else ["", ""]
        rows.append(cells)
    return rows


def peak_row(cases, verdict):
    ours = cases["load/tessaly"]
    ratio = ours.peak / ours.bytes
    name = "Peak memory of a load / size of the file"
    return [name, f"{ratio:.2f}", f"at most {LOAD_PEAK}", verdict(ratio <= LOAD_PEAK)]


def write_rows(cases, verdict):
    rows = []
    for operation in ("save", "generate"):
        for folder in ("memory", "disk"):
            ours = cases[f"{operation}/{folder}/tessaly"]
            other = cases[f"{operation}/{folder}/one_piece"]
            ratio = ours.speed / other.speed
            cells = [f"{operation}, {folder}", ours.range_text(), f"{ours.speed / 1e6:.0f}"]
            cells += [other.range_text(), f"{other.speed / 1e6:.0f}", f"{ratio:.2f}"]
            judged = folder == "memory"
            cells += [f"at least {WRITE_SPEED}", verdict(ratio >= WRITE_SPEED)] if judged else ["", ""]
            rows.append(cells)
    return rows


def growth_rows(cases, verdict):
    rows = []
    for operation in ("load", "save", "generate"):
        for order in ("ascending", "random"):
            times = [cases[f"growth/{operation}/{order}/{count}"].time for count in (1000, 10000, 100000)]
            steps = [times[1] / times[0], times[2] / times[1]]
            cells = [f"{operation}, names {order}", *map(milliseconds, times), *(f"{step:.1f}" for step in steps)]
            rows.append([*cells, f"at most {GROWTH:.0f}", verdict(max(steps) <= GROWTH)])
    return rows


def build_rows(cases, verdict):
    rows = []
    for compiler in ("gcc", "clang"):
        ours, hand = cases[f"build/{compiler}/psf"], cases[f"build/{compiler}/hand"]
        ratio = ours.time / hand.time
        rows.append([f"`psf build` with {compiler}", ours.range_text(), hand.range_text(), f"{ratio:.2f}",
                     f"at most {BUILD}", verdict(ratio <= BUILD)])
    return rows


def test_rows(cases, verdict):
    hand, one, two = (cases[f"test/{key}"] for key in ("hand", "psf", "psf-2"))
    ratio, gain = one.time / hand.time, one.time / two.time
    return [["`psf test`", one.range_text(), f"{ratio:.2f}", f"at most {TEST}", verdict(ratio <= TEST)],
            ["the same by hand", hand.range_text(), "", "", ""],
            ["`psf test --jobs 2`", two.range_text(), f"{two.time / hand.time:.2f}",
             f"{TEST_JOBS} times as fast as one job: {gain:.2f}", verdict(gain >= TEST_JOBS)]]


def fleet_rows(cases, verdict):
    rows = []
    for key, name in [("check", "`psf check` of 2,000 files"), ("tidy", "`psf tidy --check` of 2,000 files")]:
        ratio = cases[f"fleet/{key}"].time / cases["fleet/cat"].time
        rows.append([name + " / `cat` of them", f"{ratio:.1f}", f"at most {FLEET:.0f}", verdict(ratio <= FLEET)])
        peak = (cases[f"fleet/{key}"].peak - cases[f"fleet/{key}-nothing"].peak) / FLEET_LARGEST
        rows.append(["The memory of that / the largest of them", f"{peak:.1f}", f"at most {FLEET_PEAK:.0f}",
                     verdict(peak <= FLEET_PEAK)])
    merge = cases["fleet/merge"]
    rows.append(["`psf merge` of 1,000 functions, ms", merge.range_text(), f"less than {MERGE_SECONDS * 1e3:.0f}",
                 verdict(merge.time < MERGE_SECONDS)])
    huge = cases["fleet/huge"]
    ratio = huge.peak / huge.bytes
    rows.append(["The memory of `psf check` of 1 GB / the file", f"{ratio:.2f}", f"at most {HUGE_PEAK}",
                 verdict(ratio <= HUGE_PEAK)])
    return rows


def completion_rows(cases, verdict):
    kinds = {"list": "The list for three letters", "changed": "The same, behind a change of the functions",
             "hint": "The parameters of a call"}
    return [[what, cases[f"complete/{kind}"].range_text(), f"less than {COMPLETION_SECONDS * 1e3:.0f}",
             verdict(cases[f"complete/{kind}"].time < COMPLETION_SECONDS)]
            for kind, what in kinds.items()]


def find_rows(cases, verdict):
    kinds = {"any-case": "Capitals and small letters alike", "match-case": "As they are"}
    return [[what, cases[f"find/{kind}"].range_text(), f"less than {FIND_SECONDS * 1e3:.0f}",
             verdict(cases[f"find/{kind}"].time < FIND_SECONDS)]
            for kind, what in kinds.items()]


def hostile_rows(cases, verdict):
    case = cases["hostile/tessaly"]
    return [
        ["Hostile file: load, ms", case.range_text(), f"less than {HOSTILE_SECONDS * 1e3:.0f}",
         verdict(case.time < HOSTILE_SECONDS)],
        ["Hostile file: peak memory, MB", f"{case.peak / 1e6:.2f}", f"less than {HOSTILE_PEAK / 1e6:.0f}",
         verdict(case.peak < HOSTILE_PEAK)],
    ]


def machine(results, repetitions):
    with open("/proc/cpuinfo", encoding="utf-8") as file:
        model = re.search(r"^model name\s*:\s*(.*)", file.read(), re.MULTILINE)
    memory = os.sysconf("SC_PHYS_PAGES") * os.sysconf("SC_PAGE_SIZE") / 2**30
    return [
        f"Measured on {datetime.date.today()}: {platform.system()} {platform.release()}, "
        f"{model.group(1) if model else platform.machine()}, {os.cpu_count()} cores, {memory:.0f} GiB; "
        f"load average before the run {results['context']['load_avg'][0]:.2f}.",
        f"Medians of {repetitions} runs, the fastest and the slowest in brackets; MB is 10^6 bytes.",
    ]


def section(results, verdict):
    cases = read_cases(results)
    ours = cases["load/tessaly"]
    large = f"{ours.bytes / 1e6:.0f} MB, {ours.items:.0f} functions"
    growth = cases["growth/load/random/100000"]
    each = f"{growth.bytes / growth.items:.0f} bytes each"
    lines = machine(results, len(ours.seconds))
    lines += ["", f"Load ({large}):", ""]
    lines += table(["", "ms", "MB/s", "peak MiB", "Tessaly is x times as fast", "target", ""],
                   load_rows(cases, verdict))
    lines += ["", "Save and generate:", ""]
    lines += table(["", "ms", "MB/s", "one write(), ms", "MB/s", "ours / one write()", "target", ""],
                   write_rows(cases, verdict))
    lines += ["", f"Growth (functions of {each}), ms:", ""]
    lines += table(["functions", "1,000", "10,000", "100,000", "1st step", "2nd step", "target", ""],
                   growth_rows(cases, verdict))
    lines += ["", "A build of an example, its runtime kept from an earlier one, and the same compile by hand:", ""]
    lines += table(["", "ms", "by hand, ms", "ours / by hand", "target", ""], build_rows(cases, verdict))
    test = cases["test/psf"]
    lines += ["", f"A test of {test.items:.0f} cases, the runtime kept from an earlier one:", ""]
    lines += table(["", "ms", "beside by hand", "target", ""], test_rows(cases, verdict))
    lines += ["", "Many files and large ones, in processor time:", ""]
    lines += table(["", "", "target", ""], fleet_rows(cases, verdict))
    lines += ["", "Names while typing, in 1,000 functions and a text of 10,000 lines, ms:", ""]
    lines += table(["", "ms", "target", ""], completion_rows(cases, verdict))
    lines += ["", "Finding a text in all of a document, 10 MB in 1,000 functions, ms:", ""]
    lines += table(["", "ms", "target", ""], find_rows(cases, verdict))
    lines += ["", "Memory, and a hostile file of 100 bytes:", ""]
    lines += table(["", "", "target", ""], [peak_row(cases, verdict), *hostile_rows(cases, verdict)])
    return "\n".join(lines)


def main(results_path, readme_path):
    with open(results_path, encoding="utf-8") as file:
        results = json.load(file)
    verdict = Verdict()
    try:
        text = section(results, verdict)
    except KeyError as error:
        print(f"table.py: not measured: {error}", file=sys.stderr)
        return 2
    return publish(readme_path, BEGIN, END, text, verdict)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    sys.exit(main(*sys.argv[1:]))
