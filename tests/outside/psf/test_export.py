"""psf export, import and rename."""

import pytest
from harness import EVENTS, EXAMPLES, ROOT, example_file
from psf_harness import psf, shown, source

CASES = sorted((ROOT / "tests/cases").glob("*/in.PSF"))
MAIN = "void Main(void)\r\n{\r\n}"


@pytest.fixture
def file(tmp_path):
    path = tmp_path / "Main.PSF"
    path.write_bytes(source([("Main", "void Main(void)", MAIN), ("Größe", "void Größe()\n{\n}\r\n\r\n")]))
    return path


def test_an_export_is_a_file_for_each_member(file, tmp_path):
    folder = tmp_path / "out"
    result = psf("export", file, folder)
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert sorted(str(path.relative_to(folder)) for path in folder.rglob("*") if path.is_file()) == sorted(
        ["order", "references.c", "functions/Main.c", "functions/Gr%C3%B6%C3%9Fe.c",
         *(f"events/{event}.c" for event in EVENTS)])
    assert (folder / "functions/Main.c").read_bytes() == MAIN.encode() + b"\r\n"
    assert (folder / "functions/Gr%C3%B6%C3%9Fe.c").read_bytes().decode() == "void Größe()\n{\n}\r\n\r\n\r\n"
    assert (folder / "order").read_text().splitlines() == ["Main\tvoid Main(void)%0D%0A", "Gr%C3%B6%C3%9Fe"]


def test_a_folder_that_cannot_be_made_is_said(file, tmp_path):
    (tmp_path / "out").write_text("a file")
    result = psf("export", file, tmp_path / "out")
    assert (result.status, result.err) == (
        255, f"psf: {tmp_path}/out/functions: the folder cannot be made: Not a directory\n")


@pytest.mark.parametrize("path", [*CASES, *(example_file(name, ".PSF") for name in EXAMPLES)],
                         ids=lambda path: path.parent.name)
def test_an_import_of_an_export_is_the_same_document(path, tmp_path):
    if psf("export", path, tmp_path / "out").status == 2:
        assert not (tmp_path / "out").exists()
        return
    assert psf("import", tmp_path / "out", tmp_path / "x.PSF").status == 0
    before, after = shown(path), shown(tmp_path / "x.PSF")
    before["references"] = before["references"] or "\r\n"  # no line becomes an empty one
    before["events"] = {name: text if text.endswith("\n") else text + "\r\n"  # which is the one of a new document
                        for name, text in before["events"].items()}
    assert after == before


def test_names_that_are_no_names_of_files_survive(tmp_path):
    names = ["a/b", "..", "con", "COM1.x", "a b", "%41", "a*", "-", "]["]
    (tmp_path / "x.PSF").write_bytes(source([(name, f"void f{number}()\r\n{{}}") for number, name in enumerate(names)]))
    assert psf("export", tmp_path / "x.PSF", tmp_path / "out").status == 0
    assert sorted(path.name for path in tmp_path.iterdir()) == ["out", "x.PSF"]
    assert psf("import", tmp_path / "out", tmp_path / "y.PSF").status == 0
    assert shown(tmp_path / "y.PSF") == shown(tmp_path / "x.PSF")


def test_a_changed_file_is_a_changed_member_with_or_without_a_line_end(file, tmp_path):
    psf("export", file, tmp_path / "out")
    for text in [b"void Main(void)\n{\n    x;\n}", b"void Main(void)\n{\n    x;\n}\n"]:
        (tmp_path / "out/functions/Main.c").write_bytes(text)
        assert psf("import", tmp_path / "out", file).status == 0
        assert psf("show", file, "functions/Main").out == b"void Main(void)\n{\n    x;\n}\r\n"


def test_a_second_export_takes_the_files_of_functions_away_that_are_gone(file, tmp_path):
    psf("export", file, tmp_path / "out")
    (tmp_path / "out/notes.txt").write_bytes(b"mine")
    psf("delete", file, "Main")
    assert psf("export", file, tmp_path / "out").status == 0
    assert not (tmp_path / "out/functions/Main.c").exists()
    assert (tmp_path / "out/notes.txt").exists()


@pytest.mark.parametrize("name, status", [("references.c", 4), ("functions/Main.c", 4), ("events/OnKey.c", 4),
                                          ("order", 4)])
def test_a_missing_file_is_4_and_nothing_is_changed(file, tmp_path, name, status):
    psf("export", file, tmp_path / "out")
    (tmp_path / "out" / name).unlink()
    before = file.read_bytes()
    result = psf("import", tmp_path / "out", file)
    assert (result.status, len(result.err.splitlines())) == (status, 1)
    assert name in result.err
    assert file.read_bytes() == before


def test_what_is_not_utf_8_or_collides_is_refused(file, tmp_path):
    psf("export", file, tmp_path / "out")
    (tmp_path / "out/functions/Main.c").write_bytes(b"\xff")
    before = file.read_bytes()
    assert psf("import", tmp_path / "out", file).status == 64
    (tmp_path / "out/functions/Main.c").write_bytes(b"x")
    (tmp_path / "out/order").write_bytes(b"Main\nMain\n")
    assert psf("import", tmp_path / "out", file).status == 7
    assert file.read_bytes() == before


# rename

def test_rename_changes_the_list_the_header_and_the_stored_prototype(tmp_path):
    path = tmp_path / "x.PSF"
    path.write_bytes(source([("First", "a{}"), ("Main", "void Main(int Main2, Main *m)", MAIN), ("Last", "b{}")]))
    result = psf("rename", path, "Main", "Other")
    assert (result.status, result.out, result.err) == (0, b"", "")
    functions = shown(path)["functions"]
    assert [function["name"] for function in functions] == ["First", "Other", "Last"]
    assert functions[1]["prototype"].startswith("void Other(int Main2, Other *m)")
    assert functions[1]["code"].startswith(MAIN)
    assert b"FuncNames=First,Other,Last\r\n" in path.read_bytes() and b"[Other]\r\n" in path.read_bytes()


@pytest.mark.parametrize("old, new, status", [
    ("None", "New", 4), ("main", "New", 4), ("Main", "1x", 64), ("Main", "a_b", 64), ("Main", "", 64),
    ("Main", "Tick", 7), ("Main", "TICKSLOW", 7), ("TickSlow", "Ma", 7)])
def test_a_rename_that_cannot_be_changes_nothing(tmp_path, old, new, status):
    path = tmp_path / "x.PSF"
    path.write_bytes(source([("TickSlow", "a{}"), ("Main", "b{}")]))
    before = path.read_bytes()
    result = psf("rename", path, old, new)
    assert (result.status, result.out, len(result.err.splitlines())) == (status, b"", 1)
    assert path.read_bytes() == before


def test_a_rename_that_would_have_a_later_function_dropped_is_refused(tmp_path):
    path = tmp_path / "x.PSF"
    path.write_bytes(source([("First", "a{}"), ("Tick", "b{}")]))
    assert psf("rename", path, "First", "TickSlow").status == 7
    assert psf("rename", path, "Tick", "tick").status == 0
    assert [function["name"] for function in shown(path)["functions"]] == ["First", "tick"]
