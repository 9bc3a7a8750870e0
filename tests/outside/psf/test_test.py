"""psf test: which cases there are, how they go, and what is said of them."""

import os
import select
import signal
import subprocess

import pytest
from harness import wait_until
from psf_harness import COMMAND, is_running, not_on_windows, psf, source
from tap_harness import WAIT, Place

pytestmark = not_on_windows("its compilers and programs are those of Linux")


@pytest.fixture
def place(tmp_path):
    return Place(tmp_path)


# Which cases there are

def test_scripts_belong_to_the_longest_name_and_come_in_order(place):
    for name in ["Blink", "Blink.fast", "b/Alone", "b/None", "Café"]:
        place.block(f"{name}.PSF")
    for name in ["Blink", "Blink.b", "Blink.a.x", "Blink.fast", "Blink.fast.on", "Blinker", "b/Alone.x", "Café.ö"]:
        place.write(f"{name}.events", "true")
    place.write(".hidden/Blink.PSF", source())
    place.write(".hidden/Blink.events", "true")
    assert place.test(".").names == [f"./{name}.events" for name in [
        "Blink", "Blink.a.x", "Blink.b", "Blink.fast", "Blink.fast.on", "Café.ö", "b/Alone.x"]]
    assert place.test("Blink.PSF").names == ["Blink.events", "Blink.a.x.events", "Blink.b.events"]
    assert place.test("b", "Blink.fast.PSF").names == ["b/Alone.x.events", "Blink.fast.events", "Blink.fast.on.events"]
    assert place.test("--files-from", "-", stdin=b"b/Alone.PSF\n").names == ["b/Alone.x.events"]


@pytest.mark.parametrize("name", ["block.psf", "block", "-block.PSF"])
def test_any_name_of_a_file_will_do(place, name):
    place.block(name)
    place.write(("-block" if name.startswith("-") else "block") + ".events", "true")
    result = place.test("--", name)
    assert (result.status, result.passed) == (0, [True])


def test_without_a_case_there_is_a_plan_of_none_and_4(place):
    place.block("Blink.PSF")
    result = place.test("Blink.PSF", ".")
    assert (result.status, result.names) == (4, [])
    assert result.err == "psf: test: there is no case: no NAME.events or NAME.CASE.events beside NAME.PSF\n"


def test_a_file_that_is_not_there_is_said_and_2_unless_a_case_fails(place):
    place.block("Blink.PSF")
    place.write("Blink.events", "true")
    result = place.test("none.PSF", "Blink.PSF")
    assert (result.status, result.passed, result.err) == (2, [True], "psf: none.PSF: No such file or directory\n")
    place.write("Blink.events", "false")
    assert place.test("none.PSF", "Blink.PSF").status == 1


@pytest.mark.parametrize("words", [[], ["--jobs", "x", "."], ["--timeout", "0", "."], ["--timeout", "x", "."],
                                   ["--no-such", "."]])
def test_a_wrong_command_is_64_and_tests_nothing(place, words):
    result = psf("test", *words, **place.options)
    assert (result.status, result.out) == (64, b"")


@pytest.mark.parametrize("command", ["test", "build"])
@pytest.mark.parametrize("number", ["0", "-1", "-0.5", "x", "nan"])
def test_a_number_of_jobs_or_seconds_is_above_0(place, command, number):
    for option in ["--jobs", "--timeout"] if command == "test" else ["--jobs"]:
        result = psf(command, f"{option}={number}", "Blink.PSF", **place.options)
        assert (result.status, result.out, result.err) == (64, b"", f'psf: {option}: "{number}" is no number above 0\n')


# How they go

