"""psf.exe build with batch files of Windows: the settings, the command line, what comes back. test_build.py has
the rest: it is the same code."""

import pytest
from harness import KEY, reg, windows_path, write_settings
from psf_harness import only_on_windows, psf, source

pytestmark = only_on_windows


class Workplace:
    """A folder with a settings file, and psf in it."""

    def __init__(self, folder):
        self.folder = folder
        self.c_file = folder / "program ä.c"

    def write(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path

    def batch(self, script, name="my compile ä.bat"):
        path = self.write(name, f"@echo off\r\n{script}\r\n".encode("cp1252"))
        write_settings(self.folder / "settings.reg", FCompBat=windows_path(path),
                       FCompFileName=windows_path(self.c_file))

    def build(self, file):
        return psf("build", file, env={"TESSALY_SETTINGS": str(self.folder / "settings.reg")}, cwd=self.folder)


@pytest.fixture
def place(tmp_path):
    return Workplace(tmp_path)


@pytest.mark.parametrize("file, output", [
    ("Blink.PSF", "Blink.out"), ("a b/Größe 1.PSF", "a b/Größe 1.out"), ("Blink.txt", ".out")])
def test_the_batch_file_gets_the_quoted_output_name_alone(place, file, output):
    place.write(file, source())
    place.batch('type nul > %1\r\nif "%2"=="" echo alone')
    result = place.build(file)
    assert (result.status, result.out, result.err) == (0, b"alone\r\n", "")
    assert (place.folder / output).read_bytes() == b""
    assert place.c_file.read_bytes() == psf("generate", place.folder / file).out


@pytest.mark.parametrize("status", [0, 3, 255])
def test_the_batch_files_exit_status_is_passed_on(place, status):
    place.write("x.PSF", source())
    place.batch(f"exit /b {status}")
    assert place.build("x.PSF").status == status


def test_what_the_compiler_says_is_led_back_to_the_members(place):
    place.write("x.PSF", source([("Blink", "void Blink(void)\r\n{\r\n    first = 1;\r\n}")]))
    text = psf("generate", place.folder / "x.PSF").out.replace(b"\r\n", b"\n").replace(b"\r", b"\n")
    number = next(i for i, line in enumerate(text.split(b"\n"), 1) if b"first" in line)
    place.write("said.txt", f"{windows_path(place.c_file)}:{number}:5: error: 'first' is no name\r\n".encode("cp1252"))
    place.batch("type said.txt\r\nexit /b 1")
    result = place.build("x.PSF")
    assert result.status == 1
    assert result.out.decode() == (
        f"x.PSF:functions/Blink:3: error: 'first' is no name ({windows_path(place.c_file)}:{number}:5)\r\n")


def test_a_path_that_the_shell_would_change_is_refused(place):
    place.write("per%OS%cent.PSF", source())
    place.batch("echo built %1")
    result = place.build("per%OS%cent.PSF")
    assert (result.status, result.out) == (64, b"")
    assert "cannot carry a path with a double quote or a percent sign" in result.err
    assert not place.c_file.exists()


def test_a_batch_file_that_is_not_there_is_127(place):
    place.write("x.PSF", source())
    place.batch("exit /b 0")
    (place.folder / "my compile ä.bat").unlink()
    result = place.build("x.PSF")
    assert (result.status, result.out) == (127, b"")
    assert "my compile ä.bat: the compiler cannot be started: No such file or directory" in result.err


def test_without_a_settings_file_the_registry_counts(place):
    place.write("x.PSF", source())
    place.batch("echo built %1")
    try:
        reg("add", KEY, "/v", "FCompBat", "/d", windows_path(place.folder / "my compile ä.bat"), "/f")
        reg("add", KEY, "/v", "FCompFileName", "/d", windows_path(place.c_file), "/f")
        result = psf("build", "x.PSF", cwd=place.folder)
        assert (result.status, result.out, result.err) == (0, b'built "x.out"\r\n', "")
    finally:
        reg("delete", KEY, "/f")
    assert psf("build", "x.PSF", cwd=place.folder).status == 127
