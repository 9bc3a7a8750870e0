"""Program source files in real git repositories, as psf git-setup configures them."""

import os
import pathlib
import random
import re
import shutil
import subprocess

import pytest
from harness import EVENTS
from psf_harness import PSF, STRIDE, lines, not_on_windows, psf, shown, source

pytestmark = [not_on_windows("there is no git for it here"),
              pytest.mark.skipif(shutil.which("git") is None, reason="there is no git")]
HISTORIES = 200
TOGETHER = 10  # files of one history: git starts for them once, and psf for each
WORDS = ["Gauge", "Relay", "Pump", "Valve", "Lamp", "Motor", "Horn", "Fan"]


class Repository:
    """A new repository of a user who has nothing else configured."""

    def __init__(self, folder):
        self.folder = folder / "repository"
        self.folder.mkdir()
        self.env = {**{name: value for name, value in os.environ.items() if not name.startswith(("TESSALY_", "XDG_"))},
                    "PATH": f"{os.path.dirname(PSF)}:{os.environ['PATH']}", "HOME": str(folder),
                    "GIT_CONFIG_NOSYSTEM": "1", "GIT_AUTHOR_NAME": "A", "GIT_AUTHOR_EMAIL": "a", "LC_ALL": "C.UTF-8",
                    "GIT_COMMITTER_NAME": "A", "GIT_COMMITTER_EMAIL": "a"}
        self.git("init", "-q", "-b", "main")

    def git(self, *arguments, status=0, encoding="utf-8"):
        done = subprocess.run(["git", *arguments], cwd=self.folder, env=self.env, capture_output=True, timeout=120)
        assert done.returncode == status, (arguments, done.stdout, done.stderr)
        return done.stdout.decode(encoding, errors="replace")

    def setup(self, *options):
        result = psf("git-setup", *options, cwd=self.folder, env=self.env)
        assert (result.status, result.err) == (0, ""), result
        return result.out.decode()

    def commit(self, *names):
        self.git("add", *(names or ["-A"]))
        self.git("commit", "-q", "--allow-empty", "-m", "x")


@pytest.fixture
def repository(tmp_path):
    repository = Repository(tmp_path)
    repository.setup()
    return repository


def test_setup_says_what_it_did_and_does_it_once(tmp_path):
    repository = Repository(tmp_path)
    (repository.folder / ".gitattributes").write_bytes(b"*.txt text")
    said = repository.setup()
    assert "filter.psf.clean" in said and "merge.psf.driver" in said and ".gitattributes" in said
    files = [repository.folder / ".git/config", repository.folder / ".gitattributes"]
    assert files[1].read_text().startswith("*.txt text\n*.")
    before = [(path.read_bytes(), path.stat().st_ino) for path in files]
    assert repository.setup() == "Nothing to change.\n"
    assert [(path.read_bytes(), path.stat().st_ino) for path in files] == before
    asked = repository.git("check-attr", "text", "filter", "diff", "merge", "--", "a/X.PSF", "a/x.psf")
    assert asked.count("unset") == 2 and asked.count(": psf") == 6


def test_setup_for_all_repositories_of_a_user(tmp_path):
    repository = Repository(tmp_path)
    assert str(tmp_path / ".config/git/attributes") in repository.setup("--global")
    assert repository.setup("--global") == "Nothing to change.\n"
    assert not (repository.folder / ".gitattributes").exists()
    assert repository.git("config", "--get", "merge.psf.driver") == "psf merge --name %P %O %A %B\n"
    assert ": psf" in repository.git("check-attr", "merge", "--", "X.PSF")


def test_setup_outside_of_a_repository_is_4(tmp_path):
    result = psf("git-setup", cwd=tmp_path, env={"GIT_CEILING_DIRECTORIES": str(tmp_path.parent)})
    assert (result.status, result.out) == (4, b"")
    assert "no repository" in result.err


def test_setup_names_the_code_page_that_it_was_given(tmp_path):
    repository = Repository(tmp_path)
    repository.setup("--codepage", "1251")
    assert repository.git("config", "--get", "diff.psf.textconv") == "psf --codepage 1251 text\n"


