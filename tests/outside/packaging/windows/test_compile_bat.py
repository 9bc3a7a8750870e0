"""compile.bat under Wine with a real compiler: where it finds the C file and the compiler, and what it says else."""
import concurrent.futures
import os
import pathlib
import shutil
import subprocess
import time

import pytest
from c_files import MISTAKES, OWN_NAMES, PRINTED, generated
from harness import (BITS, EXAMPLES, KEY, ROOT, drive_c, environment, example_file, plays_as_expected, reg,
                     windows_path, wine, wine_command, write_settings)

GCC = pathlib.Path(os.environ["WINE_GCC"])
DRIVE_C = drive_c()
COMPILE = windows_path(ROOT / "kit" / "compile.bat")
COMPILER = {"TESSALY_NO_PAUSE": "1", "TESSALY_SETTINGS": None, "CC": None, "WINEPATH": windows_path(GCC.parent)}


def compile_to(*arguments, cwd=None, **changes):
    result = wine(COMPILE, *arguments, env={**COMPILER, **changes}, cwd=cwd)
    return result.returncode, (result.stdout + result.stderr).decode("cp1252").replace("\r\n", "\n")


def generate(name, c_file):
    subprocess.run([os.environ["PSF"], "generate", example_file(name, ".PSF"), "-o", c_file], check=True)


def build_program(program, source):
    processor = {"32": "i686", "64": "x86_64"}[BITS]
    source = pathlib.Path(__file__).with_name(source)
    subprocess.run([f"{processor}-w64-mingw32-gcc", "-Wall", "-Werror", "-static", "-o", program, source], check=True)


def set_c_file(path):
    """What the registry has for the C file; None is no setting at all."""
    if path:
        assert reg("add", KEY, "/v", "FCompFileName", "/d", path, "/f").returncode == 0
    else:
        reg("delete", KEY, "/f")


@pytest.fixture
def folder(tmp_path):
    """A folder with a C file that the settings name. The blank in its name has every path quoted, as by the editor."""
    place = tmp_path / "program block"
    place.mkdir()
    generate("filter", place / "program.c")
    set_c_file(windows_path(place / "program.c"))
    yield place
    set_c_file(None)


def test_it_says_which_compiler_it_would_take_and_does_nothing_else(tmp_path):
    assert compile_to("/compiler") == (0, windows_path(GCC) + "\n")
    own = tmp_path / "R&D" / "clang.exe"
    own.parent.mkdir()
    shutil.copy(GCC, own)
    assert compile_to("/compiler", CC=windows_path(own)) == (0, windows_path(own) + "\n")
    for changes in ({"WINEPATH": None}, {"CC": "nowhere"}):
        status, text = compile_to("/compiler", TESSALY_NO_PAUSE=None, **changes)
        assert status == 127 and "there is no C compiler" in text and "Press any key" not in text, text


@pytest.mark.parametrize("name", EXAMPLES)
def test_an_example_is_compiled_and_prints_what_it_must(folder, name):
    generate(name, folder / "program.c")
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    plays_as_expected(folder / "block.out", name)


def test_the_program_takes_its_script_from_the_standard_input_and_passes_every_byte(folder):
    generate("filter", folder / "program.c")
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    script = b"(1.0) can0 123#00\r\n\x1a\r\nkey a\r\nbad\r\n"
    result = wine(windows_path(folder / "block.out"), input=script)
    assert result.returncode == 0
    assert b"\r" not in result.stdout
    assert [line.split(b":")[1] for line in result.stderr.splitlines()] == [b"2", b"4"]


@pytest.mark.parametrize("name", ["a b", "R&D", "(1)", "a^b", "stop!", "a=b,c;d", "@x", "-x"])
def test_paths_may_hold_what_the_shell_knows_as_special(folder, name):
    place = folder / name
    place.mkdir()
    shutil.copy(folder / "program.c", place / f"{name}.c")
    set_c_file(windows_path(place / f"{name}.c"))
    assert compile_to(windows_path(place / f"{name}.out")) == (0, "")
    plays_as_expected(place / f"{name}.out", "filter")


