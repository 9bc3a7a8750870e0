"""compile.bat under Wine with a real compiler: where it finds the C file and the compiler, and what it says else."""
import os
import pathlib
import shutil
import subprocess

import pytest
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


# All programs that are called by name, directly and through each other.
TOOLS = [
    "reg", "vswhere", "cmd", "where", "find", "findstr", "type", "dir", "gcc", "clang", "cl", "cc1", "as", "ld",
    "collect2", "link",
]


@pytest.fixture(scope="session")
def planted(tmp_path_factory):
    """A program that leaves NAME.exe.ran beside itself, which holds the current folder."""
    program = tmp_path_factory.mktemp("planted") / "planted.exe"
    processor = {"32": "i686", "64": "x86_64"}[BITS]
    source = pathlib.Path(__file__).with_name("planted.c")
    subprocess.run([f"{processor}-w64-mingw32-gcc", "-Wall", "-Werror", "-static", "-o", program, source], check=True)
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
