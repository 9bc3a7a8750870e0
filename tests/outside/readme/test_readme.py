"""README, done to the letter with the programs of this build: from an empty folder to a pipeline that passes."""

import os
import re
import subprocess
from pathlib import Path

import pytest
from harness import ROOT, environment, example_file, run, write_settings
from pages import blocks, section, walk

README = "README.md"
FAILING = 'key a\nexpect print "You pressed b."\n'
OPEN = "void OnKey(char character)\n{\n    /* never ends\n}\n"


@pytest.fixture(name="command")
def fixture_command(tmp_path):
    """Runs what a user types, with psf in the PATH and the kit set up; returns the output and tests the status."""
    settings = tmp_path / "settings.reg"
    write_settings(settings, FCompBat=ROOT / "kit/compile.sh", FCompFileName=tmp_path / "program.c")
    person = {f"GIT_{who}_{what}": "a" for who in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}
    variables = {**person, "PATH": f"{Path(os.environ['PSF']).parent}:{os.environ['PATH']}", "HOME": tmp_path,
                 "GIT_CONFIG_NOSYSTEM": "1", "TESSALY_SETTINGS": settings, "XDG_CACHE_HOME": tmp_path / "cache"}

    def command(line, folder, status=0):
        done = run("sh", "-ec", line, cwd=folder, env=variables, text=True)
        assert done.returncode == status, (line, done)
        return done.stdout
    return command


@pytest.fixture(name="folder")
def fixture_folder(tmp_path, command):
    """What the reader has after the first block, its tests and its repository."""
    folder = tmp_path / "empty"
    folder.mkdir()
    for heading in ("Your first program block", "Test it", "Keep it in git"):
        walk(section(README, heading), "linux", lambda name, text: (folder / name).write_text(text),
             lambda line: command(line, folder))
    return folder


def pipelines():
    """The commands of each sample."""
    page = section(README, "In a pipeline")
    gitlab, github = blocks(page, "yaml")
    found = [blocks(page, "sh")[0], "\n".join(re.findall(r"^    - (psf .*)$", gitlab, re.M)),
             "\n".join(re.findall(r"^      - run: (psf .*)$", github, re.M))]
    assert all(lines.count("psf ") == 3 and "psf test" in lines for lines in found)
    return found


@pytest.mark.parametrize("name, changed", [("OnKey.c", OPEN), ("Hello.events", FAILING)])
@pytest.mark.parametrize("which", [0, 1, 2])
def test_from_an_empty_folder_to_a_pipeline_that_passes_and_fails_as_it_should(tmp_path, folder, command, which, name,
                                                                               changed):
    pipeline = pipelines()[which]
    command("git clone -q . ../good", folder)
    assert "\nok 1 - " in command(pipeline, tmp_path / "good")
    (folder / name).write_text(changed)
    command("psf set Hello.PSF events/OnKey <OnKey.c && git commit -qam changed && git clone -q . ../bad", folder)
    command(pipeline, tmp_path / "bad", status=1)


def test_the_repository_holds_what_was_written_and_nothing_that_was_built(folder, command):
    assert command("git ls-files", folder).split() == [".gitattributes", ".gitignore", "Hello.PSF", "Hello.events",
                                                       "OnKey.c"]
    command("psf resave Hello.PSF Hello.PSF", folder)
    assert command("git diff", folder) == ""


def test_a_missing_semicolon_is_told_as_shown(folder, command):
    source, shown = blocks(section(README, "Your first program block"), "c") + blocks(
        section(README, "Your first program block"), "text")[1:2]
    (folder / "OnKey.c").write_text(source.replace(";", ""))
    told = command("psf set Hello.PSF events/OnKey <OnKey.c; psf build Hello.PSF 2>&1", folder, status=1)
    pattern = ".*".join(map(re.escape, shown.strip().split("…")))
    assert re.search(f"^{pattern}$", told, re.M), told


def test_the_first_command_from_source_builds_and_runs_an_example_where_there_is_no_display(tmp_path):
    first = blocks(section(README, "Install"), "sh")[1].splitlines()[0]
    variables = environment({"DISPLAY": None, "WAYLAND_DISPLAY": None, "TESSALY_SETTINGS": None,
                             "XDG_CACHE_HOME": tmp_path})
    done = subprocess.run(["sh", "-c", first], cwd=ROOT, text=True, capture_output=True, timeout=1500, env=variables)
    assert done.returncode == 0, done
    assert done.stdout.endswith(example_file("blink", ".expected").read_text())


@pytest.mark.parametrize("page", [README, "CONTRIBUTING.md", "CHANGELOG.md", "examples/README.md", "kit/README.md"])
def test_every_link_and_picture_leads_to_a_file(page):
    text = (ROOT / page).read_text(encoding="utf-8")
    for target in re.findall(r"\]\(([^)#]+)[^)]*\)", text):
        assert ((ROOT / page).parent / target).exists(), target


def test_every_command_of_the_scripts_is_there():
    for script in re.findall(r"`script/([\w-]+)", (ROOT / "CONTRIBUTING.md").read_text(encoding="utf-8")):
        assert os.access(ROOT / "script" / script, os.X_OK), script


def test_the_examples_do_what_their_page_says(tmp_path, command):
    page = (ROOT / "examples/README.md").read_text(encoding="utf-8")
    subprocess.run(["cp", "-r", ROOT / "examples", tmp_path], check=True)
    (first, _), = re.findall(r"^\| `([\w/]+\.PSF)`( +\|) a repeating", page, re.M)
    folder = (tmp_path / "examples" / first).parent
    command(f"psf build {Path(first).name}", folder)
    linux = re.search(r"^ +(\./.*)$", page, re.M)[1]
    assert command(linux, folder) == (folder / "Blink.expected").read_text()
    last = page.rstrip().split("\n\n")[-2].strip()
    assert command(last, folder.parent).count("\nok ") == 4