# Not the C file's path: Wine's cmd reads what reg.exe writes in another code page than reg.exe writes it in.
def test_the_output_name_may_have_umlauts(folder):
    assert compile_to(windows_path(folder / "größe.out")) == (0, "")
    plays_as_expected(folder / "größe.out", "filter")


def test_the_kit_itself_may_lie_in_such_a_folder(folder):
    shutil.copytree(ROOT / "kit", folder / "R&D (new) ^größe!" / "kit")
    batch = windows_path(folder / "R&D (new) ^größe!" / "kit" / "compile.bat")
    result = wine(batch, windows_path(folder / "block.out"), env=COMPILER)
    assert (result.returncode, result.stdout, result.stderr) == (0, b"", b"")
    plays_as_expected(folder / "block.out", "filter")


@pytest.mark.parametrize("arguments", [[], [""], ["a.out", "b.out"]])
def test_wrong_arguments_give_the_usage(folder, arguments):
    assert compile_to(*arguments) == (64, "usage: compile.bat OUTPUT\n")


@pytest.mark.parametrize("name", ["block.c", "BLOCK.H", "Block.PSF"])
def test_a_source_file_is_never_taken_for_the_output(folder, name):
    (folder / name).write_text("precious")
    status, text = compile_to(windows_path(folder / name))
    assert status == 64
    assert name in text
    assert (folder / name).read_text() == "precious"


def test_a_folder_is_never_taken_for_the_output(folder):
    (folder / "block.out").mkdir()
    (folder / "block.out" / "inside").write_text("precious")
    status, text = compile_to(windows_path(folder / "block.out"))
    assert status == 64
    assert "not that of a file" in text
    assert (folder / "block.out" / "inside").read_text() == "precious"


def test_the_c_file_is_never_taken_for_the_output(folder):
    (folder / "program.c").rename(folder / "program")
    set_c_file(windows_path(folder / "program"))
    assert compile_to(windows_path(folder / "program"))[0] == 64
    assert (folder / "program").exists()


def test_a_missing_setting_is_said_and_the_old_program_removed(folder):
    set_c_file(None)
    (folder / "block.out").write_text("old")
    status, text = compile_to(windows_path(folder / "block.out"))
    assert status == 1
    assert "the setting FCompFileName, the path of the C file, is missing" in text
    assert not (folder / "block.out").exists()


def test_a_missing_c_file_is_said_and_the_old_program_removed(folder):
    (folder / "program.c").unlink()
    (folder / "block.out").write_text("old")
    status, text = compile_to(windows_path(folder / "block.out"))
    assert status == 1
    assert f'the C file does not exist: "{windows_path(folder / "program.c")}"' in text
    assert not (folder / "block.out").exists()


def test_what_the_compiler_says_is_shown_and_its_status_passed_on(folder):
    (folder / "program.c").write_text("int broken = ;\n")
    (folder / "block.out").write_text("old")
    status, text = compile_to(windows_path(folder / "block.out"))
    assert status == 1
    assert "program.c:1:14: error: expected expression" in text
    assert not (folder / "block.out").exists()


def test_no_compiler_is_said_plainly(folder):
    (folder / "block.out").write_text("old")
    status, text = compile_to(windows_path(folder / "block.out"), WINEPATH=None)
    assert status == 127
    assert "there is no C compiler: neither gcc nor clang" in text
    assert not (folder / "block.out").exists()


def test_cc_names_the_compiler(folder):
    assert compile_to(windows_path(folder / "block.out"), WINEPATH=None, CC=windows_path(GCC)) == (0, "")
    assert compile_to(windows_path(folder / "block.out"), CC="gcc") == (0, "")
    status, text = compile_to(windows_path(folder / "block.out"), CC=r"C:\nowhere\gcc.exe")
    assert status == 127
    assert r'CC is set to "C:\nowhere\gcc.exe", which is not found' in text


