"""What a script expects of the block, what the block says of itself, and the exit status that comes of both."""
import pytest

from c_files import generated
from harness import run
from kit_harness import ECHO, build, compilers

HANDLERS = {
    "OnKey": """DataFrame f = {0}; int i;
        f.id = 0x123; f.length = 2; f.data[0] = 1; f.data[1] = (uchar)character;
        switch (character) {
        case 'a': SendFrame(&f, 0); break;
        case 'b': SendFrame(&f, 1); f.data[0] = 2; SendFrame(&f, 1); break;
        case 'e': f.extended = 1; f.id = 0x18DAF110; SendFrame(&f, 0); break;
        case 'd': f.fd = 1; f.brs = 1; SendFrame(&f, 0); break;
        case 'r': f.remote = 1; SendFrame(&f, 0); break;
        case 'l': StartTimerOnce(1, 50); break;
        case 'c': StartTimer(2, 10); break;
        case 'x': for (i = 0; i < 100000; i++) { f.data[1] = (uchar)i; SendFrame(&f, i % 2); } break;
        case 'y': for (i = 0; i < 100000; i++) Print("%d,", i); break;
        case 'p': Print("speed: "); Print("%d km/h\\n", 7); Print("\\"q\\"\\t\\\\"); break;
        case 'u': Print("Gr\\374\\337e"); break;
        case 'f': Fail("speed is %d,\\nnot %s\\n", 7, "f\\374nf"); break;
        case 'n': { const char *volatile none = NULL; Fail(none, 1); } break;
        case 't': Print("%ld ms, %lld us\\n", Now(), NowMicroseconds()); break; }""",
    "OnTimer": """DataFrame f = {0}; f.id = timerid; f.length = 1; f.data[0] = 0xAB; SendFrame(&f, 1);
        Print("timer %u\\n", timerid);""",
}


@pytest.fixture(scope="module", params=compilers())
def block(request, tmp_path_factory):
    return build(tmp_path_factory.mktemp("block"), generated(HANDLERS), request.param)


def outcome(program, script, *options):
    """The status and what is on the standard error stream."""
    result = run(program, *options, input=script.encode(), text=True)
    return result.returncode, result.stderr


MET = [
    "key a\nexpect can0 123#0161",
    "key a\n\n# and then\nexpect can0 123#0161",
    "key a\n  expect\tcan0   123#0161 ",
    "key a\nexpect vcan0 123#01..",
    "key a\nexpect can0 ...#.161",
    "key a\nexpect can0 123#0161 within 5",
    "key e\nexpect can0 18daf110#0.6.",
    "key e\nexpect can0 ........#0165",
    "key d\nexpect can0 123##10164",
    "key d\nexpect can0 123##50164",
    "key d\nexpect can0 123##.....",
    "key r\nexpect can0 123#R2",
    "key b\nexpect can1 123#0162\nexpect can1 123#0262",
    "key b\nexpect can1 123#0262",
    "key l\nexpect can1 001#AB within 0.05",
    "key l\nexpect can1 001#AB within 0.05\nexpect print \"timer 1\"",
    "key l\n(10) trigger\nexpect none for 0.049999\nexpect can1 001#AB within 0.000001",
    "(7) key l\n(7.05) expect can1 001#AB",
    "key c\nexpect can1 002#AB within 1\nexpect can1 002#AB within 1\nexpect none for 0.009999",
    "expect none for 1000",
    "key a\nexpect can0 123#0161\nexpect none for 1",
    "key a\nexpect none can1 for 1\nexpect can0 123#0161",
    "key x\nexpect can1 123#019f\nexpect can0 123#0174",
    "key p\nexpect print \"speed: 7\"",
    "key p\nexpect print \"speed\"\nexpect print \": 7 km/h\\n\\\"q\\\"\\t\\\\\"",
    "key u\nexpect print \"Grüße\"",
    "key l\nexpect print \"imer 1\\n\" within 0.05",
    "key y\nexpect print \"99998,99999,\"",
    "expect verdict pass",
]


@pytest.mark.parametrize("script", MET)
def test_an_expectation_that_comes_true_says_nothing(block, script):
    assert outcome(block, script, "--strict") == (0, "")