@pytest.mark.parametrize("printed, expected, line, one, other", [
    ("a\\nb\\nc\\n", "a\nB\nc\n", 2, "B", "b"),
    ("a\\n", "a\nb\n", 2, "b", "[the end]"),
    ("a\\nb\\n", "a\n", 2, "[the end]", "b"),
    ("", "a", 1, "a", "[the end]"),
    ("a\\n\\n", "a\n", 2, "[the end]", ""),
    ("a\\x01", "a\x02", 1, "a?", "a?"),
])
def test_the_first_difference_is_shown_with_its_line(place, printed, expected, line, one, other):
    place.block("Blink.PSF")
    place.write("Blink.x.events", f"printf '{printed}'")
    place.write("Blink.x.expected", expected)
    result = place.test("Blink.PSF")
    assert (result.status, result.passed) == (1, [False])
    found = result.failure()
    assert found["message"].startswith("the output differs from Blink.x.expected")
    assert found["message"].endswith(" in characters that cannot be shown") == (one == other)
    assert (found["at"], found["expected"], found["got"]) == (f"Blink.x.expected:{line}", one, other)
    sides = [text for text in result.text.splitlines() if text.startswith(("  expected:", "  got:"))]
    assert [text.index('"') for text in sides] == [12, 12]


@pytest.mark.parametrize("printed, expected", [("a\\nb", "a\r\nb\r\n"), ("a\\r\\n", "a\n"), ("", ""), ("ä\\n", "ä")])
def test_the_kind_of_line_ends_does_not_count(place, printed, expected):
    place.block("Blink.PSF")
    place.write("Blink.events", f"printf '{printed}'")
    place.write("Blink.expected", expected)
    assert place.test("Blink.PSF").status == 0


def test_a_difference_in_a_long_line_is_in_view(place):
    place.block("Blink.PSF")
    place.write("Blink.events", "printf '%02000dx%0900d' 0 0")
    place.write("Blink.expected", "0" * 2000 + "y" + "0" * 900)
    found = place.test("Blink.PSF").failure()
    assert (found["expected"][65], found["got"][65], len(found["got"])) == ("y", "x", 210)


def test_without_a_file_for_it_the_output_is_not_compared(place):
    place.block("Blink.PSF")
    place.write("Blink.events", "echo anything")
    place.write("Blink.x.expected", "of another case")
    assert place.test("Blink.PSF").status == 0


@pytest.mark.parametrize("script, status", [("exit 1", 1), ("exit 3", 3), ("exit 65", 65), ("kill -SEGV $$", 139)])
def test_a_status_other_than_0_fails_and_shows_what_was_printed(place, script, status):
    place.block("Blink.PSF")
    place.write("Blink.events", f"echo before; echo wrong >&2; {script}")
    place.write("Blink.expected", "before\n")
    result = place.test("Blink.PSF")
    assert result.status == 1
    assert result.failure() == {"message": f"ended with status {status}", "stderr": "wrong", "stdout": "before"}


@pytest.mark.parametrize("content, said", [
    (source(end=None), "not a complete PSF file"), (source([("X", "{")]), "C code cannot be generated")])
def test_a_file_that_no_program_can_be_made_of_fails(place, content, said):
    place.block("Blink.PSF", content)
    place.write("Blink.events", "true")
    result = place.test("Blink.PSF")
    assert (result.status, result.passed) == (1, [False]) and said in result.failure()["message"]


def test_the_time_ends_a_program_and_all_that_it_started(place):
    place.block("Blink.PSF")
    place.write("Blink.a.events", "trap '' TERM; sleep 1000 & echo $! > child; echo started; while :; do wait; done")
    place.write("Blink.b.events", "true")
    result = place.test("--timeout", "0.5", "Blink.PSF")
    assert (result.status, result.passed) == (1, [False, True])
    assert result.failure() == {"message": "ended after 0.5 seconds", "stdout": "started"}
    child = int((place.folder / "child").read_text())
    wait_until("the end of what it started", lambda: not is_running(child))


def test_the_time_also_ends_what_has_closed_its_outputs(place):
    place.block("Blink.PSF")
    place.write("Blink.events", "exec >&- 2>&-; sleep 1000")
    assert place.test("--timeout", "0.2", "Blink.PSF").failure() == {"message": "ended after 0.2 seconds"}


def test_a_program_that_prints_without_end_is_ended(place):
    place.block("Blink.PSF")
    place.write("Blink.events", "yes 'and so on'")
    found = place.test("--timeout", "100", "Blink.PSF").failure()
    assert found["message"] == "ended after it had printed 16 MiB"
    assert len(found["stdout"]) < 5000


# Several at a time

