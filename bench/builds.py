#!/usr/bin/env python3
"""Measures warm builds of an example beside its compiler by hand, and adds them to results: builds.py PSF RESULTS.json

By hand is the command by which the kit compiled and linked that C file, word for word, with nothing around it.
"""

import json
import os
import pathlib
import random
import shutil
import subprocess
import sys
import tempfile
import time

KIT = pathlib.Path(__file__).resolve().parents[1] / "kit"
EXAMPLE = KIT.parent / "examples/gateway/Gateway.PSF"
COMPILERS = ("gcc", "clang")
RUNS = 51

# A compiler that notes what it was told, each word behind a 0.
NOTING = """#!/bin/sh
printf '%s\\0' {compiler} "$@" >{notes}
exec {compiler} "$@"
"""


def seconds(command, environment):
    begin = time.perf_counter()
    subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, check=True)
    return time.perf_counter() - begin


def commands(psf, folder):
    """Two of each compiler: (name, words, variables)."""
    (folder / "settings.reg").write_text(
        "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Ostrel\\OstrelCompiler]\n"
        f'"FCompBat"="{KIT}/compile.sh"\n"FCompFileName"="{folder}/program.c"\n', encoding="utf-8")
    shutil.copy(EXAMPLE, folder)
    variables = {**os.environ, "TESSALY_SETTINGS": str(folder / "settings.reg"), "XDG_CACHE_HOME": str(folder)}
    build = [psf, "build", str(folder / EXAMPLE.name)]
    for compiler in COMPILERS:
        noting, notes = folder / f"noting-{compiler}", folder / f"notes-{compiler}"
        noting.write_text(NOTING.format(compiler=compiler, notes=notes), encoding="utf-8")
        noting.chmod(0o755)
        seconds(build, {**variables, "CC": str(noting)})
        yield f"build/{compiler}/hand", notes.read_text(encoding="utf-8").split("\0")[:-1], variables
        yield f"build/{compiler}/psf", build, {**variables, "CC": compiler}


def measure(psf):
    with tempfile.TemporaryDirectory() as folder:
        cases = list(commands(psf, pathlib.Path(folder)))
        for _, words, variables in cases:  # the runtime and the page cache are warm then
            seconds(words, variables)
        turns = cases * RUNS
        random.shuffle(turns)
        for name, words, variables in turns:
            yield {"name": name, "run_type": "iteration", "real_time": seconds(words, variables), "time_unit": "s",
                   "peak_bytes": 0, "bytes": 0, "items": 0}


def main(psf, path):
    with open(path, encoding="utf-8") as file:
        results = json.load(file)
    results["benchmarks"] += measure(os.path.abspath(psf))
    with open(path, "w", encoding="utf-8") as file:
        json.dump(results, file)


if __name__ == "__main__":
    if len(sys.argv) != 3:
        sys.exit(__doc__)
    main(*sys.argv[1:])
