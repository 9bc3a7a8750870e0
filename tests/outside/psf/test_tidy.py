"""psf tidy, text and merge without git: the normal form, and what becomes of two versions."""

import os
import random
import re
import shutil

import pytest
from harness import EVENTS, EXAMPLES, ROOT, example_file
from psf_harness import not_on_windows, psf, shown, source

FUNCTIONS = [("Main", "void Main(void)\r\n\r\n", "void Main(void)\r\n{\r\n}\r\n\r\n"),
             ("Other", "void Other()\r\n{\r\n}\n\n")]
UNTIDY = source(FUNCTIONS, references="int x;\r\n\r\n")
TIDY = source([("Main", "void Main(void)", "void Main(void)\r\n{\r\n}"), ("Other", "void Other()\r\n{\r\n}")]).replace(
    b"Comment= c", b"Comment= Do not modify this file! Doing so will produce unpredictable results!!!")
CASES = sorted((ROOT / "tests/cases").glob("*/in.PSF"))


def without_ends(document):
    if isinstance(document, str):
        return document.rstrip("\r\n")
    if isinstance(document, dict):
        return {key: without_ends(value) for key, value in document.items()}
    return [without_ends(value) for value in document] if isinstance(document, list) else document


# tidy

def test_texts_and_prototypes_lose_the_empty_lines_at_their_ends(tmp_path):
    path = tmp_path / "x.PSF"
    path.write_bytes(UNTIDY)
    result = psf("tidy", path)
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert path.read_bytes() == TIDY


def test_from_standard_input_to_standard_output():
    result = psf("tidy", "-", stdin=UNTIDY)
    assert (result.status, result.out, result.err) == (0, TIDY, "")


def test_check_only_tells(tmp_path):
    path = tmp_path / "x.PSF"
    path.write_bytes(TIDY)
    assert psf("tidy", "--check", path).status == 0
    path.write_bytes(TIDY.replace(b"int x;\r\n", b"int x;\r\n\r\n"))
    result = psf("tidy", "--check", "x.PSF", cwd=tmp_path)
    assert (result.status, result.err) == (1, "")
    assert result.out == b"x.PSF:6: warning: not in normal form from here on\n"
    assert path.read_bytes() == TIDY.replace(b"int x;\r\n", b"int x;\r\n\r\n")
    result = psf("tidy", "--check", "--name", "y.PSF", "-", stdin=UNTIDY)
    assert (result.status, result.out) == (1, b"y.PSF:2: warning: not in normal form from here on\n")


def test_a_tidy_file_is_not_written(tmp_path):
    path = tmp_path / "x.PSF"
    path.write_bytes(TIDY)
    before = path.stat()
    assert psf("tidy", path).status == 0
    assert (path.stat().st_ino, path.stat().st_mtime_ns) == (before.st_ino, before.st_mtime_ns)


def test_several_files_and_folders(tmp_path):
    for name in ["a/x.PSF", "a/y.psf", "z.PSF"]:
        (tmp_path / name).parent.mkdir(exist_ok=True)
        (tmp_path / name).write_bytes(UNTIDY)
    assert psf("tidy", "z.PSF", "a", cwd=tmp_path).status == 0
    assert {path.read_bytes() for path in tmp_path.glob("**/*.*")} == {TIDY}


def test_what_does_not_load_stays_and_the_others_are_done(tmp_path):
    (tmp_path / "bad.PSF").write_bytes(UNTIDY[:-30])
    (tmp_path / "good.PSF").write_bytes(UNTIDY)
    result = psf("tidy", "bad.PSF", "good.PSF", cwd=tmp_path)
    assert (result.status, result.err) == (2, "psf: bad.PSF: not a complete PSF file\n")
    assert (tmp_path / "bad.PSF").read_bytes() == UNTIDY[:-30]
    assert (tmp_path / "good.PSF").read_bytes() == TIDY
    result = psf("tidy", "-", stdin=UNTIDY[:-30])
    assert (result.status, result.out) == (2, b"")


