"""psf build with real compilers: the settings, the command line, the messages, and programs that run."""

import shutil
import subprocess

import pytest
from harness import EXAMPLES, ROOT, example_file, write_settings
from psf_harness import not_on_windows, psf, source

pytestmark = not_on_windows("its compilers and batch files are those of Linux; test_build_windows.py has the others")
KIT = ROOT / "kit"
COMPILERS = ["gcc", "clang"]


class Workplace:
    """A folder with settings for the kit, and psf in it."""

    def __init__(self, folder):
        self.folder = folder
        self.c_file = folder / "generated" / "program.c"
        self.c_file.parent.mkdir()
        self.use(KIT / "compile.sh")

    def use(self, batch, **values):
        self.settings(**{"FCompBat": batch, "FCompFileName": self.c_file, **values})

    def settings(self, **values):
        write_settings(self.folder / "settings.reg", **values)

    def batch(self, script):
        path = self.folder / "batch.sh"
        path.write_text("#!/bin/sh\n" + script)
        path.chmod(0o755)
        self.use(path)

    def build(self, file, compiler="cc", **options):
        env = {"TESSALY_SETTINGS": str(self.folder / "settings.reg"), "CC": compiler, **options.pop("env", {})}
        return psf("build", file, env=env, cwd=self.folder, **options)

    def write(self, name, content):
        path = self.folder / name
        path.parent.mkdir(parents=True, exist_ok=True)
        path.write_bytes(content)
        return path


@pytest.fixture
def place(tmp_path):
    return Workplace(tmp_path)


# The main job

@pytest.mark.parametrize("compiler", COMPILERS)
@pytest.mark.parametrize("name", EXAMPLES)
def test_an_example_is_built_without_a_word_and_does_what_is_expected(place, name, compiler):
    file = place.write("Example.PSF", example_file(name, ".PSF").read_bytes())
    result = place.build(file, compiler)
    assert (result.status, result.out, result.err) == (0, b"", "")
    done = subprocess.run([file.with_suffix(".out"), example_file(name, ".events")], capture_output=True, timeout=60)
    assert done.returncode == 0
    assert done.stdout.decode() == example_file(name, ".expected").read_text()
    assert done.stderr == b""


@pytest.mark.parametrize("compiler", COMPILERS)
def test_a_new_document_builds_without_a_word(place, compiler):
    psf("new", place.folder / "New.PSF")
    psf("add", place.folder / "New.PSF", "Blink")
    result = place.build("New.PSF", compiler)
    assert (result.status, result.out, result.err) == (0, b"", "")
    assert subprocess.run([place.folder / "New.out"], input=b"start\nkey a\nmsg x\n", capture_output=True).stdout == b""


def test_the_generated_c_file_is_what_generate_gives(place):
    file = place.write("x.PSF", source([("Main", "void Main()\r\n{\r\n}")]))
    place.batch("exit 0")
    assert place.build(file).status == 0
    assert place.c_file.read_bytes() == psf("generate", file).out


# The command line

def argument_of(place, file, **options):
    place.batch(f'printf "%s|" "$#" "$@" "$(pwd)" > "{place.folder}/arguments"')
    result = place.build(file, **options)
    assert result.status == 0, result
    return (place.folder / "arguments").read_text().split("|")[:-1]


@pytest.mark.parametrize("file, output", [
    ("Blink.PSF", "Blink.out"),
    ("blink.psf", "blink.out"),
    ("a b/Größe 1.PSF", "a b/Größe 1.out"),
    ("old.PSF/Blink.PSF", "old.out"),
    ("Blink.PSF.PSF", "Blink.out"),
    ("Blink.txt", ".out"),
    ("$HOME `ls` 'x' \\ *.PSF", "$HOME `ls` 'x' \\ *.out"),
])
def test_the_batch_file_gets_the_output_name_alone(place, file, output):
    path = place.folder / file
    place.write(file, source())
    absolute = ".out" if output == ".out" else str(place.folder / output)
    assert argument_of(place, path) == ["1", absolute, str(place.folder)]
    assert argument_of(place, file) == ["1", output, str(place.folder)]


def test_a_batch_file_with_blanks_in_its_path_is_started(place):
    folder = place.folder / "program files"
    folder.mkdir()
    batch = folder / "my batch.sh"
    batch.write_text('#!/bin/sh\necho "$1"\n')
    batch.chmod(0o755)
    place.use(batch)
    place.write("x.PSF", source())
    assert place.build("x.PSF").out == b"x.out\n"


