"""psf build of several files, with the kit and with other batch files."""

import subprocess

import pytest
from harness import ROOT, example_file, write_settings
from psf_harness import not_on_windows, psf, source

pytestmark = not_on_windows("its compilers and batch files are those of Linux")


class Place:
    def __init__(self, folder):
        self.folder = folder
        (folder / "generated").mkdir()
        self.c_file = folder / "generated/program.c"
        self.use(ROOT / "kit/compile.sh")

    def use(self, batch):
        write_settings(self.folder / "settings.reg", FCompBat=batch, FCompFileName=self.c_file)

    def script(self, text):
        path = self.folder / "batch.sh"
        path.write_text("#!/bin/bash\n" + text)
        path.chmod(0o755)
        self.use(path)

    def fill(self, count):
        for number in range(count):
            name = self.folder / f"blocks/{number}/X{number}.PSF"
            name.parent.mkdir(parents=True)
            psf("new", name)
            psf("add", name, f"Only{number}")
            psf("set", name, f"functions/Only{number}",
                stdin=f"void Only{number}(void)\n{{\n    Print(\"{number}\");\n}}".encode())

    def psf(self, *arguments, **options):
        return psf(*arguments, cwd=self.folder, env={"TESSALY_SETTINGS": "settings.reg", "HOME": str(self.folder)},
                   **options)


@pytest.fixture
def place(tmp_path):
    return Place(tmp_path)


@pytest.mark.parametrize("jobs", [1, 2, 5])
def test_each_of_several_files_has_a_c_file_of_its_own(place, jobs):
    for number, name in enumerate(["blink", "filter", "gateway"]):
        path = place.folder / f"blocks/{number}.PSF"
        path.parent.mkdir(exist_ok=True)
        path.write_bytes(example_file(name, ".PSF").read_bytes())
    result = place.psf("build", "--jobs", jobs, "blocks")
    assert (result.status, result.out, result.err) == (0, b"", "")
    for number, name in enumerate(["blink", "filter", "gateway"]):
        done = subprocess.run([place.folder / f"blocks/{number}.out", example_file(name, ".events")],
                              capture_output=True, timeout=60)
        assert done.stdout.decode() == example_file(name, ".expected").read_text()
    assert not place.c_file.exists()
    assert len([path for path in place.c_file.parent.iterdir() if path.suffix == ".c"]) == 3


# A compiler that says in two pieces which C file it has, and takes as long as the file "waits" says.
SLOW = """: ${TESSALY_C_FILE}
number=${1//[^0-9]/}; number=${number:0:1}
echo "$TESSALY_C_FILE:1: error: first of $number"
while [ "$(cat turn)" != "$number" ]; do read -t 0.01 x <> pipe; done
echo "second of $number"
echo $((number - 1)) > turn.new.$number; mv turn.new.$number turn
exit $((number % 3))
"""


def test_output_is_never_mixed_and_the_first_failure_counts(place):
    place.fill(4)
    place.script(SLOW)
    subprocess.run(["mkfifo", place.folder / "pipe"], check=True)
    (place.folder / "turn").write_text("3\n")  # the last one ends first
    result = place.psf("build", "--jobs", "4", "blocks")
    assert [line for line in result.out.decode().splitlines() if " of " in line][1::2] == [
        f"second of {number}" for number in range(4)]
    assert [line.split("error: ")[1][:10] for line in result.out.decode().splitlines()[::2]] == [
        f"first of {number}" for number in range(4)]
    assert result.status == 1


def test_other_batch_files_take_turns_with_the_c_file_of_the_settings(place):
    place.fill(3)
    place.script(f'cp "{place.c_file}" "$1"\n')
    result = place.psf("build", "--jobs", "3", "blocks")
    assert (result.status, result.out, result.err) == (0, b"", "")
    for number in range(3):
        assert f"Only{number}".encode() in (place.folder / f"blocks/{number}/X{number}.out").read_bytes()
    assert [path.name for path in place.c_file.parent.iterdir()] == ["program.c"]


def test_what_fails_does_not_keep_the_others_from_being_built(place):
    place.fill(2)
    (place.folder / "blocks/bad.PSF").write_bytes(source(end=None))
    result = place.psf("build", "blocks", "none.PSF")
    assert result.status == 2
    assert [line.split(":")[1] for line in result.err.splitlines()] == [" blocks/bad.PSF", " none.PSF"]
    assert (place.folder / "blocks/1/X1.out").exists()


def test_map_finds_the_c_file_of_the_last_build(place):
    place.fill(2)
    assert place.psf("build", "blocks").status == 0
    own = next(path for path in place.c_file.parent.glob("*.c") if b"Only1" in path.read_bytes())
    lines = own.read_bytes().replace(b"\r\n", b"\n").replace(b"\r", b"\n").split(b"\n")
    line = next(number for number, text in enumerate(lines, 1) if b"Print" in text)
    result = place.psf("map", "blocks/1/X1.PSF", stdin=f"at {own}:{line}\n".encode())
    assert result.out.decode() == f"at blocks/1/X1.PSF:functions/Only1:3 ({own}:{line})\n"


def test_the_output_name_can_be_chosen_for_one_file(place):
    place.fill(2)
    assert place.psf("build", "blocks/0/X0.PSF", "-o", "my program").status == 0
    assert (place.folder / "my program").exists() and not (place.folder / "blocks/0/X0.out").exists()
    result = place.psf("build", "blocks", "-o", "x")
    assert (result.status, result.err) == (64, "psf: build: --output is for one file\n")
