"""Program blocks that run live: keys and the serial port are pseudo terminals, CAN interfaces those of the kernel."""
import fcntl
import os
import pty
import select
import shutil
import signal
import socket
import struct
import subprocess
import termios
import time

import pytest

from c_files import generated
from harness import PATIENCE, run, wait_until
from kit_harness import build

HANDLERS = {
    "OnStart": 'Print("start %ld\\n", time); StartTimer(1, 100);',
    "OnStop": 'Print("stop %d\\n", time >= 0); SerialWrite("bye", 3);',
    "OnTimer": 'if (timerid == 1) Print("tick %ld\\n", Now()); else Print("once %ld\\n", Now());',
    "OnSerial": """uint i; for (i = 0; i < datacount; i++) Print("serial %02x\\n", ((const uchar*)data)[i]);
        SerialWrite(data, datacount);""",
    "OnFrame": """Print("frame %d\\n", channel); frame->id++; SendFrame(frame, channel);""",
    "OnError": 'Print("error %d %02x\\n", channel, error_type);',
    "OnKey": """DataFrame f = {0}; f.id = 0x123; f.length = 1; f.data[0] = (uchar)character;
        Print("key %02x\\n", (uchar)character);
        switch (character) {
        case 'f': SendFrame(&f, 0); break;
        case 'o': StartTimerOnce(2, 50); break;
        case 'q': exit(7);
        case 'a': abort();
        case 'c': { volatile int *volatile none = NULL; *none = 1; } break;
        case 'r': Deeper(1); break;
        case 'x': Fail("%d", 1); break;
        case 'l': for (;;) ; }""",
}
DEEPER = """int Deeper(int n)
{
volatile char room[10000]; room[n % 10000] = 1;
return n == 0 ? 0 : Deeper(n + 1) + room[1];
}
"""


@pytest.fixture(scope="module")
def block(tmp_path_factory):
    return build(tmp_path_factory.mktemp("live"), generated(HANDLERS, DEEPER.replace("\n", "\r\n")))


class Terminal:
    """A terminal that a block runs in, with the two files of it that a person has: the keys, and what is shown."""

    def __init__(self, program, *options):
        self.master, self.slave = pty.openpty()
        self.shown = b""
        self.before = termios.tcgetattr(self.slave)

        def take():
            os.setsid()
            fcntl.ioctl(0, termios.TIOCSCTTY, 0)

        self.process = subprocess.Popen([program, "--live", *options], stdin=self.slave, stdout=self.slave,
                                        stderr=self.slave, preexec_fn=take)

    def press(self, keys):
        os.write(self.master, keys)

    def wait_for(self, text):
        deadline = time.monotonic() + PATIENCE
        while text not in self.shown:
            assert select.select([self.master], [], [], max(0, deadline - time.monotonic()))[0], (text, self.shown)
            self.shown += os.read(self.master, 65536)

    def is_as_before(self):
        return termios.tcgetattr(self.slave) == self.before

    def end(self):
        status = self.process.wait(PATIENCE)
        while select.select([self.master], [], [], 0)[0]:
            self.shown += os.read(self.master, 65536)
        return status

    def close(self):
        if self.process.poll() is None:
            self.process.kill()
            self.process.wait()
        os.close(self.master)
        os.close(self.slave)


@pytest.fixture
def terminal(block):
    opened = []

    def start(*options):
        opened.append(Terminal(block, *options))
        opened[-1].wait_for(b"start 0")
        return opened[-1]

    yield start
    for each in opened:
        each.close()


class Port:
    """A serial port; the other side of it is read and written here."""

    def __init__(self):
        self.file, self.slave = pty.openpty()
        self.name = os.ttyname(self.slave)

    def wait_for(self, data):
        read = b""
        while len(read) < len(data):
            assert select.select([self.file], [], [], PATIENCE)[0], read
            read += os.read(self.file, 65536)
        assert read == data


@pytest.fixture
def port():
    opened = Port()
    yield opened
    os.close(opened.slave)
    os.close(opened.file)


def test_keys_come_one_by_one_and_are_not_shown(terminal):
    window = terminal()
    window.press(b"1")
    window.wait_for(b"key 31\r\n")
    window.press("ä€\r\x11\x1b".encode())
    window.wait_for(b"key e4\r\nkey 80\r\nkey 0d\r\nkey 11\r\nkey 1b\r\n")
    assert b"1\r\n1" not in window.shown
    window.press(b"\xc3")
    window.press(b"z\xff")
    window.wait_for(b"key 7a\r\nkey 3f\r\n")
    window.press(b"\x03")
    assert window.end() == 0
    assert b"stop 1" in window.shown


