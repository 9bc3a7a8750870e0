"""compile.sh: where it finds its settings, the C file and the compiler, what it says when one is missing, and the
runtime that it keeps."""
import concurrent.futures
import os
import shutil
import signal

import pytest

from c_files import MISTAKES, OWN_NAMES, PRINTED, generated
from harness import KEY, run, settings_text, write_settings
from kit_harness import COMPILE, ECHO, compile_with, compilers, play

HEAD = f"[{KEY}]\n"
TOOLS = ["sh", "awk", "cat", "dirname", "env", "grep", "mkdir", "od", "readlink", "rm"]


@pytest.fixture
def block(tmp_path):
    """A folder with a C file and its settings."""
    (tmp_path / "block.c").write_bytes(generated(ECHO))
    write_settings(tmp_path / "settings.reg", FCompFileName=tmp_path / "block.c")
    return tmp_path


COPYING = """#!/bin/sh
for word; do
    case $before in -o) output=$word ;; c) source=$word ;; esac
    before=$word
done
[ -n "$source" ] || exec cc "$@"
kept=$0.$(cksum <"$source" | tr ' ' -)
if [ -f "$kept" ]; then cp "$kept" "$output"; else cc "$@" && cp "$output" "$kept"; fi
"""


@pytest.fixture(scope="module")
def copying(tmp_path_factory):
    """A compiler that really compiles each C file once; for tests of how the file is found."""
    compiler = tmp_path_factory.mktemp("compiler") / "copying"
    compiler.write_text(COPYING)
    compiler.chmod(0o755)
    return compiler


def check_built(result, program):
    assert (result.returncode, result.stdout, result.stderr) == (0, "", "")
    assert play(program, "start\n") == ("start 0\n", "")


@pytest.mark.parametrize("arguments", [[], ["a.out", "b.out"], [""]])
def test_wrong_argument_count(block, arguments):
    result = compile_with(block / "settings.reg", *arguments)
    assert result.returncode == 64
    assert result.stderr == "usage: compile.sh OUTPUT\n"


@pytest.mark.parametrize("name", ["block.c", "BLOCK.H", "Block.PSF", "."])
def test_output_that_must_not_be_overwritten(block, name):
    path = block / name
    if name != ".":
        path.write_text("precious")
    assert compile_with(block / "settings.reg", path).returncode == 64
    assert name == "." or path.read_text() == "precious"


def test_output_that_is_the_c_file(tmp_path):
    source = tmp_path / "program"
    source.write_bytes(generated({}))
    write_settings(tmp_path / "settings.reg", FCompFileName=source)
    assert compile_with(tmp_path / "settings.reg", source).returncode == 64
    assert source.exists()


def test_no_settings(block):
    (block / "old.out").write_text("old")
    nowhere = {"TESSALY_SETTINGS": None, "XDG_CONFIG_HOME": block / "none", "XDG_CONFIG_DIRS": block / "neither"}
    result = compile_with(None, block / "old.out", env=nowhere)
    assert result.returncode == 1
    assert "no settings file" in result.stderr
    assert not (block / "old.out").exists()
    result = compile_with(block / "gone.reg", block / "new.out")
    assert result.returncode == 1
    assert str(block / "gone.reg") in result.stderr


def test_settings_in_the_configuration_folders(block, copying):
    home, system = block / "home dir", block / "system"
    for folder, name in ((home, "block.c"), (system, "wrong.c")):
        (folder / "tessaly").mkdir(parents=True)
        write_settings(folder / "tessaly" / "settings.reg", FCompFileName=block / name)
    places = {"TESSALY_SETTINGS": None, "XDG_CONFIG_HOME": home, "XDG_CONFIG_DIRS": f"{block}/none:{system}"}
    check_built(compile_with(None, block / "a.out", env={**places, "CC": copying}), block / "a.out")
    (home / "tessaly" / "settings.reg").unlink()
    result = compile_with(None, block / "a.out", env=places)
    assert result.returncode == 1
    assert f"the C file does not exist: {block}/wrong.c" in result.stderr
    places = {"TESSALY_SETTINGS": "", "XDG_CONFIG_HOME": None, "HOME": block / "user", "XDG_CONFIG_DIRS": system}
    shutil.copytree(home, block / "user" / ".config")
    write_settings(block / "user" / ".config" / "tessaly" / "settings.reg", FCompFileName=block / "block.c")
    check_built(compile_with(None, block / "a.out", env={**places, "CC": copying}), block / "a.out")


