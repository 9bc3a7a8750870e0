"""The sample of a batch file in the help: on a target that is put there it builds what runs, and says what is wrong."""

import os
import pathlib
import re
import shutil
import subprocess

import pytest
from harness import BITS, ROOT, drive_c, example_file, wait_until, wine, windows_path
from windows_harness import install, psf

COMPILER = {"32": "i686-w64-mingw32", "64": "x86_64-w64-mingw32"}[BITS]
C_FILE = drive_c() / "ProgramData/Ostrel/Tessaly/program.c"


@pytest.fixture(name="sample", params=["en", "de"])
def fixture_sample(request, folder):
    """The batch file, with a compiler, headers and a runtime library, which are the ones of the kit."""
    target = folder / "my target"
    for part in ("bin", "lib", "objects"):
        (target / part).mkdir(parents=True)
    shutil.copy(pathlib.Path(os.environ["WINDOW_PROBE"]).with_name("gcc.exe"), target / "bin")
    shutil.copytree(ROOT / "kit/include", target / "include")
    subprocess.run([f"{COMPILER}-gcc", "-w", "-c", "-I", ROOT / "kit/include", ROOT / "kit/runtime.c"],
                   cwd=target / "objects", check=True)
    objects = (target / "objects").glob("*.o")
    subprocess.run([f"{COMPILER}-ar", "rcs", target / "lib/libruntime.a", *objects], check=True)
    page = (ROOT / "help" / request.param / "batch-file.md").read_text(encoding="utf-8")
    text = re.search(r"^```bat\n(.*?)^```$", page, re.M | re.S)[1].replace("C:\\Target", windows_path(target))
    file = target / "compile.bat"
    file.write_bytes(text.replace("\n", "\r\n").encode())
    return file


@pytest.fixture(name="c_file")
def fixture_c_file():
    """The C file that the installer sets."""
    C_FILE.parent.mkdir(parents=True, exist_ok=True)
    yield C_FILE
    shutil.rmtree(C_FILE.parent)


def compile_to(sample, output, **variables):
    return wine(windows_path(sample), windows_path(output), env={"TESSALY_C_FILE": None, **variables})


def prints(program):
    """A .out is started by its name alone only where cmd does it; here it gets one that Wine takes, too."""
    started = shutil.copy(program, program.with_suffix(".exe"))
    return wine(windows_path(started), windows_path(example_file("blink", ".events"))).stdout


def test_what_the_editor_wrote_becomes_a_program(sample, c_file, folder, example):
    c_file.write_bytes(psf("generate", example))
    done = compile_to(sample, folder / "my Blink.out")
    assert (done.returncode, done.stdout) == (0, b"")
    assert prints(folder / "my Blink.out").replace(b"\r\n", b"\n") == example_file("blink", ".expected").read_bytes()


def test_another_c_file_is_named_by_the_variable(sample, folder, example):
    (folder / "other.c").write_bytes(psf("generate", example))
    done = compile_to(sample, folder / "Blink.out", TESSALY_C_FILE=windows_path(folder / "other.c"))
    assert done.returncode == 0 and (folder / "Blink.out").exists()


def test_an_error_is_in_the_log_and_the_status_and_leaves_no_old_program(sample, folder):
    (folder / "wrong.c").write_text("int main(void) { nothing; }\n")
    (folder / "Blink.out").write_text("old")
    done = compile_to(sample, folder / "Blink.out", TESSALY_C_FILE=windows_path(folder / "wrong.c"))
    assert done.returncode == 1 and b"nothing" in done.stdout
    assert b"nothing" in (folder / "wrong.c.log").read_bytes()
    assert not (folder / "Blink.out").exists()


def test_f10_starts_it(launch, sample, c_file, folder, installed, example):
    install(**{**installed, "FCompBat": f'"{windows_path(sample)}"', "FCompFileName": windows_path(c_file)})
    launch(windows_path(example)).press_key("F10")
    wait_until("the program", (folder / "Blink.out").exists)
