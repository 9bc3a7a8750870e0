"""The commands of psf that show and change files, as other programs rely on them."""

import json
import os
import re
import shlex
import stat
import subprocess
import tempfile

import pytest
from harness import EVENTS
from psf_harness import COMMAND, IS_EXE, not_on_windows, psf, shown, source

BODY = "void Main(void)\r\n{\r\n}"


@pytest.fixture
def file(tmp_path):
    path = tmp_path / "Main.PSF"
    path.write_bytes(source([("Main", BODY), ("Other", "void Other()\r\n{\r\n}")]))
    return path


def unchanged(path, *arguments, status, **options):
    """The command is refused with this status, says so, prints nothing and leaves file and folder as they were."""
    before = path.read_bytes()
    listing = sorted(os.listdir(path.parent))
    result = psf(*arguments, **options)
    assert result.status == status, result
    assert result.out == b""
    assert result.err != ""
    assert path.read_bytes() == before
    assert sorted(os.listdir(path.parent)) == listing


# new

def test_new_writes_the_default_document(tmp_path):
    path = tmp_path / "New.PSF"
    result = psf("new", path)
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert path.read_bytes().startswith(
        b"[BeginPSF]\r\nComment= Do not modify this file! Doing so will produce unpredictable results!!!\r\n"
        b"FileName=\r\n[GVars]\r\n/* ... include ... */\n\n")
    assert path.read_bytes().endswith(b"[OnMsg]\r\nFuncBody=void OnMsg(char * string){}\r\n[EndPSF]\r\n")
    assert os.listdir(tmp_path) == ["New.PSF"]


def test_new_refuses_to_replace_a_file_unless_forced(file):
    unchanged(file, "new", file, status=64)
    assert psf("new", "--force", file).status == 0
    assert shown(file)["functions"] == []


@not_on_windows("no modes")
def test_new_gives_the_file_the_mode_that_the_umask_leaves(tmp_path):
    old = os.umask(0o027)
    try:
        psf("new", tmp_path / "New.PSF")
    finally:
        os.umask(old)
    assert stat.S_IMODE(os.stat(tmp_path / "New.PSF").st_mode) == 0o640


def test_new_where_nothing_can_be_written_is_255(tmp_path):
    result = psf("new", tmp_path / "no" / "New.PSF")
    assert (result.status, result.out) == (255, b"")
    assert "No such file or directory" in result.err


# show

def test_show_lists_the_members_in_document_order(file):
    result = psf("show", file)
    assert result.status == 0
    assert result.out.decode().splitlines() == [
        "references", "functions/Main", "functions/Other", *(f"events/{event}" for event in EVENTS)]
    assert result.out.endswith(b"\n")


def test_show_prints_a_members_text_exactly_as_held(file):
    assert psf("show", file, "references").out == b"int x;\r\n"
    assert psf("show", file, "functions/Main").out == BODY.encode() + b"\r\n"
    assert psf("show", file, "events/OnKey").out == b"void OnKey()\r\n{\r\n}\r\n"


@pytest.mark.parametrize("member", [
    "", "functions/main", "functions/", "events/onkey", "References", "events/OnShutdown", "Main"])
def test_an_unknown_member_is_4(file, member):
    unchanged(file, "show", file, member, status=4)
    unchanged(file, "set", file, member, status=4, stdin=b"x")


def test_show_json_prints_the_whole_document(file):
    result = psf("show", "--json", file)
    assert result.status == 0
    document = json.loads(result.out)
    assert list(document) == ["status", "references", "functions", "events"]
    assert document["status"] == 0
    assert document["references"] == "int x;\r\n"
    assert document["functions"][0] == {"name": "Main", "prototype": "\r\n", "code": BODY + "\r\n"}
    assert list(document["functions"][0]) == ["name", "prototype", "code"]
    assert list(document["events"]) == EVENTS


