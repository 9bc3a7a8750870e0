"""The runtime of the host compile kit: the script, virtual time, the calls and the texts.

Each program is built by compile.sh itself, so a warning in the kit or in the frame of a C file fails here, too.
"""
import os
import random
import select
import signal
import subprocess
import time

import pytest

from c_files import generated
from harness import PATIENCE, ROOT, run
from kit_harness import ECHO, build, compilers, play
from test_expect import MET, WRONG


@pytest.fixture(scope="module", params=compilers())
def echo(request, tmp_path_factory):
    """A program that shows all that it gets, once from each compiler."""
    return build(tmp_path_factory.mktemp("echo"), generated(ECHO), request.param)


@pytest.fixture(scope="module")
def clockwork(tmp_path_factory):
    """Keys start and stop timers; each firing shows its time by a frame."""
    handlers = {
        "OnKey": """switch (character) {
            case 'a': StartTimer(1, 1000); break;
            case 'b': StartTimer(2, 500); break;
            case 'c': StartTimerOnce(4000000000u, 1500); break;
            case 'd': StopTimer(1); break;
            case 'm': StartTimer(5, 1000); break;
            case 'n': StartTimerOnce(6, 10); break; }""",
        "OnTimer": """DataFrame frame = {0};
            if (timerid == 6) { StartTimerOnce(6, 10); StopTimer(5); }
            frame.length = 1; frame.data[0] = (uchar)timerid; SendFrame(&frame, 0);""",
        "OnStart": 'Print("start %ld\\n", time);',
        "OnStop": 'StartTimer(9, 1); Print("stop %ld\\n", time);',
        "OnTrigger": 'Print("trigger %ld\\n", time);',
    }
    return build(tmp_path_factory.mktemp("clockwork"), generated(handlers))


def fired(*times):
    return "".join(f"({stamp}) can0 000#{number:02X}\n" for stamp, number in times)


LINES = [
    ("start", "start 0\n"),
    ("  stop\t", "stop 0\n"),
    ("trigger\r", "trigger 0\n"),
    ("key a", "key a 61\n"),
    ("key  ", "key   20\n"),
    ("key #", "key # 23\n"),
    ("timer 0", "timer 0\n"),
    ("timer 4294967295", "timer 4294967295\n"),
    ("error 2 5", "error 2 5\n"),
    ("error  0\t255 ", "error 0 255\n"),
    ("serial 01 02 fF", "(0000000000.000000) serial 01 02 ff\n"),
    ("serial   0a\t0B  ", "(0000000000.000000) serial 0a 0b\n"),
    ("msg", "msg [] 0\n"),
    ("msg  two  blanks ", "msg [ two  blanks ] 13\n"),
    ("msg # (1.2) start", "msg [# (1.2) start] 13\n"),
    ("# comment", ""),
    ("   # comment\0\xff", ""),
    ("", ""),
    (" \t\r", ""),
    ("(5.000000) timer 1", "timer 1\n"),
    (" (5.000000)start", "start 0\n"),
    ("(999999999999.999999) can0 001#", "(999999999999.999999) can0 001#\n"),
    ("can0 123#DEADBEEF", "(0000000000.000000) can0 123#DEADBEEF\n"),
    ("(1436509052.249713) can0 123#DEADBEEF", "(1436509052.249713) can0 123#DEADBEEF\n"),
    ("(0000000001.000002) vcan255  7ff#00ff R", "(0000000001.000002) can255 7FF#00FF\n"),
    ("(1.000002) slcan12 00000123#1122334455667788 T", "(0000000001.000002) can12 00000123#1122334455667788\n"),
    ("can1 1FFFFFFF#", "(0000000000.000000) can1 1FFFFFFF#\n"),
    ("can1 123#R", "(0000000000.000000) can1 123#R\n"),
    ("can1 123#R0", "(0000000000.000000) can1 123#R\n"),
    ("can1 00000123#r8", "(0000000000.000000) can1 00000123#R8\n"),
    ("can1 123#1122334455667788_E", "(0000000000.000000) can1 123#1122334455667788\n"),
    ("can1 123#R8_9", "(0000000000.000000) can1 123#R8\n"),
    ("can1 123##1DEADBEEF", "(0000000000.000000) can1 123##1DEADBEEF\n"),
    ("can1 123##7", "(0000000000.000000) can1 123##3\n"),
    ("can1 123##0" + "a5" * 64, "(0000000000.000000) can1 123##0" + "A5" * 64 + "\n"),
]


