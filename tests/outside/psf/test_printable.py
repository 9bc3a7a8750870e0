"""Control characters out of files and names: a terminal would obey them, so psf prints "?" for each."""

import os
import subprocess

import pytest
from psf_harness import COMMAND, not_on_windows, psf, source

# ESC, DEL and a control of 8 bits, which is what the byte 9D is in Windows-1252.
HOSTILE = "Bad\x1b[2J\x7f\x9dName"
SHOWN = "Bad?[2J??Name"
TEXT = "void f()\r\n{\r\n    /* \x1b[2J\x7f\x9d */\r\n}"


def file_with(folder, name=HOSTILE):
    content = source([("Good", "void Good()\r\n{\r\n}"), ("HOSTILE", TEXT.replace("\x9d", "RAW"))])
    path = folder / "x.PSF"
    path.write_bytes(content.replace(b"HOSTILE", name.encode("latin-1")).replace(b"RAW", b"\x9d"))
    return path


def test_the_list_of_members_shows_them_as_question_marks(tmp_path):
    members = psf("show", file_with(tmp_path)).out.decode().split("\n")
    assert members[:3] == ["references", "functions/Good", f"functions/{SHOWN}"]


def test_a_member_s_text_and_the_c_file_are_exact(tmp_path):
    path = file_with(tmp_path)
    assert psf("show", path, f"functions/{HOSTILE}").out.decode() == TEXT + "\r\n"
    assert b"\x1b[2J\x7f\x9d" in psf("generate", path).out


@pytest.mark.parametrize("character", [
    "\x01", "\x1b", "\x7f", "\x9b", "\u061c", "\u200e", "\u202e", "\u2028", "\u2066"])
def test_an_error_shows_what_was_asked_for_without_them(tmp_path, character):
    result = psf("show", file_with(tmp_path), f"functions/a{character}b")
    assert result.status == 4
    assert result.err.endswith('there is no member "functions/a?b"\n')


def test_other_characters_are_shown_as_they_are(tmp_path):
    assert psf("show", file_with(tmp_path), "ü€😄").err.endswith('"ü€😄"\n')


def test_long_errors_are_whole(tmp_path):
    name = "ä\x1b" * 4000
    assert psf("show", file_with(tmp_path), name).err.endswith(f'"{"ä?" * 4000}"\n')


def test_a_warning_of_check_stays_one_line(tmp_path):
    content = source([("A\x1bB", "no brace")], names="A\x1bB,Left\x7f")
    path = tmp_path / "x.PSF"
    path.write_bytes(content)
    out = psf("check", path).out.decode()
    assert "Left?" in out
    assert all(line.startswith(str(path)) for line in out.splitlines())
    assert not set(out) & set(map(chr, [*range(10), *range(11, 32), 127]))


@not_on_windows("no such file names")
@pytest.mark.parametrize("name, shown", [
    ("line\nend\x1b.PSF", b"line?end?.PSF"), (b"bytes\x9b\xff.PSF", b"bytes?\xff.PSF"),
    ("ä\u202e.PSF", "ä?.PSF".encode()),
])
def test_the_names_of_files_are_shown_like_that(tmp_path, name, shown):
    name = name if isinstance(name, bytes) else name.encode()
    path = os.path.join(bytes(tmp_path), name)
    with open(path, "wb") as file:
        file.write(source([("Main", "void Main()\r\n{\r\n}")], names="Main,Left"))
    done = subprocess.run([*COMMAND, "check", path], capture_output=True, timeout=60, check=False)
    assert done.stdout.startswith(os.path.join(bytes(tmp_path), shown) + b":")
    assert done.stdout.count(b"\n") == 1
