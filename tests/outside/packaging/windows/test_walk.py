"""From Windows without Tessaly to a program block that runs and a test that passes, by README and the help alone.

Their lines go through cmd.exe under Wine. There is no PowerShell to try theirs in.
"""
import shutil

import pytest
from first_block import first_block, without_indent, write_and_build
from harness import wait_until, windows_path, wine, xdotool
from installation import COMPILER, DRIVE_C, PSF, SETUP, START_MENU, is_running, remove_everything
from pages import section, steps, walk

README = "README.md"


def command(line, folder):
    """Types a line into a new command window, and returns what is printed."""
    done = wine("cmd", "/d", "/c", line, cwd=folder, env={**COMPILER, "TESSALY_NO_PAUSE": "1"})
    assert done.returncode == 0, (line, done)
    return done.stdout.decode()


@pytest.fixture(scope="module", autouse=True)
def installation(tmp_path_factory):
    """By the line that README gives."""
    folder = tmp_path_factory.mktemp("download")
    shutil.copy(SETUP, folder)
    line, = (step.text for step in steps(section(README, "Install"), "windows"))
    assert line.startswith(SETUP.name)
    command(line, folder)
    wait_until("psf", PSF.exists)
    yield
    remove_everything()


@pytest.fixture(name="folder")
def fixture_folder():
    folder = DRIVE_C / "Walk"
    folder.mkdir()
    yield folder
    shutil.rmtree(folder)


def save(folder, name, text):
    """As Notepad does."""
    (folder / name).write_text(text, newline="\r\n")


def test_readme_leads_to_a_block_that_runs_and_a_test_that_passes(folder):
    for heading in ("Your first program block", "Test it"):
        walk(section(README, heading), "windows", lambda name, text: save(folder, name, text),
             lambda line: command(line, folder))


def test_the_page_of_the_help_leads_to_a_block_that_runs(folder):
    page = first_block("en")
    program = folder / page.file.replace(".PSF", ".out")
    assert wine("start", windows_path(START_MENU / "Tessaly.lnk"),
                env={**COMPILER, "TESSALY_NO_PAUSE": "1"}).returncode == 0
    wait_until("the window", lambda: xdotool("search", "--onlyvisible", "--name", "^Tessaly$", check=False))
    write_and_build(page, windows_path(folder / page.file))
    wait_until("the built program", lambda: program.exists() and not is_running("gcc.exe"))
    assert wine("taskkill", "/im", "Tessaly.exe").returncode == 0
    wait_until("the program's end", lambda: not is_running("Tessaly.exe"))
    for member, text in ((f"functions/{page.name}", page.function), ("events/OnKey", page.handler)):
        assert without_indent(command(f"psf show {page.file} {member}", folder)) == without_indent(text)
    save(folder, page.script, page.events)
    for line in (page.run["windows"], page.run["powershell"]):
        assert command(line, folder).replace("\r\n", "\n") == page.printed
