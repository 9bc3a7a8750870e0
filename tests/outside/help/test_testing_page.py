"""What the help says about tests: its program block and scripts are tried, and print what the page shows."""

import re
import xml.etree.ElementTree as tree

import pytest
from help_pages import LANGUAGES, Workplace, sections, source
from pages import blocks


@pytest.fixture(name="page", params=LANGUAGES)
def fixture_page(request):
    return sections(source(request.param, "testing"))


@pytest.fixture(name="place")
def fixture_place(page, tmp_path):
    """A folder with the program block of the page and its first script."""
    place = Workplace(tmp_path)
    place.block(blocks(page["first"], "c"), "Lamp")
    place.write("Lamp.events", blocks(page["first"], "events")[0])
    return place


def test_the_first_test_passes(page, place):
    command = re.search(r"`(psf test [^`]*)`", page["first"])[1]
    assert place.does(*command.split()) == blocks(page["first"], "output")[0]


def test_the_case_that_fails_is_shown_as_on_the_page(page, place):
    place.write("Lamp.events", blocks(page["failed"], "events")[0])
    done = place.run("psf", "test", "Lamp.PSF")
    assert (done.returncode, done.stdout) == (1, blocks(page["failed"], "output")[0])


EXPECTED = {
    "expect can0 123#01..FF": ("can0 123#01ABFF", True), "expect can0 123#01 within 0.5": ("can0 124#01", False),
    "expect none for 0.5": ("", True), "expect none can1 for 0": ("can1 123#", False),
    'expect print "speed: 7"': ("speed: 7 or 8", True), "expect verdict pass": ("", True),
    "expect verdict fail": ("", False),
}


@pytest.mark.parametrize("line", EXPECTED)
def test_each_expectation_of_the_table_is_met_or_missed_as_it_says(page, tmp_path, line):
    assert f"| `{line}` |" in page["expect"] and page["expect"].count("\n| `") == len(EXPECTED)
    place = Workplace(tmp_path)
    echo = ["void OnFrame(DataFrame *frame, uchar channel)\n{\n    SendFrame(frame, channel);\n}\n",
            'void OnMsg(char * string)\n{\n    Print("%s", string);\n}\n']
    program = place.block(echo)
    event, is_met = EXPECTED[line]
    event = event and (event if "#" in event else f"msg {event}")
    done = place.run(program, "--strict", input=f"{event}\n{line}\n".encode())
    assert (done.returncode, done.stderr == "") == ((0, True) if is_met else (3, False)), done


def test_output_is_compared_and_cases_are_told_apart(page, place):
    command = re.search(r"^    \./(.*)$", page["expected"], re.M)[1]
    place.does("sh", "-c", f"./{command}")
    place.write("Lamp.more.events", "key 1\n")
    place.write("Lamp.more.expected", "something else\n")
    done = place.run("psf", "test", "Lamp.PSF")
    assert done.returncode == 1
    assert re.findall(r"^(ok|not ok) \d - (.*)$", done.stdout, re.M) == [
        ("ok", "Lamp.events"), ("not ok", "Lamp.more.events")]


def test_what_the_block_finds_itself_fails_the_case(page, tmp_path):
    place = Workplace(tmp_path)
    place.block(blocks(page["fail"], "c"))
    place.write("Block.events", "(0.0) start\n(4.0) trigger\n")
    assert place.run("psf", "test", "Block.PSF").returncode == 0
    place.write("Block.events", "(0.0) start\n(6.0) trigger\n")
    done = place.run("psf", "test", "Block.PSF")
    assert done.returncode == 1 and "6000 ms" in done.stdout


def test_the_lines_that_no_case_ran_are_told_as_on_the_page(page, place):
    command, line = re.findall(r"^    (.*)$", page["coverage"], re.M)
    place.write("Lamp.events", "key 1\n")
    assert line + "\n" in place.run(*command.split()).stdout


def test_a_channel_has_the_name_that_it_is_given(page, place):
    command = re.search(r"^    (psf test .*)$", page["channel"], re.M)[1]
    place.write("Lamp.events", "can_body 123#01\n")
    assert place.run("psf", "test", ".").returncode == 1
    assert "\nok 1 " in place.does(*command.split())


@pytest.mark.parametrize("options, script, status", [
    ([], "key 1\nwrong\n", 0), (["--strict"], "key 1\n", 0), (["--strict", "none.events"], "", 1),
    ([], "key 1\nexpect none for 0\n", 3), (["--no-such"], "", 64), (["--strict"], "wrong\n", 65)])
def test_the_program_ends_with_the_status_that_is_told(page, place, options, script, status):
    told = re.findall(r"^\| (\d+) \|", page["run"], re.M)
    assert told == ["0", "1", "3", "64", "65"]
    assert place.run(place.folder / "Lamp.out", *options, input=script.encode()).returncode == status


def test_the_programs_own_help_and_the_pages_have_the_same_options(page, place, request):
    language = request.node.callspec.params["page"]
    told = set(re.findall(r"--[a-z]+", page["run"] + sections(source(language, "kit"))["live"]))
    listed = set(re.findall(r"--[a-z]+", place.does(place.folder / "Lamp.out", "--help")))
    assert told == listed - {"--help"}


def servers(page):
    """The commands of each sample."""
    gitlab, github = blocks(page["server"], "yaml")
    return [blocks(page["server"], "sh")[0], "\n".join(re.findall(r"^    - (psf .*)$", gitlab, re.M)),
            "\n".join(re.findall(r"^      - run: (psf .*)$", github, re.M))]


@pytest.mark.parametrize("which", [0, 1, 2])
def test_a_server_passes_what_is_good_and_stops_what_is_not(page, place, which):
    commands = servers(page)[which]
    assert commands.count("psf ") == 3
    place.does("psf", "tidy", "Lamp.PSF")
    place.does("sh", "-ec", commands)
    if "--junit" in commands:
        assert tree.parse(place.folder / "report.xml").getroot().find(".//testcase").get("name") == "Lamp.events"
    place.write("Lamp.events", "key 1\nexpect none for 0\n")
    assert place.run("sh", "-ec", commands).returncode == 1
