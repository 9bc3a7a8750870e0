"""Several psf at once, psf beside other programs, and psf that is interrupted; and what a replaced file keeps."""

import fcntl
import os
import signal
import stat
import subprocess
import sys

import pytest
from harness import wait_until, windows_path, write_settings
from psf_harness import COMMAND, IS_EXE, is_running, not_on_windows, only_on_windows, psf, shown, source

MAIN = [("Main", "void Main()\r\n{\r\n}")]


@pytest.fixture
def file(tmp_path):
    path = tmp_path / "Main.PSF"
    path.write_bytes(source(MAIN))
    return path


def large():
    return source([("Main", "void Main()\r\n{\r\n" + "    Work();\r\n" * 2_000_000 + "}")])


# Changes

def test_functions_added_at_once_are_all_there(file):
    count = 6 if IS_EXE else 60
    running = [subprocess.Popen([*COMMAND, "add", file, f"X{number}x"]) for number in range(count)]
    assert [process.wait(timeout=120) for process in running] == [0] * count
    names = [function["name"] for function in shown(file)["functions"]]
    assert sorted(names) == sorted(["Main", *(f"X{number}x" for number in range(count))])
    assert os.listdir(file.parent) == ["Main.PSF"]


@not_on_windows("an open file cannot be replaced there")
@pytest.mark.parametrize("command", [["add", "Main.PSF", "X"], ["set", "Main.PSF", "references"], ["tidy", "Main.PSF"],
                                     ["resave", "Main.PSF", "Main.PSF"], ["merge", "b.PSF", "Main.PSF", "b.PSF"]])
def test_a_file_that_somebody_changes_all_the_time_is_75_and_stays(file, command):
    content = large()
    file.write_bytes(content.replace(b"int x;", b"int x;\r\n\r\n"))
    before = file.read_bytes()
    (file.parent / "b.PSF").write_bytes(source(MAIN))
    time = file.stat().st_mtime_ns
    change = "import os\nwhile True: os.utime('Main.PSF')"
    with subprocess.Popen([sys.executable, "-c", change], cwd=file.parent) as other:
        wait_until("somebody changes the file", lambda: file.stat().st_mtime_ns != time)
        result = psf(*command, cwd=file.parent)
        other.kill()
    assert (result.status, result.out) == (75, b"")
    assert result.err == "psf: Main.PSF: is being changed by another program\n"
    assert file.read_bytes() == before
    assert sorted(os.listdir(file.parent)) == ["Main.PSF", "b.PSF"]


@not_on_windows("there it is another mechanism")
def test_a_change_waits_for_the_one_before(file):
    with open(file, "rb") as held:
        fcntl.flock(held, fcntl.LOCK_EX)
        process = subprocess.Popen([*COMMAND, "add", file, "Added"])
        wait_until("psf waits for the file", lambda: is_open(process.pid, file))
        replacement = file.with_suffix(".new")
        replacement.write_bytes(source([*MAIN, ("Meanwhile", "x{}")]))
        replacement.rename(file)
    assert process.wait(timeout=60) == 0
    assert [function["name"] for function in shown(file)["functions"]] == ["Main", "Meanwhile", "Added"]


def is_open(process, path):
    folder = f"/proc/{process}/fd"
    try:
        return any(os.path.realpath(f"{folder}/{number}") == str(path) for number in os.listdir(folder))
    except OSError:
        return False


# Builds

