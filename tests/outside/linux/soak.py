"""script/soak: soak.py linux ROUNDS [SEED], soak.py operations NUMBER [SEED]."""

import pathlib
import random
import sys
import tempfile

from harness import ROOT, screenshot
from kill_rounds import KINDS
from linux_rounds import LinuxRounds

SIZES = (0, 0, 20_000, 100_000, 180_000)
OPERATIONS = 300  # from one start to a kill


def operations(rounds, number):
    """Prints what the program uses before its first operations and before its end, of each start."""
    use = []
    while rounds.operations < number:
        if len(use) % 10 == 0:
            rounds.fresh()
        before = None
        rounds.has_rests = False
        for done in range(OPERATIONS):
            is_full = len(rounds.names()) >= 20
            rounds.operate(rounds.random.choice([kind for kind in rounds.kinds() if kind != "adding" or not is_full]))
            if done == OPERATIONS // 10:
                before = rounds.use()
            if done % 10 == 0:
                rounds.begin(rounds.texts())  # what the model need not keep
        after = rounds.use()
        rounds.has_rests = True
        rounds.round(KINDS[len(use) % len(KINDS)])
        use.append((before, after))
        print(f"{rounds.operations:7} operations: {before[0]:7} -> {after[0]:7} KiB, {before[1]:3} -> {after[1]:3} "
              f"descriptors, {len(list(rounds.recovery.rglob('*')))} files of recovery", flush=True)
    return [f"more descriptors: {before} -> {after}" for before, after in use if after[1] > before[1] + 2]


def main():
    what, number, *seed = sys.argv[1:]
    seed = int(seed[0]) if seed else random.randrange(1_000_000)
    print(f"script/soak {what} {number} {seed}", flush=True)
    with tempfile.TemporaryDirectory() as folder:
        rounds = LinuxRounds(pathlib.Path(folder), seed)
        try:
            if what == "operations":
                rounds.faults += operations(rounds, int(number))
            else:
                rounds.run(int(number), SIZES)
        except Exception:
            screenshot(ROOT / "build/screenshots/soak.png")
            raise
        finally:
            rounds.end()
            print(f"{rounds.operations} operations\n{rounds.table()}")
            print(*rounds.faults, sep="\n")
    sys.exit(1 if rounds.faults else 0)


main()