def test_show_json_also_prints_what_a_failed_load_left(tmp_path):
    path = tmp_path / "cut.PSF"
    path.write_bytes(source([("Main", BODY)], events=EVENTS[:3], end=None))
    result = psf("show", "--json", path)
    assert result.status == 2
    document = json.loads(result.out)
    assert document["status"] == 2
    assert [f["name"] for f in document["functions"]] == ["Main"]
    assert document["events"]["OnError"] == "void OnError()\r\n{\r\n}\r\n"
    assert document["events"]["OnKey"] == "void OnKey(char character)\n{\n\n}"
    missing = psf("show", "--json", tmp_path / "missing.PSF")
    assert missing.status == 2
    assert json.loads(missing.out)["references"] == "/* ... include ... */\n\n/* ... variables ...*/\n"


def test_show_of_a_file_that_does_not_load_is_2_and_prints_nothing(tmp_path):
    for arguments in (["show", tmp_path / "no.PSF"], ["show", tmp_path / "no.PSF", "references"], ["show", tmp_path]):
        result = psf(*arguments)
        assert (result.status, result.out) == (2, b"")
        assert "no.PSF: No such file" in result.err or "Is a directory" in result.err


def test_json_is_utf_8_for_every_byte_of_a_file(tmp_path):
    path = tmp_path / "all.PSF"
    every = bytes(b for b in range(256) if b not in b"\r\n")
    path.write_bytes(source().replace(b"int x;", every))
    text = json.loads(psf("show", "--json", path).out.decode("utf-8"))["references"]
    assert text.startswith(bytes(range(10)).decode("latin-1"))
    assert "€" in text and "\x81" in text and "ß" in text


# set

def test_set_replaces_a_members_text(file):
    for member in ("references", "functions/Other", "events/OnMsg"):
        text = f"/* {member} ä€ */\nsecond\r\n"
        assert psf("set", file, member, stdin=text.encode()).status == 0
        assert psf("show", file, member).out == text.encode() + b"\r\n"


def test_set_empties_the_stored_prototype_of_a_function(tmp_path):
    path = tmp_path / "proto.PSF"
    path.write_bytes(source([("Main", "void Main(int n)", BODY)]))
    assert shown(path)["functions"][0]["prototype"] == "void Main(int n)\r\n"
    assert psf("set", path, "functions/Main", stdin=b"x").status == 0
    assert shown(path)["functions"][0]["prototype"] == "\r\n"


def test_set_writes_a_question_mark_for_what_has_no_place(file):
    psf("set", file, "references", stdin="äΩ😀".encode())
    assert b"[GVars]\r\n\xe4??\r\n" in file.read_bytes()


@pytest.mark.parametrize("text", [b"\xff", b"a\xc3", b"\xed\xa0\x80", b"\xc0\x80"])
def test_standard_input_that_is_not_utf_8_is_refused(file, text):
    unchanged(file, "set", file, "references", status=64, stdin=text)


def test_set_tells_which_characters_the_code_page_lacks(file):
    result = psf("set", file, "references", stdin="ä€\nΩ → ≤\nΩ😀".encode())
    assert result.status == 0
    assert result.err == (f'psf: {file}: references: characters that the code page lacks become "?": '
                          "U+03A9 in line 2, U+2192 in line 2, U+2264 in line 2, U+1F600 in line 3\n")
    unchanged(file, "set", "--strict", file, "references", status=64, stdin="Ω".encode())
    assert psf("set", "--strict", file, "references", stdin="ä€?\u0081".encode()).err == ""


def test_set_drops_a_byte_order_mark(file):
    result = psf("set", file, "references", stdin=b"\xef\xbb\xbfint y;")
    assert (result.status, result.err) == (0, "")
    assert psf("show", file, "references").out == b"int y;\r\n"


@not_on_windows("its pipes are another matter")
def test_set_takes_the_file_as_it_is_when_the_text_has_come(file):
    process = subprocess.Popen([*COMMAND, "set", file, "references"], stdin=subprocess.PIPE)
    process.stdin.write(b"int y;")
    process.stdin.flush()
    psf("add", file, "Added")
    process.stdin.close()
    assert process.wait(timeout=60) == 0
    assert [f["name"] for f in shown(file)["functions"]] == ["Main", "Other", "Added"]
    assert psf("show", file, "references").out == b"int y;\r\n"


def test_set_on_a_file_that_does_not_load_changes_nothing(tmp_path):
    path = tmp_path / "cut.PSF"
    path.write_bytes(source(end=None))
    unchanged(path, "set", path, "references", status=2, stdin=b"x")


