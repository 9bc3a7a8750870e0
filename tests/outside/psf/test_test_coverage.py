"""psf test --coverage: which lines of the members ran, by both compilers' gcov."""

import shutil
import xml.etree.ElementTree as xml

import pytest
from psf_harness import not_on_windows, source
from tap_harness import Place, is_valid

pytestmark = not_on_windows("its compilers and programs are those of Linux")
KEY = """void OnKey(char key)
{
    if (key == 'a')
        Print("a");
    else if (key == 'b')
        Flip(key);
    else
        Print("ä");
}
"""
FLIP = "void Flip(char key)\n{\n    /* ä */ Print(\"flipped\");\n\n    Print(\"again\");\n}"


@pytest.fixture(params=["gcc", "clang"])
def compiler(request):
    return request.param


@pytest.fixture
def kit(tmp_path):
    place = Place(tmp_path, kit=True)
    place.document("a/Blink.PSF", {"functions/Flip": FLIP, "functions/Never": FLIP.replace("Flip", "Never"),
                                   "events/OnKey": KEY})
    return place


def covered(place, *arguments, compiler="gcc", **options):
    place.variables = {"CC": compiler, **options}
    result = place.test(*arguments)
    return result, dict(line.split(": ", 1) for line in result.comments)


def test_each_member_has_the_lines_that_no_case_ran(kit, compiler):
    kit.write("a/Blink.a.events", "key a\n")
    _, found = covered(kit, "--coverage", "a", compiler=compiler)
    assert found["a/Blink.PSF:events/OnKey"].endswith(" lines ran, not 5-8")
    assert found["a/Blink.PSF:functions/Flip"] == "0 of 4 lines ran, not 1-6"
    kit.write("a/Blink.b.events", "key b\n")
    kit.write("a/Blink.b.expected", "another")
    result, found = covered(kit, "--coverage", "--jobs", "2", "a", compiler=compiler)
    assert result.passed == [True, False]  # what a case that fails has run counts
    assert found["a/Blink.PSF:events/OnKey"].endswith(" lines ran, not 8")
    assert found["a/Blink.PSF:functions/Flip"] == "4 of 4 lines ran"
    assert found["a/Blink.PSF:functions/Never"] == "0 of 4 lines ran, not 1-6"


def test_without_the_option_nothing_is_told_and_nothing_noted(kit):
    kit.write("a/Blink.events", "key a\n")
    result, found = covered(kit, "a")
    assert (result.status, found) == (0, {})
    assert not list(kit.folder.rglob("*.gc*"))


def test_the_xml_has_the_lines_of_the_file(kit, compiler):
    kit.write("a/Blink.events", "key a\nkey a\n")
    result, _ = covered(kit, "--coverage=coverage.xml", ".", compiler=compiler)
    assert result.status == 0
    assert is_valid(kit.folder / "coverage.xml", "cobertura.dtd")
    root = xml.parse(kit.folder / "coverage.xml").getroot()
    assert root.find("sources/source").text == str(kit.folder)
    text = (kit.folder / "a/Blink.PSF").read_text(encoding="cp1252").split("\n")
    hits = {}
    for each in root.iter("class"):
        assert each.get("filename") == "a/Blink.PSF"
        for line in each.iter("line"):
            hits[each.get("name"), text[int(line.get("number")) - 1].strip()] = int(line.get("hits"))
    assert hits["events/OnKey", 'Print("a");'] == 2
    assert hits["events/OnKey", "Flip(key);"] == hits["events/OnKey", 'Print("ä");'] == 0
    assert hits["functions/Flip", 'Print("again");'] == 0
    assert hits["functions/Flip", '/* ä */ Print("flipped");'] == 0
    lines = [line for each in root.iter("class") for line in each.iter("line")]
    assert int(root.get("lines-valid")) == len(lines)
    assert int(root.get("lines-covered")) == sum(line.get("hits") != "0" for line in lines)
    assert float(root.get("line-rate")) == pytest.approx(
        int(root.get("lines-covered")) / int(root.get("lines-valid")), abs=1e-4)


def test_counts_of_the_build_before_do_not_stay(kit):
    kit.write("a/Blink.events", "key b\n")
    covered(kit, "--coverage", "a")
    kit.write("a/Blink.events", "key a\n")
    _, found = covered(kit, "--coverage", "a")
    assert found["a/Blink.PSF:functions/Flip"].startswith("0 of 4")


def test_the_command_for_gcov_can_be_chosen(kit):
    kit.write("a/Blink.events", "key a\n")
    result, found = covered(kit, "--coverage", "a", GCOV="/no/such/gcov")
    assert (result.status, result.passed, found) == (127, [True], {})
    assert result.err == "psf: a/Blink.PSF: no coverage: gcov cannot be started: No such file or directory\n"
    assert covered(kit, "--coverage", "a", GCOV=shutil.which("gcov"))[0].status == 0


def test_a_batch_file_that_notes_nothing_is_said(tmp_path):
    place = Place(tmp_path)
    place.block("Blink.PSF", source())
    place.write("Blink.events", "true")
    result = place.test("--coverage", "Blink.PSF")
    assert (result.status, result.passed) == (127, [True])
    assert result.err == "psf: Blink.PSF: no coverage: the compile batch file has not noted which lines run\n"


def test_a_block_that_does_not_build_has_none(kit):
    kit.document("Bad.PSF", {"functions/Bad": "void Bad(void)\n{\n    undeclared;\n}"})
    kit.write("Bad.events", "start\n")
    kit.write("a/Blink.events", "key a\n")
    result, found = covered(kit, "--coverage=coverage.xml", ".")
    assert (result.status, result.passed, result.err) == (1, [False, True], "")
    assert all(name.startswith("./a/Blink.PSF:") for name in found)
    assert is_valid(kit.folder / "coverage.xml", "cobertura.dtd")


@pytest.mark.parametrize("wrong", ["<coverage/>", "<coverage line-rate='1'><packages/></coverage>"])
def test_the_dtd_finds_what_readers_refuse(tmp_path, wrong):
    (tmp_path / "wrong.xml").write_text(wrong)
    assert not is_valid(tmp_path / "wrong.xml", "cobertura.dtd")