@pytest.mark.parametrize("line, output", LINES)
def test_line(echo, line, output):
    assert play(echo, line.encode("latin-1") + b"\n") == (output, "")
    assert play(echo, line.encode("latin-1")) == (output, "")


@pytest.mark.parametrize("stamp, milliseconds", [
    ("(11)", 1000), ("(10.5)", 500), ("(10.050000)", 50), ("(10.000999)", 0)])
def test_a_time_may_have_fewer_than_six_digits(echo, stamp, milliseconds):
    assert play(echo, f"(10) timer 1\n{stamp} trigger\n".encode()) == (f"timer 1\ntrigger {milliseconds}\n", "")


MALFORMED = [
    b"begin", b"START", b"starter", b"start now", b"stop 1", b"trigger x",
    b"key", b"key ", b"key ab", b"key a ", b"key \xff", b"key \xc3", b"msg \xed\xa0\x80", b"msg \xc0\x80",
    b"timer", b"timer -1", b"timer 4294967296", b"timer 99999999999999999999999", b"timer 1x", b"timer 1 2",
    b"error", b"error 1", b"error 256 0", b"error 0 256", b"error 1 2 3", b"error 1,2", b"error 1 x",
    b"serial", b"serial 1", b"serial 123", b"serial 0102", b"serial 0g", b"serial g0", b"serial 01,02",
    b"serial" + b" 00" * 65536,
    b"(1.000000)", b"(1.) start", b"(1,5) start", b"(1.0000000) start", b"(-1.000000) start", b"(1.000000 start",
    b"(1000000000000.000000) start", b"() start", b"(.000000) start", b"(1.000000) (1.000000) start",
    b"can 123#00", b"can256 123#00", b"can99999999999999999999 123#00", b"0x 123#00", b"can0", b"can0 #", b"can0 123",
    b"can0 12#00", b"can0 1234#00", b"can0 12G#00", b"can0 800#00", b"can0 20000000#00", b"can0 123456789#00",
    b"can0 123#0", b"can0 123#0G", b"can0 123#112233445566778899", b"can0 123#R9", b"can0 123#R12", b"can0 123#RX",
    b"can0 123#11_E", b"can0 123#1122334455667788_8", b"can0 123#1122334455667788_", b"can0 123#R4_9", b"can0 123#R8_8",
    b"can0 123##11122334455667788_E",
    b"can0 123##", b"can0 123##G", b"can0 123##8", b"can0 123##10", b"can0 123##1" + b"00" * 9,
    b"can0 123##1" + b"00" * 65, b"can0 123#00 X", b"can0 123#00 R T", b"can0 123#00 RT", b"can0 123 #00",
    b"st\0art", b"start\0", b"\0", b"msg a\0b", b"msg " + b"x" * 1048573, b"\xef\xbb\xbfstart",
]


def test_malformed_lines_are_reported_and_skipped(echo, tmp_path):
    script = tmp_path / "Prüf script.events"
    script.write_bytes(b"timer 1\r\n" + b"".join(line + b"\r\n" for line in MALFORMED) + b"timer 2")
    result = run(echo, script)
    assert (result.returncode, result.stdout) == (0, b"timer 1\ntimer 2\n")
    reports = result.stderr.decode().splitlines()
    for number, (line, report) in enumerate(zip(MALFORMED, reports), 2):
        assert report.startswith(f"{script}:{number}: "), line
        assert len(report) > len(f"{script}:{number}: ") + 5
    assert len(reports) == len(MALFORMED)


def test_malformed_line_of_the_standard_input(echo):
    assert play(echo, "start\n\nwhat\n") == ("start 0\n", "<stdin>:3: unknown event\n")
    assert play(echo, "what\n", "-") == ("", "<stdin>:1: unknown event\n")