@not_on_windows("no modes, and Wine shows links as files")
def test_set_keeps_mode_and_symbolic_link(file):
    os.chmod(file, 0o604)
    link = file.parent / "link.PSF"
    link.symlink_to("Main.PSF")
    assert psf("set", link, "references", stdin=b"int y;").status == 0
    assert link.is_symlink() and os.readlink(link) == "Main.PSF"
    assert stat.S_IMODE(os.stat(file).st_mode) == 0o604
    assert psf("show", file, "references").out == b"int y;\r\n"
    assert sorted(os.listdir(file.parent)) == ["Main.PSF", "link.PSF"]


def test_a_file_is_replaced_by_a_new_one_and_never_rewritten(file):
    before = os.stat(file).st_ino
    with open(file, "rb") as open_before:
        old = open_before.read()
        psf("set", file, "references", stdin=b"int y;")
        open_before.seek(0)
        assert open_before.read() == old
    assert os.stat(file).st_ino != before


@not_on_windows("no such limit, but Wine has it")
def test_a_file_that_grows_over_the_limit_for_files_is_left_as_it_was(file):
    # As on a full disk the write fails half-way. Who does not want the signal for it is not ended by it.
    script = f'ulimit -f 1; exec {shlex.join(COMMAND)} set "{file}" references'
    before = file.read_bytes()
    done = subprocess.run(["bash", "-c", script], input=b"x" * 100000, capture_output=True, timeout=60)
    assert done.returncode == 255
    assert done.stderr == f"psf: {file}: cannot be written: the disk may be full\n".encode()
    assert file.read_bytes() == before
    assert os.listdir(file.parent) == ["Main.PSF"]


# add and delete

def test_add_appends_a_function_with_the_windows_text(file):
    assert psf("add", file, "Blink2").status == 0
    assert shown(file)["functions"][2] == {
        "name": "Blink2", "prototype": "\r\n", "code": "void Blink2(void)\n{\n\n}\r\n"}


@pytest.mark.parametrize("name", ["1abc", "a_b", "a b", "Größe", "", "a,b", "_", "a]"])
def test_add_refuses_a_bad_name(file, name):
    unchanged(file, "add", file, name, status=64)


@pytest.mark.parametrize("name", ["main", "Ma", "MAIN", "o"])
def test_add_refuses_a_name_that_collides(file, name):
    unchanged(file, "add", file, name, status=7)


def test_add_says_which_name_it_is(file):
    assert '"1abc": Function names cannot have a number for the first character!' in psf("add", file, "1abc").err
    assert '"a_b": Function names must only contain letters or numbers!' in psf("add", file, "a_b").err
    assert '"Main"' in psf("add", file, "ma").err


def test_delete_removes_the_function_of_exactly_that_name(file):
    unchanged(file, "delete", file, "main", status=4)
    unchanged(file, "delete", file, "Mai", status=4)
    assert psf("delete", file, "Main").status == 0
    assert [f["name"] for f in shown(file)["functions"]] == ["Other"]


def test_delete_on_a_document_without_functions_is_255(tmp_path):
    path = tmp_path / "none.PSF"
    path.write_bytes(source())
    unchanged(path, "delete", path, "Main", status=255)


# resave

def test_resave_makes_every_text_one_empty_line_longer(file):
    out = file.parent / "out.PSF"
    before = shown(file)
    assert psf("resave", file, out).status == 0
    after = shown(out)
    assert after["references"] == before["references"] + "\r\n"
    assert [f["code"] for f in after["functions"]] == [f["code"] + "\r\n" for f in before["functions"]]
    assert after["events"] == {name: text + "\r\n" for name, text in before["events"].items()}


def test_resave_may_write_the_file_it_read(file):
    other = file.parent / "other.PSF"
    psf("resave", file, other)
    assert psf("resave", file, file).status == 0
    assert file.read_bytes() == other.read_bytes()


def test_resave_of_a_file_that_does_not_load_writes_nothing(tmp_path):
    path, out = tmp_path / "cut.PSF", tmp_path / "out.PSF"
    path.write_bytes(source(end=None))
    assert psf("resave", path, out).status == 2
    assert not out.exists()
    out.write_bytes(b"keep")
    unchanged(out, "resave", path, out, status=2)


