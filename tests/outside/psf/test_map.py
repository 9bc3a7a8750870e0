"""psf map on what real tools say about a program: sanitizers, assertions, debuggers, compilers; also when the file was
edited since the program was built."""

import os
import re
import subprocess

import pytest
from harness import ROOT, write_settings
from psf_harness import not_on_windows, psf

pytestmark = not_on_windows("its compilers and tools are those of Linux")
REFERENCES = b"#include <assert.h>\n#include <stdlib.h>\nint *p;\n"
POKE = b"void Poke(int n)\r\n{\r\n    volatile int a[3] = {0};\r\n    a[n] = n;\r\n}\r\n"
ON_KEY = b"""void OnKey(char character)
{
    if (character == 'a') Poke(5);
    if (character == 'b') assert(character == 'c');
    if (character == 'd') {
        p = NULL;
        *p = 1;
    }
    if (character == 'e') {
        p = malloc(4);
        free(p);
        *p = 1;
    }
}
"""


class Program:
    def __init__(self, folder):
        self.folder = folder
        self.c_file = folder / "program.c"
        write_settings(folder / "settings.reg", FCompBat=ROOT / "kit" / "compile.sh", FCompFileName=self.c_file)
        self.env = {"TESSALY_SETTINGS": str(folder / "settings.reg"), "XDG_CACHE_HOME": str(folder)}
        psf("new", "x.PSF", cwd=folder)
        psf("add", "x.PSF", "Poke", cwd=folder)
        for member, text in ("references", REFERENCES), ("functions/Poke", POKE), ("events/OnKey", ON_KEY):
            self.set(member, text)

    def set(self, member, text):
        assert psf("set", "x.PSF", member, stdin=text, cwd=self.folder).status == 0

    def build(self, compiler, flags=""):
        result = psf("build", "x.PSF", cwd=self.folder, env={**self.env, "CC": compiler, "CFLAGS": flags})
        assert result.status == 0, result
        return self

    def run(self, *command, key):
        """What a command prints that is given the program; it reads the key from a file."""
        script = self.folder / "keys.events"
        script.write_text(f"key {key}\n")
        done = subprocess.run([*command, "./x.out", script.name], stdout=subprocess.PIPE, stderr=subprocess.STDOUT,
                              cwd=self.folder, timeout=120, env={**os.environ, "DEBUGINFOD_URLS": ""})
        return done.stdout

    def map(self, text, *options, errors=""):
        result = psf("map", "x.PSF", *options, stdin=text, cwd=self.folder, env=self.env)
        assert (result.status, result.err) == (0, errors), result
        self.check(text, result.out)
        return result.out.decode(errors="replace")

    def check(self, before, after):
        """Nothing but positions has changed, and none is left that a member has."""
        for old, new in zip(before.split(b"\n"), after.split(b"\n"), strict=True):
            back = re.sub(rb"x\.PSF:[\w/]+:\d+ \(([^()]*\w\.c[^()]*)\)", rb"\1", new)
            front = re.sub(rb"^x\.PSF:[\w/]+:\d+(: .*) \(([^()]*\w\.c[^()]*)\)$", rb"\2\1", new)
            assert old in (new, back, front), (old, new)


@pytest.fixture
def program(tmp_path):
    return Program(tmp_path)


def places(text):
    return re.findall(r"x\.PSF:([\w/]+:\d+)", text)


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
def test_what_sanitizers_say(program, compiler):
    program.build(f"{compiler} -fsanitize=address,undefined")
    text = program.map(program.run(key="a"))
    assert re.search(r"^x\.PSF:functions/Poke:4: runtime error: index 5 out of bounds .* \(.*program\.c:\d+:\d+\)$",
                     text, re.M), text
    assert re.search(r"#0 .* in Poke x\.PSF:functions/Poke:4 \(.*program\.c:\d+(:\d+)?\)$", text, re.M), text
    assert re.search(r"#1 .* in OnKey x\.PSF:events/OnKey:3 \(", text), text
    assert re.search(r"in main /.*program\.c:\d+", text), "the frame is not the user's\n" + text
    text = program.map(program.run(key="e"))
    assert re.search(r"^SUMMARY: AddressSanitizer: heap-use-after-free x\.PSF:events/OnKey:12 \(", text, re.M), text
    assert {"events/OnKey:10", "events/OnKey:11"} <= set(places(text)), "where it was got and given back\n" + text


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
def test_an_assertion(program, compiler):
    text = program.build(compiler).map(program.run(key="b"))
    assert re.match(r"x\.out: x\.PSF:events/OnKey:4 \(.*program\.c:\d+\): .*OnKey.*: Assertion `", text), text


@pytest.mark.parametrize("compiler", ["gcc", "clang"])
def test_a_debugger(program, compiler):
    output = program.build(compiler, "-O0").run(
        "gdb", "-nx", "-batch", "-ex", "break Poke", "-ex", "run", "-ex", "backtrace", "-ex", "info source", "--args",
        key="a")
    text = program.map(output)
    assert re.search(r"^Breakpoint 1 at 0x\w+: file x\.PSF:functions/Poke:\d \(.*program\.c, line \d+\)\.$", text,
                     re.M), text
    assert re.search(r"^#0 .*Poke \(n=5\) at x\.PSF:functions/Poke:\d \(.*program\.c:\d+\)$", text, re.M), text
    assert re.search(r"^#1 .* in OnKey \(.*\) at x\.PSF:events/OnKey:3 \(", text, re.M), text


