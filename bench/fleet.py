#!/usr/bin/env python3
"""Measures psf on many files and large ones, and adds that to results: fleet.py PSF RESULTS.json FOLDER

The files are made in FOLDER, which should be in memory: 2,000 files of 226 MB in all, whose largest is 206 KB; three
versions of one with 1,000 functions; one of 1 GB; and 100 files without functions, to show what psf needs by itself.
Time is processor time of user and system: other work hardly changes it.
"""

import json
import os
import pathlib
import random
import resource
import shutil
import subprocess
import sys

FILES, BYTES, LARGEST, EMPTY = 2000, 226_000_000, 206_000, 100
EVENTS = ["OnError", "OnFrame", "OnKey", "OnStart", "OnStop", "OnTimer", "OnTrigger", "OnSerial", "OnMsg"]
RUNS = 7


def source(functions):
    """The bytes of a file in normal form."""
    comment = "Comment= Do not modify this file! Doing so will produce unpredictable results!!!"
    parts = ["[BeginPSF]", comment, "FileName=", "[GVars]", "int x;", "[GFuncs]", f"NumFuncs= {len(functions)}",
             "FuncNames=" + ",".join(functions), "[FuncCode]"]
    for name, body in functions.items():
        parts += [f"[{name}]", "ProtoType=", "FuncBody=" + body]
    parts.append("[EventCode]")
    for event in EVENTS:
        parts += [f"[{event}]", f"FuncBody=void {event}()\r\n{{\r\n}}"]
    return "\r\n".join([*parts, "[EndPSF]", ""]).encode("cp1252")


def body(name, lines, randomness):
    text = "".join(f"    value[{randomness.randrange(99)}] = Größe({number});\r\n" for number in range(lines))
    return f"void {name}(void)\r\n{{\r\n{text}}}"


def functions(size, randomness):
    """Functions of as many bytes, more or less."""
    made = {}
    while size > 0:
        name = f"F{len(made)}x"
        made[name] = body(name, randomness.randrange(8, 60), randomness)
        size -= len(made[name]) + len(name) + 30
    return made


def make_files(folder):
    randomness = random.Random(1)
    (folder / "many").mkdir()
    sizes = [randomness.randrange(21_000, LARGEST - 5_000) for _ in range(FILES)]
    for number, size in enumerate(sizes):
        content = source(functions(size * BYTES // sum(sizes), randomness))
        (folder / f"many/{number:04}.PSF").write_bytes(content)
    (folder / "empty").mkdir()
    for number in range(EMPTY):
        (folder / f"empty/{number:04}.PSF").write_bytes(source({}))
    base = {f"F{number}x": body(f"F{number}x", 20, randomness) for number in range(1000)}
    for name, step in [("base", 0), ("ours", 10), ("theirs", 15)]:
        changed = {key: text.replace("    ", "    /* changed */ ", 1) if step and number % step == 1 else text
                   for number, (key, text) in enumerate(base.items())}
        (folder / f"{name}.PSF").write_bytes(source(changed))
    line = "    value = Compute(value, 12345); /* and so on */\r\n"
    huge = f"void F(void)\r\n{{\r\n{line * (10_000_000 // len(line))}}}".encode()
    mark = "the text"
    pieces = source({f"F{number}x": mark for number in range(100)}).split(mark.encode())
    with open(folder / "huge.PSF", "wb") as file:
        for piece in pieces[:-1]:
            file.write(piece + huge)
        file.write(pieces[-1])


def run(words):
    """Processor seconds and peak bytes of a command."""
    # What a process has used begins with that of who starts it, so that is a small program.
    before = resource.getrusage(resource.RUSAGE_CHILDREN)
    done = subprocess.run(["/usr/bin/time", "-f", "%M", *words], stdout=subprocess.DEVNULL, stderr=subprocess.PIPE,
                          check=True)
    after = resource.getrusage(resource.RUSAGE_CHILDREN)
    return after.ru_utime + after.ru_stime - before.ru_utime - before.ru_stime, int(done.stderr) * 1024


def commands(psf, folder):
    many = str(folder / "many")
    all_files = sorted(str(path) for path in (folder / "many").iterdir())
    merge = [psf, "merge", *(str(folder / f"{name}.PSF") for name in ("base", "copy", "theirs"))]
    yield "fleet/cat", ["cat", *all_files], BYTES
    for name, words in [("check", ["check"]), ("tidy", ["tidy", "--check"])]:
        yield f"fleet/{name}", [psf, *words, many], BYTES
        yield f"fleet/{name}-nothing", [psf, *words, str(folder / "empty")], 0
    yield "fleet/merge", merge, 0
    yield "fleet/huge", [psf, "check", str(folder / "huge.PSF")], (folder / "huge.PSF").stat().st_size


def measure(psf, folder):
    # By a process of its own: what a new one has used as its greatest size begins with that of this one.
    subprocess.run([sys.executable, __file__, "--make", folder], check=True)
    cases = list(commands(psf, folder))
    turns = cases * RUNS
    random.shuffle(turns)
    for name, words, size in turns:
        shutil.copy(folder / "ours.PSF", folder / "copy.PSF")
        seconds, peak = run(words)
        yield {"name": name, "run_type": "iteration", "real_time": seconds, "time_unit": "s", "peak_bytes": peak,
               "bytes": size, "items": 0}


def main(psf, path, folder):
    with open(path, encoding="utf-8") as file:
        results = json.load(file)
    results["benchmarks"] += measure(os.path.abspath(psf), pathlib.Path(folder))
    with open(path, "w", encoding="utf-8") as file:
        json.dump(results, file)


if __name__ == "__main__":
    if len(sys.argv) != 4 and sys.argv[1:2] != ["--make"]:
        sys.exit(__doc__)
    if sys.argv[1] == "--make":
        make_files(pathlib.Path(sys.argv[2]))
    else:
        main(*sys.argv[1:])