def many_functions(count=48):
    return source([(f"Step{number}", f"void Step{number}(void)\r\n{{\r\n    Go({number});\r\n}}")
                   for number in range(count)])


def test_a_diff_after_an_added_function_shows_it_and_the_list_alone(repository):
    file = repository.folder / "Main.PSF"
    file.write_bytes(many_functions())
    repository.commit()
    for _ in range(3):
        psf("resave", file, file)  # the window's saves
    assert repository.git("diff", "--no-textconv") == ""
    psf("add", file, "Added")
    changed = [line for line in repository.git("diff", "--no-textconv").splitlines()
               if line[0] in "+-" and not line.startswith(("+++", "---"))]
    assert sorted(line.rstrip("\r").split("=S")[0] for line in changed) == sorted([
        "-NumFuncs= 48", "+NumFuncs= 49", "-FuncNames", "+FuncNames", "+[Added]", "+ProtoType=",
        "+FuncBody=void Added(void)", "+{", "+", "+}"])
    changed = [line for line in repository.git("diff").splitlines()
               if line[0] in "+-" and not line.startswith(("+++", "---"))]
    assert sorted(changed) == sorted(["+[functions/Added]", "+void Added(void)", "+{", "+", "+}", "+"])


def test_a_hunk_is_headed_by_the_member(repository):
    file = repository.folder / "Main.PSF"
    body = "void Step(void)\r\n{\r\n" + "    Go();\r\n" * 20 + "    Last();\r\n}"
    file.write_bytes(source([("First", "void First()\r\n{\r\n}"), ("Step", body)]))
    repository.commit()
    file.write_bytes(file.read_bytes().replace(b"Last()", "Größe()".encode("cp1252")))
    assert re.search(r"^@@ .* @@ \[?functions/Step\]?$", repository.git("diff"), re.M), repository.git("diff")
    assert "+    Größe();" in repository.git("diff").splitlines()
    assert re.search(r"^@@ .* @@ \[?Step\]?$", repository.git("diff", "--no-textconv"), re.M)


@pytest.mark.parametrize("autocrlf", ["true", "input", "false"])
def test_a_checkout_gives_back_the_bytes(repository, autocrlf):
    repository.git("config", "core.autocrlf", autocrlf)
    every = bytes(byte for byte in range(1, 256) if byte != 13)
    content = many_functions(3).replace(b"int x;", b"int x;\n\nint y;" + every)
    file = repository.folder / "Größe 1.PSF"
    file.write_bytes(content)
    repository.commit()
    file.unlink()
    repository.git("checkout", "--", ".")
    assert file.read_bytes().split(b"\r\n") == psf("tidy", "-", stdin=content).out.split(b"\r\n")
    assert shown(file)["references"] == psf_references(content)
    assert repository.git("status", "--porcelain") == ""


def psf_references(content):
    return psf("show", "-", "references", stdin=content).out.decode()


def test_what_does_not_load_is_committed_as_it_is(repository):
    file = repository.folder / "Cut.PSF"
    file.write_bytes(many_functions(2)[:-40])
    repository.commit()
    done = subprocess.run(["git", "show", "HEAD:Cut.PSF", "--no-textconv"], cwd=repository.folder, env=repository.env,
                          capture_output=True, check=True)
    assert done.stdout == many_functions(2)[:-40]
    assert "not all could be read" in repository.git("show", "HEAD", "--textconv")


# Random histories. A document is its references, its functions in order, and its events, all without last line breaks.

def text(randomness, name):
    words = [f"    {randomness.choice(WORDS)}({randomness.randrange(100)}); /* ä€{randomness.random()} */"
             for _ in range(randomness.randrange(8))]
    return "\n".join([f"void {name}(void)", "{", *words, "}"])


