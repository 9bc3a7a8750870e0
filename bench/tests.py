#!/usr/bin/env python3
"""Measures psf test beside its compilers and programs by hand, and adds that to results: tests.py PSF RESULTS.json

40 program blocks have 5 cases each. By hand are the commands by which the kit compiled their C files, word for word,
and the programs with their scripts, by one shell with nothing around them.
"""

import shlex
import shutil

from turns import EXAMPLE, add_to_results, kit_environment, seconds

BLOCKS, CASES = 40, 5
RUNS = 7

# A compiler that notes what it was told, as a line of a shell.
NOTING = """#!/bin/bash
printf '%q ' gcc "$@" >>{notes}
echo >>{notes}
exec gcc "$@"
"""


def make_blocks(folder):
    for number in range(BLOCKS):
        shutil.copy(EXAMPLE, folder / f"blocks/B{number}.PSF")
        for case in range(CASES):
            for suffix in (".events", ".expected"):
                shutil.copy(EXAMPLE.with_suffix(suffix), folder / f"blocks/B{number}.{case}{suffix}")


def by_hand(folder, compiles):
    """A shell's script of the compilers and all that they lead to."""
    programs = [f"{shlex.quote(str(folder / f'blocks/B{number}.out'))} --strict "
                f"{shlex.quote(str(folder / f'blocks/B{number}.{case}.events'))}"
                for number in range(BLOCKS) for case in range(CASES)]
    script = folder / "by-hand.sh"
    script.write_text("set -e\n" + "\n".join([*compiles, *programs]) + "\n", encoding="utf-8")
    return ["/bin/sh", str(script)]


def commands(psf, folder):
    """Three: (name, words, variables)."""
    (folder / "blocks").mkdir()
    make_blocks(folder)
    variables = kit_environment(folder)
    noting, notes = folder / "noting", folder / "notes"
    noting.write_text(NOTING.format(notes=notes), encoding="utf-8")
    noting.chmod(0o755)
    test = [psf, "test", str(folder / "blocks")]
    for _ in range(2):  # the first one also compiles the runtime
        notes.write_text("", encoding="utf-8")
        seconds(test, {**variables, "CC": str(noting)})
    compiles = [line for line in notes.read_text(encoding="utf-8").splitlines() if " -o " in line]
    assert len(compiles) == BLOCKS
    variables["CC"] = "gcc"
    yield "test/hand", by_hand(folder, compiles), variables
    yield "test/psf", test, variables
    yield "test/psf-2", [*test, "--jobs", "2"], variables


if __name__ == "__main__":
    add_to_results(commands, RUNS, __doc__, BLOCKS * CASES)