@pytest.mark.parametrize("mistake", MISTAKES)
def test_the_compiler_warns_of(folder, mistake):
    global_text, statement, warning = MISTAKES[mistake]
    (folder / "program.c").write_bytes(generated({"OnKey": statement}, global_text))
    status, text = compile_to(windows_path(folder / "block.out"))
    assert status == 0 or mistake == "a function that is not declared"
    assert f"[-W{warning}" in text
    assert text.count("warning: ") == 1


def test_the_users_options_and_files_count(folder):
    (folder / "own.h").write_text("#define OWN 42\n")
    text = '#include "own.h"\r\n#ifndef GIVEN\r\n#error no option\r\n#endif\r\nint given = GIVEN;\r\n'
    source = generated({"OnKey": 'int spare; Print("%d %d\\n", OWN, given);'}, text)
    (folder / "source").mkdir()
    (folder / "source" / "program.c").write_bytes(source)
    set_c_file(windows_path(folder / "source" / "program.c"))
    options = {"CFLAGS": "-DGIVEN=7  -Wno-unused-variable", "LDFLAGS": "-Wl,--defsym,extra=0"}
    assert compile_to(windows_path(folder / "block.out"), **options) == (0, "")
    assert wine(windows_path(folder / "block.out"), input=b"key k\n").stdout == b"42 7\n"
    assert compile_to(windows_path(folder / "block.out"), CFLAGS="-DGIVEN=7", LDFLAGS="-lmissing")[0] == 1
    assert "no option" in compile_to(windows_path(folder / "block.out"))[1]


# The log beside the C file

@pytest.fixture(scope="session")
def printing(tmp_path_factory):
    """A compiler that prints what is in %PRINTED%."""
    program = tmp_path_factory.mktemp("printing") / "gcc.exe"
    build_program(program, "printing.c")
    return program


@pytest.mark.parametrize("status", [0, 3])
@pytest.mark.parametrize("kind", PRINTED)
def test_all_that_a_compiler_prints_is_shown_and_stands_in_the_log(folder, printing, kind, status):
    (folder / "printed").write_bytes(PRINTED[kind])
    (folder / "program.c.log").write_text("old")
    result = wine(COMPILE, windows_path(folder / "block.out"), env={
        **COMPILER, "CC": windows_path(printing), "PRINTED": windows_path(folder / "printed"),
        "PRINTED_STATUS": status})
    assert (result.returncode, result.stdout) == (status, b"")
    assert (folder / "program.c.log").read_bytes() == PRINTED[kind]
    if kind != "control characters":  # Wine's TYPE ends at the first 0
        assert result.stderr == PRINTED[kind]


def test_the_log_is_of_the_last_build(folder):
    log = folder / "program.c.log"
    (folder / "program.c").write_text("int broken = ;\n")
    assert compile_to(windows_path(folder / "block.out"))[1] == log.read_text("cp1252")
    assert b"expected expression" in log.read_bytes()
    generate("filter", folder / "program.c")
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    assert log.read_bytes() == b""
    assert compile_to(windows_path(folder / "block.out"), CC="no-such-cc")[1] == log.read_text()
    assert "no-such-cc" in log.read_text()
    (folder / "program.c").unlink()
    assert compile_to(windows_path(folder / "block.out"))[1] == log.read_text()
    assert "the C file does not exist" in log.read_text()


def test_a_folder_in_the_place_of_the_log_is_left_alone(folder):
    (folder / "program.c.log").mkdir()
    (folder / "program.c.log" / "inside").write_text("precious")
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    assert (folder / "program.c.log" / "inside").read_text() == "precious"
    (folder / "program.c").write_text("int broken = ;\n")
    assert "expected expression" in compile_to(windows_path(folder / "block.out"))[1]


def test_the_log_is_never_taken_for_the_output(folder):
    (folder / "program.c.log").write_text("old")
    assert compile_to(windows_path(folder / "program.c.log"))[0] == 64
    assert (folder / "program.c.log").read_text() == "old"


