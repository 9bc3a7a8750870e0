"""Ends a program at random moments of its work, starts it again, and compares what comes back with what was typed.

The model knows every state that the document goes through, a key at a time. What comes back must be one of them, and
none before the last one that the window had taken and been idle behind.
"""

import collections
import os
import pathlib
import random
import re
import shutil
import time

from harness import example_file

# What a window that is idle for so many seconds holds is never lost; in large documents copies are rarer.
IDLE = 0.05
IDLE_LARGE = 1
SMALL = 200_000
DOCUMENT_ROUNDS = 24
OPERATIONS = 300  # at most, from one start to a kill
STEADY = 5        # what it may use more for a while, such as what a menu is drawn with
KINDS = ["typing", "selecting", "adding", "deleting", "saving", "building"]
LETTERS = "abcdefghijklmnopqrstuvwxyz0123456789 ;"
EVENTS = ["OnError", "OnFrame", "OnKey", "OnStart", "OnStop", "OnTimer", "OnTrigger", "OnSerial", "OnMsg"]


def use_of(process):
    """Memory and descriptors of a process of this system, as Rounds.use."""
    folder = pathlib.Path(f"/proc/{process}")
    resident = int((folder / "statm").read_text().split()[1]) * os.sysconf("SC_PAGE_SIZE") // 1024
    return {"KiB": resident, "descriptors": len(os.listdir(folder / "fd"))}


class Killed(Exception):
    """The program is gone, as it was to be."""


def members(data):
    """The texts of a saved document by their names, without line breaks at their ends; None when it is not whole."""
    text = data.decode("cp1252", "replace").replace("\r\n", "\n")
    head = re.match(r"\[BeginPSF\]\n.*?\n\[GVars\]\n(.*?)\[GFuncs\]\nNumFuncs= *(\d+)\nFuncNames=(.*?)\n\[FuncCode\]\n",
                    text, re.DOTALL)
    if not head or not text.endswith("[EndPSF]\n"):
        return None
    names = head[3].split(",") if head[3] else []
    found = {"References": head[1].rstrip("\n")}
    rest = text[head.end():]
    functions, _, events = rest.rpartition("[EventCode]\n")
    for own, names_there in ((functions, names), (events.removesuffix("[EndPSF]\n"), EVENTS)):
        for name, following in zip(names_there, [*names_there[1:], None]):
            end = own.find(f"\n[{following}]\n") + 1 if following else len(own)
            body = re.fullmatch(rf"\[{name}\]\n(?:ProtoType=.*?\n)?FuncBody=(.*)", own[:end], re.DOTALL)
            if not body or end == 0 and following:
                return None
            found[name] = body[1].rstrip("\n")
            own = own[end:]
    return found


def read_bytes(path):
    """b"" for a file that is not there, or not any more."""
    try:
        return path.read_bytes()
    except FileNotFoundError:
        return b""


def read_members(path):
    return members(read_bytes(path))


def origin(path):
    """What stands beside a copy, as {key: value}; {} when it cannot be read."""
    try:
        lines = path.read_text("utf-8").splitlines()
    except (OSError, UnicodeDecodeError):
        return {}
    return dict(line.split("=", 1) for line in lines if "=" in line)


def whole_copies(folder, process="*"):
    """The whole copies, each as (origin, texts), the newest last."""
    found = []
    for path in folder.glob(f"copy-{process}-*.origin"):
        told = origin(path)
        data = read_bytes(path.with_suffix(".PSF"))
        if told.get("copy", "").startswith(f"{len(data)} ") and members(data):
            found.append((told, members(data)))
    return sorted(found, key=lambda each: (int(each[0]["time"]), int(each[0]["number"])))


def newest_copy(*folders):
    """Its origin and texts; None where no folder has a copy."""
    found = [copy for folder in folders for copy in whole_copies(folder)]
    return max(found, key=lambda each: (int(each[0]["time"]), int(each[0]["number"])), default=None)