# generate

def test_generate_writes_the_same_bytes_to_a_file_and_to_standard_output(file):
    out = file.parent / "out.c"
    psf("set", file, "references", stdin="/* ä€ */".encode())
    assert psf("generate", file, "-o", out).status == 0
    result = psf("generate", file)
    assert (result.status, result.err) == (0, "")
    assert out.read_bytes() == result.out
    assert b"/* \xe4\x80 */" in result.out
    assert b"void Main(void)\r;\r\n" in result.out


def test_generate_of_a_function_that_begins_with_a_brace_is_6_and_keeps_the_file(tmp_path):
    path, out = tmp_path / "bad.PSF", tmp_path / "out.c"
    path.write_bytes(source([("Bad", "{ }")]))
    assert psf("generate", path).status == 6
    assert psf("generate", path).out == b""
    out.write_bytes(b"keep")
    unchanged(out, "generate", path, "-o", out, status=6)


def test_generate_where_nothing_can_be_written_is_6(file):
    assert psf("generate", file, "-o", file.parent / "no" / "out.c").status == 6


# code pages

def test_the_code_page_comes_from_the_option_then_the_environment_then_1252(tmp_path):
    path = tmp_path / "page.PSF"
    path.write_bytes(source().replace(b"int x;", b"\xc6"))
    assert psf("show", path, "references").out.decode() == "Æ\r\n"
    other = {"TESSALY_CODEPAGE": "1250"}
    assert psf("show", path, "references", env=other).out.decode() == "Ć\r\n"
    assert psf("--codepage", "1251", "show", path, "references", env=other).out.decode() == "Ж\r\n"
    assert psf("show", path, "references", "--codepage", "1253").out.decode() == "Ζ\r\n"


@pytest.mark.parametrize("name", ["nonsense", "UTF-16", "IBM037"])
def test_an_unknown_code_page_is_wrong_usage(file, name):
    unchanged(file, "--codepage", name, "show", file, status=64)
    unchanged(file, "show", file, status=64, env={"TESSALY_CODEPAGE": name})


def test_every_byte_survives_resave_in_windows_1252(tmp_path):
    path = tmp_path / "all.PSF"
    every = bytes(b for b in range(256) if b not in b"\r")
    path.write_bytes(source().replace(b"int x;", every))
    assert psf("resave", path, path).status == 0
    assert b"[GVars]\r\n" + every + b"\r\n\r\n[GFuncs]" in path.read_bytes()


# usage

@pytest.mark.parametrize("arguments", [
    [], ["nonsense"], ["show"], ["set", "f"], ["add", "f"], ["resave", "f"], ["new"], ["new", "a", "b"],
    ["show", "f", "--nonsense"], ["show", "--json", "f", "references"], ["check"], ["build"], ["--codepage"],
    ["generate", "f", "-o"]])
def test_wrong_usage_is_64_with_one_line(tmp_path, arguments):
    result = psf(*arguments, cwd=tmp_path)
    assert (result.status, result.out) == (64, b"")
    assert len(result.err.splitlines()) == 1
    assert os.listdir(tmp_path) == []


@pytest.mark.parametrize("arguments, named", [
    (["shwo", "x"], '"shwo"'), (["-V"], '"-V"'), (["--bogus"], '"--bogus"'), (["--bogus", "show", "x"], '"--bogus"'),
    (["show", "x", "--bogus"], "--bogus"), (["--codepage", "1252", "nonsense"], '"nonsense"')])
def test_a_wrong_command_or_option_is_named(arguments, named):
    result = psf(*arguments)
    assert (result.status, result.out) == (64, b"")
    assert named in result.err


@pytest.mark.parametrize("command", ["", "new", "show", "set", "add", "delete", "resave", "generate", "check", "build",
                                     "tidy", "merge", "text", "git-setup", "rename", "export",
                                     "import", "recover"])
def test_every_command_has_help(command):
    result = psf(*[command] if command else [], "--help")
    assert (result.status, result.err) == (0, "")
    assert b"Usage" in result.out
    assert command == "" or (b"Exit status: " in result.out and b"Example: " in result.out)


