"""The lines that the help has for command windows and shells, typed there: cmd where psf is a Windows program."""

import os
import re

import pytest
from harness import ROOT, run, windows_path, wine_command
from psf_harness import IS_EXE, PSF, psf

TEXT = "void OnKey(char character)\n{\n    /* Prüflampe */\n}\n"


def rows(language):
    page = (ROOT / "help" / language / "psf-reference.md").read_text(encoding="utf-8")
    part = page.partition("{#shells}")[2].partition("\n## ")[0]
    return [re.findall(r"`([^`]+)`", line) for line in part.splitlines() if line.startswith("| ")][2:]


def typed(line, folder):
    place = os.path.dirname(PSF)
    if IS_EXE:
        return run(*wine_command("cmd", "/c", line), env={"WINEPATH": windows_path(place)}, cwd=folder)
    return run("sh", "-c", line, env={"PATH": f"{place}:{os.environ['PATH']}"}, cwd=folder)


@pytest.mark.parametrize("language", ["en", "de"])
def test_a_text_goes_in_and_out_with_its_umlauts(language, tmp_path):
    change, write = (row[0] for row in rows(language)[:2])
    psf("new", tmp_path / "Hello.PSF")
    (tmp_path / "OnKey.c").write_text(TEXT, encoding="utf-8")
    for line in (change, write):
        done = typed(line, tmp_path)
        assert (done.returncode, done.stdout, done.stderr) == (0, b"", b"")
    assert TEXT in (tmp_path / "Hello.txt").read_text(encoding="utf-8")


@pytest.mark.parametrize("language", ["en", "de"])
def test_powershell_leaves_to_cmd_what_cmd_does(language):
    for command_window, powershell in rows(language)[:2]:
        assert powershell == f'cmd /c "{command_window}"'