class Builds:
    """A folder with two program blocks, and a compiler that tells of its start and waits for the file "go"."""

    def __init__(self, folder):
        self.folder = folder
        for name in "AB":
            (folder / f"{name}.PSF").write_bytes(source([(f"Only{name}", f"void Only{name}()\r\n{{\r\n}}")]))
        if IS_EXE:
            batch = folder / "compile.bat"
            batch.write_bytes(b"@echo off\r\necho x> %1.started\r\n:wait\r\nif not exist go goto wait\r\n"
                              b"copy /y program.c %1 >nul\r\n")
        else:
            batch = folder / "compile.sh"
            batch.write_text('#!/bin/sh\necho $$ > "$1.pid"; mv "$1.pid" "$1.started"\n'
                             'while ! [ -e go ]; do read -t 0.01 x <> pipe; done\ncp program.c "$1"\n')
            batch.write_text(batch.read_text().replace("#!/bin/sh", "#!/bin/bash"))
            batch.chmod(0o755)
            os.mkfifo(folder / "pipe")
        write_settings(folder / "settings.reg", FCompBat=windows_path(batch) if IS_EXE else batch,
                       FCompFileName="program.c")
        self.env = {**os.environ, "TESSALY_SETTINGS": "settings.reg"}

    def start(self, name):
        return subprocess.Popen([*COMMAND, "build", f"{name}.PSF"], cwd=self.folder, env=self.env,
                                stdout=subprocess.PIPE, stderr=subprocess.PIPE)

    def started(self, name):
        return (self.folder / f"{name}.out.started").exists()


@pytest.fixture
def builds(tmp_path):
    return Builds(tmp_path)


def test_two_builds_with_one_c_file_take_turns_and_say_so_once(builds):
    first = builds.start("A")
    wait_until("the first compiler", lambda: builds.started("A"))
    second = builds.start("B")
    said = second.stderr.readline().decode()
    assert said.strip() == "psf: program.c: waiting for another build with this C file"
    assert not builds.started("B")
    (builds.folder / "go").touch()
    assert first.communicate(timeout=60)[1] == b""
    assert second.communicate(timeout=60)[1] == b""
    assert (first.returncode, second.returncode) == (0, 0)
    for name in "AB":
        assert f"Only{name}".encode() in (builds.folder / f"{name}.out").read_bytes()


@not_on_windows("there it is another mechanism")
def test_a_build_locks_the_c_file_and_no_longer_than_it_lasts(builds):
    first = builds.start("A")
    wait_until("the compiler", lambda: builds.started("A"))
    with open(builds.folder / "program.c", "rb") as c_file:
        with pytest.raises(BlockingIOError):
            fcntl.flock(c_file, fcntl.LOCK_EX | fcntl.LOCK_NB)
        (builds.folder / "go").touch()
        assert first.wait(timeout=60) == 0
        fcntl.flock(c_file, fcntl.LOCK_EX | fcntl.LOCK_NB)


@not_on_windows("no signals")
@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP], ids=lambda number: number.name)
def test_an_interrupted_build_takes_the_compiler_with_it(builds, number):
    process = builds.start("A")
    wait_until("the compiler", lambda: builds.started("A"))
    compiler = int((builds.folder / "A.out.started").read_text())
    process.send_signal(number)
    assert process.wait(timeout=60) == -number
    wait_until("the compiler's end", lambda: not is_running(compiler))


@not_on_windows("no signals")
def test_who_ignores_hang_ups_goes_on(builds):
    process = subprocess.Popen(["nohup", *COMMAND, "build", "A.PSF"], cwd=builds.folder, env=builds.env)
    wait_until("the compiler", lambda: builds.started("A"))
    process.send_signal(signal.SIGHUP)
    (builds.folder / "go").touch()
    assert process.wait(timeout=60) == 0


@not_on_windows("no shell")
@pytest.mark.parametrize("what, said", [
    ("mkdir program.c", "psf: program.c: the C file cannot be written: Is a directory\n"),
    ("sed -i 's/FuncBody=void OnlyA()/FuncBody={/' A.PSF",
     'psf: A.PSF: C code cannot be generated: the code of a function begins with "{"\n')])
def test_a_build_that_fails_says_why(builds, what, said):
    subprocess.run(what, shell=True, cwd=builds.folder, check=True)
    result = psf("build", "A.PSF", cwd=builds.folder, env={"TESSALY_SETTINGS": "settings.reg"})
    assert (result.status, result.out, result.err) == (6, b"", said)


# What is left behind

@not_on_windows("no signals")
@pytest.mark.parametrize("number", [signal.SIGINT, signal.SIGTERM, signal.SIGHUP, signal.SIGKILL],
                         ids=lambda number: number.name)