class Version:
    def __init__(self, references, functions, events):
        self.references, self.functions, self.events = references, dict(functions), dict(events)

    def copy(self):
        return Version(self.references, self.functions, self.events)

    def write(self, path, randomness):
        """As one of the ways to save would: line ends of texts of both kinds, and any number of empty lines behind."""
        def value(text):
            end = randomness.choice(["\n", "\r\n"]) if "\n" in text else "\n"
            return text.replace("\n", end) + "\r\n" * randomness.randrange(3)
        comment = "Comment= Do not modify this file! Doing so will produce unpredictable results!!!"
        content = lines("[BeginPSF]", comment, "FileName=", "[GVars]", value(self.references), "[GFuncs]",
                        f"NumFuncs= {len(self.functions)}",
                        "FuncNames=" + ",".join(self.functions), "[FuncCode]")
        for name, body in self.functions.items():
            content += lines(f"[{name}]", "ProtoType=" + randomness.choice(["", "\r\n", "\r\n\r\n"]),
                             "FuncBody=" + value(body))
        content += lines("[EventCode]")
        for name, body in self.events.items():
            content += lines(f"[{name}]", "FuncBody=" + value(body))
        path.write_bytes(content + lines("[EndPSF]"))

    @staticmethod
    def read(path):
        document = shown(path)
        assert document["status"] == 0

        def plain(text):
            return text.replace("\r\n", "\n").rstrip("\n")
        return Version(plain(document["references"]),
                       {f["name"]: plain(f["code"]) for f in document["functions"]},
                       {name: plain(text) for name, text in document["events"].items()})

    def members(self):
        return {"references": self.references, **{f"functions/{name}": body for name, body in self.functions.items()},
                **{f"events/{name}": body for name, body in self.events.items()}}


def change(version, name, randomness):
    """Another text for a member, most of it the same."""
    kind, _, name = name.rpartition("/")
    place = {"functions": version.functions, "events": version.events}.get(kind)
    old = place[name] if place else version.references
    new = old.replace("{\n", "{\n    " + randomness.choice(WORDS) + f"(); /* ö{randomness.random()} */\n", 1)
    new = new if new != old else old + f"\nint ü{randomness.randrange(10 ** 6)};"
    if place:
        place[name] = new
    else:
        version.references = new


def branch(base, own, prefix, moves, randomness):
    """What one branch makes of the document: only the members `own` are changed, deleted or renamed."""
    version = base.copy()
    for member in own:
        what = randomness.choice(["edit", "edit", "delete", "rename", "keep"])
        name = member.removeprefix("functions/")
        if what == "edit":
            change(version, member, randomness)
        elif what != "keep" and member.startswith("functions/"):
            body = version.functions.pop(name)
            if what == "rename":
                version.functions[prefix + name] = body.replace(name, prefix + name)
    for number in range(randomness.randrange(3)):
        name = f"{prefix}New{number}"
        version.functions[name] = text(randomness, name)
    if moves:
        names = list(version.functions)
        randomness.shuffle(names)
        version.functions = {name: version.functions[name] for name in names}
    return version


def expected_members(base, ours, theirs):
    merged = {}
    before, first, second = base.members(), ours.members(), theirs.members()
    for name in {**before, **first, **second}:
        if name in before:
            kept = [side for side in (first, second) if side.get(name) != before[name]]
            side = kept[0] if kept else before
        else:
            side = first if name in first else second
        if name in side:
            merged[name] = side[name]
    return merged


def new_base(randomness):
    functions = {f"{word}{number}": text(randomness, f"{word}{number}")
                 for number, word in enumerate(randomness.sample(WORDS, randomness.randrange(7)))}
    return Version("int ä;", functions, {name: text(randomness, name) for name in EVENTS})