@pytest.mark.parametrize("printed, log", [
    (b"program.c\r\n", b""),
    (b"program.c\r\nprogram.c(3): error C2143\r\n", b"program.c\r\nprogram.c(3): error C2143\r\n"),
    (b'say "a" & b\r\n', b'say "a" & b\r\n'),
    (b"", b""),
])
def test_the_bare_name_of_the_c_file_is_no_message(folder, printing, printed, log):
    """Visual Studio's compiler prints it each time."""
    shutil.copy(printing, folder / "cl.exe")
    (folder / "printed").write_bytes(printed)
    status, text = compile_to(windows_path(folder / "block.out"), CC=windows_path(folder / "cl.exe"),
                              PRINTED=windows_path(folder / "printed"))
    assert (status, text.encode()) == (0, log.replace(b"\r\n", b"\n"))
    assert (folder / "program.c.log").read_bytes() == log


# Names that the kit has and a block may have, too

@pytest.mark.parametrize("own", OWN_NAMES)
def test_a_block_may_have_names_of_the_kits_own_calls(folder, own):
    global_text, statements, output, status = OWN_NAMES[own]
    (folder / "program.c").write_bytes(generated({"OnStart": statements}, global_text))
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    result = wine(windows_path(folder / "block.out"), input=b"start\n")
    assert (result.returncode, result.stdout.decode()) == (status, output)


def test_what_is_wrong_beside_a_name_of_its_own_is_said_alone(folder):
    (folder / "program.c").write_bytes(generated({"OnStart": "nonsense;"}, "int Now = 5;\r\n"))
    status, text = compile_to(windows_path(folder / "block.out"))
    assert (status, "nonsense" in text, "Now" in text) == (1, True, False)


def test_a_wrong_call_of_the_kits_own_is_said_as_such(folder):
    (folder / "program.c").write_bytes(generated({"OnStart": "Now(1);"}))
    status, text = compile_to(windows_path(folder / "block.out"))
    assert (status, "too many arguments" in text, "implicit" in text) == (1, True, False)


@pytest.mark.parametrize("value", ["", " = 1"])
def test_a_variable_in_the_place_of_a_library_call_is_named(folder, value):
    (folder / "program.c").write_bytes(generated({}, f"int signal{value};\r\n"))
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    result = wine(windows_path(folder / "block.out"), input=b"start\n")
    assert (result.returncode, result.stdout) == (1, b"")
    assert result.stderr.decode() == ('the global variable "signal" has the name of a function of the C library'
                                      " that the runtime needs: rename it\n")


# Expectations and the verdict

def test_what_a_script_expects_is_looked_at_and_strict_ends_at_a_wrong_line(folder):
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    script = b"(1.0) can_body 210#AA\r\nexpect none can1 for 1\r\nbad\r\n"
    result = wine(windows_path(folder / "block.out"), "--channel", "can_body=0", input=script)
    lines = result.stderr.decode().splitlines()
    assert (result.returncode, lines[0]) == (3, "<stdin>:2: failed: expect none can1 for 1")
    assert lines[1:3] == ["    expected: nothing on can1 by (0000000002.000000)",
                          "    got: (0000000001.000000) can1 210#AA"]
    assert wine(windows_path(folder / "block.out"), "--strict", input=script.replace(b"_body", b"0")).returncode == 65


def test_live_is_refused(folder):
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    result = wine(windows_path(folder / "block.out"), "--live")
    assert (result.returncode, result.stdout) == (64, b"")
    assert result.stderr.decode().endswith(": --live: there is no live mode on this system yet\n")


def test_what_was_printed_before_a_crash_is_there(folder):
    crash = 'Print("x"); printf("y"); *(volatile int *)NULL = 1;'
    (folder / "program.c").write_bytes(generated({"OnKey": crash}))
    assert compile_to(windows_path(folder / "block.out"), CFLAGS="-Wno-null-dereference")[0] == 0
    result = wine(windows_path(folder / "block.out"), input=b"key a\n")
    assert result.returncode != 0
    assert result.stdout.startswith(b"xy")


# The runtime that is kept