def test_the_users_own_settings_count_before_those_for_all_users(block, copying):
    home, system = block / "home", block / "system"
    for folder in (home, system):
        (folder / "tessaly").mkdir(parents=True)
    write_settings(system / "tessaly" / "settings.reg", FCompFileName=block / "block.c")
    own = home / "tessaly" / "settings.reg"
    places = {"TESSALY_SETTINGS": None, "XDG_CONFIG_HOME": home, "XDG_CONFIG_DIRS": system}

    own.write_text(HEAD + '"Language"=dword:00000001\n')
    check_built(compile_with(None, block / "a.out", env={**places, "CC": copying}), block / "a.out")
    write_settings(own, FCompFileName=block / "gone.c")
    result = compile_with(None, block / "a.out", env=places)
    assert f"the C file does not exist: {block}/gone.c (setting FCompFileName in {own})" in result.stderr
    own.write_text(HEAD + '"FCompFileName"=-\n')
    result = compile_with(None, block / "a.out", env=places)
    assert f"the path of the C file, is missing in {own}" in result.stderr


def test_in_settings_for_all_users_the_tilde_is_the_home_of_each(block, copying):
    (block / "system" / "tessaly").mkdir(parents=True)
    write_settings(block / "system" / "tessaly" / "settings.reg", FCompFileName="~/block.c")
    places = {"TESSALY_SETTINGS": None, "XDG_CONFIG_HOME": None, "HOME": block, "XDG_CONFIG_DIRS": block / "system"}
    check_built(compile_with(None, block / "a.out", env={**places, "CC": copying}), block / "a.out")
    (block / ".config" / "tessaly").mkdir(parents=True)
    write_settings(block / ".config" / "tessaly" / "settings.reg", FCompFileName="~/block.c")
    result = compile_with(None, block / "a.out", env=places)
    assert "the C file does not exist: ~/block.c" in result.stderr


NO_C_FILE = {
    "nothing": "",
    "another key": HEAD.replace("\\OstrelCompiler", "") + "\"FCompFileName\"=\"/x.c\"\n",
    "open key": HEAD.replace("]", "") + "\"FCompFileName\"=\"/x.c\"\n",
    "comment": HEAD + ";\"FCompFileName\"=\"/x.c\"\n",
    "empty": HEAD + "\"FCompFileName\"=\"\"\n",
    "open quote": HEAD + "\"FCompFileName\"=\"/x.c\n",
    "backslash at the end": HEAD + "\"FCompFileName\"=\"/x.c\\\n",
    "more behind": HEAD + "\"FCompFileName\"=\"/x.c\" x\n",
    "wrong escape": HEAD + "\"FCompFileName\"=\"C:\\x.c\"\n",
    "no equals sign": HEAD + "\"FCompFileName\" \"/x.c\"\n",
    "removed": HEAD + "\"FCompFileName\"=\"/x.c\"\n\"FCompFileName\"=-\n",
    "removed above": HEAD + "\"FCompFileName\"=\"/x.c\"\n[-HKLM\\Software\\Ostrel]\n",
    "removed key": HEAD.replace("[", "[-") + "\"FCompFileName\"=\"/x.c\"\n",
}


@pytest.mark.parametrize("kind", NO_C_FILE)
def test_no_c_file_in_the_settings(block, kind):
    (block / "settings.reg").write_text(NO_C_FILE[kind])
    result = compile_with(block / "settings.reg", block / "a.out")
    assert result.returncode == 1
    assert "FCompFileName" in result.stderr
    assert "missing" in result.stderr


