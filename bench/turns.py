"""What the measurements of compiles share: settings for the kit, and runs in turns whose times go to the results."""

import json
import os
import pathlib
import random
import subprocess
import sys
import tempfile
import time

KIT = pathlib.Path(__file__).resolve().parents[1] / "kit"
EXAMPLE = KIT.parent / "examples/gateway/Gateway.PSF"


def kit_environment(folder):
    """In which psf builds with the kit, its C file and its cache in the folder."""
    (folder / "settings.reg").write_text(
        "Windows Registry Editor Version 5.00\n\n[HKEY_LOCAL_MACHINE\\SOFTWARE\\Ostrel\\OstrelCompiler]\n"
        f'"FCompBat"="{KIT}/compile.sh"\n"FCompFileName"="{folder}/program.c"\n', encoding="utf-8")
    return {**os.environ, "TESSALY_SETTINGS": str(folder / "settings.reg"), "XDG_CACHE_HOME": str(folder)}


def seconds(command, environment):
    begin = time.perf_counter()
    subprocess.run(command, env=environment, stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL, check=True)
    return time.perf_counter() - begin


def measure(commands, runs, items):
    """Each of commands is a name, words and an environment. Its first run, which warms caches, does not count."""
    for _, words, environment in commands:
        seconds(words, environment)
    turns = commands * runs
    random.shuffle(turns)
    for name, words, environment in turns:
        yield {"name": name, "run_type": "iteration", "real_time": seconds(words, environment), "time_unit": "s",
               "peak_bytes": 0, "bytes": 0, "items": items}


def add_to_results(commands, runs, usage, items=0):
    """For a command line of PSF RESULTS.json: measures commands(PSF, FOLDER) and adds the times to the results."""
    if len(sys.argv) != 3:
        sys.exit(usage)
    psf, path = sys.argv[1:]
    with open(path, encoding="utf-8") as file:
        results = json.load(file)
    with tempfile.TemporaryDirectory() as folder:
        results["benchmarks"] += measure(list(commands(os.path.abspath(psf), pathlib.Path(folder))), runs, items)
    with open(path, "w", encoding="utf-8") as file:
        json.dump(results, file)