PRINTED = ['(0000000000.000000) "7 km/h\\n"', '(0000000000.000000) "\\"q\\"\\t\\\\"']
MISSED = [
    ("expect can0 123#0161", "can0 123#0161", ["nothing"]),
    ("key a\nexpect can0 123#02..", "can0 123#02..", ["(0000000000.000000) can0 123#0161"]),
    ("key a\nexpect can1 123#0161", "can1 123#0161", ["nothing"]),
    ("key a\nexpect can0 123#01", "can0 123#01", ["(0000000000.000000) can0 123#0161"]),
    ("key a\nexpect can0 123##00161", "can0 123##00161", ["(0000000000.000000) can0 123#0161"]),
    ("key e\nexpect can0 ...#0165", "can0 ...#0165", ["(0000000000.000000) can0 18DAF110#0165"]),
    ("key a\nexpect can0 123#0161\nexpect can0 123#0161", "can0 123#0161", ["nothing"]),
    ("key b\nexpect can1 123#0262\nexpect can1 123#0162", "can1 123#0162", ["nothing"]),
    ("key a\nkey l\nexpect can0 123#0161", "can0 123#0161", ["nothing"]),
    ("key l\n(7) trigger\n(8) trigger\nexpect can1 001#AB", "can1 001#AB", ["nothing"]),
    ("(7) key l\nexpect can1 001#AB within 0.049999", "can1 001#AB by (0000000007.049999)", ["nothing"]),
    ("(7) key c\nexpect can1 001#.. within 0.025", "can1 001#.. by (0000000007.025000)",
     ["(0000000007.010000) can1 002#AB", "(0000000007.020000) can1 002#AB"]),
    ("(7) key l\nexpect none for 0.05", "nothing by (0000000007.050000)", ["(0000000007.050000) can1 001#AB"]),
    ("key a\nexpect none can0 for 0", "nothing on can0", ["(0000000000.000000) can0 123#0161"]),
    ("key x\nexpect none can0 for 0", "nothing on can0", None),
    ("key p\nexpect print \"speed: 8\"", '"speed: 8"', ['(0000000000.000000) "speed: "', *PRINTED]),
    ("key p\nexpect print \"spe\"\nexpect print \"sp\"", '"sp"', ['(0000000000.000000) "ed: "', *PRINTED]),
    ("key a\nexpect print \"a\" within 1", '"a" by (0000000001.000000)', ["nothing"]),
    ("expect verdict fail", "verdict fail", ["verdict pass"]),
]


@pytest.mark.parametrize("script, expected, got", MISSED)
def test_an_expectation_that_does_not_come_true_is_a_failure(block, script, expected, got):
    status, errors = outcome(block, script, "--strict")
    lines = script.split("\n")
    head, first, *rest = errors.splitlines()
    assert (status, head, first) == (3, f"<stdin>:{len(lines)}: failed: {lines[-1]}", f"    expected: {expected}")
    assert got is None or rest == [f"    got: {line}" for line in got]


def test_at_most_eight_of_what_came_instead_are_shown(block):
    _, errors = outcome(block, "key x\nexpect can0 123#02..\n")
    lines = errors.splitlines()
    assert len(lines) == 2 + 8 + 1
    assert lines[-1].startswith("    got: ") and lines[-1].endswith(" more")


def test_the_rest_of_the_script_runs_after_a_failure(block, tmp_path):
    script = tmp_path / "Prüf stand.events"
    script.write_text("key l\nexpect can0 123#01\nexpect can1 001#AB within 1\n"
                      "key a\nexpect none can0 for 0.5\nkey a\n")
    result = run(block, script, text=True)
    assert result.returncode == 3
    assert result.stderr.splitlines() == [
        f"{script}:2: failed: expect can0 123#01", "    expected: can0 123#01", "    got: nothing",
        f"{script}:5: failed: expect none can0 for 0.5", "    expected: nothing on can0 by (0000000000.550000)",
        "    got: (0000000000.050000) can0 123#0161"]
    assert result.stdout.count("123#0161") == 2


def test_time_goes_on_to_what_came_and_no_further(block):
    script = "(7) key l\nexpect can1 001#AB within 10\nkey t\nexpect none for 0.25\nkey t\n"
    result = run(block, input=script.encode(), text=True)
    assert (result.returncode, result.stderr) == (0, "")
    assert result.stdout.splitlines()[2:] == ["50 ms, 50000 us", "300 ms, 300000 us"]


def test_time_may_pass_before_the_origin(block):
    result = run(block, input=b"key t\nexpect none for 1\nkey t\n(100) key t\n(101.5) key t\nkey a\n", text=True)
    assert result.stdout.splitlines() == ["0 ms, 0 us", "1000 ms, 1000000 us", "1000 ms, 1000000 us",
                                          "2500 ms, 2500000 us", "(0000000101.500000) can0 123#0161"]


def test_an_expectation_waits_in_real_time_too(block):
    assert outcome(block, "key l\nexpect can1 001#AB within 0.1\n(5) key a\n(5.01) stop\n", "--realtime") == (0, "")


def test_fail_counts_and_says_where_and_when(block):
    status, errors = outcome(block, "(7) start\n(7.5) key f\nkey n\nkey a\n")
    assert (status, errors.splitlines()) == (3, [
        "<stdin>:2: failed: (0000000007.500000) speed is 7,", "    not fünf",
        "<stdin>:3: failed: (0000000007.500000) a text that cannot be formatted"])