class Cache:
    """The cache of a user of its own, and a kit and a compiler that were not changed just now."""

    def __init__(self, folder, compiler, kit="kit"):
        self.folder = folder
        self.local = folder / "local"
        self.kit = shutil.copytree(ROOT / "kit", folder / kit)
        (folder / "compiler").mkdir()
        self.compiler = pathlib.Path(shutil.copy(compiler, folder / "compiler" / "gcc.exe"))
        for file in [self.compiler, *self.kit.rglob("*.*")]:
            os.utime(file, (1e9, 1e9))
        batch = windows_path(self.kit / "compile.bat")
        self.start = folder / "start.bat"
        self.start.write_bytes(
            f'@set "LOCALAPPDATA={windows_path(self.local)}"\r\n@"{batch}" %*\r\n'.encode("cp437"))

    def kept(self):
        """The folders with runtimes; none that was begun and not finished."""
        folders = sorted((self.local / "Ostrel/Tessaly/Cache").glob("*"))
        assert all((each / "key").is_file() and (each / "runtime.obj").is_file() for each in folders)
        return folders

    def compile(self, name="block.out", **changes):
        """How often the planted compiler was started for that."""
        runs = self.folder / "compiler" / "runs"
        runs.write_text("")
        result = wine(windows_path(self.start), windows_path(self.folder / name),
                      env={**COMPILER, "CC": windows_path(self.compiler), **changes})
        assert (result.returncode, result.stdout, result.stderr) == (0, b"", b"")
        return len(runs.read_text().splitlines())


@pytest.fixture
def cache(folder, printing):
    return Cache(folder, printing)


def test_a_kept_runtime_is_linked_and_stays_as_it_is(folder):
    cache = Cache(folder, GCC)
    cache.compile()
    [kept] = cache.kept()
    before = [(file.name, file.stat().st_mtime_ns) for file in kept.iterdir()]
    cache.compile()
    assert cache.kept() == [kept]
    assert [(file.name, file.stat().st_mtime_ns) for file in kept.iterdir()] == before
    plays_as_expected(folder / "block.out", "filter")


def test_each_set_of_options_has_a_runtime_of_its_own(cache):
    assert cache.compile() == 2
    assert cache.compile(CFLAGS='-O2 -I "C:\\a b"') == 2
    assert cache.compile(CFLAGS='-O2 -I "C:\\a b"') == 1
    assert cache.compile() == 1
    assert len(cache.kept()) == 2


@pytest.mark.parametrize("changed", ["kit/runtime/output.c", "kit/include/vexlib.h", "compiler/gcc.exe"])
def test_what_was_changed_or_touched_has_a_runtime_of_its_own(cache, changed):
    assert cache.compile() == 2
    file = cache.folder / changed
    os.utime(file, (1e9 + 60, 1e9 + 60))
    assert cache.compile() == 2
    with file.open("ab") as content:
        content.write(b"\n")
    os.utime(file, (1e9 + 60, 1e9 + 60))
    assert cache.compile() == 2
    assert cache.compile() == 1


@pytest.mark.parametrize("changed", ["kit/runtime/output.c", "kit/include/vexlib.h", "compiler/gcc.exe"])
def test_nothing_is_kept_in_the_minute_of_a_change(cache, changed):
    """The next change of that minute could not be told from this one."""
    minute = None
    while minute != time.time() // 60:
        shutil.rmtree(cache.local, ignore_errors=True)
        minute = time.time() // 60
        os.utime(cache.folder / changed)
        cache.compile()
    assert cache.kept() == []


def test_a_runtime_that_is_not_finished_is_not_taken(cache):
    cache.compile()
    [kept] = cache.kept()
    (kept / "key").rename(kept / "new")
    assert cache.compile() == 2


def test_builds_side_by_side_are_independent(cache):
    """Each has a C file of its own, as always when several run at once."""
    def compile_own(number):
        shutil.copy(cache.folder / "program.c", cache.folder / f"{number}.c")
        write_settings(cache.folder / f"{number}.reg", FCompFileName=windows_path(cache.folder / f"{number}.c"))
        return cache.compile(f"{number}.out", TESSALY_SETTINGS=windows_path(cache.folder / f"{number}.reg"))

    with concurrent.futures.ThreadPoolExecutor() as pool:
        list(pool.map(compile_own, range(6)))
    kept = cache.kept()
    assert 1 <= len(kept) <= 6
    assert cache.compile() == 1
    assert cache.kept() == kept


