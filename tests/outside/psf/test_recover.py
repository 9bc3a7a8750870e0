"""psf recover: what the window kept, listed, shown, written and removed. The window is not here, so the copies are
written by hand, as it writes them."""

import json
import os
import re
import shutil
import textwrap

import pytest
from harness import ROOT, recovery_folder
from psf_harness import IS_EXE, leave, mark, not_on_windows, psf, source

BODY = "void Blink()\r\n{\r\n    On();\r\n}"
TYPED = "void Blink()\r\n{\r\n    Off();\r\n}"


class Window:
    """What a window leaves behind."""

    def __init__(self, folder):
        self.state = folder / "state"
        self.folder = recovery_folder() if IS_EXE else self.state / "tessaly/recovery"
        shutil.rmtree(self.folder, ignore_errors=True)
        for made in [self.state, self.folder / "kept"]:
            made.mkdir(parents=True, exist_ok=True)
        self.folder.chmod(0o700)
        self.env = {"TZ": "UTC"} | ({} if IS_EXE else {"XDG_STATE_HOME": str(self.state), "TMPDIR": f"{folder}/tmp"})
        self.file = folder / "Blink.PSF"
        self.file.write_bytes(source([("Blink", BODY)]))

    def leave(self, stem, content, **more):
        leave(self.folder, stem, content, **{"path": str(self.file), **more})

    def copy(self, content, **more):
        self.leave(f"copy-99-{mark(b'then')}-1", content, **more)

    def recover(self, *arguments, **options):
        return psf("recover", *arguments, env=self.env, **options)


@pytest.fixture
def window(tmp_path):
    window = Window(tmp_path)
    yield window
    shutil.rmtree(window.folder, ignore_errors=True)


def test_nothing_kept_is_an_empty_list(window):
    result = window.recover()
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert window.recover("--json").out == b"[]\n"


def test_the_list_has_a_line_for_each_the_newest_first(window):
    window.copy(source([("Blink", TYPED)]))
    window.leave("kept/Blink 2023", source([("Blink", BODY), ("More", "void More()\r\n{\r\n}")], references="int y;"),
                 seconds=1_700_000_100, reason=4)
    assert window.recover().out.decode().splitlines() == [
        f"1\t2023-11-14 22:15:00\tnew file\t{window.file}\treferences, functions/More",
        f"2\t2023-11-14 22:13:20\tnot saved\t{window.file}\tfunctions/Blink"]


def test_the_list_as_json(window):
    window.copy(source([("Blink", TYPED)]), path="")
    kept = json.loads(window.recover("--json").out)
    assert [list(one) for one in kept] == [["number", "time", "reason", "origin", "members", "file"]]
    assert kept[0]["number"] == 1
    assert kept[0]["time"] == "2023-11-14T22:13:20Z"
    assert kept[0]["reason"] == "not saved"
    assert kept[0]["origin"] is None
    assert "functions/Blink" in kept[0]["members"]
    assert os.path.basename(kept[0]["file"].replace("\\", "/")) == f"copy-99-{mark(b'then')}-1.PSF"
    assert psf("show", kept[0]["file"], "functions/Blink").out.startswith(TYPED.encode())


def test_a_document_without_a_name_is_called_so(window):
    window.copy(source([("Blink", TYPED)]), path="")
    assert window.recover().out.decode().split("\t")[3] == "(untitled)"


def test_line_breaks_that_a_save_adds_are_no_difference(window):
    window.copy(source([("Blink", BODY + "\r\n\r\n")], references="int x;\r\n"))
    assert window.recover().out.decode().rstrip("\n").split("\t")[4] == "-"
    assert window.recover(1).out == b""


def test_one_is_shown_as_a_unified_diff_from_the_file_now(window):
    window.copy(source([("Blink", TYPED), ("More", "void More()\r\n{}")]))
    result = window.recover(1)
    assert (result.status, result.err) == (0, "")
    assert result.out.decode() == (
        f"--- {window.file}:functions/Blink\n+++ recovered:functions/Blink\n@@ -1,4 +1,4 @@\n"
        " void Blink()\r\n {\r\n-    On();\r\n+    Off();\r\n }\n"
        "--- /dev/null\n+++ recovered:functions/More\n@@ -0,0 +1,2 @@\n+void More()\r\n+{}\n")


def test_a_deleted_function_is_a_difference(window):
    window.copy(source())
    assert f"--- {window.file}:functions/Blink\n+++ /dev/null\n".encode() in window.recover(1).out


def test_a_file_that_is_gone_differs_from_a_new_document(window):
    window.copy(source([("Blink", TYPED)]))
    window.file.unlink()
    members = window.recover().out.decode().split("\t")[4]
    assert "references, functions/Blink, events/OnError" in members


def test_the_text_is_read_in_the_code_page_of_the_copy(window):
    window.copy(source([("Blink", TYPED)]).replace(b"Off", b"\xe6\xf6\xf8"), codepage="1250")
    assert "ćöř".encode() in window.recover(1).out


def test_one_is_written_to_a_file_exactly(window, tmp_path):
    content = source([("Blink", TYPED)])
    window.copy(content)
    result = window.recover(1, "-o", tmp_path / "out.PSF")
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert (tmp_path / "out.PSF").read_bytes() == content
    assert window.recover().out != b"", "and it stays"