def test_git_setup_without_git_says_what_is_missing(tmp_path):
    # Under Wine there is none anyway.
    result = psf("git-setup", cwd=tmp_path, env={} if IS_EXE else {"PATH": str(tmp_path)})
    assert (result.status, result.out) == (127, b"")
    assert result.err == ("psf: git-setup: there is no git in the folders of PATH; install it, or add its folder "
                          "there\n")


def test_the_version_is_printed():
    result = psf("--version")
    assert (result.status, result.err) == (0, "")
    assert result.out.startswith(b"psf 0.")


def test_an_output_that_cannot_be_written_is_said(file):
    script = f'{shlex.join(COMMAND)} show "{file}" >/dev/full'
    done = subprocess.run(["bash", "-c", script], capture_output=True, timeout=60)
    assert done.returncode == 74
    assert done.stderr == b"psf: standard output cannot be written\n"


def test_file_names_with_blanks_umlauts_and_brackets_are_taken_as_they_are(tmp_path):
    for name in ("a b.PSF", "Größe.PSF", "[x,y].PSF", "%s.PSF", "--x.PSF"):
        path = tmp_path / name
        path.write_bytes(source())
        assert psf("show", path).status == 0
        assert psf("check", path).status == 0, name
        assert psf("show", "--", name, cwd=tmp_path).status == 0
        assert psf("check", "--", name, cwd=tmp_path).status == 0, name


@not_on_windows("Wine shows links as files")
def test_a_link_to_a_file_that_is_not_there_yet_makes_that_file(tmp_path):
    link = tmp_path / "link.PSF"
    link.symlink_to("target.PSF")
    assert psf("new", "--force", link).status == 0
    assert link.is_symlink()
    assert shown(tmp_path / "target.PSF")["status"] == 0


@not_on_windows("Wine shows links as files")
def test_a_link_to_itself_and_a_folder_are_refused(tmp_path):
    link = tmp_path / "loop.PSF"
    link.symlink_to("loop.PSF")
    assert psf("new", "--force", link).status == 255
    assert link.is_symlink()
    assert psf("new", "--force", tmp_path).status == 255


@not_on_windows("devices have other names there; tests/unit/platform/system/win32 has one")
def test_a_device_is_written_in_place(file):
    text = psf("generate", file).out
    assert psf("generate", file, "-o", "/dev/stdout").out == text
    with tempfile.TemporaryFile() as nameless:
        subprocess.run([*COMMAND, "generate", file, "-o", "/dev/stdout"], stdout=nameless, check=True)
        assert os.pread(nameless.fileno(), len(text) + 1, 0) == text


@not_on_windows("no owners to give away")
def test_a_file_keeps_its_owner_where_that_is_allowed(file):
    if os.geteuid() != 0:
        pytest.skip("only root can give files away")
    os.chown(file, 12345, 23456)
    assert psf("set", file, "references", stdin=b"x").status == 0
    assert (os.stat(file).st_uid, os.stat(file).st_gid) == (12345, 23456)


def test_map_leads_positions_in_a_c_file_to_members(tmp_path):
    (tmp_path / "x.PSF").write_bytes(source([("Main", "void Main()\r\n{\r\n    marker;\r\n}")]))
    c_file = psf("generate", "x.PSF", cwd=tmp_path).out
    (tmp_path / "x.c").write_bytes(c_file)
    line = 1 + len(re.findall(b"\r\n|\r|\n", c_file[:c_file.index(b"marker")]))
    for text, mapped in [(f"x.c:{line}:5: error: y\r\n", f"x.PSF:functions/Main:3: error: y (x.c:{line}:5)\r\n"),
                         (f"#0 Main () at x.c:{line}", f"#0 Main () at x.PSF:functions/Main:3 (x.c:{line})"),
                         ("\n\r\n\x1a\0x.c:1", "\n\r\n\x1a\0x.c:1")]:
        result = psf("map", "x.PSF", "--c-file", "x.c", stdin=text.encode(), cwd=tmp_path)
        assert (result.status, result.out, result.err) == (0, mapped.encode(), "")