class Rounds:
    """The model, the choice of moments and the figures; what touches the program is the subclass's.

    open() starts the program with the document at `path`, and end() ends it. do_KIND() works the program and calls
    change() just before it sends the keys that change the document, took() once the window has taken all keys, and
    tick() whenever it waits. copies() are those of the program that runs, or ran last. come_back() starts the program
    again and returns the texts it shows then, and whether they are those of a copy. use() tells the memory in KiB and
    the numbers of other things that the program has, by their names.
    """

    def __init__(self, folder, recovery, seed):
        self.folder = folder
        self.recovery = recovery
        self.built = folder / "built"
        self.random = random.Random(seed)
        self.program = None
        self.path = self.next_path = None  # of the document, and of one that is being saved for the first time
        self.names_made = 0
        self.states = []
        self.taken = []  # when the window had taken what led to a state; None as long as it has not
        self.kill_at = None
        self.kind = None
        self.longest = dict.fromkeys(KINDS, 0.1)  # how long one takes, in seconds
        self.figures = collections.defaultdict(collections.Counter)
        self.operations = 0
        self.has_rests = True  # a user's; a program that is not killed between them needs none
        self.faults = []

    def fresh(self, size=0):
        """Ends the program, and starts it with a new file of about that size."""
        self.end()
        shutil.rmtree(self.recovery, ignore_errors=True)
        self.path = self.new_path()
        filler = b"/* " + b"x" * 60 + b" */\r\n"
        self.path.write_bytes(example_file("blink", ".PSF").read_bytes().replace(
            b"[GVars]\r\n", b"[GVars]\r\n" + filler * (size // len(filler))))
        self.open()
        self.begin(read_members(self.path))

    def new_path(self):
        self.names_made += 1
        return self.folder / f"b{self.names_made}.PSF"

    def files_left(self):
        """Whether a copy is whole, and whether a file is cut."""
        whole = any(texts in self.states for _, texts in self.copies())
        files = [path for path in (self.path, self.next_path) if path and path.exists()]
        return whole, any(read_members(path) not in self.states for path in files)

    # The model

    def begin(self, texts):
        self.states = [texts]
        self.taken = [0.0]

    def texts(self):
        return self.states[-1]

    def names(self):
        """Those of the functions, in their order."""
        return [name for name in self.texts() if name != "References" and name not in EVENTS]

    def change(self, name, text):
        """The document is about to have this text; None for a function that goes."""
        texts = dict(self.texts())
        if text is None:
            del texts[name]
        elif name in texts:
            texts[name] = text.rstrip("\n")
        else:  # behind the other functions
            events = {event: texts.pop(event) for event in EVENTS}
            texts |= {name: text.rstrip("\n"), **events}
        self.states.append(texts)
        self.taken.append(None)

    def took(self):
        now = time.monotonic()
        for i in range(len(self.taken) - 1, -1, -1):
            if self.taken[i] is not None:
                break
            self.taken[i] = now

    # A round

    def tick(self):
        if self.kill_at is not None and time.monotonic() >= self.kill_at:
            self.kill()
            raise Killed

    def wait(self, what, test, seconds=30):
        """As wait_until, but the program may be killed meanwhile."""
        deadline = time.monotonic() + seconds
        while True:
            answer = test()
            if answer:
                return answer
            self.tick()
            assert time.monotonic() < deadline, f"waited {seconds} s in vain for {what() if callable(what) else what}"
            time.sleep(0.002)

    def rest(self, most):
        until = time.monotonic() + self.random.uniform(0, most * self.has_rests)
        while time.monotonic() < until:
            self.tick()
            time.sleep(0.001)

    def operate(self, kind):
        begin = time.monotonic()
        self.kind = kind
        self.operations += 1
        getattr(self, "do_" + kind)()
        self.longest[kind] = max(0.9 * self.longest[kind], time.monotonic() - begin)

    def kinds(self):
        """Those that can be done now."""
        return [kind for kind in KINDS if kind != "deleting" or self.names()]

    def run(self, rounds, sizes=(0,), progress=lambda: None):
        """So many rounds; now and then with a new document, of one of these sizes."""
        for number in range(rounds):
            if number % DOCUMENT_ROUNDS == 0:
                self.fresh(self.random.choice(sizes))
            self.round(KINDS[number % len(KINDS)], self.random.choices(KINDS, k=self.random.randint(0, 3)))
            progress()

    def work(self, number):
        """So many operations, with a kill now and then. Prints what the program uses when it has done half of them and
        before its end, of each start; what it uses more then is a fault."""
        starts = 0
        while self.operations < number:
            if starts % 10 == 0:
                self.fresh()
            before = None
            self.has_rests = False
            count = min(OPERATIONS, number - self.operations)
            for done in range(count):
                is_full = len(self.names()) >= 20
                self.operate(self.random.choice([kind for kind in self.kinds() if kind != "adding" or not is_full]))
                if done == count // 2:
                    before = self.use()
                if done % 10 == 0:
                    self.begin(self.texts())  # what the model need not keep
            after = self.use()
            self.has_rests = True
            self.round(KINDS[starts % len(KINDS)])
            starts += 1
            use = ", ".join(f"{what} {before[what]} -> {after[what]}" for what in after)
            print(f"{self.operations:7} operations: {use}", flush=True)
            self.faults += [f"more {what}: {before[what]} -> {after[what]}" for what in after
                            if what != "KiB" and after[what] > before[what] + STEADY]

    def round(self, kind, before=()):
        """Does `before`, and then is killed at a random moment of `kind`."""
        self.kill_at = None
        for each in before:
            self.operate(each if each in self.kinds() else "typing")
        kind = kind if kind in self.kinds() else "adding"
        self.kill_at = time.monotonic() + self.random.uniform(0, 1.15 * self.longest[kind])
        try:
            self.operate(kind)
            while True:
                self.tick()
                time.sleep(0.001)
        except Killed:
            self.compare(time.monotonic())

    def compare(self, killed):
        self.kill_at = None
        whole, cut = self.files_left()
        idle = IDLE if sum(map(len, self.texts().values())) < SMALL else IDLE_LARGE
        sure = max(i for i, at in enumerate(self.taken) if at is not None and at + idle <= killed)
        maybe = max(i for i, at in enumerate(self.taken) if at is not None)
        texts, from_copy = self.come_back()
        same = [i for i, state in enumerate(self.states) if state == texts]
        figures = self.figures[self.kind]
        figures["rounds"] += 1
        figures["keys"] += len(self.states) - 1
        figures["by a copy"] += from_copy
        figures["cut, copy whole"] += cut and whole
        figures["damaged"] += cut and not whole
        is_kept = any(kept in self.states[sure:] for kept in map(read_members, self.recovery.glob("kept/*.PSF")))
        if not same or same[-1] < sure and is_kept:
            figures["only kept" if is_kept else "wrong"] += 1
        else:
            figures["lost"] += max(sure - same[-1], 0)
            figures["lost at once"] += max(maybe - same[-1], 0)
        if not same or sure > same[-1] or cut and not whole:
            self.faults.append(f"{self.kind}: {len(self.states)} states, sure {sure} taken {maybe} back {same[-1:]}, "
                               f"cut {cut}, copy whole {whole}, from a copy {from_copy}, "
                               f"taken {[round(killed - at, 4) for at in self.taken[sure:] if at]} s before the end")
        if not same and not is_kept:
            self.faults.append(self.difference(texts, self.states[-1]))
        if texts is None:
            self.fresh()
        else:
            self.begin(texts)

    @staticmethod
    def difference(texts, state):
        if texts is None:
            return "no document"
        return "; ".join(f"{name}: {str(texts.get(name))[:70]!r} for {str(state.get(name))[:70]!r}"
                         for name in sorted({*texts, *state}) if texts.get(name) != state.get(name))

    def table(self):
        columns = ["rounds", "keys", "lost", "lost at once", "by a copy", "cut, copy whole", "damaged", "wrong",
                   "only kept"]
        rows = [(kind, self.figures[kind]) for kind in KINDS]
        rows.append(("all", sum(self.figures.values(), collections.Counter())))
        lines = [f"{'killed while':12}" + "".join(f"{column:>17}" for column in columns)]
        return "\n".join(lines + [f"{kind:12}" + "".join(f"{row[column]:17}" for column in columns)
                                  for kind, row in rows])
