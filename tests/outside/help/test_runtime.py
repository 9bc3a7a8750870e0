"""The reference of the runtime library: whole, in step with the kit's headers, with examples that do what they say."""

import html
import os
import re
import shutil
import subprocess
from pathlib import Path

import pytest
from harness import ROOT
from help_pages import LANGUAGES, Workplace, sections, source
from pages import blocks

HEADERS = ["vexlib.h", "tornem.h"]


def built(language):
    page = (Path(os.environ["HELP"]) / "html" / language / "runtime.html").read_text(encoding="utf-8")
    return " ".join(html.unescape(re.sub(r"<[^>]+>", "", page)).split())


def declared():
    """All functions, constants and fields of the headers, read in another way than by the help itself."""
    text = "".join((ROOT / "kit/include" / name).read_text(encoding="utf-8") for name in HEADERS)
    text = re.sub(r"/\*.*?\*/", "", text, flags=re.S)
    functions = re.findall(r"^(?:\w+ )*?(\w+[ *]+(?!kit_)\w+)\([^()]*\)(?:;| \{)$", text, re.M)
    values = re.findall(r"^#define (VEX_\w+) \(?-?\d", text, re.M)
    fields = re.findall(r"(\w+)(?:\[\d+\])?;", re.search(r"struct DataFrame \{(.*?)\}", text, re.S)[1])
    assert (len(functions) >= 21, len(values) >= 11, len(fields)) == (True, True, 8)
    return [f"{name}(" for name in functions] + values + fields


@pytest.mark.parametrize("language", LANGUAGES)
def test_everything_that_the_headers_declare_is_described(language):
    page = built(language)
    assert [name for name in declared() if name not in page] == []


@pytest.mark.parametrize("language", LANGUAGES)
def test_every_call_has_an_example_and_each_does_what_it_says(language, tmp_path):
    parts = sections(source(language, "runtime"))
    calls = parts["calls"] + parts["own"]
    for part in re.split(r"^### ", calls, flags=re.M)[1:]:
        assert blocks(part, "c"), part
    codes = blocks(calls, "c")
    functions = [f"void Example{number}(void)\n{{\n{code}}}\n" for number, code in enumerate(codes)]
    start = "".join(f"    Example{number}();\n" for number in range(len(codes)))
    place = Workplace(tmp_path)
    program = place.block([*functions, f"void OnStart(long time)\n{{\n{start}}}\n",
                           'void OnTimer(uint timerid)\n{\n    Print("timer %u\\n", timerid);\n}\n'])
    done = place.run(program, input=b"(0.0) start\n(0.6) stop\n")
    assert done.returncode == 3  # the example of Fail
    failed = {"en": "speed is 7, not 5", "de": "Geschwindigkeit 7 statt 5"}[language]
    assert re.findall(r"failed: (.*)$", done.stderr, re.M) == [f"(0000000000.000000) {failed}"]
    printed = done.stdout.splitlines()
    channel = {"en": "Channel 2, identifier 100", "de": "Kanal 2, Identifier 100"}[language]
    for line in ("(0000000000.000000) can0 100#00", "(0000000000.000000) serial 06 0d", channel, "timer 1",
                 {"en": "0 ms, 0 us", "de": "0 ms, 0 µs"}[language]):
        assert line in printed
    assert "timer 3" not in printed


def broken(folder, file, old, new):
    """What the help's build says when a file has other words."""
    for part in ("help", "kit", "app", "ui"):
        shutil.copytree(ROOT / part, folder / part)
    text = (folder / file).read_text(encoding="utf-8")
    assert old in text
    (folder / file).write_text(text.replace(old, new), encoding="utf-8")
    command = ["/usr/bin/python3", "-c", "import sys; sys.path.insert(0, 'help'); import reference; "
               "reference.put_in('{call:SendFrame}', 'de')"]
    done = subprocess.run(command, cwd=folder, capture_output=True, text=True, check=False,
                          env={**os.environ, "PYTHONDONTWRITEBYTECODE": "1"})
    return done.returncode, done.stderr


@pytest.mark.parametrize("file, old, new, told", [
    ("kit/include/vexlib.h", "on a channel, 0-255.", "on a channel, 0-15.", "SendFrame has changed in its header"),
    ("kit/include/vexlib.h", "int StopTimer(uint", "int StopTimer(ulong", "StopTimer has changed in its header"),
    ("kit/include/vexlib.h", "#define VEX_OK 0", "#define VEX_NEW 1 /* new */\n#define VEX_OK 0", "VEX_NEW"),
    ("help/de/runtime.txt", "\nStopTimer ", "\nHaltTimer ", "HaltTimer is in no header"),
], ids=["comment", "declaration", "addition", "rename"])
def test_the_help_is_not_built_when_a_header_and_its_german_text_differ(tmp_path, file, old, new, told):
    status, errors = broken(tmp_path, file, old, new)
    assert status == 1 and told in errors


def test_the_headers_as_they_are_build_the_help(tmp_path):
    assert broken(tmp_path, "kit/include/vexlib.h", "int", "int") == (0, "")