def test_the_documents_stay_and_saves_add_nothing(tmp_path):
    """All files in one folder: a start takes longer than all of them."""
    before = {}
    for path in [*CASES, *(example_file(name, ".PSF") for name in EXAMPLES)]:
        shutil.copy(path, tmp_path / f"{path.parent.name}.PSF")
        before[path.parent.name] = shown(path)
    told = psf("tidy", ".", cwd=tmp_path).err
    tidy = {}
    for name, document in before.items():
        path = tmp_path / f"{name}.PSF"
        if document["status"]:
            assert f"psf: ./{name}.PSF: not a complete PSF file\n" in told
            path.unlink()
            continue
        assert without_ends(shown(path)) == without_ends(document), name
        tidy[path] = path.read_bytes()
        for _ in range(3):
            psf("resave", path, path)
    assert len(told.splitlines()) + len(tidy) == len(before)
    for path in tidy:
        path.rename(path.with_suffix(".saved.PSF"))
        path.write_bytes(tidy[path])
    assert psf("tidy", ".", cwd=tmp_path).status == 0
    for path, content in tidy.items():
        assert path.read_bytes() == path.with_suffix(".saved.PSF").read_bytes() == content, path.name


def test_a_text_that_would_become_another_one_is_refused():
    # The second function is dropped, and then a line in the first is the header of the third.
    content = source([("Main", "void Main()\r\n{\r\n[Last]\r\n}"), ("main", "x{}"), ("Last", "void Last()\r\n{\r\n}")])
    result = psf("tidy", "-", stdin=content)
    assert (result.status, result.out) == (255, b"")
    assert "normal form" in result.err
    assert shown("-", stdin=content)["functions"][0]["code"].count("[Last]") == 1


def variants(randomness, count):
    """Files that are in normal form, nearly so, or hardly files any more."""
    bases = [TIDY, UNTIDY, *(psf("tidy", "-", stdin=example_file(name, ".PSF").read_bytes()).out for name in EXAMPLES)]
    odd = [b"", b"[EventCode]", b"[EndPSF]", b"[Main]", b"[Other]", b"[OnKey]", b"FuncBody=x", b"x FuncBody=y", b"\n",
           b"ProtoType=", b"NumFuncs= 1", b"NumFuncs=2", b"FuncNames=Main,main", "ä€{".encode("cp1252"), b"\x81[", b" "]
    for _ in range(count):
        found = randomness.choice(bases).split(b"\r\n")
        for _ in range(randomness.randrange(4)):
            place = randomness.randrange(len(found) - 1)
            change = randomness.randrange(5)
            if change == 0:
                found.insert(place, randomness.choice(odd))
            elif change == 1:
                found[place] = randomness.choice([b"", b"Body=", found[place].lower()]) + found[place]
            elif change == 2:
                found[place:place + 2] = [found[place] + randomness.choice([b"\r", b"\n", b""]) + found[place + 1]]
            elif change == 3:
                found[place:place] = found[place:place + randomness.randrange(5)]
            else:
                del found[place:place + randomness.randrange(3)]
        yield b"\r\n".join(found)


def test_check_tells_of_exactly_the_files_that_tidy_changes_and_where(tmp_path):
    contents = {f"{number:03}.PSF": content for number, content in enumerate(variants(random.Random(3), 600))}
    (tmp_path / "x").mkdir()
    for name, content in contents.items():
        (tmp_path / "x" / name).write_bytes(content)
    warnings = psf("tidy", "--check", "x", cwd=tmp_path).out.decode().splitlines()
    told = dict(line.split(": ")[0].split(":") for line in warnings)
    psf("tidy", "x", cwd=tmp_path)
    changed = {}
    for name, content in contents.items():
        tidy = (tmp_path / "x" / name).read_bytes()
        if tidy != content:
            same = content[:len(os.path.commonprefix([content, tidy]))]
            number = len(re.findall(rb"\r(?!\n)|\n", same)) + 1
            # A CR whose LF is missing in the other file ends a line or not yet.
            changed["x/" + name] = {str(number), str(number - 1)} if same.endswith(b"\r") else {str(number)}
    assert 100 < len(changed) < 400
    assert list(told) == list(changed)
    assert all(told[name] in changed[name] for name in told)


# text