def test_only_the_last_runtimes_are_kept(cache):
    place = cache.local / "Ostrel/Tessaly/Cache"
    for number in range(20):
        (place / f"runtime-old-{number}").mkdir(parents=True)
        (place / f"runtime-old-{number}" / "key").write_text(f'"{number}"\r\n')
        os.utime(place / f"runtime-old-{number}", (1e9 + number, 1e9 + number))
    cache.compile()
    assert {path.name for path in place.glob("runtime-old-*")} == {f"runtime-old-{number}" for number in range(5, 20)}
    assert cache.compile() == 1


def test_without_a_place_for_the_runtime_it_is_compiled_into_the_program(folder):
    cache = Cache(folder, GCC)
    cache.local.write_text("no folder")
    cache.compile()
    plays_as_expected(folder / "block.out", "filter")
    cache.start.write_bytes(cache.start.read_bytes().replace(windows_path(cache.local).encode(), b""))
    cache.compile()
    plays_as_expected(folder / "block.out", "filter")


def test_a_kit_in_a_folder_with_special_characters_keeps_its_runtime_too(folder, printing):
    cache = Cache(folder, printing, kit="R&D (new) ^größe!")
    assert [cache.compile(), cache.compile()] == [2, 1]


# All programs that are called by name, directly and through each other.
TOOLS = [
    "reg", "vswhere", "cmd", "where", "find", "findstr", "type", "dir", "gcc", "clang", "cl", "cc1", "as", "ld",
    "collect2", "link",
]


@pytest.fixture(scope="session")
def planted(tmp_path_factory):
    """A program that leaves NAME.exe.ran beside itself, which holds the current folder."""
    program = tmp_path_factory.mktemp("planted") / "planted.exe"
    build_program(program, "planted.c")
    return program


def plant(program, folder, names):
    folder.mkdir(parents=True, exist_ok=True)
    for name in names:
        shutil.copy(program, folder / f"{name}.exe")


def what_ran(folder):
    return sorted(path.name for path in folder.rglob("*.ran"))


@pytest.mark.parametrize("compiler", [
    pytest.param({}, id="in the PATH"),
    pytest.param({"CC": "gcc"}, id="named by CC"),
    pytest.param({"WINEPATH": None}, id="nowhere"),
    pytest.param({"WINEPATH": None, "CC": "gcc"}, id="named by CC, but nowhere"),
    pytest.param({"WINEPATH": None, "CC": r".\gcc.exe"}, id="named by CC in the current folder"),
])
def test_nothing_runs_out_of_the_folder_where_the_build_was_started(folder, planted, compiler):
    plant(planted, folder, TOOLS)
    status, text = compile_to("block.out", cwd=folder, **compiler)
    assert what_ran(folder) == []
    if "WINEPATH" in compiler:
        assert status == 127, text
    else:
        assert (status, text) == (0, "")
        plays_as_expected(folder / "block.out", "filter")


def test_the_finder_of_visual_studio_is_that_of_the_system(folder, planted):
    plant(planted, folder, TOOLS)
    plant(planted, folder / "Programs (x86)" / "Microsoft Visual Studio" / "Installer", ["vswhere"])
    programs = windows_path(folder / "Programs (x86)")
    (folder / "start.bat").write_text(f'@set "ProgramFiles(x86)={programs}"\n@call {COMPILE} block.out\n')
    result = wine("start.bat", env={**COMPILER, "WINEPATH": None}, cwd=folder)
    assert b"there is no C compiler" in result.stderr
    assert [str(path.parent.name) for path in folder.rglob("*.ran")] == ["Installer"]