def commit_versions(repository, versions):
    """Two branches of one base, the first one checked out. `versions` has (base, ours, theirs) by the seeds."""
    paths = {seed: repository.folder / f"{seed}.PSF" for seed in versions}
    randomness = random.Random(min(versions))
    repository.git("config", "core.autocrlf", ["true", "input", "false"][min(versions) // TOGETHER % 3])
    for which, start in enumerate([["-b", "base"], ["-b", "ours"], ["-f", "-b", "theirs", "base"]]):
        repository.git("checkout", "-q", *start)
        for seed, path in paths.items():
            versions[seed][which].write(path, randomness)
        repository.commit()
    repository.git("checkout", "-q", "-f", "ours")
    return paths


def disjoint_branches(randomness):
    base = new_base(randomness)
    members = list(base.members())
    randomness.shuffle(members)
    middle = len(members) // 2
    who_moves = randomness.choice(["nobody", "ours", "theirs"])
    ours = branch(base, members[:randomness.randrange(middle)], "A", who_moves == "ours", randomness)
    theirs = branch(base, members[middle:randomness.randrange(middle, len(members))], "B", who_moves == "theirs",
                    randomness)
    return (base, ours, theirs), theirs if who_moves == "theirs" else ours


@pytest.mark.parametrize("first", range(0, HISTORIES, TOGETHER * STRIDE))
def test_changes_of_different_members_never_conflict_and_both_are_there(repository, first):
    made = {seed: disjoint_branches(random.Random(seed)) for seed in range(first, first + TOGETHER)}
    paths = commit_versions(repository, {seed: versions for seed, (versions, _) in made.items()})
    repository.git("merge", "-q", "-m", "x", "theirs")
    for seed, ((base, ours, theirs), mover) in made.items():
        merged = Version.read(paths[seed])
        assert merged.members() == expected_members(base, ours, theirs), seed
        common = [name for name in mover.functions if name in base.functions and name in merged.functions]
        assert [name for name in merged.functions if name in common] == common, seed
        added = [name for name in theirs.functions if name not in ours.functions and name not in base.functions]
        assert list(merged.functions)[len(merged.functions) - len(added):] == added, seed
    for commit in ("HEAD", "HEAD^"):  # written by a merge, and by an add
        archive = subprocess.run(["git", "archive", f"--prefix={commit}/", commit], cwd=repository.folder,
                                 env=repository.env, capture_output=True, check=True)
        subprocess.run(["tar", "-x"], input=archive.stdout, cwd=repository.folder, check=True)
        result = psf("tidy", "--check", repository.folder / commit)
        assert (result.status, result.out, result.err) == (0, b"", "")
        assert len(list((repository.folder / commit).glob("*.PSF"))) == TOGETHER


def conflicting_branches(randomness):
    base = new_base(randomness)
    members = list(base.members())
    randomness.shuffle(members)
    both, mine, other = members[0], members[1:4], members[4:7]
    ours, theirs = (branch(base, own, prefix, False, randomness) for own, prefix in [(mine, "A"), (other, "B")])
    change(ours, both, randomness)
    change(theirs, both, randomness)
    return (base, ours, theirs), both


@pytest.mark.parametrize("first", range(1000, 1050, TOGETHER * STRIDE))
def test_a_conflict_is_in_the_right_text_alone_and_the_file_loads(repository, first):
    made = {seed: conflicting_branches(random.Random(seed)) for seed in range(first, first + TOGETHER)}
    paths = commit_versions(repository, {seed: versions for seed, (versions, _) in made.items()})
    done = subprocess.run(["git", "merge", "theirs"], cwd=repository.folder, env=repository.env,
                          capture_output=True, text=True)
    assert done.returncode == 1, done
    for seed, ((base, ours, theirs), both) in made.items():
        assert f"psf: {seed}.PSF: conflict in {both}\n" in done.stdout + done.stderr
        merged = Version.read(paths[seed]).members()
        expected = expected_members(base, ours, theirs)
        text = merged.pop(both)
        expected.pop(both)
        assert merged == expected, seed
        assert re.fullmatch(r"(?s).*^<<<<<<< ours\n.*^=======\n.*^>>>>>>> theirs.*", text, re.M), seed
        for side in (ours, theirs):
            assert set(side.members()[both].split("\n")) <= set(text.split("\n")), seed


def test_paths_with_blanks_and_umlauts_are_merged_and_named(repository):
    name = "Ventil 1/Größe & Co.PSF"
    path = repository.folder / name
    path.parent.mkdir()
    path.write_bytes(source([("Main", "void Main()\r\n{\r\n}")]))
    repository.commit()
    repository.git("checkout", "-q", "-b", "other")
    psf("set", path, "references", stdin=b"int theirs;")
    repository.commit()
    repository.git("checkout", "-q", "main")
    psf("set", path, "references", stdin=b"int ours;")
    repository.commit()
    done = subprocess.run(["git", "merge", "other"], cwd=repository.folder, env=repository.env, capture_output=True)
    assert done.returncode == 1
    assert f"psf: {name}: conflict in references".encode() in done.stdout + done.stderr
    assert pathlib.Path(path).read_bytes().count(b"<<<<<<< ours") == 1