def test_addr2line(program):
    program.build("gcc")
    symbols = subprocess.run(["nm", "x.out"], cwd=program.folder, capture_output=True, text=True, check=True).stdout
    address = re.search(r"^(\w+) T OnKey$", symbols, re.M)[1]
    for options in ["-e"], ["-pfe"]:
        output = subprocess.run(["addr2line", *options, "x.out", address], cwd=program.folder, capture_output=True)
        assert places(program.map(output.stdout)) == ["events/OnKey:2"]


def test_other_forms(program):
    """valgrind's, from its documentation; those of other compilers; and what is none."""
    program.build("gcc")
    lines = re.split(rb"\r\n|\r|\n", program.c_file.read_bytes())
    number = 1 + next(i for i, line in enumerate(lines) if b"a[n] = n" in line)
    place = "x.PSF:functions/Poke:4"
    for text, mapped in [
            (f"==1==    at 0x10933D: Poke (program.c:{number})\n",
             f"==1==    at 0x10933D: Poke ({place} (program.c:{number}))\n"),
            (f'"program.c", line {number}: error: x\r\n', f'{place}: error: x ("program.c", line {number})\r\n'),
            (f"program.c({number}): error C1: x", f"{place}: error C1: x (program.c({number}))"),
            (f"\x1b[1mprogram.c:{number}:3: \x1b[0mx", f"\x1b[1m{place} (program.c:{number}:3): \x1b[0mx"),
            (f"program.c:{number}x \0\xff \n\n\r\n", f"program.c:{number}x \0\xff \n\n\r\n"), ("", "")]:
        result = psf("map", "x.PSF", stdin=text.encode("latin-1"), cwd=program.folder, env=program.env)
        assert result.out.decode("latin-1") == mapped


def test_positions_of_an_earlier_build_are_led_to_the_nearest_line(program):
    output = program.build("gcc -fsanitize=address,undefined").run(key="a")
    before = places(program.map(output))
    assert before[:2] == ["functions/Poke:4", "functions/Poke:4"]
    for _ in range(3):
        assert psf("resave", "x.PSF", "x.PSF", cwd=program.folder).status == 0
    assert places(program.map(output)) == before, "a save lets texts grow"
    psf("add", "x.PSF", "Another", cwd=program.folder)
    program.set("references", b"/* four\n more\n lines\n*/\n" + REFERENCES)
    program.set("functions/Poke", POKE.replace(b"a[n] = n;", b"n += 0;\r\n    a[n] = n + 1;"))
    assert places(program.map(output)) == [place.replace("Poke:4", "Poke:5") for place in before]


def test_another_c_file_may_be_named(program):
    output = program.build("gcc -fsanitize=undefined").run(key="a")
    kept = program.folder / "kept.c"
    program.c_file.rename(kept)
    text = program.map(output.replace(b"program.c", b"kept.c"), "--c-file", kept)
    assert "functions/Poke:4" in places(text)


def test_a_c_file_that_is_not_there_or_of_another_block_is_told(program):
    output = program.build("gcc -fsanitize=undefined").run(key="a")
    told = "; positions are led to the lines that a build would give now\n"
    psf("new", "y.PSF", cwd=program.folder)
    psf("set", "y.PSF", "references", stdin=b"int other;\n", cwd=program.folder)
    assert psf("build", "y.PSF", cwd=program.folder, env=program.env).status == 0
    text = program.map(output, errors=f"psf: {program.c_file}: seems to be that of another program block{told}")
    assert "functions/Poke:4" in places(text)
    program.c_file.unlink()
    text = program.map(output, errors=f"psf: {program.c_file}: No such file or directory{told}")
    assert "functions/Poke:4" in places(text)


def test_a_file_that_does_not_load_and_missing_settings_are_told(program):
    (program.folder / "broken.PSF").write_bytes(b"")
    assert psf("map", "broken.PSF", stdin=b"x\n", cwd=program.folder, env=program.env).status == 2
    result = psf("map", "x.PSF", stdin=b"x\n", cwd=program.folder, env={"TESSALY_SETTINGS": "/nonexistent"})
    assert (result.status, result.out) == (127, b"")
    assert "FCompFileName" in result.err


def test_a_line_comes_out_as_soon_as_it_has_come_in(program):
    program.build("gcc")
    process = subprocess.Popen([os.environ["PSF"], "map", "x.PSF"], stdin=subprocess.PIPE, stdout=subprocess.PIPE,
                               cwd=program.folder, env={**os.environ, **program.env})
    for line in b"one\n", b"two\n":
        process.stdin.write(line)
        process.stdin.flush()
        assert process.stdout.readline() == line
    assert process.communicate(timeout=60) == (b"", None)
    assert process.returncode == 0
