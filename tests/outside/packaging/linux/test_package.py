"""The Debian package looked at from outside, by Debian's own checkers. script/test-packages linux names it."""
import os
import platform
import re
import subprocess

import pytest
from gi.repository import Gio
from harness import ROOT, wait_until

DEB = os.environ["TESSALY_DEB"]


@pytest.fixture(scope="module")
def files(tmp_path_factory):
    """The package, unpacked."""
    folder = tmp_path_factory.mktemp("package")
    subprocess.run(["dpkg-deb", "-x", DEB, folder], check=True)
    return folder


def complaints(*command):
    result = subprocess.run([str(part) for part in command], capture_output=True, text=True, timeout=300)
    return result.returncode, result.stdout + result.stderr


def test_lintian_finds_nothing():
    status, text = complaints("lintian", "--pedantic", "--fail-on", "error,warning,info,pedantic", DEB)
    assert status == 0, text
    assert not re.search(r"^[EWIPO]:", text, re.MULTILINE), text


def test_lintian_has_no_note_on_hardening():
    """The other notes are on the help, which is not below /usr/share/doc, since the program shows it."""
    status, text = complaints("lintian", "--display-info", DEB)
    assert status == 0, text
    assert "hardening" not in text


def read_elf(option, program):
    return subprocess.run(["readelf", "-W", option, program], capture_output=True, text=True, check=True).stdout


@pytest.mark.parametrize("name", ["messages.png", "window.png"])
def test_the_help_shows_the_window_of_this_system_in_the_language_of_the_page(files, name):
    help_folder = files / "usr/share"
    shown = {code: next(help_folder.rglob(f"{code}/{name}")).read_bytes() for code in ("en", "de")}
    assert shown["en"] != shown["de"]
    for language, picture in shown.items():
        taken = ROOT / "build/help-pictures/linux" / language / name
        assert picture == taken.read_bytes() != (ROOT / "help" / language / name).read_bytes()
        assert taken.stat().st_mtime > (ROOT / "build/release/bin/tessaly").stat().st_mtime


@pytest.mark.parametrize("name", ["psf", "tessaly"])
def test_a_program_is_hardened(files, name):
    program = files / "usr/bin" / name
    assert "Position-Independent Executable" in read_elf("-h", program)
    segments = read_elf("-l", program)
    assert "GNU_RELRO" in segments
    assert re.search(r"GNU_STACK .* RW +0x", segments), segments
    assert re.search(r"\(FLAGS\) .*BIND_NOW", read_elf("-d", program))
    assert "__stack_chk_fail" in read_elf("--dyn-syms", program)


def test_buffers_are_checked_where_their_size_is_known(files):
    assert re.search(r" __\w+_chk@", read_elf("--dyn-syms", files / "usr/bin/psf"))


@pytest.mark.skipif(platform.machine() != "x86_64", reason="about the x86-64")
@pytest.mark.parametrize("name", ["psf", "tessaly"])
def test_every_function_that_is_called_by_a_pointer_is_marked_as_such(files, name):
    program = files / "usr/bin" / name
    section = re.search(r" \.text +PROGBITS +(\w+) (\w+) (\w+)", read_elf("-S", program))
    start, offset, size = (int(number, 16) for number in section.groups())
    pointers = (int(number, 16) for number in re.findall(r"R_X86_64_RELATIVE +(\w+)", read_elf("-r", program)))
    code = program.read_bytes()[offset:offset + size]
    functions = [pointer - start for pointer in pointers if start <= pointer < start + size]
    assert len(functions) > 100
    assert [hex(at + start) for at in functions if code[at:at + 4] != b"\xf3\x0f\x1e\xfa"] == []  # endbr64


@pytest.mark.parametrize("name", ["tessaly", "tessaly-examples"])
def test_a_desktop_file_is_valid(files, name):
    assert complaints("desktop-file-validate", files / f"usr/share/applications/{name}.desktop") == (0, "")