def test_a_verdict_says_how_much_failed(block):
    status, errors = outcome(block, "key f\nkey f\nexpect can0 123#\nexpect verdict pass\n")
    assert (status, errors.splitlines()[-3:]) == (3, [
        "<stdin>:4: failed: expect verdict pass", "    expected: verdict pass", "    got: verdict fail, failures: 3"])


@pytest.mark.parametrize("script, failed", [
    ("key f\nexpect verdict fail", []), ("key f\nexpect verdict fail\nexpect verdict pass", []),
    ("key f\nexpect verdict fail\nexpect verdict fail", ["<stdin>:3: failed: expect verdict fail"])])
def test_a_failure_that_was_expected_is_none(block, script, failed):
    status, errors = outcome(block, script)
    assert status == (3 if failed else 0)
    assert [line for line in errors.splitlines() if "failed: expect" in line] == failed


def test_a_failure_that_was_expected_takes_no_missed_expectation_back(block):
    assert outcome(block, "expect can0 123#\nexpect verdict fail\n")[0] == 3


WRONG = [
    "expect", "expect ", "expect can0", "expect can0 ", "expect can 123#01", "expect can256 123#01",
    "expect can0 12#01",
    "expect can0 123", "expect can0 123#0", "expect can0 123#0.0", "expect can0 123#R.", "expect can0 2.......#01",
    "expect can0 123#01 R", "expect can0 123#01 within", "expect can0 123#01 within x", "expect can0 123#01 within -1",
    "expect can0 123#01 within 1s", "expect can0 123#01 within 1 s", "expect can0 123#01 within 1.0000000",
    "expect can0 123#01 within 1000000000000", "expect can0 123#01 in 1", "expect can0 " + "0" * 200 + "#",
    "expect none", "expect none can0", "expect none for", "expect none for x", "expect none can0 for",
    "expect none can for 1", "expect none can0 within 1", "expect none can0 123#01 for 1",
    "expect print", "expect print x", "expect print \"", "expect print \"x", "expect print \"\"",
    "expect print \"x\" y",
    "expect print \"\\x\"", "expect print \"x\\\"", "expect print \"x\\", "expect print \"x\" within",
    "expect verdict", "expect verdict good", "expect verdict pass fail", "expect start", "expect serial 01",
]


@pytest.mark.parametrize("line", WRONG)
def test_a_wrong_expectation_is_a_wrong_line(block, line):
    status, errors = outcome(block, f"key a\n{line}\nkey t\n")
    assert (status, errors[:11], errors.count("\n")) == (0, "<stdin>:2: ", 1)


@pytest.mark.parametrize("line", ["bogus", "key", "(1.) start", "can 123#00", *WRONG[:3]])
def test_strict_ends_at_the_first_wrong_line(block, tmp_path, line):
    script = tmp_path / "wrong.events"
    script.write_text(f"key t\n\n{line}\nkey t\nbogus\n")
    result = run(block, "--strict", script, text=True)
    assert (result.returncode, result.stdout) == (65, "0 ms, 0 us\n")
    assert result.stderr.startswith(f"{script}:3: ") and result.stderr.count("\n") == 1
    status, errors = outcome(block, f"key f\n{line}\n", "--strict")
    assert status == 65


@pytest.mark.parametrize("given", ["can_body=1", "1=can_body"])
def test_a_channel_has_the_name_that_it_is_given(tmp_path, given):
    echo = build(tmp_path, generated(ECHO))
    names = ["--channel", given, "--channel", "can7=2", "--channel", "für=3"]
    script = "can_body 123#01\ncan7 123#02\nfür 123#03\ncan6 123#06\nexpect can6 123#06\n"
    script += "expect none can_body for 1\ncan_body 1#\n"
    result = run(echo, *names, input=script.encode(), text=True)
    assert result.stdout == "".join(f"(0000000000.000000) can{number} 123#0{data}\n"
                                    for number, data in ((1, 1), (2, 2), (3, 3), (6, 6)))
    assert result.stderr == "<stdin>:7: an id is 3 or 8 hex digits\n"
    assert outcome(echo, "can_body 123#01\nexpect can_body 123#01\n", *names) == (0, "")


@pytest.mark.parametrize("given", ["", "x", "=1", "x=", "x=y", "x=256", "x=-1", "x=1.5", "256=x"])
def test_a_wrong_name_of_a_channel_is_refused(block, given):
    status, errors = outcome(block, "", "--channel", given)
    assert (status, errors.count("\n")) == (64, 1)
    assert errors.startswith(f"{block}: {given}: ")


def test_channel_needs_a_name(block):
    assert outcome(block, "", "--channel")[0] == 64
    assert outcome(block, "", *["--channel", "x=1"] * 257)[0] == 64
    assert outcome(block, "", *["--channel", "x=1"] * 256)[0] == 0
