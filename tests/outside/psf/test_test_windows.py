"""psf.exe test with a batch file and a program of Windows; test_test.py has the rest: it is the same code."""

import pathlib
import subprocess

import pytest
from harness import BITS, ROOT, wait_until, windows_path, write_settings
from psf_harness import only_on_windows, psf, source
from tap_harness import Tap

pytestmark = only_on_windows
MINGW = ("x86_64" if BITS == "64" else "i686") + "-w64-mingw32"

# Does what the lines of its script say, whatever stands in front of it.
PROGRAM = r"""
#include <stdio.h>
#include <stdlib.h>
#include <string.h>
#include <windows.h>
int main(int count, char** words) {
    char line[1000];
    FILE* script = fopen(words[count - 1], "r");
    if (count < 3 || strcmp(words[1], "--strict") != 0 || script == NULL)
        return 64;
    while (fgets(line, sizeof line, script) != NULL) {
        if (strncmp(line, "print ", 6) == 0)
            fputs(line + 6, stdout);
        else if (strncmp(line, "error ", 6) == 0)
            fputs(line + 6, stderr);
        else if (strncmp(line, "exit ", 5) == 0)
            return atoi(line + 5);
        else if (strncmp(line, "touch ", 6) == 0)
            fclose(fopen(strtok(line + 6, "\n"), "w"));
        else if (strncmp(line, "await ", 6) == 0)
            for (strtok(line + 6, "\n"); GetFileAttributesA(line + 6) == INVALID_FILE_ATTRIBUTES;)
                Sleep(20);
        fflush(stdout);
    }
    return 0;
}
"""


@pytest.fixture(name="program", scope="module")
def fixture_program(tmp_path_factory):
    path = tmp_path_factory.mktemp("program") / "program.exe"
    subprocess.run([f"{MINGW}-gcc", "-o", path, "-x", "c", "-"], input=PROGRAM.encode(), check=True)
    return path


class WindowsPlace:
    def __init__(self, folder, program):
        self.folder = folder
        (folder / "program.exe").write_bytes(program.read_bytes())
        batch = folder / "compile.bat"
        batch.write_bytes(b"@echo off\r\nrem TESSALY_C_FILE\r\ncopy /y program.exe %1 >nul\r\n")
        write_settings(folder / "settings.reg", FCompBat=windows_path(batch),
                       FCompFileName=windows_path(folder / "program.c"))

    def block(self, name, **scripts):
        (self.folder / f"{name}.PSF").write_bytes(source())
        for case, text in scripts.items():
            (self.folder / f"{name}.{case}.events").write_bytes(text.encode())

    def test(self, *arguments):
        result = psf("test", *arguments, cwd=self.folder, env={"TESSALY_SETTINGS": str(self.folder / "settings.reg")})
        return Tap(result)


@pytest.fixture
def place(tmp_path, program):
    return WindowsPlace(tmp_path, program)


def test_cases_pass_and_fail_with_what_they_say(place):
    place.block("A block", a="print one\n", b="print one\nerror wrong\nexit 3\n", c="print one\nprint two\n")
    (place.folder / "A block.a.expected").write_bytes(b"one\n")
    (place.folder / "A block.c.expected").write_bytes(b"one\r\nTWO\r\n")
    result = place.test("--jobs", "2", ".")
    assert (result.status, result.passed) == (1, [True, False, False])
    assert result.failure() == {"message": "ended with status 3", "stderr": "wrong", "stdout": "one"}
    found = result.failure(1)
    assert (found["at"], found["expected"], found["got"]) == ("./A block.c.expected:2", "TWO", "two")


def test_cases_run_at_the_same_time_and_the_time_ends_them(place):
    place.block("A", x="touch x.here\nawait y.here\n")
    place.block("B", x="touch y.here\nawait x.here\n")
    assert place.test("--jobs", "2", ".").status == 0
    place.block("C", x="print before\nawait never\n")
    result = place.test("--timeout", "1", "C.PSF")
    assert result.failure() == {"message": "ended after 1 seconds", "stdout": "before"}
    wait_until("the end of the program", lambda: not is_running(str(place.folder / "C.out")))


def is_running(program):
    """Whether a process of Wine runs it."""
    for file in pathlib.Path("/proc").glob("[0-9]*/cmdline"):
        try:
            if program.replace("/", "\\").encode() in file.read_bytes():
                return True
        except OSError:  # it has just ended
            pass
    return False


def test_a_report_is_written(place):
    place.block("A", x="exit 0")
    assert place.test("--junit", "report.xml", "A.PSF").status == 0
    assert b'<testcase name="A.x.events" classname="A"' in (place.folder / "report.xml").read_bytes()


STAND_INS = ROOT / "tests/outside/windows/gcc/gcc.c"
KEY = ["void OnKey(char k)", "{", "    if (k == 'a')", '        Print("a");', "    else", '        Print("b");', "}"]


def test_the_kit_counts_the_lines_that_run_with_gcc(tmp_path):
    for name in ("gcc", "gcov"):
        subprocess.run([f"{MINGW}-gcc", "-municode", "-static", f'-DPROGRAM="{name}"', "-o", tmp_path / f"{name}.exe",
                        STAND_INS], check=True)
    (tmp_path / "a b").mkdir()
    write_settings(tmp_path / "settings.reg", FCompBat=windows_path(ROOT / "kit/compile.bat"),
                   FCompFileName=windows_path(tmp_path / "a b/program.c"))
    psf("new", "A.PSF", cwd=tmp_path)
    psf("set", "A.PSF", "events/OnKey", stdin="\r\n".join(KEY).encode(), cwd=tmp_path)
    (tmp_path / "A.events").write_text("key a\n")
    result = Tap(psf("test", "--coverage=lines.xml", "A.PSF", cwd=tmp_path, env={
        "TESSALY_SETTINGS": str(tmp_path / "settings.reg"), "CC": windows_path(tmp_path / "gcc.exe"),
        "GCOV": windows_path(tmp_path / "gcov.exe")}))
    assert (result.status, result.err) == (0, "")
    assert "A.PSF:events/OnKey: 4 of 5 lines ran, not 6" in result.comments
    number = (tmp_path / "A.PSF").read_text().splitlines().index(KEY[3]) + 1
    assert f'<line number="{number}" hits="1"/>' in (tmp_path / "lines.xml").read_text()
