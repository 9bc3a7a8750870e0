"""What was typed comes back, whatever ended the Windows program."""

import os

import pytest
from harness import recovery_folder, wait_until, windows_path
from kill_rounds import members, newest_copy
from windows_harness import install
from windows_rounds import WindowsRounds

WM_QUERYENDSESSION, WM_ENDSESSION = 0x11, 0x16
TYPED = "int typed;"


def references(path):
    with open(path, "rb") as file:
        return members(file.read())["References"]


def is_copied():
    found = newest_copy(recovery_folder())
    return found and found[1]["References"].startswith(TYPED)


@pytest.fixture(name="program")
def fixture_program(launch, installed, example):
    program = launch(windows_path(example))
    program.edit("References", TYPED)
    return program


def comes_back(launch, example, caption="Recovery", menu=("File", "Save Program Source File")):
    """The question comes, and behind a Yes what was typed is there and can be saved."""
    before = references(example)
    assert not before.startswith(TYPED)
    program = launch(wait=False)
    box = program.dialog()
    assert box.caption == caption and windows_path(example) in box.text()
    box.press("Yes")
    program.wait_main()
    program.idle()
    assert program.pane().startswith(TYPED)
    program.choose(*menu)
    wait_until("the saved text", lambda: references(example) == TYPED + before)
    program.idle()
    return program


def test_after_a_kill(launch, program, example):
    wait_until("the copy", is_copied)
    program.kill()
    comes_back(launch, example).kill()
    launch().idle()


def test_after_a_kill_in_german(launch, folder, installed, program, example):
    wait_until("the copy", is_copied)
    program.kill()
    install(**installed, Language=1)
    comes_back(launch, example, "Wiederherstellung", ("Datei", "Programmquelldatei speichern"))


def test_after_an_end_of_the_session_that_waits_for_no_answer(launch, probe, program, example):
    probe.ask("post", program.main, WM_QUERYENDSESSION, 0, 0)
    assert program.dialog().text() == "Do you wish to save data?"
    program.kill()
    comes_back(launch, example)


def test_after_an_end_of_the_session_by_force(launch, probe, program, example):
    probe.ask("post", program.main, WM_ENDSESSION, 1, 0)
    assert program.wait_end() == 0
    comes_back(launch, example)


def test_a_no_keeps_the_text_and_is_not_asked_again(launch, program):
    wait_until("the copy", is_copied)
    program.kill()
    again = launch(wait=False)
    again.dialog().press("No")
    again.wait_main()
    again.idle()
    kept = list((recovery_folder() / "kept").glob("* not recovered.PSF"))
    assert len(kept) == 1 and references(kept[0]).startswith(TYPED)
    again.kill()
    launch().idle()


def test_a_file_that_another_program_holds_open(launch, probe, program, example):
    before = references(example)
    assert probe.ask("hold", windows_path(example))
    program.choose("File", "Save Program Source File")
    box = program.dialog()
    assert box.caption == "File write error!"
    box.press("OK")
    program.idle()
    assert references(example) == before
    wait_until("the copy", is_copied)
    program.kill()
    probe.ask("release")
    comes_back(launch, example)


@pytest.fixture(name="rounds")
def fixture_rounds(folder):
    made = []

    def rounds(seed):
        made.append(WindowsRounds(folder, seed))
        return made[-1]

    yield rounds
    made[-1].end()


def test_after_a_kill_at_any_moment(rounds):
    made = rounds(1)
    made.run(6)
    print(made.table())
    assert made.faults == []


@pytest.mark.skipif("TESSALY_SOAK" not in os.environ, reason="it takes long: script/soak windows")
def test_soak(rounds):
    what, number, *seed = os.environ["TESSALY_SOAK"].split()
    seed = int(seed[0]) if seed else os.getpid()
    made = rounds(seed)
    try:
        if what == "windows":
            made.run(int(number), (0, 0, 20_000, 100_000))
        else:
            made.work(int(number))
    finally:
        print(f"\nscript/soak {what} {number} {seed}\n{made.table()}")
        print(*made.faults, sep="\n")
    assert made.faults == []
