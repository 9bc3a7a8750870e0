"""What README says about version control: its line of attributes, its hook, and its commands for servers."""

import os
import re
import shutil
import subprocess

import pytest
from harness import ROOT, write_settings
from psf_harness import PSF, not_on_windows, psf, source

pytestmark = [not_on_windows("there is no git for it here"),
              pytest.mark.skipif(shutil.which("git") is None, reason="there is no git")]
PAGE = re.search(r"^## In version control\n(.*?)^## ", (ROOT / "README.md").read_text(encoding="utf-8"), re.M | re.S)[1]
BLOCKS = re.findall(r"^```\w*\n(.*?)^```", PAGE, re.M | re.S)
OPEN = source([("Main", "void Main()\r\n{\r\n    /* never ends\r\n}")])


@pytest.fixture
def repository(tmp_path):
    folder = tmp_path / "repository"
    folder.mkdir()
    settings = tmp_path / "settings.reg"
    write_settings(settings, FCompBat=ROOT / "kit/compile.sh", FCompFileName=tmp_path / "program.c")
    env = {**os.environ, "PATH": f"{os.path.dirname(PSF)}:{os.environ['PATH']}", "HOME": str(tmp_path),
           "GIT_CONFIG_NOSYSTEM": "1", "GIT_AUTHOR_NAME": "A", "GIT_AUTHOR_EMAIL": "a", "GIT_COMMITTER_NAME": "A",
           "GIT_COMMITTER_EMAIL": "a", "TESSALY_SETTINGS": str(settings), "XDG_CACHE_HOME": str(tmp_path / "cache")}

    def run(*command, status=0):
        done = subprocess.run(command, cwd=folder, env=env, capture_output=True, timeout=120)
        assert done.returncode == status, (command, done)
        return done.stdout.decode()
    run("git", "init", "-q")
    run("psf", "git-setup")
    return folder, run


def block(begin):
    return next(text for text in BLOCKS if text.startswith(begin))


def test_the_line_of_attributes_is_the_one_that_setup_writes(repository):
    assert (repository[0] / ".gitattributes").read_text() == block("*.")


def test_the_hook_lets_good_files_pass_and_stops_others(repository):
    folder, run = repository
    hook = folder / ".git/hooks/pre-commit"
    hook.parent.mkdir(exist_ok=True)
    hook.write_text(block("#!"))
    hook.chmod(0o755)
    psf("new", folder / "a b.PSF")
    run("git", "add", "-A")
    run("git", "commit", "-q", "-m", "x")
    (folder / "bad.psf").write_bytes(OPEN)
    run("git", "add", "-A")
    run("git", "commit", "-q", "-m", "x", status=1)
    (folder / "bad.psf").unlink()
    run("git", "add", "-A")
    run("git", "commit", "-q", "--allow-empty", "-m", "x")


def test_the_commands_for_servers_pass_and_fail_as_they_should(repository):
    folder, run = repository
    psf("new", folder / "Good.PSF")
    psf("tidy", folder / "Good.PSF")
    gitlab = re.findall(r"^    - (psf .*)$", block("blocks:"), re.M)
    github = re.findall(r"^      - run: (psf .*)$", block("on: push"), re.M)
    assert (len(gitlab), len(github)) == (3, 1)
    for commands in [[block("psf tidy")], gitlab, github]:
        (folder / "Good.out").unlink(missing_ok=True)
        for command in commands:
            run("sh", "-ec", command)
        assert (folder / "Good.out").exists()
    psf("resave", folder / "Good.PSF", folder / "Good.PSF")
    run("sh", "-ec", block("psf tidy"), status=1)
    psf("tidy", folder / "Good.PSF")
    (folder / "Bad.PSF").write_bytes(psf("tidy", "-", stdin=OPEN).out)
    for commands in [block("psf tidy"), "\n".join(gitlab), *github]:
        run("sh", "-ec", commands, status=1)
