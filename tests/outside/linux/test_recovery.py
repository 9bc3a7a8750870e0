"""What was typed comes back, whatever ended the program."""

import shutil
import signal
import subprocess

import pytest
from harness import environment, example_file, run, wait_until
from kill_rounds import members, newest_copy
from linux_harness import write_all_settings
from linux_rounds import LinuxRounds
from x11 import Display

TYPED = "int typed;"


@pytest.fixture(name="block")
def fixture_block(home):
    (home / "tmp").mkdir()
    return shutil.copy(example_file("blink", ".PSF"), home / "edit.PSF")


@pytest.fixture(name="launch")
def fixture_launch(start, home):
    """Starts the program, with copies in the home alone."""
    def launch(*arguments):
        return start(*arguments, TMPDIR=home / "tmp")
    return launch


def copied(home):
    """The references of the newest copy."""
    found = newest_copy(home / ".local/state/tessaly/recovery")
    return found[1]["References"] if found else ""


def type_into_references(program):
    program.go_to_references()
    program.type(TYPED)


def save(program, block):
    program.key("alt+f", "s")
    wait_until("the saved text", lambda: TYPED.encode() in block.read_bytes())


def comes_back(program, block, caption="Recovery", letter="f"):
    """The question comes, and behind a Yes what was typed can be saved."""
    before = block.read_bytes()
    assert TYPED.encode() not in before
    program.wait_for(caption)
    program.key("Return")
    program.wait_for("Tessaly")
    program.key(f"alt+{letter}", "s")
    after = before.replace(b"[GVars]\r\n", b"[GVars]\r\n" + TYPED.encode())
    wait_until("the saved text", lambda: members(block.read_bytes()) == members(after))


@pytest.mark.parametrize("language, caption, letter", [(0, "Recovery", "f"), (1, "Wiederherstellung", "d")])
def test_after_a_kill(home, launch, block, picture, language, caption, letter):
    write_all_settings(home, Language=language)
    program = launch(block)
    type_into_references(program)
    wait_until("the copy", lambda: copied(home).startswith(TYPED))
    program.kill()
    again = launch()
    again.wait_for(caption)
    picture(f"recovery-{language}")
    comes_back(again, block, caption, letter)
    again.kill()
    assert not list((home / ".local/state/tessaly/recovery").glob("copy-*"))
    launch().wait_for("Tessaly")


@pytest.mark.parametrize("number", [signal.SIGTERM, signal.SIGHUP, signal.SIGINT], ids=lambda number: number.name)
def test_after_a_signal_at_once_behind_the_last_key(launch, block, number):
    program = launch(block)
    type_into_references(program)
    display = Display()
    display.taken(display.focus()[0], lambda: None)
    program.process.send_signal(number)
    assert program.wait_for_end() == -number
    comes_back(launch(), block)


def test_after_the_display_is_lost(home, launch, block, monkeypatch):
    server = subprocess.Popen(["Xvfb", "-displayfd", "1", "-screen", "0", "800x600x24", "-nolisten", "tcp", "-noreset"],
                              stdout=subprocess.PIPE, stderr=subprocess.DEVNULL, text=True)
    number = server.stdout.readline().strip()
    manager = subprocess.Popen(["openbox"], env=environment({"DISPLAY": f":{number}"}), stderr=subprocess.DEVNULL)
    try:
        with monkeypatch.context() as other:
            other.setenv("DISPLAY", f":{number}")
            wait_until("the window manager", lambda: "window id" in run(
                "xprop", "-root", "_NET_SUPPORTING_WM_CHECK", text=True).stdout)
            program = launch(block)
            type_into_references(program)
            display = Display()
            display.taken(display.focus()[0], lambda: None)
            display.close()
        server.kill()
        assert program.wait_for_end() != 0
    finally:
        server.kill()
        server.wait()
        manager.wait()
    comes_back(launch(), block)


def test_a_no_keeps_the_text_and_is_not_asked_again(home, launch, block):
    program = launch(block)
    type_into_references(program)
    wait_until("the copy", lambda: copied(home).startswith(TYPED))
    program.kill()
    again = launch()
    again.wait_for("Recovery")
    again.key("Tab", "Return")
    again.wait_for("Tessaly")
    kept = list((home / ".local/state/tessaly/recovery/kept").glob("edit * not recovered.PSF"))
    assert len(kept) == 1
    assert members(kept[0].read_bytes())["References"].startswith(TYPED)
    assert not copied(home)
    again.key("alt+F4")
    assert again.wait_for_end() == 0
    launch().wait_for("Tessaly")


@pytest.fixture(name="rounds")
def fixture_rounds(tmp_path):
    rounds = LinuxRounds(tmp_path, seed=1)
    yield rounds
    rounds.end()


def passed(rounds):
    print(rounds.table())
    assert rounds.faults == []


def test_after_a_kill_in_the_middle_of_saving(rounds):
    rounds.fresh(3_000_000)
    for _ in range(8):
        rounds.round("saving", ["adding"])
    passed(rounds)


def test_after_a_kill_at_any_moment(rounds):
    rounds.run(12)
    passed(rounds)