def test_timers_follow_the_clock(terminal):
    began = time.monotonic()
    window = terminal()
    window.wait_for(b"tick 500\r\n")
    assert time.monotonic() - began >= 0.5
    window.press(b"o")
    window.wait_for(b"once ")
    window.press(b"f")
    window.wait_for(b") can0 123#66\r\n")
    stamp = float(window.shown.split(b"(")[1].split(b")")[0])
    assert abs(stamp - time.time()) < PATIENCE


ENDS = {
    "Ctrl+C": (lambda window: window.press(b"\x03"), 0, True),
    "SIGTERM": (lambda window: window.process.send_signal(signal.SIGTERM), 0, True),
    "SIGHUP": (lambda window: window.process.send_signal(signal.SIGHUP), 0, True),
    "Ctrl+\\": (lambda window: window.press(b"\x1c"), 0, True),
    "Ctrl+C after a failure": (lambda window: window.press(b"x"), 3, True),
    "exit": (lambda window: window.press(b"q"), 7, False),
    "abort": (lambda window: window.press(b"a"), -signal.SIGABRT, False),
    "a null pointer": (lambda window: window.press(b"c"), -signal.SIGSEGV, False),
    "endless recursion": (lambda window: window.press(b"r"), -signal.SIGSEGV, False),
}


@pytest.mark.parametrize("how", ENDS)
def test_the_terminal_is_as_before_however_it_ends(terminal, how):
    window = terminal()
    wait_until("the keys", lambda: not window.is_as_before())
    assert not termios.tcgetattr(window.slave)[3] & (termios.ECHO | termios.ICANON)
    end, status, stops = ENDS[how]
    end(window)
    if status == 3:
        window.wait_for(b"<live>: failed: (")
        window.press(b"\x03")
    assert window.end() == status
    assert window.is_as_before()
    assert (b"stop 1" in window.shown) == stops


def test_a_second_signal_ends_a_handler_that_does_not(terminal):
    window = terminal()
    window.press(b"l")
    window.wait_for(b"key 6c")
    wait_until("the end", lambda: window.press(b"\x03") or window.process.poll() is not None)
    assert window.end() == -signal.SIGINT
    assert window.is_as_before()


def test_the_terminal_is_as_before_while_it_is_suspended(terminal):
    window = terminal()
    wait_until("the keys", lambda: not window.is_as_before())
    window.press(b"\x1a")
    assert os.WIFSTOPPED(os.waitpid(window.process.pid, os.WUNTRACED)[1])
    assert window.is_as_before()
    window.process.send_signal(signal.SIGCONT)
    wait_until("the keys", lambda: not window.is_as_before())
    window.press(b"1")
    window.wait_for(b"key 31")


def test_keys_may_come_from_elsewhere(block):
    with subprocess.Popen([block, "--live"], stdin=subprocess.PIPE, stdout=subprocess.PIPE) as process:
        process.stdin.write(b"1\n")
        process.stdin.close()
        seen = [process.stdout.readline() for _ in range(8)]
        assert [line for line in seen if line.startswith(b"key")] == [b"key 31\n", b"key 0a\n"]
        assert seen[-1].startswith(b"tick")  # the end of the keys is not the end of the run
        process.terminate()
        assert (process.stdout.read().endswith(b"serial 62 79 65\n"), process.wait(PATIENCE)) == (True, 0)


def test_bytes_pass_the_serial_port_as_they_are(terminal, port):
    window = terminal("--serial", port.name)
    data = bytes(range(256))
    os.write(port.file, data)
    port.wait_for(data)
    window.wait_for(b"serial ff\r\n")
    window.press(b"\x03")
    port.wait_for(b"bye")
    assert window.end() == 0


def test_a_serial_port_that_is_gone_ends_the_run(block):
    port = Port()
    with subprocess.Popen([block, "--live", "--serial", port.name], stdin=subprocess.DEVNULL, stdout=subprocess.PIPE,
                          stderr=subprocess.PIPE) as process:
        assert process.stdout.readline() == b"start 0\n"
        os.close(port.slave)
        os.close(port.file)
        output, errors = process.communicate(timeout=PATIENCE)
    assert (process.returncode, b"stop 1\n" in output) == (1, True)
    assert errors.decode().startswith(f"{port.name}: ")