def test_malformed_line_does_not_move_time(clockwork):
    assert play(clockwork, "(5.000000) nonsense\n(10.000000) key a\n(12.000000) key ab\ntrigger\n")[0] == "trigger 0\n"


def test_long_lines(echo):
    text = "x" * 1048572
    assert play(echo, f"msg {text}\n#{text * 2}\n") == (f"msg [{text}] 1048572\n", "")
    data = " 5a" * 65535
    assert play(echo, f"serial{data}\n") == (f"(0000000000.000000) serial{data}\n", "")


def test_timers_fire_in_order(clockwork):
    script = "(100.000000) key a\nkey b\nkey c\n(102.000000) trigger\nkey d\n(102.499999) trigger\n(102.500000) stop\n"
    assert play(clockwork, script)[0] == (
        fired(("0000000100.500000", 2), ("0000000101.000000", 1), ("0000000101.000000", 2))
        + fired(("0000000101.500000", 2), ("0000000101.500000", 0), ("0000000102.000000", 1))
        + fired(("0000000102.000000", 2)) + "trigger 2000\ntrigger 2499\n"
        + fired(("0000000102.500000", 2)) + "stop 2500\n"
    )


def test_stop_stops_all_timers_and_nothing_fires_after_the_last_line(clockwork):
    assert play(clockwork, "(0.000000) key a\nstop\n(9.000000) trigger\n")[0] == "stop 0\ntrigger 9000\n"
    assert play(clockwork, "(0.000000) key a\n(0.999999) key b\n") == ("", "")


def test_starting_anew_and_stopping_inside_a_handler(clockwork):
    script = "(0.000000) key a\nkey m\n(0.600000) key a\n(1.000000) key n\n(1.020000) trigger\n(2.000000) key d\nstop\n"
    assert play(clockwork, script)[0].startswith(
        fired(("0000000001.000000", 5), ("0000000001.010000", 6), ("0000000001.020000", 6)) + "trigger 1020\n"
        + fired(("0000000001.030000", 6))
    )
    assert play(clockwork, "(0.000000) key a\n(0.600000) key a\n(1.600000) stop\n")[0] == (
        fired(("0000000001.600000", 1)) + "stop 1600\n"
    )


def test_first_stamp_is_the_origin(clockwork):
    script = "start\nkey a\ntrigger\n(1436509052.000000) trigger\n(1436509053.000000) trigger\n"
    assert play(clockwork, script)[0] == (
        "start 0\ntrigger 0\ntrigger 0\n" + fired(("1436509053.000000", 1)) + "trigger 1000\n"
    )


def test_time_never_goes_back(clockwork):
    script = "(50.000000) start\n(52.500000) trigger\n(51.000000) trigger\n(1.000000) trigger\n(53.000000) stop\n"
    assert play(clockwork, script)[0] == "start 0\ntrigger 2500\ntrigger 2500\ntrigger 2500\nstop 3000\n"


def test_day_of_events_runs_at_once(clockwork):
    began = time.monotonic()
    output, errors = play(clockwork, "(1000.000000) key a\n(87400.000000) stop\n")
    assert time.monotonic() - began < 10
    assert (output.count("can0"), errors) == (86400, "")
    assert output.endswith(fired(("0000087400.000000", 1)) + "stop 86400000\n")


def test_realtime_keeps_its_own_pace(clockwork):
    script = "(7.000000) key b\n(7.700000) trigger\n"
    began = time.monotonic()
    output, _ = play(clockwork, script, "--realtime")
    assert time.monotonic() - began >= 0.7
    assert output == play(clockwork, script)[0]