def test_a_file_that_cannot_be_written_is_said(window, tmp_path):
    window.copy(source([("Blink", TYPED)]))
    result = window.recover(1, "-o", tmp_path / "missing/out.PSF")
    assert result.status == 255
    assert "cannot be written" in result.err


def test_one_is_removed_with_the_older_copies_of_its_program(window):
    window.copy(source([("Blink", TYPED)]))
    window.leave(f"copy-99-{mark(b'then')}-0", source(), number=0)
    window.leave("kept/Blink 2023", source(), seconds=1_600_000_000, reason=4)
    result = window.recover("--delete", 1)
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert os.listdir(window.folder) == ["kept"]
    assert len(os.listdir(window.folder / "kept")) == 2
    assert window.recover("--delete", 1).status == 0
    assert os.listdir(window.folder / "kept") == []


@pytest.mark.parametrize("arguments", [[2], [0], [2, "-o", "out.PSF"], ["--delete", 2], [-1], [10**30]])
def test_no_such_number_is_4(window, arguments):
    window.copy(source([("Blink", TYPED)]))
    result = window.recover(*arguments, cwd=window.state)
    assert (result.status, result.out) == (4, b"")
    assert len(result.err.splitlines()) == 1
    assert not list(window.state.rglob("out.PSF"))


@pytest.mark.parametrize("arguments", [
    ["x"], ["1", "2"], ["--delete"], ["-o", "out"], ["1", "--json"], ["1", "-o"], ["1", "-o", "o", "--delete"]])
def test_wrong_usage_is_64(window, arguments):
    result = window.recover(*arguments, cwd=window.state)
    assert (result.status, result.out) == (64, b"")
    assert len(result.err.splitlines()) == 1


def test_what_is_damaged_is_left_out_and_the_older_copy_takes_its_place(window):
    window.copy(source([("Blink", TYPED)]), number=2)
    window.leave(f"copy-99-{mark(b'then')}-0", source([("Blink", BODY + " older")]), number=1)
    assert b"Off" in window.recover(1).out
    newest = window.folder / f"copy-99-{mark(b'then')}-1.PSF"
    newest.write_bytes(newest.read_bytes()[:-1])
    assert b"older" in window.recover(1).out
    assert window.recover(2).status == 4


def test_control_characters_out_of_paths_names_and_texts_are_question_marks(window):
    window.copy(source([("Bad\x1b[2J", "void f()\r\n{ \x1b[2J\ta }")]), path="/x/\x1b]0;a\tb\n.PSF")
    assert window.recover().out.decode().split("\t")[3:] == [
        "/x/?]0;a?b?.PSF", window.recover().out.decode().split("\t")[4]]
    for out in [window.recover().out, window.recover(1).out]:
        assert b"\x1b" not in out
        assert b"?[2J" in out
    assert json.loads(window.recover("--json").out)[0]["origin"] == "/x/\x1b]0;a\tb\n.PSF"


@not_on_windows("who may write there is nothing that a mode tells")
def test_a_folder_that_others_may_write_is_not_read(window):
    window.copy(source([("Blink", TYPED)]))
    window.folder.chmod(0o777)
    assert window.recover().out == b""


@not_on_windows("Wine alone knows where its folder for temporary files is")
def test_copies_in_the_second_folder_are_found_but_not_through_a_link(window, tmp_path):
    window.copy(source([("Blink", TYPED)]))
    second = tmp_path / f"tmp/tessaly-{os.geteuid()}"
    second.parent.mkdir()
    window.folder.rename(second)
    assert len(window.recover().out.splitlines()) == 1
    second.rename(tmp_path / "elsewhere")
    second.symlink_to(tmp_path / "elsewhere")
    assert window.recover().out == b""


def example_in_help(language):
    """The commands of the example in the users' help, each with what it prints."""
    text = (ROOT / f"help/{language}/recovery.md").read_text(encoding="utf-8")
    block = re.search(r"\n\n((?:    .*\n)+)", text[text.index("{#psf}"):])[1]
    return re.findall(r"^\$ psf recover(.*)\n((?:(?!\$).*\n)*)", textwrap.dedent(block), re.M)


@pytest.mark.parametrize("language", ["en", "de"])
def test_the_example_in_the_help_is_what_happens(window, language):
    typed = source([("Blink", TYPED)])
    window.leave("kept/b", typed, seconds=1_795_340_467, reason=1)
    window.leave("kept/a", source([("Blink", BODY), ("Pause", "void Pause()\r\n{}")]), seconds=1_795_276_975, reason=7)
    commands = example_in_help(language)
    assert [arguments for arguments, _ in commands] == ["", " 1", " 1 -o Found.PSF"]
    for arguments, printed in commands:
        result = window.recover(*arguments.split(), cwd=window.state)
        out = result.out.decode().replace(str(window.file), "/home/me/Blink.PSF")
        assert (result.status, out.replace("\r\n", "\n").replace("\t", "  ")) == (0, printed)
    assert (window.state / "Found.PSF").read_bytes() == typed