def test_what_is_not_read_at_once_waits(block, port):
    with subprocess.Popen([block, "--live", "--serial", port.name], stdin=subprocess.DEVNULL, stdout=subprocess.DEVNULL,
                          stderr=subprocess.PIPE) as process:
        wait_until("the port", lambda: not termios.tcgetattr(port.slave)[3] & termios.ECHO)
        sent = bytes(range(256)) * 400
        os.set_blocking(port.file, False)
        waiting, read = sent, b""
        deadline = time.monotonic() + PATIENCE
        while len(read) < len(sent) and time.monotonic() < deadline:
            writers = [port.file] if waiting else []
            readers = [port.file] if not waiting else []  # nothing is read before all is written, or no more goes in
            readable, writable, _ = select.select(readers, writers, [], 0.5)
            if writable:
                waiting = waiting[os.write(port.file, waiting[:4096]):]
            elif readable or waiting:
                read += os.read(port.file, 65536) if select.select([port.file], [], [], PATIENCE)[0] else b""
        process.kill()
    assert read == sent


@pytest.mark.parametrize("options", [["x.events"], ["--realtime"], ["--strict"], ["--serial"]])
def test_live_has_no_script(block, options):
    result = run(block, "--live", *options, text=True)
    assert (result.returncode, result.stdout, result.stderr[:7]) == (64, "", "usage: ")


def test_a_serial_port_is_for_live_alone(block):
    assert run(block, "--serial", "/dev/null").returncode == 64


@pytest.mark.parametrize("options", [["--serial", "/dev/none"], ["--serial", "/dev/null"], ["--channel", "0=nocan"],
                                     ["--channel", "0=" + 20 * "x"]])
def test_a_device_that_cannot_be_opened_is_named(block, options):
    result = run(block, "--live", *options, text=True)
    assert (result.returncode, result.stdout) == (1, "")
    assert result.stderr.startswith(options[1].removeprefix("0=") + ": ")
    assert result.stderr.count("\n") == 1


# CAN interfaces

@pytest.fixture(scope="module")
def vcan():
    """A virtual CAN interface; only where the kernel has them and we may make one."""
    if not shutil.which("ip"):
        pytest.skip("no virtual CAN interface: there is no program ip")
    made = run("ip", "link", "add", "dev", "tsvcan", "type", "vcan", text=True)
    if made.returncode != 0:
        pytest.skip(f"no virtual CAN interface: {made.stderr.strip()}")
    run("ip", "link", "set", "tsvcan", "mtu", "72", "up")
    yield "tsvcan"
    run("ip", "link", "delete", "tsvcan")


CAN = struct.Struct("=IB3x8s")
CAN_FD = struct.Struct("=IBB2x64s")


def test_frames_pass_between_the_block_and_an_interface(terminal, vcan):
    window = terminal("--channel", f"0={vcan}")
    with socket.socket(socket.AF_CAN, socket.SOCK_RAW, socket.CAN_RAW) as other:
        other.setsockopt(socket.SOL_CAN_RAW, socket.CAN_RAW_FD_FRAMES, 1)
        other.settimeout(PATIENCE)
        other.bind((vcan,))
        window.press(b"f")
        assert other.recv(72) == CAN.pack(0x123, 1, b"f".ljust(8, b"\0"))
        for identifier in (0x100, 0x98DAF110, 0x40000200):  # with 11 and 29 bits, and a remote frame
            data = b"" if identifier == 0x40000200 else b"\1\2"
            other.send(CAN.pack(identifier, 2, data))
            assert other.recv(72) == CAN.pack(identifier + 1, 2, data.ljust(8, b"\0"))
        other.send(CAN_FD.pack(0x300, 12, 1, bytes(range(12))))
        identifier, length, flags, data = CAN_FD.unpack(other.recv(72))
        assert (identifier, length, flags & 3, data[:12]) == (0x301, 12, 1, bytes(range(12)))
    window.press(b"\x03")
    assert window.end() == 0


@pytest.mark.parametrize("name", ["signal", "read", "open", "socket"])
def test_a_variable_in_the_place_of_a_call_that_only_live_needs_is_named(tmp_path, name):
    block = build(tmp_path, generated({"OnStart": 'Print("start\\n");'}, f"int {name};\r\n"))
    result = run(block, "--live", stdin=subprocess.DEVNULL)
    assert (result.returncode, result.stdout) == (1, b"")
    assert result.stderr.decode() == (f'the global variable "{name}" has the name of a function of the C library'
                                      " that the runtime needs: rename it\n")
    assert run(block, input=b"start\n").stdout == b"start\n"
