"""The end of the session, told by a session manager."""

import shutil

import pytest
from harness import example_file, wait_until
from session_manager import ANY_INTERACTION, NO_INTERACTION, SessionManager


@pytest.fixture(name="manager", scope="module")
def fixture_manager():
    return SessionManager()


@pytest.fixture(name="block")
def fixture_block(home):
    return shutil.copy(example_file("blink", ".PSF"), home / "edit.PSF")


@pytest.fixture(name="edited")
def fixture_edited(start, manager, block):
    """The program with an edit that is not saved, known to the session manager."""
    manager.events.clear()
    program = start(block, SESSION_MANAGER=manager.address)
    wait_until("the program at the session manager", lambda: "saved" in manager.run())
    program.go_to_references()
    program.type("int kept;")
    return program


def is_kept(block):
    return "int kept;" in block.read_text("cp1252")


def test_with_leave_it_asks_before_it_says_done_and_ends(edited, manager, block):
    manager.end_session(ANY_INTERACTION)
    wait_until("the question", lambda: "interact" in manager.run() and edited.windows("Save Dialog"))
    edited.wait_for("Save Dialog")
    assert "saved" not in manager.run()
    edited.key("Return")
    wait_until("its word that it is done, and its end", lambda: {"saved", "close"} <= set(manager.run()))
    assert edited.wait_for_end() == 0
    assert is_kept(block)


def test_without_leave_nobody_is_asked_when_the_session_ends(home, edited, manager, block):
    edited.key("alt+l", "g")
    manager.end_session(NO_INTERACTION)
    wait_until("its word that it is done", lambda: "saved" in manager.run())
    assert edited.process.poll() is None
    manager.die()
    assert edited.wait_for_end() == 0
    assert not is_kept(block)
    assert '"Language"=dword:00000001' in (home / ".config/tessaly/settings.reg").read_text()


def test_a_session_that_goes_on_leaves_what_nobody_was_asked_about(edited, manager, block):
    manager.end_session(NO_INTERACTION)
    wait_until("its word that it is done", lambda: "saved" in manager.run())
    manager.cancel()
    edited.close_and_save()
    assert is_kept(block)