ENCODED = {
    "UTF-16": lambda text: b"\xff\xfe" + text.encode("utf-16-le"),
    "mark": lambda text: b"\xef\xbb\xbf" + text.encode(),
    "LF": lambda text: text.replace("\r\n", "\n").encode(),
    "case": lambda text: text.replace("FCompFileName", "FCOMPFILENAME").replace("SOFTWARE", "Software").encode(),
    "last": lambda text: text.replace("\r\n\"", "\r\n\"FCompFileName\"=\"/none.c\"\r\n; last\r\n\"").encode(),
    "short": lambda text: text.replace("HKEY_LOCAL_MACHINE", "hklm").replace("]", "] ; key").encode(),
    "blanks": lambda text: text.replace("=", " =\t").replace("\"\r\n", "\" ; C file\r\n").encode(),
    "wrong line": lambda text: (text + "\"FCompFileName\"=\"/none.c\r\n").encode(),
    "other keys": lambda text: (text + "[HKEY_CURRENT_USER]\r\n\"FCompFileName\"=\"/none.c\"\r\n").encode(),
}


@pytest.mark.parametrize("kind", ENCODED)
def test_forms_of_the_settings(block, copying, kind):
    folder = block / "Größe \\ \"a\""
    folder.mkdir()
    shutil.move(block / "block.c", folder / "Übung 1.C")
    (block / "settings.reg").write_bytes(ENCODED[kind](settings_text(FCompFileName=folder / "Übung 1.C")))
    check_built(compile_with(block / "settings.reg", block / "a.out", env={"CC": copying}), block / "a.out")


def test_blanks_and_umlauts_in_every_path(tmp_path):
    folder = tmp_path / "Prüf stand [1] $x"
    shutil.copytree(COMPILE.parent, folder / "the kit")
    (folder / "links").mkdir()
    (folder / "links" / "second").symlink_to("../the kit/compile.sh")
    (folder / "links" / "first").symlink_to(folder / "links" / "second")
    (folder / "über setzer").symlink_to(shutil.which("cc"))
    (folder / "Blöck 1.c").write_bytes(generated(ECHO))
    write_settings(folder / "set tings.reg", FCompFileName="Blöck 1.c")
    result = compile_with(
        "set tings.reg", "Blöck 1.out", script=folder / "links" / "first", cwd=folder,
        env={"CC": folder / "über setzer"},
    )
    check_built(result, folder / "Blöck 1.out")


def test_names_that_look_like_options(block):
    for name in ("-x.c", "@x.c"):
        shutil.copy(block / "block.c", block / name)
        write_settings(block / "settings.reg", FCompFileName=name)
        output = name.replace(".c", ".out")
        check_built(compile_with(block / "settings.reg", output, cwd=block), block / output)


def tools_only(folder):
    """A PATH with all that compile.sh uses, but no compiler."""
    (folder / "bin").mkdir()
    for tool in TOOLS:
        (folder / "bin" / tool).symlink_to(shutil.which(tool))
    return folder / "bin"


def test_missing_compiler(block):
    path = tools_only(block)
    (block / "a.out").write_text("old")
    result = compile_with(block / "settings.reg", block / "a.out", env={"PATH": path})
    assert result.returncode == 127
    assert "Install gcc or clang, or set CC" in result.stderr
    assert not (block / "a.out").exists()
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": "no-such-cc -g"})
    assert result.returncode == 127
    assert "no-such-cc" in result.stderr


def test_first_compiler_is_taken(block):
    path = tools_only(block)
    for name in ("clang", "gcc"):
        (path / name).write_text(f"#!/bin/sh\necho {name} >&2\nexit 7\n")
        (path / name).chmod(0o755)
    result = compile_with(block / "settings.reg", block / "a.out", env={"PATH": path})
    assert (result.returncode, result.stderr) == (7, "gcc\n")
    result = compile_with(block / "settings.reg", block / "a.out", env={"PATH": path, "CC": "clang -O2"})
    assert (result.returncode, result.stderr) == (7, "clang\n")


@pytest.mark.parametrize("compiler", compilers())
def test_failed_compile(block, compiler):
    source = block / "Größe 1.c"
    write_settings(block / "settings.reg", FCompFileName=source)
    source.write_bytes(generated({"OnKey": "nonsense;"}))
    (block / "a.out").write_text("old")
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert result.returncode == 1
    assert f"{source}:" in result.stderr
    assert "nonsense" in result.stderr
    assert not (block / "a.out").exists()


def test_spoilt_handler_is_an_error(block):
    text = (block / "block.c").read_bytes()
    (block / "block.c").write_bytes(text.replace(b"OnTimer(uint timerid)", b"OnTimer(char *timerid)"))
    result = compile_with(block / "settings.reg", block / "a.out")
    assert result.returncode == 1
    assert "OnTimer" in result.stderr