def test_an_interrupted_write_leaves_the_old_file_or_the_new_one_and_no_other(file, number):
    content = large()
    file.write_bytes(content)
    new = psf("resave", file, file.with_suffix(".new")).status == 0 and file.with_suffix(".new").read_bytes()
    file.with_suffix(".new").unlink()
    for patience in range(0, 120, 10):
        file.write_bytes(content)
        process = subprocess.Popen([*COMMAND, "resave", file, file])
        try:
            process.wait(timeout=patience / 1000)
        except subprocess.TimeoutExpired:
            process.send_signal(number)
        process.wait(timeout=60)
        assert file.read_bytes() in (content, new)
        if number != signal.SIGKILL:
            assert os.listdir(file.parent) == ["Main.PSF"]
    psf("add", file, "Added")
    assert os.listdir(file.parent) == ["Main.PSF"]


def test_what_a_killed_program_left_is_swept_and_nothing_else(file):
    stale = file.parent / (".psf-123456789.tmp" if IS_EXE else ".psf-a1B2c3")
    others = {".psf-notes", ".psf-a1B2c3d4", "psf-a1B2c3"}
    for name in [stale.name, *others]:
        (file.parent / name).write_bytes(b"")
    used = file.parent / ".psf-a1B2c4"
    with open(used, "wb") as held:
        if not IS_EXE:
            fcntl.flock(held, fcntl.LOCK_EX)
        assert psf("add", file, "Added").status == 0
        assert set(os.listdir(file.parent)) == {"Main.PSF", used.name, *others}


# What a replaced file keeps

@not_on_windows("no modes")
@pytest.mark.parametrize("command", [["add", "Main.PSF", "X"], ["tidy", "Main.PSF"], ["resave", "Main.PSF", "Main.PSF"],
                                     ["generate", "Main.PSF", "-o", "Main.PSF"], ["new", "--force", "Main.PSF"]])
def test_a_file_without_write_permission_is_74_and_stays(file, command):
    file.chmod(0o444)
    before = (file.read_bytes(), file.stat().st_ino)
    result = psf(*command, cwd=file.parent)
    assert (result.status, result.out) == (74, b"")
    assert result.err == "psf: Main.PSF: cannot be written: it has no write permission\n"
    assert (file.read_bytes(), file.stat().st_ino) == before


@only_on_windows
def test_a_read_only_file_is_74_and_stays(file):
    file.chmod(0o444)
    result = psf("add", file, "X")
    assert result.status == 74
    assert shown(file)["functions"][-1]["name"] == "Main"


@not_on_windows("Wine shows no such names")
def test_a_file_with_two_names_is_refused_unless_forced(file):
    other = file.parent / "Other.PSF"
    os.link(file, other)
    result = psf("add", file, "X")
    assert (result.status, result.err) == (
        64, f"psf: {file}: has other names, which would keep the old text; --force replaces it all the same\n")
    assert psf("add", "--force", file, "X").status == 0
    assert [len(shown(path)["functions"]) for path in (file, other)] == [2, 1]


@not_on_windows("no such attributes")
def test_mode_and_attributes_stay(file):
    file.chmod(0o6751)
    try:
        os.setxattr(file, "user.station", b"7")
    except OSError:
        pytest.skip("the file system has no attributes of users")
    # An access list of one more user, as setfacl -m u:1234:r would make it.
    entries = [(0x01, 7, 0xFFFFFFFF), (0x02, 4, 1234), (0x04, 5, 0xFFFFFFFF), (0x10, 5, 0xFFFFFFFF),
               (0x20, 1, 0xFFFFFFFF)]
    data = (2).to_bytes(4, "little") + b"".join(
        number.to_bytes(size, "little") for entry in entries for number, size in zip(entry, [2, 2, 4]))
    try:
        os.setxattr(file, "system.posix_acl_access", data)
    except OSError:
        data = None
    assert psf("add", file, "X").status == 0
    assert stat.S_IMODE(file.stat().st_mode) == 0o6751
    assert os.getxattr(file, "user.station") == b"7"
    assert data is None or os.getxattr(file, "system.posix_acl_access") == data