def test_text_has_all_members_with_their_names(tmp_path):
    (tmp_path / "x.PSF").write_bytes(source([("Main", "void Größe()\r\n{\n\tx;\r\n}\r\n\r\n")]))
    assert psf("text", tmp_path / "x.PSF").out.decode() == (
        "[references]\nint x;\n\n[functions/Main]\nvoid Größe()\n{\n\tx;\n}\n"
        + "".join(f"\n[events/{event}]\nvoid {event}()\n{{\n}}\n" for event in EVENTS))


def test_text_of_a_file_that_does_not_load_is_what_could_be_read(tmp_path):
    (tmp_path / "x.PSF").write_bytes(source(FUNCTIONS, events=EVENTS[:3], end=None))
    result = psf("text", tmp_path / "x.PSF")
    assert (result.status, result.err) == (0, "")
    assert b"[functions/Main]\nvoid Main(void)\n{\n}\n\n[functions/Other]" in result.out
    # Defaults were not read, nor was what the end of the file has cut off.
    assert result.out.endswith(b"\n[events/OnFrame]\nvoid OnFrame()\n{\n}\n"
                               b"\n(not all could be read: not a complete PSF file)\n")
    (tmp_path / "x.PSF").write_bytes(source(FUNCTIONS).split(b"[GFuncs]")[0])
    assert psf("text", tmp_path / "x.PSF").out == (
        b"[references]\nint x;\n\n(not all could be read: not a complete PSF file)\n")
    (tmp_path / "x.PSF").write_bytes(b"")
    result = psf("text", tmp_path / "x.PSF")
    assert (result.status, result.out) == (0, b"(not all could be read: not a complete PSF file)\n")
    result = psf("text", tmp_path / "none.PSF")
    assert (result.status, result.out) == (2, b"")


# merge

def merge(tmp_path, base, ours, theirs, *options):
    for name, content in [("base", base), ("ours", ours), ("theirs", theirs)]:
        (tmp_path / name).write_bytes(content)
    return psf("merge", *options, "base", "ours", "theirs", cwd=tmp_path)


def texts(tmp_path):
    document = without_ends(shown(tmp_path / "ours"))
    return {"references": document["references"], **{f["name"]: f["code"] for f in document["functions"]}}


ONE = [("Main", "void Main()\r\n{\r\n    a;\r\n    b;\r\n    c;\r\n}")]


def with_main(text):
    return source([("Main", text)])


def test_both_changes_of_one_text_are_taken_where_they_are_apart(tmp_path):
    result = merge(tmp_path, source(ONE), with_main("void Main()\r\n{\r\n    A;\r\n    b;\r\n    c;\r\n}"),
                   with_main("void Main()\r\n{\r\n    a;\r\n    b;\r\n    C;\r\n}\r\n\r\n"))
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert texts(tmp_path)["Main"] == "void Main()\r\n{\r\n    A;\r\n    b;\r\n    C;\r\n}"
    assert psf("tidy", "--check", tmp_path / "ours").status == 0


def test_line_ends_alone_are_no_change_that_conflicts(tmp_path):
    result = merge(tmp_path, source(ONE), with_main(ONE[0][1].replace("\r\n", "\n").replace("a;", "A;")),
                   with_main(ONE[0][1].replace("c;", "C;").replace("a;", "A;")))
    assert (result.status, result.err) == (0, "")
    assert texts(tmp_path)["Main"].split() == "void Main() { A; b; C; }".split()


def test_a_conflict_is_named_and_marked_in_its_text(tmp_path):
    result = merge(tmp_path, source(ONE), with_main(ONE[0][1].replace("b;", "ours;")),
                   with_main(ONE[0][1].replace("b;", "theirs;")))
    assert (result.status, result.out, result.err) == (1, b"", "psf: ours: conflict in functions/Main\n")
    assert texts(tmp_path)["Main"] == ("void Main()\r\n{\r\n    a;\r\n<<<<<<< ours\r\n    ours;\r\n=======\r\n"
                                       "    theirs;\r\n>>>>>>> theirs\r\n    c;\r\n}")
    assert b"[conflict-marker]" in psf("check", "--lint", tmp_path / "ours").out
    result = merge(tmp_path, source(ONE), with_main("x{}"), with_main("y{}"), "--name", "a/Main.PSF")
    assert result.err == "psf: a/Main.PSF: conflict in functions/Main\n"