@pytest.mark.parametrize("compiler", compilers())
def test_umlauts_and_own_types_compile_without_a_warning(block, compiler):
    text = "#include <sys/types.h>\r\n#include <math.h>\r\ntypedef unsigned int uint;\r\ndouble width = 2.0;\r\n"
    handlers = {"OnKey": "if (character == 'ö') Print(\"Größe %.1f\\n\", sqrt(width * 8));"}
    (block / "block.c").write_bytes(generated(handlers, text))
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert (result.returncode, result.stderr) == (0, "")
    assert play(block / "a.out", "key ö\n") == ("Größe 4.0\n", "")


@pytest.mark.parametrize("mistake", MISTAKES)
@pytest.mark.parametrize("compiler", compilers())
def test_the_compiler_warns_of(block, compiler, mistake):
    global_text, statement, warning = MISTAKES[mistake]
    (block / "block.c").write_bytes(generated({"OnKey": statement}, global_text))
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert f"[-W{warning}" in result.stderr, result.stderr
    assert result.stderr.count("warning: ") == 1, result.stderr
    quiet = compile_with(block / "settings.reg", block / "a.out",
                         env={"CC": compiler, "CFLAGS": f"-Wno-{warning} -Wno-format-security"})
    assert (quiet.returncode, quiet.stderr) == (0, "") or mistake == "a function that is not declared"


# Names that the kit has and a block may have, too

@pytest.mark.parametrize("own", OWN_NAMES)
@pytest.mark.parametrize("compiler", compilers())
def test_a_block_may_have_names_of_the_kits_own_calls(block, compiler, own):
    global_text, statements, output, status = OWN_NAMES[own]
    (block / "block.c").write_bytes(generated({"OnStart": statements}, global_text))
    environments = [{"CC": compiler}]
    if compiler == "gcc":  # the other one speaks English alone
        environments.append({"CC": compiler, "LC_ALL": "C.UTF-8", "LANGUAGE": "de"})
    for environment in environments:
        result = compile_with(block / "settings.reg", block / "a.out", env=environment)
        assert (result.returncode, result.stderr) == (0, "")
        result = run(block / "a.out", input=b"start\n", text=True)
        assert (result.returncode, result.stdout) == (status, output)


def test_a_block_may_have_them_in_a_header_of_its_own(block):
    (block / "own.h").write_text("extern unsigned char Now[2];\n")
    text = '#include "own.h"\r\nunsigned char Now[2] = {1, 2};\r\n'
    (block / "block.c").write_bytes(generated({**ECHO, "OnKey": 'Print("%d\\n", Now[1]);'}, text))
    result = compile_with(block / "settings.reg", block / "a.out")
    assert (result.returncode, result.stderr) == (0, "")
    assert play(block / "a.out", "key a\n") == ("2\n", "")


@pytest.mark.parametrize("flags", ["", "-no-pie -fno-pie", "-fsanitize=address"])
@pytest.mark.parametrize("name", ["strlen", "clock_gettime", "memset", "strspn"])
@pytest.mark.parametrize("compiler", compilers())
def test_a_variable_in_the_place_of_a_library_call_is_named(block, compiler, name, flags):
    source = generated({}, f"int {name};\r\n").replace(b"#include <string.h>\r\n", b"")
    (block / "block.c").write_bytes(source)
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler, "CFLAGS": flags})
    if compiler == "clang" and name != "clock_gettime":  # it knows these by itself
        assert result.returncode == 1 and f"redefinition of '{name}'" in result.stderr
        return
    assert result.returncode == 0
    result = run(block / "a.out", input=b"start\n")
    assert (result.returncode, result.stdout) == (1, b"")
    assert result.stderr.decode() == (f'the global variable "{name}" has the name of a function of the C library'
                                      " that the runtime needs: rename it\n")


@pytest.mark.parametrize("compiler", compilers())
def test_what_is_wrong_beside_a_name_of_its_own_is_said_alone(block, compiler):
    (block / "block.c").write_bytes(generated({"OnStart": "nonsense;"}, "int Now = 5;\r\n"))
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert result.returncode == 1
    assert "nonsense" in result.stderr
    assert "Now" not in result.stderr
    assert (block / "block.c.log").read_text() == result.stderr