@pytest.mark.parametrize("jobs", [1, 2, 5])
def test_output_comes_in_order_whoever_ends_first(place, jobs):
    for name in "ABC":
        place.block(f"{name}.PSF")
        for case in "xyz":
            place.write(f"{name}.{case}.events", f"echo {name}{case}; echo {name}{case} >&2; exit 1")
    alone = place.test(".")
    result = place.test("--jobs", str(jobs), ".")
    assert result.text == alone.text and result.status == 1
    assert [found["stdout"] for _, _, found in result.cases] == [f"{name}{case}" for name in "ABC" for case in "xyz"]


@pytest.mark.parametrize("scripts", [("A.x", "A.y"), ("A.x", "B.x")], ids=["of one block", "of two"])
def test_cases_run_at_the_same_time(place, scripts):
    for name in "AB":
        place.block(f"{name}.PSF")
    for mine, other in [scripts, scripts[::-1]]:
        place.write(f"{mine}.events", f"touch {mine}.here; until [ -e {other}.here ]; do {WAIT}; done")
    assert place.test("--jobs", "2", ".").status == 0
    for name in scripts:
        (place.folder / f"{name}.here").unlink()
    assert place.test("--timeout", "0.3", ".").passed[0] is False


def test_with_another_compiler_the_blocks_take_turns(place):
    place.write("compiler", '#!/bin/bash\ncp program "$1"\n').chmod(0o755)
    for name in "AB":
        place.block(f"{name}.PSF", source([("X", f"void Only{name}()\r\n{{\r\n}}")]))
        place.write(f"{name}.events", f"grep -q Only{name} generated/program.c")
    assert place.test("--jobs", "4", ".").status == 0
    assert [path.name for path in place.c_file.parent.iterdir()] == ["program.c"]


def test_two_blocks_with_one_program_do_not_get_in_each_others_way(place):
    place.write("compiler", '#!/bin/bash\n: ${TESSALY_C_FILE}\n'
                            '(cat program; echo "#" $(grep -o "Only[AB]" $TESSALY_C_FILE | head -n 1)) > $1\n'
                            'chmod +x $1\n').chmod(0o755)
    for name, suffix in [("A", "PSF"), ("B", "psf")]:
        place.block(f"X.{suffix}", source([("X", f"void Only{name}()\r\n{{\r\n}}")]))
    place.write("X.events", "tail -n 1 X.out; exit 1")
    result = place.test("--jobs", "4", "X.PSF", "X.psf")
    assert [result.failure(number)["stdout"] for number in range(2)] == ["# OnlyA", "# OnlyB"]


def test_one_file_tested_twice_at_once_is_well_both_times(place):
    place.block("A.PSF")
    place.write("A.events", f"touch here; until [ -e go ]; do {WAIT}; done")
    first, second = (subprocess.Popen([*COMMAND, "test", "A.PSF"], cwd=place.folder, stdout=subprocess.PIPE,
                                      stderr=subprocess.PIPE, env={**os.environ, **place.options["env"]})
                     for _ in range(2))
    wait_until("the first program", (place.folder / "here").exists)
    wait_until("one waits", lambda: select.select([first.stderr, second.stderr], [], [], 0)[0])
    (place.folder / "go").touch()
    assert [first.wait(timeout=60), second.wait(timeout=60)] == [0, 0]
    errors = first.stderr.read() + second.stderr.read()
    assert errors.count(b"waiting for another build with this C file") == 1


@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP], ids=lambda number: number.name)
def test_an_interruption_ends_the_programs_and_leaves_nothing(place, number):
    place.block("A.PSF")
    for case in "xy":
        place.write(f"A.{case}.events", f"sleep 1000 & echo $! > {case}.new; mv {case}.new {case}.pid; wait")
    process = subprocess.Popen([*COMMAND, "test", "--jobs", "2", "--junit", "report.xml", "A.PSF"], cwd=place.folder,
                               stdout=subprocess.DEVNULL, env={**os.environ, **place.options["env"]})
    children = [wait_until("a program", lambda file=place.folder / f"{case}.pid": file.exists() and file.read_text())
                for case in "xy"]
    before = set(os.listdir(place.folder))
    process.send_signal(number)
    assert process.wait(timeout=60) == -number
    for child in children:
        wait_until("the end of a program", lambda number=int(child): not is_running(number))
    assert set(os.listdir(place.folder)) == before
