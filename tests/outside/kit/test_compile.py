"""compile.sh: where it finds its settings, the C file and the compiler, what it says when one is missing, and the
runtime that it keeps."""
import concurrent.futures
import os
import shutil

import pytest

from harness import KEY, settings_text, write_settings
from kit_harness import COMPILE, ECHO, compile_with, compilers, generated, play

HEAD = f"[{KEY}]\n"
TOOLS = ["sh", "awk", "cat", "dirname", "env", "iconv", "od", "readlink", "rm", "tr"]


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


@pytest.fixture
def cache(block):
    """The cache of a user of its own; `objects` are what is kept in it."""
    class Cache:
        folder = block / "cache/tessaly"

        def objects(self):
            return sorted(self.folder.iterdir()) if self.folder.exists() else []

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


@pytest.mark.parametrize("options", ["-O2", "-fsanitize=address,undefined", "-m64", "-flto"])
@pytest.mark.parametrize("compiler", compilers())
def test_each_set_of_options_has_a_runtime_of_its_own(cache, compiler, options):
    cache.compile(CC=compiler)
    cache.compile(CC=f"{compiler} {options}")
    cache.compile(CC=f"{compiler} {options}")
    assert len(cache.objects()) == 2


def test_the_runtime_of_a_changed_kit_is_another_one(block, cache):
    kit = shutil.copytree(COMPILE.parent, block / "kit")
    cache.compile(script=kit / COMPILE.name)
    with (kit / "runtime/output.c").open("a") as file:
        file.write("\nint another;\n")
    cache.compile(script=kit / COMPILE.name)
    assert len(cache.objects()) == 2


def test_builds_side_by_side_share_one_runtime(block, cache):
    with concurrent.futures.ThreadPoolExecutor() as pool:
        for built in [pool.submit(cache.compile, f"{number}.out") for number in range(8)]:
            built.result()
    assert len(cache.objects()) == 1


def test_without_a_place_for_the_runtime_it_is_compiled_into_the_program(block, cache):
    (block / "cache").write_text("no folder")
    cache.compile()
    cache.compile(XDG_CACHE_HOME="relative", HOME=None)
    cache.compile(XDG_CACHE_HOME=None, HOME="/dev/null")


def test_a_runtime_that_does_not_compile_is_not_kept(block, cache):
    result = compile_with(block / "settings.reg", block / "a.out",
                          env={"XDG_CACHE_HOME": block / "cache", "CC": "gcc -Dint=nonsense"})
    assert result.returncode == 1
    assert cache.objects() == []


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
