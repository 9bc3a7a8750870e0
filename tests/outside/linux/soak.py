"""script/soak: soak.py linux ROUNDS [SEED], soak.py operations NUMBER [SEED]."""

import pathlib
import random
import sys
import tempfile

from harness import ROOT, screenshot
from linux_rounds import LinuxRounds

SIZES = (0, 0, 20_000, 100_000, 180_000)


def main():
    what, number, *seed = sys.argv[1:]
    seed = int(seed[0]) if seed else random.randrange(1_000_000)
    print(f"script/soak {what} {number} {seed}", flush=True)
    with tempfile.TemporaryDirectory() as folder:
        rounds = LinuxRounds(pathlib.Path(folder), seed)
        try:
            if what == "operations":
                rounds.work(int(number))
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