@pytest.mark.parametrize("deleted", ["ours", "theirs"])
def test_deleted_here_and_changed_there_is_a_conflict(tmp_path, deleted):
    changed = with_main(ONE[0][1].replace("b;", "B;"))
    result = merge(tmp_path, source(ONE), *([source(), changed] if deleted == "ours" else [changed, source()]))
    assert (result.status, result.err) == (1, "psf: ours: conflict in functions/Main\n")
    assert "    B;\r\n" in texts(tmp_path)["Main"]
    assert texts(tmp_path)["Main"].count("=======") == 1


def test_deleted_here_and_left_alone_there_is_deleted(tmp_path):
    for sides in ([source(), source(ONE)], [source(ONE), source()], [source(), source()]):
        assert merge(tmp_path, source(ONE), *sides).status == 0
        assert list(texts(tmp_path)) == ["references"]


def test_functions_that_theirs_added_come_behind_those_of_ours(tmp_path):
    add = [("New" + name, f"void New{name}()\r\n{{\r\n}}") for name in "ABCD"]
    assert merge(tmp_path, source(ONE), source([*add[:2], *ONE]), source([add[3], *ONE, add[2]])).status == 0
    assert list(texts(tmp_path)) == ["references", "NewA", "NewB", "Main", "NewD", "NewC"]


def test_the_same_function_added_twice_is_one(tmp_path):
    assert merge(tmp_path, source(), source(ONE), source(ONE)).status == 0
    assert texts(tmp_path)["Main"] == ONE[0][1]
    result = merge(tmp_path, source(), source(ONE), with_main(ONE[0][1].replace("b;", "B;")))
    assert result.status == 1
    assert texts(tmp_path)["Main"].startswith("void Main()\r\n{\r\n    a;\r\n<<<<<<< ours\r\n    b;\r\n=======")


def test_names_that_would_collide_on_loading_lose_no_function(tmp_path):
    def function(name):
        return name, f"void {name}()\r\n{{\r\n}}"
    theirs = source([function("Tick"), function("X")])
    assert merge(tmp_path, source(), source([function("TickSlow")]), theirs).status == 0
    assert list(texts(tmp_path)) == ["references", "Tick", "TickSlow", "X"]
    result = merge(tmp_path, source(), source([function("Tick")]), source([function("TICK")]))
    assert (result.status, result.err) == (1, "psf: ours: conflict in functions/Tick\n")
    assert "void TICK()" in texts(tmp_path)["Tick"] and "void Tick()" in texts(tmp_path)["Tick"]


@pytest.mark.parametrize("broken", range(3))
def test_a_side_that_does_not_load_leaves_ours_alone(tmp_path, broken):
    sides = [source(ONE), source(ONE), with_main("x{}")]
    sides[broken] = sides[broken][:-30]
    result = merge(tmp_path, *sides)
    assert result.status == 2
    assert result.err.startswith("psf: " + ["base", "ours", "theirs"][broken] + ": ")
    assert (tmp_path / "ours").read_bytes() == sides[1]


def test_a_merge_is_the_same_from_both_sides_but_for_the_order(tmp_path):
    randomness = random.Random(7)
    for _ in range(20):
        lines = [f"    line{number};" for number in range(12)]
        sides = []
        for side in "AB":
            changed = list(lines)
            for place in randomness.sample(range(0, 12, 4), 2):
                changed[place + (side == "B") * 2] += side
            sides.append(with_main("\r\n".join(["void Main()", "{", *changed, "}"])))
        base = with_main("\r\n".join(["void Main()", "{", *lines, "}"]))
        assert merge(tmp_path, base, *sides).status == 0
        first = texts(tmp_path)
        assert merge(tmp_path, base, *reversed(sides)).status == 0
        assert texts(tmp_path) == first
        assert first["Main"].count("A") == 2 and first["Main"].count("B") == 2


@not_on_windows("no modes")
def test_merge_keeps_the_mode_of_ours(tmp_path):
    (tmp_path / "ours").write_bytes(b"")
    (tmp_path / "ours").chmod(0o640)
    merge(tmp_path, source(ONE), source(ONE), with_main("x{}"))
    assert (tmp_path / "ours").stat().st_mode & 0o777 == 0o640