def test_the_kit_may_lie_in_a_folder_with_blanks_and_umlauts(place):
    kit = place.folder / "Mein Gerät"
    shutil.copytree(KIT, kit)
    place.c_file = place.folder / "C Dateien ä" / "program 1.c"
    place.c_file.parent.mkdir()
    place.use(kit / "compile.sh")
    file = place.folder / "meine Blöcke" / "x 1.PSF"
    file.parent.mkdir()
    psf("new", file)
    result = place.build(file)
    assert (result.status, result.err) == (0, "")
    assert file.with_suffix(".out").exists()


def test_a_path_with_a_double_quote_is_refused_before_anything_is_written(place):
    place.write('a"b.PSF', source())
    result = place.build('a"b.PSF')
    assert (result.status, result.out) == (64, b"")
    assert not place.c_file.exists()


# What the compiler says and returns

@pytest.mark.parametrize("script, status", [("exit 0", 0), ("exit 3", 3), ("exit 255", 255), ("kill -TERM $$", 143)])
def test_the_compilers_exit_status_is_passed_on(place, script, status):
    place.write("x.PSF", source())
    place.batch(script)
    assert place.build("x.PSF").status == status


def test_the_compilers_output_is_shown_in_its_order(place):
    place.write("x.PSF", source())
    place.batch("echo one; echo two >&2; printf 'three\\377'")
    assert place.build("x.PSF").out == b"one\ntwo\nthree\xff"


def diagnostics(result):
    return [line for line in result.out.decode(errors="replace").splitlines() if line.startswith("x.PSF:")]


@pytest.mark.parametrize("compiler", COMPILERS)
def test_every_error_is_led_back_to_the_line_that_the_user_wrote(place, compiler):
    functions = [(f"Func{i}x", f"void Func{i}x(void)\r\n{{\r\n    int unused = {i};\r\n    (void)unused;\r\n}}")
                 for i in range(20)]
    functions[0] = ("Func0x", "void Func0x(void)\r\n{\r\n\r\n    first = 1;\r\n}")
    functions[19] = ("Func19x", "int Func19x(void)\r\n{\r\n    return\r\n        last;\r\n}")
    content = source(functions, references="int ok;\r\nNoType wrong;\r\nint fine;")
    content = content.replace(b"FuncBody=void OnKey()\r\n{",
                              b"FuncBody=void OnKey(char character)\r\n{\r\n    key = character;")
    for name, parameters in {"OnError": "uchar channel, uchar error_type", "OnFrame": "DataFrame *frame, uchar channel",
                             "OnStart": "long time", "OnStop": "long time", "OnTimer": "uint timerid",
                             "OnTrigger": "long time", "OnSerial": "const void * data, unsigned short datacount",
                             "OnMsg": "char * string"}.items():
        content = content.replace(f"void {name}()".encode(), f"void {name}({parameters})".encode())
    place.write("x.PSF", content)
    result = place.build("x.PSF", compiler)
    assert result.status == 1
    errors = [line for line in diagnostics(result) if " error: " in line]
    c_lines = place.c_file.read_bytes().replace(b"\r\n", b"\n").replace(b"\r", b"\n").split(b"\n")
    expected = {"x.PSF:references:2": "NoType", "x.PSF:functions/Func0x:4": "first",
                "x.PSF:functions/Func19x:4": "last", "x.PSF:events/OnKey:3": "key"}
    assert {line.split(": ")[0]: True for line in errors} == {place: True for place in expected}
    for line in errors:
        name = expected[line.split(": ")[0]]
        assert name in line
        original = line.rsplit(f"({place.c_file}:", 1)[1]
        number = int(original.split(":")[0])
        assert name.encode() in c_lines[number - 1], line


@pytest.mark.parametrize("compiler", COMPILERS)
def test_a_spoilt_handler_is_reported_at_its_event(place, compiler):
    place.write("x.PSF", source())  # every handler without its parameters
    result = place.build("x.PSF", compiler)
    assert result.status == 1
    line = {"gcc": 2, "clang": 1}[compiler]  # gcc points to the brace, clang to the name
    assert any(text.startswith(f"x.PSF:events/OnKey:{line}: error: ") for text in diagnostics(result)), result