@pytest.mark.parametrize("place", [
    r"MinGW\bin\gcc", r"msys64\mingw64\bin\gcc", r"msys64\ucrt64\bin\gcc", r"mingw64\bin\gcc", r"LLVM\bin\clang",
    r"Microsoft Visual Studio\Installer\vswhere", r"ProgramData\mingw64\mingw64\bin\gcc",
])
def test_no_program_is_taken_from_a_folder_that_any_user_can_make(folder, planted, place):
    path = DRIVE_C.joinpath(*place.split("\\"))
    top = DRIVE_C / place.split("\\")[0]
    top = path.parents[1] if top.exists() else top
    plant(planted, path.parent, [path.name])
    try:
        status, text = compile_to("block.out", cwd=DRIVE_C / "windows" / "temp", WINEPATH=None)
        assert what_ran(top) == []
        assert status == 127, text
    finally:
        shutil.rmtree(top)


def test_a_compiler_in_the_folder_of_programs_is_found(folder):
    llvm = DRIVE_C / "Program Files" / "LLVM"
    (llvm / "bin").mkdir(parents=True)
    try:
        shutil.copy(GCC, llvm / "bin" / "clang.exe")
        assert compile_to(windows_path(folder / "block.out"), WINEPATH=None) == (0, "")
    finally:
        shutil.rmtree(llvm)


def test_the_compiler_is_started_in_the_folder_of_the_system(folder, planted):
    """Libraries and tools that it looks for by name may lie in the current folder, too."""
    plant(planted, folder / "tools", ["gcc"])
    compile_to("block.out", cwd=folder, WINEPATH=windows_path(folder / "tools"))
    assert (folder / "tools" / "gcc.exe.ran").read_text().lower() == r"c:\windows\system32"


def test_relative_paths_begin_at_the_folder_where_the_build_was_started(folder):
    set_c_file("program.c")
    assert compile_to("block.out", cwd=folder) == (0, "")
    plays_as_expected(folder / "block.out", "filter")
    write_settings(folder / "settings.reg", FCompFileName="program.c")
    (folder / "block.out").unlink()
    assert compile_to("block.out", cwd=folder, TESSALY_SETTINGS="settings.reg") == (0, "")
    plays_as_expected(folder / "block.out", "filter")


def test_a_settings_file_is_read_in_place_of_the_registry(folder):
    generate("blink", folder / "other.c")
    write_settings(folder / "settings.reg", FCompFileName=windows_path(folder / "other.c"))
    settings = {"TESSALY_SETTINGS": windows_path(folder / "settings.reg")}
    assert compile_to(windows_path(folder / "block.out"), **settings) == (0, "")
    plays_as_expected(folder / "block.out", "blink")
    settings = {"TESSALY_SETTINGS": r"C:\gone.reg"}
    status, text = compile_to(windows_path(folder / "block.out"), **settings)
    assert status == 1
    assert r'is missing in "C:\gone.reg"' in text


@pytest.mark.skipif(BITS == "32", reason="a 32-bit Windows has a single view of the registry")
def test_the_settings_of_32_bit_programs_count(folder):
    view = ["/v", "FCompFileName", "/t", "REG_SZ", "/f", "/d"]
    assert reg("add", KEY, *view, windows_path(folder / "program.c"), "/reg:32").returncode == 0
    assert reg("add", KEY, *view, r"C:\gone.c", "/reg:64").returncode == 0
    assert compile_to(windows_path(folder / "block.out")) == (0, "")
    assert reg("delete", KEY, "/f", "/reg:32").returncode == 0


def test_the_window_waits_for_a_key_after_an_error(folder):
    with subprocess.Popen(
        wine_command(COMPILE, "block.c"), env=environment({**COMPILER, "TESSALY_NO_PAUSE": None}), cwd=folder,
        stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL,
    ) as process:
        try:
            assert process.stdout.read(5) == b"Press"
            assert process.poll() is None
            process.stdin.write(b"x")
            process.stdin.flush()
            assert process.wait(timeout=60) == 64
        finally:
            process.kill()


def test_the_window_closes_by_itself_after_a_success(folder):
    assert compile_to(windows_path(folder / "block.out"), TESSALY_NO_PAUSE=None) == (0, "")
