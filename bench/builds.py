#!/usr/bin/env python3
"""Measures warm builds of an example beside its compiler by hand, and adds them to results: builds.py PSF RESULTS.json

By hand is the command by which the kit compiled and linked that C file, word for word, with nothing around it.
"""

import shutil

from turns import EXAMPLE, add_to_results, kit_environment, seconds

COMPILERS = ("gcc", "clang")
RUNS = 51

# A compiler that notes what it was told, each word behind a 0.
NOTING = """#!/bin/sh
printf '%s\\0' {compiler} "$@" >{notes}
exec {compiler} "$@"
"""


def commands(psf, folder):
    """Two of each compiler: (name, words, variables)."""
    shutil.copy(EXAMPLE, folder)
    variables = kit_environment(folder)
    build = [psf, "build", str(folder / EXAMPLE.name)]
    for compiler in COMPILERS:
        noting, notes = folder / f"noting-{compiler}", folder / f"notes-{compiler}"
        noting.write_text(NOTING.format(compiler=compiler, notes=notes), encoding="utf-8")
        noting.chmod(0o755)
        seconds(build, {**variables, "CC": str(noting)})
        yield f"build/{compiler}/hand", notes.read_text(encoding="utf-8").split("\0")[:-1], variables
        yield f"build/{compiler}/psf", build, {**variables, "CC": compiler}


if __name__ == "__main__":
    add_to_results(commands, RUNS, __doc__)
