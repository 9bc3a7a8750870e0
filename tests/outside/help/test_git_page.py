"""What the help says about git, done in a repository: lines of attributes, hook, differences, a conflict."""

import shutil

import pytest
from help_pages import LANGUAGES, Workplace, kinds, sections, source
from pages import blocks

pytestmark = pytest.mark.skipif(shutil.which("git") is None, reason="there is no git")
GREET = 'void Greet(char character)\n{\n    Print("You pressed %c.\\n", character);\n}\n'
OPEN = "void OnKey(char character)\n{\n    /* never ends\n}\n"


class Repository(Workplace):
    def __init__(self, folder):
        super().__init__(folder)
        self.folder = folder / "repository"
        self.folder.mkdir()
        person = {f"GIT_{who}_{what}": "a" for who in ("AUTHOR", "COMMITTER") for what in ("NAME", "EMAIL")}
        self.env |= {**person, "HOME": folder, "XDG_CONFIG_HOME": None, "GIT_CONFIG_NOSYSTEM": "1"}
        self.does("git", "init", "-q", "-b", "main")

    def commit(self, *options):
        self.does("git", "add", "-A")
        self.does("git", "commit", "-q", "-m", "x", *options)

    def change(self, member, text):
        self.does("psf", "set", "Hello.PSF", member, input=text.encode())

    def greeting(self):
        self.does("psf", "new", "Hello.PSF")
        self.does("psf", "add", "Hello.PSF", "Greet")
        self.change("functions/Greet", GREET)


@pytest.fixture(name="page", params=LANGUAGES)
def fixture_page(request):
    return sections(source(request.param, "git"))


@pytest.fixture(name="repository")
def fixture_repository(tmp_path):
    return Repository(tmp_path)


def command(page, part):
    return blocks(page[part], "sh")[0].strip()


def test_the_line_of_attributes_is_the_one_that_setup_writes(page, repository):
    repository.does("sh", "-c", command(page, "setup"))
    written = (repository.folder / ".gitattributes").read_text(encoding="utf-8")
    assert written == blocks(page["attributes"], "attributes")[0]


def test_files_that_are_there_already_get_their_normal_form(page, repository):
    repository.greeting()
    repository.does("psf", "resave", "Hello.PSF", "Hello.PSF")
    repository.commit()
    assert repository.run("psf", "tidy", "--check", ".").returncode == 1
    repository.does("psf", "git-setup")
    repository.does("sh", "-c", blocks(page["setup"], "sh")[1])
    repository.commit()
    repository.does("git", "clone", "-q", ".", "../clone")
    assert repository.does("psf", "tidy", "--check", "../clone") == ""


@pytest.mark.parametrize("is_protected", [True, False])
def test_a_clone_has_files_that_load_only_with_the_line_for_those_without_psf(page, repository, is_protected):
    repository.does("git", "config", "--global", "core.autocrlf", "true")
    repository.greeting()
    if is_protected:
        repository.write(".gitattributes", blocks(page["attributes"], "attributes")[1])
    repository.run("git", "add", "-A")  # git warns of what it does to line ends
    repository.does("git", "commit", "-q", "-m", "x")
    repository.does("git", "config", "--global", "core.autocrlf", "false")
    repository.does("git", "clone", "-q", ".", "../clone")
    assert repository.run("psf", "check", "../clone").returncode == (0 if is_protected else 2)


def test_what_a_build_makes_is_not_committed(page, repository):
    repository.write(".gitignore", blocks(page["ignore"], "ignore")[0])
    repository.greeting()
    repository.does("psf", "build", "Hello.PSF")
    assert (repository.folder / "Hello.out").exists()
    assert "Hello.out" not in repository.does("git", "status", "--porcelain", "-uall")


def test_a_difference_is_shown_as_on_the_page(page, repository):
    repository.does("psf", "git-setup")
    repository.greeting()
    repository.commit()
    repository.does("psf", "resave", "Hello.PSF", "Hello.PSF")
    assert repository.does("git", "diff") == ""
    repository.change("functions/Greet", GREET.replace("You pressed %c.", "Key %c"))
    assert blocks(page["diff"], "diff")[0] in repository.does("git", "diff")


def test_a_conflict_is_told_and_a_mark_that_was_missed_is_found(page, repository):
    repository.does("psf", "git-setup")
    repository.greeting()
    repository.commit()
    repository.does("git", "checkout", "-q", "-b", "other")
    for branch, key in (("other", "a"), ("main", "b")):
        repository.does("git", "checkout", "-q", branch)
        repository.change("events/OnKey", f"void OnKey(char character)\n{{\n    Greet('{key}');\n}}\n")
        repository.commit()
    merged = repository.run("git", "merge", "other")
    assert blocks(page["conflict"], "conflict")[0] in merged.stdout + merged.stderr
    shown = repository.does("psf", "show", "Hello.PSF", "events/OnKey")
    assert [shown.count(mark) for mark in ("<<<<<<<", "=======", ">>>>>>>")] == [1, 1, 1]
    found = repository.run("psf", "check", "--lint", "Hello.PSF")
    assert found.returncode == 1 and "[conflict-marker]" in found.stdout


def test_the_hook_lets_good_files_pass_and_stops_others(page, repository):
    hook = repository.write(".git/hooks/pre-commit", command(page, "hook") + "\n")
    hook.chmod(0o755)
    repository.does("psf", "git-setup")
    repository.greeting()
    repository.commit()
    repository.change("events/OnKey", OPEN)
    repository.does("git", "add", "-A")
    assert repository.run("git", "commit", "-q", "-m", "x").returncode != 0
    repository.change("events/OnKey", OPEN.replace("/* never ends", ""))
    repository.commit("--allow-empty")


def test_every_example_is_one_that_is_tried_here(page):
    known = {"sh", "attributes", "ignore", "diff", "conflict"}
    assert {kind for part in page.values() for kind in kinds(part)} == known
