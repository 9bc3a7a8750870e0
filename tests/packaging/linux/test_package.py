"""The Debian package looked at from outside, by Debian's own checkers. script/test-packages linux names it."""
import os
import pathlib
import re
import subprocess

import pytest

ROOT = pathlib.Path(__file__).resolve().parents[3]
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


def test_the_desktop_file_is_valid(files):
    assert complaints("desktop-file-validate", files / "usr/share/applications/tessaly.desktop") == (0, "")


def test_the_metainfo_is_valid(files):
    metainfo = files / "usr/share/metainfo/com.ostrel.tessaly.metainfo.xml"
    status, text = complaints("appstreamcli", "validate", "--no-net", "--pedantic", metainfo)
    assert status == 0, text
    assert "Validation was successful" in text, text


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