@pytest.mark.parametrize("compiler", compilers())
def test_a_wrong_call_of_the_kits_own_is_said_as_such(block, compiler):
    (block / "block.c").write_bytes(generated({"OnStart": "Now(1);"}))
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert result.returncode == 1
    assert "too many arguments" in result.stderr
    assert "implicit" not in result.stderr


@pytest.mark.parametrize("compiler", compilers())
def test_counting_lines_that_run_is_for_the_block_alone(block, cache, compiler):
    result = compile_with(block / "settings.reg", block / "a.out", cwd=block,
                          env={"XDG_CACHE_HOME": block / "cache", "CC": compiler, "CFLAGS": "--coverage"})
    check_built(result, block / "a.out")
    assert [path.suffix for path in block.rglob("*.gc*")] and not list(cache.folder.rglob("*.gc*"))
    assert list(cache.folder.glob("new-*")) == []


# The log beside the C file

def planted(folder, script):
    compiler = folder / "planted"
    compiler.write_text("#!/bin/sh\n[ \"$1\" != --version ] || exit\n" + script)
    compiler.chmod(0o755)
    return compiler


@pytest.mark.parametrize("status", [0, 3])
@pytest.mark.parametrize("kind", PRINTED)
def test_all_that_a_compiler_prints_is_shown_and_stands_in_the_log(block, kind, status):
    (block / "printed").write_bytes(PRINTED[kind])
    (block / "block.c.log").write_text("old")
    compiler = planted(block, f"cat '{block}/printed' >&2\nexit {status}\n")
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler}, text=False)
    assert (result.returncode, result.stdout) == (status, b"")
    assert result.stderr == PRINTED[kind]
    assert (block / "block.c.log").read_bytes() == PRINTED[kind]


@pytest.mark.parametrize("compiler", compilers())
def test_the_log_is_of_the_last_build(block, compiler):
    log = block / "block.c.log"
    (block / "block.c").write_bytes(generated({"OnKey": "nonsense;"}))
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert log.read_text() == result.stderr
    assert "nonsense" in result.stderr
    (block / "block.c").write_bytes(generated(ECHO))
    check_built(compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler}), block / "a.out")
    assert log.read_text() == ""
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": "no-such-cc"})
    assert "no-such-cc" in result.stderr
    assert log.read_text() == result.stderr
    (block / "block.c").unlink()
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    assert "the C file does not exist" in result.stderr
    assert log.read_text() == result.stderr


def test_without_a_place_for_the_log_the_compiler_is_heard_all_the_same(block):
    (block / "block.c.log").mkdir()
    check_built(compile_with(block / "settings.reg", block / "a.out"), block / "a.out")
    (block / "block.c").write_bytes(generated({"OnKey": "nonsense;"}))
    result = compile_with(block / "settings.reg", block / "a.out")
    assert result.returncode == 1
    assert "nonsense" in result.stderr


def test_the_log_is_never_taken_for_the_output(block):
    (block / "block.c.log").write_text("old")
    result = compile_with(block / "settings.reg", block / "block.c.log")
    assert (result.returncode, (block / "block.c.log").read_text()) == (64, "old")


def test_what_a_compiler_leaves_running_is_not_waited_for(block):
    compiler = planted(block, f"sleep 1000 &\necho $! >'{block}/left'\necho done >&2\n")
    result = compile_with(block / "settings.reg", block / "a.out", env={"CC": compiler})
    left = int((block / "left").read_text())
    os.kill(left, signal.SIGKILL)
    assert (result.returncode, result.stderr) == (0, "done\n")


# The runtime that is kept

@pytest.fixture
def cache(block):
    """The cache of a user of its own; `objects` are the runtimes that are kept in it."""
    class Cache:
        folder = block / "cache/tessaly"

        def objects(self):
            assert list(self.folder.glob("new-*")) == []
            return sorted(self.folder.glob("*.o"))

        def compile(self, name="a.out", script=COMPILE, **variables):
            result = compile_with(block / "settings.reg", block / name, script=script,
                                  env={"XDG_CACHE_HOME": block / "cache", **variables})
            check_built(result, block / name)

    return Cache()


