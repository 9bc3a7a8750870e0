"""psf test with the kit: the examples, and what its programs and compilers say."""

import pytest
from harness import EXAMPLES, example_file
from psf_harness import not_on_windows
from tap_harness import Place

pytestmark = not_on_windows("its compilers and programs are those of Linux")


@pytest.fixture
def kit(tmp_path):
    return Place(tmp_path, kit=True)


def test_the_examples_pass(kit):
    for name in EXAMPLES:
        for suffix in (".PSF", ".events", ".expected"):
            path = example_file(name, suffix)
            kit.write(f"{name}/{path.name}", path.read_bytes())
    result = kit.test("--jobs", "2", ".")
    assert result.status == 0, result.text
    assert result.text == "TAP version 14\n1..4\n" + "".join(
        f"ok {number} - ./{name}/{EXAMPLES[name]}.events\n" for number, name in enumerate(sorted(EXAMPLES), 1))
    assert not kit.c_file.exists() and len(list(kit.c_file.parent.glob("*.c"))) == 4
    assert all((kit.folder / name / f"{EXAMPLES[name]}.out").exists() for name in EXAMPLES)


def test_a_failed_expectation_is_shown_at_its_line(kit):
    kit.block("Blink.PSF", example_file("blink", ".PSF").read_bytes())
    kit.write("Blink.events", "start\nexpect can0 7FF#01 within 0.2\n")
    result = kit.test("Blink.PSF")
    found = result.failure()
    assert (result.status, found["message"], found["at"]) == (1, "expect can0 7FF#01 within 0.2", "Blink.events:2")
    assert found["expected"].startswith("can0 7FF#01") and found["got"] == "(0000000000.000000) can0 100#01"


def test_a_wrong_script_line_fails_at_its_line(kit):
    kit.block("Blink.PSF", example_file("blink", ".PSF").read_bytes())
    kit.write("Blink.events", "start\nnonsense\n")
    found = kit.test("Blink.PSF").failure()
    assert (found["at"], "event" in found["message"]) == ("Blink.events:2", True)


def test_channels_get_their_names(kit):
    kit.block("Blink.PSF", example_file("blink", ".PSF").read_bytes())
    kit.write("Blink.events", "start\nexpect body 100#01\n")
    assert kit.test("Blink.PSF").status == 1
    assert kit.test("--channel", "bus=1", "--channel", "body=0", "Blink.PSF").status == 0


def test_a_build_error_is_shown_at_its_member_in_each_case(kit):
    kit.document("Blink.PSF", {"functions/Only": "void Only(void)\n{\n    int x = undeclared;\n}"})
    kit.write("Blink.events", "start\n")
    kit.write("Blink.x.events", "start\n")
    result = kit.test("Blink.PSF")
    assert (result.status, result.passed) == (1, [False, False])
    for number in range(2):
        found = result.failure(number)
        assert found["message"] == "the program block does not build: exit status 1"
        assert found["at"] == "Blink.PSF:functions/Only:3"
        assert "Blink.PSF:functions/Only:3: error: " in found["build"]


def test_what_a_compiler_only_warns_of_is_a_comment(kit):
    kit.document("Blink.PSF", {"functions/Only": "void Only(void)\n{\n    int unused;\n}"})
    kit.write("Blink.events", "start\n")
    result = kit.test("Blink.PSF")
    assert result.status == 0
    assert any(line.startswith("Blink.PSF:functions/Only:3: warning: ") for line in result.comments)


def test_positions_that_a_program_names_are_those_of_members(kit):
    kit.document("Blink.PSF", {"references": "#include <assert.h>",
                               "events/OnKey": "void OnKey(char key)\n{\n    assert(key == 'a');\n}"})
    kit.write("Blink.events", "key b\n")
    found = kit.test("Blink.PSF").failure()
    assert found["message"] == "ended with status 134"
    assert "Blink.PSF:events/OnKey:3" in found["stderr"]