def test_an_undefined_function_is_led_back_from_the_linker(place):
    psf("new", place.folder / "x.PSF")
    psf("set", place.folder / "x.PSF", "events/OnKey",
        stdin=b"void nowhere(void);\nvoid OnKey(char character)\n{\n    nowhere();\n}\n")
    result = place.build("x.PSF", "gcc")
    assert result.status == 1
    assert b"x.PSF:events/OnKey:4" in result.out, result


# What goes wrong before

def test_a_file_that_does_not_load_is_2_and_nothing_is_written(place):
    place.write("x.PSF", source(end=None))
    assert place.build("x.PSF").status == 2
    assert not place.c_file.exists()


def test_code_that_begins_with_a_brace_is_6_and_nothing_is_started(place):
    place.write("x.PSF", source([("Bad", "{}")]))
    place.batch("echo started")
    result = place.build("x.PSF")
    assert (result.status, result.out) == (6, b"")
    assert place.c_file.read_bytes().endswith(b"/* Global Function Prototypes */\r\n")


def test_a_c_file_that_cannot_be_written_is_6(place):
    place.write("x.PSF", source())
    place.c_file = place.folder / "no" / "x.c"
    place.use(KIT / "compile.sh")
    result = place.build("x.PSF")
    assert (result.status, result.out) == (6, b"")
    assert str(place.c_file) in result.err


@pytest.mark.parametrize("values", [
    pytest.param({}, id="neither"), pytest.param({"FCompBat": "/bin/true"}, id="no C file"),
    pytest.param({"FCompFileName": "/tmp/x.c"}, id="no batch file"),
    pytest.param({"FCompBat": "", "FCompFileName": "/tmp/x.c"}, id="empty batch file")])
def test_without_a_compiler_in_the_settings_it_says_so(place, values):
    place.write("x.PSF", source())
    place.settings(**values)
    result = place.build("x.PSF")
    assert (result.status, result.out) == (127, b"")
    assert "The compiler could not be found!  Please reinstall the software!" in result.err


def test_without_any_settings_it_says_so(place):
    place.write("x.PSF", source())
    result = place.build("x.PSF", env={"TESSALY_SETTINGS": str(place.folder / "missing.reg")})
    assert result.status == 127
    assert "could not be found" in result.err


def test_a_batch_file_that_is_not_there_is_127(place):
    place.write("x.PSF", source())
    place.use(place.folder / "missing.sh")
    result = place.build("x.PSF")
    assert (result.status, result.out) == (127, b"")
    assert "missing.sh" in result.err


def test_a_wrong_line_in_the_settings_is_named_and_the_rest_counts(place):
    place.write("x.PSF", source())
    place.batch("echo built")
    path = place.folder / "settings.reg"
    path.write_bytes(path.read_bytes() + b"nonsense\r\n")
    result = place.build("x.PSF")
    assert result.out == b"built\n"
    assert f"{path}:6: " in result.err


def test_settings_are_found_through_the_xdg_folders(place):
    place.write("x.PSF", source())
    place.batch("echo built")
    for variable, folder in (("XDG_CONFIG_HOME", "home"), ("XDG_CONFIG_DIRS", "dirs")):
        target = place.folder / folder / "tessaly"
        target.mkdir(parents=True)
        shutil.copy(place.folder / "settings.reg", target)
        env = {"TESSALY_SETTINGS": "", "HOME": "/nonexistent", variable: str(place.folder / folder)}
        assert place.build("x.PSF", env=env).out == b"built\n", variable


def test_colours_are_left_out_and_other_control_characters_are_question_marks(place):
    name = "Bl\x1b[2Jnk"
    place.write("x.PSF", source([(name, "void f(void)\r\n{\r\n    first = 1;\r\n}")]))
    text = psf("generate", place.folder / "x.PSF").out.replace(b"\r\n", b"\n").replace(b"\r", b"\n")
    number = next(i for i, line in enumerate(text.split(b"\n"), 1) if b"first" in line)
    place.batch(f"printf '\\033[1m%s:{number}:5: \\033[31merror:\\033[m x\\007\\n\\tsee\\rhere\\r\\n' "
                f"'{place.c_file}'; exit 1")
    assert place.build("x.PSF").out.decode() == (
        f"x.PSF:functions/Bl?[2Jnk:3: error: x ({place.c_file}:{number}:5)\n\tsee?here\r\n")
