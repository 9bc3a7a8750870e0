"""The sample of a batch file for Linux: what the page says is built and run with it, on a target that is put there."""

import shutil
import subprocess

import pytest
from harness import ROOT
from help_pages import LANGUAGES, Workplace, kinds, sections, source
from pages import blocks

KEY = 'void OnKey(char character)\n{\n    Print("%c\\n", character);\n}\n'
WRONG = "void OnKey(char character)\n{\n    nothing;\n}\n"


@pytest.fixture(name="page", params=LANGUAGES)
def fixture_page(request):
    return sections(source(request.param, "batch-file"))


def make_target(folder):
    """A target: a compiler, headers and a runtime library, which are the ones of the kit."""
    for part in ("bin", "lib", "objects"):
        (folder / part).mkdir(parents=True)
    (folder / "bin/gcc").symlink_to(shutil.which("gcc"))
    shutil.copytree(ROOT / "kit/include", folder / "include")
    subprocess.run(["gcc", "-w", "-c", "-I", ROOT / "kit/include", ROOT / "kit/runtime.c"], cwd=folder / "objects",
                   check=True)
    subprocess.run(["ar", "rcs", folder / "lib/libruntime.a", *(folder / "objects").glob("*.o")], check=True)


@pytest.fixture(name="place")
def fixture_place(page, tmp_path):
    """The sample and the settings as the page has them, but for the folder of the target."""
    place = Workplace(tmp_path / "blocks here")
    target = tmp_path / "target"
    make_target(target)
    script = target / "compile.sh"
    script.write_text(blocks(page["linux"], "sh")[0].replace("/opt/target", str(target)), encoding="utf-8")
    script.chmod(0o755)
    settings = tmp_path / "home/.config/tessaly/settings.reg"
    settings.parent.mkdir(parents=True)
    settings.write_text(blocks(page["linux"], "reg")[0].replace("/opt/target", str(target)), encoding="utf-8")
    # The C file that the package sets for all users.
    others = tmp_path / "xdg/tessaly/settings.reg"
    others.parent.mkdir(parents=True)
    shutil.copy(ROOT / "packaging/linux/settings.reg", others)
    (tmp_path / "home/.cache/tessaly").mkdir(parents=True)
    place.env |= {"TESSALY_SETTINGS": None, "HOME": tmp_path / "home", "XDG_CONFIG_HOME": None,
                  "XDG_CONFIG_DIRS": tmp_path / "xdg", "XDG_CACHE_HOME": None, "TESSALY_C_FILE": None}
    return place


def write_block(place, name, handler):
    place.does("psf", "new", name)
    place.does("psf", "set", name, "events/OnKey", input=handler.encode())


def test_a_program_is_built_for_the_target_and_runs(place):
    write_block(place, "My Block.PSF", KEY)
    assert place.does("psf", "build", "My Block.PSF") == ""
    assert place.does(place.folder / "My Block.out", input=b"key x\n") == "x\n"


def test_several_are_built_at_once(place):
    for name in ("A.PSF", "B.PSF"):
        write_block(place, name, KEY.replace("%c", f"{name[0]} %c"))
    place.does("psf", "build", "--jobs", "2", ".")
    for name in "AB":
        assert place.does(place.folder / f"{name}.out", input=b"key x\n") == f"{name} x\n"


def test_an_error_is_told_at_its_line_and_leaves_no_old_program(place):
    write_block(place, "A.PSF", KEY)
    place.does("psf", "build", "A.PSF")
    place.does("psf", "set", "A.PSF", "events/OnKey", input=WRONG.encode())
    done = place.run("psf", "build", "A.PSF")
    assert done.returncode == 1 and "A.PSF:events/OnKey:3:" in done.stdout + done.stderr
    assert not (place.folder / "A.out").exists()


def test_every_example_is_one_that_is_tried(page):
    assert sorted(kind for part in page.values() for kind in kinds(part)) == ["bat", "reg", "sh"]