@pytest.mark.parametrize("state, place", [
    ("", "home/.local/state"), ("relative", "home/.local/state"), ("/a state $HOME", "a state $HOME"),
])
def test_an_action_of_the_desktop_makes_and_opens_the_folder_of_kept_texts(files, tmp_path, monkeypatch, state, place):
    opener = tmp_path / "bin/xdg-open"
    opener.parent.mkdir()
    opener.write_text('#!/bin/sh\nprintf %s "$1" > "$0.part"\nmv "$0.part" "$0.opened"\n')
    opener.chmod(0o700)
    (tmp_path / "home").mkdir()
    monkeypatch.setenv("HOME", str(tmp_path / "home"))
    monkeypatch.setenv("PATH", f"{opener.parent}:{files}/usr/bin:{os.environ['PATH']}")
    monkeypatch.setenv("XDG_STATE_HOME", f"{tmp_path}{state}" if state.startswith("/") else state)
    entry = Gio.DesktopAppInfo.new_from_filename(str(files / "usr/share/applications/tessaly.desktop"))
    assert entry.list_actions() == ["KeptTexts"]
    kept = tmp_path / place / "tessaly/recovery/kept"
    for _ in ("not there yet", "there"):
        entry.launch_action("KeptTexts", None)
        opened = tmp_path / "bin/xdg-open.opened"
        wait_until("the opened folder", opened.exists)
        assert opened.read_text() == str(kept)
        opened.unlink()
        assert [folder.stat().st_mode & 0o777 for folder in (kept, kept.parent)] == [0o700, 0o700]


def test_the_action_has_a_german_name(files):
    entry = (files / "usr/share/applications/tessaly.desktop").read_text(encoding="utf-8")
    assert "Name=Kept texts\nName[de]=Aufbewahrte Texte\n" in entry


def test_the_metainfo_is_valid(files):
    metainfo = files / "usr/share/metainfo/com.ostrel.tessaly.metainfo.xml"
    status, text = complaints("appstreamcli", "validate", "--no-net", "--pedantic", metainfo)
    assert status == 0, text
    assert "Validation was successful" in text, text


def test_whom_to_tell_of_a_problem_is_said_once(files):
    contact = re.search(r"^TESSALY_CONTACT:STRING=(.+)", (ROOT / "build/release/CMakeCache.txt").read_text(), re.M)[1]
    maintainer = complaints("dpkg-deb", "-f", DEB, "Maintainer")
    assert maintainer == (0, f"Tessaly developers <{contact}>\n")
    metainfo = (files / "usr/share/metainfo/com.ostrel.tessaly.metainfo.xml").read_text()
    assert f"<update_contact>{contact}</update_contact>" in metainfo


def test_the_metainfo_fits_the_installed_files(files):
    status, text = complaints("appstreamcli", "validate-tree", "--no-net", files)
    assert status == 0, text


def test_the_man_page_is_well_formed():
    page = ROOT / "packaging" / "linux" / "tessaly.1"
    assert complaints("mandoc", "-T", "lint", "-W", "warning", page) == (0, "")


def test_the_changelog_is_of_this_version():
    version = re.search(r"project\(Tessaly VERSION (\S+)", (ROOT / "CMakeLists.txt").read_text()).group(1)
    assert (ROOT / "packaging" / "linux" / "changelog").read_text().startswith(f"tessaly ({version}) ")
    assert subprocess.run(
        ["dpkg-deb", "-f", DEB, "Version"], capture_output=True, text=True, check=True
    ).stdout == version + "\n"


@pytest.mark.parametrize("name", ["psf", "tessaly"])
def test_a_program_has_a_man_page(files, name):
    assert (files / "usr/bin" / name).exists()
    assert (files / f"usr/share/man/man1/{name}.1.gz").exists()


@pytest.mark.parametrize("holder", ["the Tessaly developers", "Henry Schreiner", "Niels Lohmann"])
def test_the_licence_of_all_that_is_in_the_programs_comes_with_them(files, holder):
    assert holder in (files / "usr/share/doc/tessaly/copyright").read_text(encoding="utf-8")


@pytest.mark.parametrize("language", ["en", "de"])
def test_what_the_help_says_of_places_is_true(files, language):
    page = (ROOT / "help" / language / "install.md").read_text(encoding="utf-8")
    places = re.findall(r"`(/(?:usr|etc)/[^`]*)`", page)
    assert len(places) >= 8
    assert [place for place in places if not (files / place[1:]).is_file()] == []