@pytest.mark.parametrize("compiler", compilers())
def test_the_runtime_is_compiled_once(cache, compiler):
    cache.compile(CC=compiler)
    [kept] = cache.objects()
    before = kept.stat()
    cache.compile(CC=compiler)
    assert cache.objects() == [kept]
    assert (kept.stat().st_ino, kept.stat().st_mtime_ns) == (before.st_ino, before.st_mtime_ns)


@pytest.mark.parametrize("options", ["-O2", "-fsanitize=address,undefined", "-m64", "-m32", "-flto"])
@pytest.mark.parametrize("compiler", compilers())
def test_each_set_of_options_has_a_runtime_of_its_own(cache, compiler, options):
    cache.compile(CC=compiler)
    cache.compile(CC=f"{compiler} {options}")
    cache.compile(CC=f"{compiler} {options}")
    assert len(cache.objects()) == 2


@pytest.mark.parametrize("compiler", compilers())
def test_a_program_made_with_sanitizers_says_what_it_does_wrong(block, cache, compiler):
    text = "int numbers[3];\r\n"
    handlers = {**ECHO, "OnKey": 'Print("%d", numbers[character - 94]);'}
    (block / "block.c").write_bytes(generated(handlers, text))
    cache.compile(CC=f"{compiler} -fsanitize=address,undefined")
    done = run(block / "a.out", input=b"key a\n")
    assert b"block.c" in done.stderr
    assert b"out of bounds" in done.stderr or b"global-buffer-overflow" in done.stderr


@pytest.mark.parametrize("compiler", compilers())
def test_m32_makes_a_program_where_long_is_that_of_a_target(block, cache, compiler):
    (block / "block.c").write_bytes(generated({"OnStart": 'Print("start %ld\\n", time + (long)sizeof(long) - 4);'}))
    cache.compile(CC=f"{compiler} -m32")


@pytest.mark.parametrize("name", ["runtime/output.c", "runtime/script.h", "include/vexlib.h"])
def test_the_runtime_of_a_changed_kit_is_another_one(block, cache, name):
    """As long and as old as before, as far as anybody can see."""
    kit = shutil.copytree(COMPILE.parent, block / "kit")
    cache.compile(script=kit / COMPILE.name)
    before = (kit / name).stat()
    text = (kit / name).read_text()
    (kit / name).write_text(text.replace("/*", "/* ", 1).replace(". */", " */", 1))
    os.utime(kit / name, ns=(before.st_atime_ns, before.st_mtime_ns))
    assert (kit / name).stat().st_size == before.st_size
    cache.compile(script=kit / COMPILE.name)
    assert len(cache.objects()) == 2


def test_a_kit_that_was_only_touched_has_the_same_runtime(block, cache):
    kit = shutil.copytree(COMPILE.parent, block / "kit")
    cache.compile(script=kit / COMPILE.name)
    for file in kit.rglob("*.*"):
        os.utime(file)
    cache.compile(script=kit / COMPILE.name)
    assert len(cache.objects()) == 1


# What is named clang: says its version, and else is the real one. Each question leaves a line.
CLANG = """
#include <stdio.h>
#include <string.h>
#include <unistd.h>
int main(int count, char** words)
{
    if (strcmp(words[count - 1], "--version") == 0) {
        FILE* asked = fopen(ASKED, "a");
        fputs("asked\\n", asked);
        fclose(asked);
        return puts("clang version " VERSION) < 0;
    }
    execvp("clang", words);
    return 1;
}
"""


def clang_of_version(folder, version):
    (folder / "bin").mkdir(exist_ok=True)
    (folder / "clang.c").write_text(CLANG)
    run("cc", f'-DVERSION="{version}"', f'-DASKED="{folder}/asked"', "-o", folder / "new", folder / "clang.c")
    (folder / "new").rename(folder / "bin/clang")
    return folder / "bin/clang"


def times_asked(folder):
    return len((folder / "asked").read_text().splitlines())


def test_clang_is_asked_for_its_version_once(block, cache):
    clang = clang_of_version(block, "14")
    cache.compile(CC=clang)
    cache.compile(CC=clang)
    assert (times_asked(block), len(cache.objects())) == (1, 1)