@pytest.mark.parametrize("options", [[], ["--realtime"], ["-"]])
def test_typed_events_are_delivered_as_they_arrive(echo, options):
    with subprocess.Popen([echo, *options], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        for number in range(3):
            process.stdin.write(b"timer %d\n" % number)
            process.stdin.flush()
            assert process.stdout.readline() == b"timer %d\n" % number
        process.stdin.close()
        assert process.wait(timeout=10) == 0


def test_texts_are_windows_1252_inside(echo):
    assert play(echo, "key ä\nkey €\nkey \x81\nkey 語\n")[0] == "key ä e4\nkey € 80\nkey \x81 81\nkey ? 3f\n"
    assert play(echo, "msg Grüße\n")[0] == "msg [Grüße] 5\n"
    assert play(echo, "msg „Ž” 語😀\x80ü\n")[0] == "msg [„Ž” ???ü] 8\n"
    assert play(echo, b"\xef\xbb\xbfkey \xc3\xb6\n") == ("key ö f6\n", "")


def test_print_converts_what_is_not_utf8(tmp_path):
    handlers = {
        "OnStart": 'int i; for (i = 128; i < 256; i++) Print("%c", i); Print("%s", "");'
                   'Print("\\303\\244 ok\\n"); Print("\\303\\244 \\344\\n");',
    }
    unused = (0x81, 0x8D, 0x8F, 0x90, 0x9D)
    every = "".join(chr(code) if code in unused else bytes([code]).decode("cp1252") for code in range(128, 256))
    assert play(build(tmp_path, generated(handlers)), "start\n")[0] == every + "ä ok\nÃ¤ ä\n"


def test_output_keeps_the_order_of_the_calls(tmp_path):
    handlers = {
        "OnStart": 'DataFrame f = {0}; printf("1\\n"); SendFrame(&f, 3); puts("2"); Print("3 "); SerialWrite("A", 1);'
                   'fputs("4\\n", stdout);',
    }
    assert play(build(tmp_path, generated(handlers)), "start\n")[0] == (
        "1\n(0000000000.000000) can3 000#\n2\n3 (0000000000.000000) serial 41\n4\n"
    )


CALLS = """
    DataFrame f = {0}; DataFrame g = {0}; static char big[VEX_SERIAL_LIMIT]; const char *volatile none = NULL; uint i;
    Print("%d %d %d ", SendFrame(NULL, 0), SendFrame(&f, -1), SendFrame(&f, 256));
    f.length = 9; Print("%d ", SendFrame(&f, 0)); f.length = 255; Print("%d ", SendFrame(&f, 0));
    f.fd = 1; Print("%d ", SendFrame(&f, 0)); f.length = 63; Print("%d ", SendFrame(&f, 0));
    f.length = 8; f.remote = 1; Print("%d ", SendFrame(&f, 0));
    g.id = 0x800; Print("%d ", SendFrame(&g, 0)); g.extended = 1; g.id = 0x20000000; Print("%d\\n", SendFrame(&g, 0));
    Print("%d %d %d ", StartTimer(1, 0), StartTimerOnce(1, -5), StopTimer(1));
    Print("%d %d\\n", StartTimer(1, 2147483647), sizeof(long) > 4 ? StartTimer(1, (long)2147483648u) : VEX_BAD_PERIOD);
    Print("%d %d %d ", SerialWrite(NULL, 1), SerialWrite(NULL, 0), SerialWrite("", -1));
    Print("%d ", SerialWrite(big, VEX_SERIAL_LIMIT + 1L)); Print("%d\\n", Print(none, 1));
    for (i = 0; i < VEX_TIMER_LIMIT; i++) if (StartTimerOnce(i * 1000003u, 1) != VEX_OK) Print("full at %u\\n", i);
"""


def test_bad_input_to_the_calls(tmp_path):
    output, _ = play(build(tmp_path, generated({"OnStart": CALLS})), "start\n")
    assert output == "-2 -1 -1 -3 -3 -3 -3 -2 -2 -2\n-4 -4 -7 0 -4\n-5 0 -3 -3 -5\nfull at 4095\n"


def test_command_line(echo, tmp_path):
    def answer(*arguments):
        result = run(echo, *arguments, text=True)
        return result.returncode, result.stdout, result.stderr

    usage = (f"usage: {echo} [--realtime] [--strict] [--channel NAME=NUMBER]... [SCRIPT]\n"
             f"       {echo} --live [--channel NUMBER=INTERFACE]... [--serial DEVICE]\n")
    assert answer("--help")[::2] == (0, "")
    assert answer("--help")[1].startswith(usage)
    for arguments in (["--nonsense"], ["-r"], ["a", "b"]):
        assert answer(*arguments) == (64, "", usage)
    for path in (tmp_path / "gone.events", tmp_path):
        status, output, errors = answer(path)
        assert (status, output) == (1, "")
        assert str(path) in errors
    (tmp_path / "--help").write_text("start\n")
    assert answer("--", tmp_path / "--help") == (0, "start 0\n", "")


def test_output_that_cannot_be_written(echo):
    with open("/dev/full", "w") as full:
        result = subprocess.run([echo], input=b"start\n", stdout=full, stderr=subprocess.PIPE, timeout=60)
    assert result.returncode == 1
    assert b"cannot write the output" in result.stderr


def hostile_script(dice):
    """Right and wrong lines, most of them with some bytes cut out or put in."""
    texts = [line for line, _ in LINES] + [line for script in MET for line in script.split("\n")] + WRONG
    seeds = [line for line in MALFORMED + [line.encode("latin-1") for line in texts] if len(line) < 200]
    lines = []
    for _ in range(20000):
        line = bytearray(dice.choice(seeds))
        for _ in range(dice.randrange(3)):
            at = dice.randrange(len(line) + 1)
            line[at:at + dice.randrange(3)] = dice.randbytes(dice.randrange(3))
        lines.append(bytes(line))
    return b"\n".join(lines)


STRICT = "-std=gnu11 -O1 -Wall -Wextra -Wpedantic -Wconversion -Wshadow -Werror".split()


@pytest.mark.parametrize("compiler", compilers())
def test_runtime_has_no_warnings_and_withstands_hostile_scripts(compiler, tmp_path):
    runtime = ROOT / "kit/runtime.c"
    parts = sorted((ROOT / "kit/runtime").glob("*.c"))
    assert {f'#include "runtime/{path.name}"' for path in parts} <= set(runtime.read_text().splitlines())
    include = ["-I", str(ROOT / "kit" / "include"), "-fsanitize=address,undefined", "-fno-sanitize-recover=all"]
    subprocess.run([compiler, *STRICT, *include, "-fsyntax-only", *parts], check=True)
    subprocess.run([compiler, *STRICT, *include, "-c", runtime], cwd=tmp_path, check=True)
    (tmp_path / "block.c").write_bytes(generated(ECHO))
    program = tmp_path / "hostile"
    subprocess.run([compiler, *include, tmp_path / "block.c", tmp_path / "runtime.o", "-o", program], check=True)
    result = run(program, input=hostile_script(random.Random(compiler)))
    output, errors = result.stdout.decode(), result.stderr.decode()
    assert result.returncode == 3
    assert min(output.count("\n"), errors.count("\n")) > 500
    assert errors.count(": failed: expect ") > 100
    assert all(line.startswith(("<stdin>:", "    ")) for line in errors.split("\n")[:-1])


CRASHES = {
    "a null pointer": ("volatile int *volatile none = NULL; *none = 1;", -signal.SIGSEGV),
    "abort": ("abort();", -signal.SIGABRT),
    "an assertion": ("assert(character == 0);", -signal.SIGABRT),
    "its end": ("_exit(7);", 7),
}


@pytest.mark.parametrize("crash", CRASHES)
def test_what_was_printed_before_a_crash_is_there(tmp_path, crash):
    statement, status = CRASHES[crash]
    handlers = {"OnKey": f'DataFrame f = {{0}}; Print("x"); SendFrame(&f, 1); printf("y"); {statement}'}
    program = build(tmp_path, generated(handlers, "#include <assert.h>\r\n#include <unistd.h>\r\n"))
    done = subprocess.run([program], input=b"key a\n", stdout=subprocess.PIPE, stderr=subprocess.PIPE, timeout=60)
    assert (done.returncode, done.stdout) == (status, b"x(0000000000.000000) can1 000#\ny")


def test_what_was_printed_before_an_endless_loop_is_there(tmp_path):
    program = build(tmp_path, generated({"OnKey": 'printf("x"); Print("y"); for (;;) ;'}))
    with subprocess.Popen([program], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as block:
        block.stdin.write(b"key a\n")
        block.stdin.flush()
        for printed in (b"x", b"y"):
            ready = select.select([block.stdout], [], [], PATIENCE)[0]
            if ready:
                assert os.read(block.stdout.fileno(), 1) == printed
        block.kill()
        assert ready
