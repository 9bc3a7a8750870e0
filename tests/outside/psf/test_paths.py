"""Which files psf works on: several, folders, lists, standard input; and that each is read once."""

import os
import subprocess

import pytest
from psf_harness import COMMAND, not_on_windows, psf, source

GOOD = source([("Main", "void Main()\r\n{\r\n}")])
ODD = source([("Main", "int a;")])
WARNING = ":12: warning: functions/Main: its code holds no \"{\", so all of it becomes the prototype"


@pytest.fixture
def tree(tmp_path):
    for name in ["b.PSF", "a/c.psf", "a/z/Größe 1.Psf", "a.PSF", "a/notes.txt", ".git/x.PSF", "a/.hidden/x.PSF",
                 "psf/x.psfx"]:
        path = tmp_path / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(ODD)
    return tmp_path


def files(result):
    return [line[:-len(WARNING)] for line in result.out.decode().splitlines() if line.endswith(WARNING)]


def test_a_folder_stands_for_the_psf_files_below_it_in_byte_order(tree):
    result = psf("check", ".", cwd=tree)
    assert files(result) == ["./a.PSF", "./a/c.psf", "./a/z/Größe 1.Psf", "./b.PSF"]
    assert (result.status, result.err) == (1, "")
    assert files(psf("check", "b.PSF", "a/", "a", cwd=tree)) == [
        "b.PSF", "a/c.psf", "a/z/Größe 1.Psf", "a/c.psf", "a/z/Größe 1.Psf"]


def test_a_folder_without_such_files_is_said(tree):
    result = psf("check", "psf", cwd=tree)
    assert (result.status, result.out, result.err) == (0, b"", "psf: psf: there is no PSF file in this folder\n")


@not_on_windows("Wine shows links as files")
def test_links_to_folders_are_not_followed_and_links_to_files_are(tree):
    (tree / "a/loop").symlink_to("..")
    (tree / "a/link.PSF").symlink_to("../b.PSF")
    (tree / "a/nowhere.PSF").symlink_to("nothing")
    os.mkfifo(tree / "a/pipe.PSF")
    result = psf("check", "a", cwd=tree)
    assert files(result) == ["a/c.psf", "a/link.PSF", "a/z/Größe 1.Psf"]
    assert result.err == "psf: a/nowhere.PSF: No such file or directory\n"
    assert result.status == 2
    (tree / "other").symlink_to("a")
    assert "other/c.psf" in files(psf("check", "other", cwd=tree))  # but one that is named is


@pytest.mark.parametrize("text", [b"b.PSF\na/c.psf\n", b"b.PSF\r\n\r\na/c.psf", b"b.PSF\0a/c.psf\0"])
def test_a_list_of_files_comes_from_a_file_or_standard_input(tree, text):
    (tree / "list").write_bytes(text)
    assert files(psf("check", "--files-from", "list", cwd=tree)) == ["b.PSF", "a/c.psf"]
    assert files(psf("check", "a.PSF", "--files-from", "-", cwd=tree, stdin=text)) == ["a.PSF", "b.PSF", "a/c.psf"]


def test_an_empty_list_is_no_mistake_and_a_missing_one_is(tree):
    result = psf("check", "--files-from", "-", cwd=tree)
    assert (result.status, result.out, result.err) == (0, b"", "")
    result = psf("check", "--files-from", "none", cwd=tree)
    assert (result.status, result.out) == (2, b"")
    assert result.err == "psf: none: No such file or directory\n"


@not_on_windows("a name cannot have a line break there")
def test_a_list_with_nuls_may_hold_any_name_and_a_line_stays_a_line(tree):
    (tree / "a\nb.PSF").write_bytes(ODD)
    (tree / "-").write_bytes(ODD)
    result = psf("check", "--files-from", "-", cwd=tree, stdin=b"a\nb.PSF\0-\0")
    assert files(result) == ["a?b.PSF", "./-"]


def test_a_dash_is_standard_input_and_has_a_name(tree):
    assert files(psf("check", "-", stdin=ODD)) == ["-"]
    assert files(psf("check", "--name", "Main.PSF", "-", stdin=ODD)) == ["Main.PSF"]
    assert psf("show", "-", "functions/Main", stdin=ODD).out == b"int a;\r\n"
    assert psf("show", "--json", "-", stdin=ODD).out == psf("show", "--json", tree / "a.PSF").out
    assert psf("generate", "-", stdin=ODD).out == psf("generate", tree / "a.PSF").out
    result = psf("show", "--name", "x.PSF", "-", "functions/None", stdin=ODD)
    assert (result.status, result.err) == (4, 'psf: x.PSF: there is no member "functions/None"\n')
    (tree / "-").write_bytes(GOOD)
    assert psf("show", "./-", "functions/Main", cwd=tree, stdin=ODD).out == b"void Main()\r\n{\r\n}\r\n"


@pytest.mark.parametrize("arguments", [["check"], ["show"], ["show", "--json"], ["generate"]])
def test_what_is_wrong_with_standard_input_is_told_by_its_name(arguments):
    result = psf(*arguments, "-", "--name", "HEAD:x.PSF", stdin=GOOD[:-30])
    assert result.status == 2
    assert result.err.startswith("psf: HEAD:x.PSF: not a complete PSF file")


@not_on_windows("no such files")
@pytest.mark.parametrize("arguments", [["check"], ["show"], ["show", "--json"], ["generate"]])
def test_a_file_is_read_once_so_a_pipe_will_do(tree, arguments):
    whole = psf(*arguments, tree / "b.PSF")
    first = psf(*arguments, "/dev/stdin", stdin=ODD)
    assert (first.status, first.err) == (whole.status, "")
    assert first.out == whole.out.replace(str(tree / "b.PSF").encode(), b"/dev/stdin")
    os.mkfifo(tree / "pipe")
    process = subprocess.Popen([*COMMAND, *arguments, tree / "pipe"], stdout=subprocess.PIPE)
    (tree / "pipe").write_bytes(ODD)
    assert process.communicate(timeout=60)[0] == whole.out.replace(b"b.PSF", b"pipe")


@not_on_windows("no shell")
def test_lines_of_both_outputs_are_whole_and_in_the_order_of_the_files(tree):
    for number in range(50):
        (tree / f"{number:02}.PSF").write_bytes(ODD[:-30] if number % 2 else ODD)
    done = subprocess.run([*COMMAND, "check", *(f"{number:02}.PSF" for number in range(50))], stdout=subprocess.PIPE,
                          stderr=subprocess.STDOUT, cwd=tree, timeout=60)
    lines = done.stdout.decode().splitlines()
    assert [line.replace("psf: ", "").split(".")[0] for line in lines] == [
        f"{number:02}" for number in range(50) for _ in range(3 if number % 2 else 1)]
    assert all(line.startswith("psf: ") or ": warning: " in line for line in lines)