def test_another_clang_under_the_same_name_has_a_runtime_of_its_own(block, cache):
    cache.compile(CC=clang_of_version(block, "14"))
    cache.compile(CC=clang_of_version(block, "15"))
    assert (times_asked(block), len(cache.objects())) == (2, 2)


def test_what_may_start_any_compiler_is_asked_each_time(block, cache):
    """A script, a program of another name, and a clang that may have other libraries."""
    clang = clang_of_version(block, "14")
    script = planted(block, "")
    script.write_text(f'#!/bin/sh\nexec {clang} "$@"\n')
    (block / "scripts").mkdir()
    script.rename(block / "scripts/clang")
    shutil.copy(clang, block / "bin/launcher")
    (block / "bin/clang-14").symlink_to("launcher")
    for ways in [{"CC": block / "scripts/clang"}, {"CC": block / "bin/clang-14"}, {"CC": f"env {clang}"},
                 {"CC": clang, "LD_LIBRARY_PATH": "/usr/local/lib"}]:
        (block / "asked").write_text("")
        cache.compile(**ways)
        cache.compile(**ways)
        assert times_asked(block) == 2


@pytest.mark.parametrize("content", ["", "\n\n\n", "1 2 3\n4 5 6\nclang version 13\n"])
def test_a_wrong_note_about_clang_is_made_anew(block, cache, content):
    cache.folder.mkdir(parents=True)
    (cache.folder / "clang").write_text(content)
    clang = clang_of_version(block, "14")
    cache.compile(CC=clang)
    cache.compile(CC=clang)
    assert times_asked(block) == 1
    assert (cache.folder / "clang").read_text().splitlines()[-1] == "clang version 14"


def test_an_upgraded_compiler_has_a_runtime_of_its_own(block, cache):
    for version in ("1", "2"):
        compiler = block / "own-gcc"
        compiler.write_text(f'#!/bin/sh\n[ "$1" != --version ] || exec echo own-gcc {version}\nexec gcc "$@"\n')
        compiler.chmod(0o755)
        cache.compile(CC=compiler)
    assert len(cache.objects()) == 2


def test_builds_side_by_side_share_one_runtime(block, cache):
    with concurrent.futures.ThreadPoolExecutor() as pool:
        for built in [pool.submit(cache.compile, f"{number}.out") for number in range(8)]:
            built.result()
    assert len(cache.objects()) == 1


@pytest.mark.parametrize("compiler", compilers())
def test_without_a_place_for_the_runtime_it_is_compiled_into_the_program(block, cache, compiler):
    (block / "cache").write_text("no folder")
    cache.compile(CC=compiler)
    cache.compile(XDG_CACHE_HOME="relative", HOME=None)
    cache.compile(XDG_CACHE_HOME=None, HOME="/dev/null")


def test_a_runtime_that_does_not_compile_is_not_kept(block, cache):
    result = compile_with(block / "settings.reg", block / "a.out",
                          env={"XDG_CACHE_HOME": block / "cache", "CC": "gcc -Dint=nonsense"})
    assert result.returncode == 1
    assert list(cache.folder.iterdir()) == []


def test_a_users_options_for_warnings_do_not_concern_the_runtime(cache):
    cache.compile(CFLAGS="-Werror=declaration-after-statement")
    assert len(cache.objects()) == 1


def test_the_users_options_and_files_count(block, cache):
    (block / "own.h").write_text("#define OWN 42\n")
    text = '#include "own.h"\r\n#ifndef GIVEN\r\n#error no option\r\n#endif\r\nint given = GIVEN;\r\n'
    (block / "block.c").write_bytes(generated({"OnKey": 'Print("%d %d\\n", OWN, given);'}, text))
    result = compile_with(block / "settings.reg", block / "a.out",
                          env={"CFLAGS": "-DGIVEN=7  -O2", "LDFLAGS": "-Wl,-soname,given.so"})
    assert (result.returncode, result.stderr) == (0, "")
    assert play(block / "a.out", "key k\n") == ("42 7\n", "")
    assert compile_with(block / "settings.reg", block / "a.out").returncode == 1


def test_a_runtime_that_was_not_made_for_long_goes(cache):
    cache.compile(CC="gcc -O2")
    [old] = cache.objects()
    os.utime(old, (0, 0))
    cache.compile(CC="gcc -O3")
    assert old not in cache.objects()
    assert len(cache.objects()) == 1
