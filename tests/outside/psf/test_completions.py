"""The completions, asked the way a shell asks them."""

import os
import pty
import subprocess

import pytest
from harness import ROOT, wait_until
from psf_harness import PSF, leave, not_on_windows, source

pytestmark = not_on_windows("the shells that complete are not there")
FOLDER = f"{ROOT}/programs/psf/completions"
COMMANDS = {"new", "show", "set", "add", "delete", "resave", "generate", "check", "build", "tidy", "merge", "text",
            "git-setup", "map", "recover", "rename", "export", "import", "test"}
TEST_OPTIONS = {"--jobs", "--timeout", "--junit", "--coverage", "--channel", "--files-from"}


@pytest.fixture
def folder(tmp_path):
    (tmp_path / "Main.PSF").write_bytes(source([("Blink", "void Blink()\r\n{\r\n}")]))
    (tmp_path / "notes.txt").write_text("")
    return tmp_path


def run(shell, script, folder):
    path = f"{os.path.dirname(PSF)}:{os.environ['PATH']}"
    env = {**os.environ, "PATH": path, "HOME": str(folder), "XDG_STATE_HOME": ""}
    done = subprocess.run([shell, "-c", script], capture_output=True, cwd=folder, env=env, timeout=60)
    assert done.stderr == b"", done.stderr
    return set(done.stdout.decode().splitlines())


def bash(folder, *words):
    quoted = " ".join(f"'{word}'" for word in words)
    script = f"source {FOLDER}/psf.bash; COMP_WORDS=({quoted}); COMP_CWORD={len(words) - 1}; _psf"
    return run("bash", script + "; printf '%s\\n' \"${COMPREPLY[@]}\"", folder)


def fish(folder, line):
    return {answer.split("\t")[0] for answer in run("fish", f"source {FOLDER}/psf.fish; complete -C '{line}'", folder)}


# Has a zsh at a terminal write down what it would offer, and say when it is ready and when it has offered all.
ZSH = """PS1= fpath=({folder} $fpath)
autoload -Uz compinit && compinit -u -D
compadd() {{
    local -a offered
    if [[ " ${{@[1,(i)(-|--)]}} " != *" -"[OAD]" "* ]]; then
        builtin compadd -A offered "$@"
        print -rl -- $offered >>offered
    fi
    builtin compadd "$@"
}}
comppostfuncs=(all-offered)
all-offered() {{ : >complete }}
: >ready
"""


def zsh(folder, line):
    """What a real zsh offers behind the line when Tab is pressed."""
    for name in ("ready", "complete", "offered"):
        (folder / name).unlink(missing_ok=True)
    (folder / "setup").write_text(ZSH.format(folder=FOLDER))
    ours, theirs = pty.openpty()
    env = {**os.environ, "PATH": f"{os.path.dirname(PSF)}:{os.environ['PATH']}", "HOME": str(folder),
           "XDG_STATE_HOME": "", "TERM": "dumb"}
    with subprocess.Popen(["zsh", "-f", "-i"], cwd=folder, env=env, stdin=theirs, stdout=theirs, stderr=theirs,
                          start_new_session=True) as process:
        os.close(theirs)
        os.write(ours, b". ./setup\n")
        wait_until("the shell", (folder / "ready").exists)
        os.write(ours, line.encode() + b"\t")
        wait_until("what it offers", (folder / "complete").exists)
        process.kill()
    os.close(ours)
    return set((folder / "offered").read_text().splitlines()) if (folder / "offered").exists() else set()


def test_zsh_completes_commands_files_members_and_functions(folder):
    assert COMMANDS <= zsh(folder, "psf ")
    assert zsh(folder, "psf sho") == {"show"}
    assert "Main.PSF" in zsh(folder, "psf show ") and "notes.txt" not in zsh(folder, "psf show ")
    assert {"references", "functions/Blink", "events/OnMsg"} <= zsh(folder, "psf show Main.PSF ")
    assert zsh(folder, "psf delete Main.PSF ") == {"Blink"}
    assert {"sarif", "json"} <= zsh(folder, "psf check --format ")
    assert "notes.txt" in zsh(folder, "psf tidy --files-from ")
    assert TEST_OPTIONS <= zsh(folder, "psf test --")
    assert "Main.PSF" in zsh(folder, "psf test --jobs 2 --timeout 3 --junit x.xml --channel a=1 --coverage ")
    assert "notes.txt" in zsh(folder, "psf test --junit ")


def test_zsh_knows_files_with_blanks_and_in_the_home_folder(folder):
    (folder / "my block.PSF").write_bytes((folder / "Main.PSF").read_bytes())
    for line in ["psf delete my\\ block.PSF ", "psf delete 'my block.PSF' ", "psf delete ~/my\\ block.PSF "]:
        assert zsh(folder, line) == {"Blink"}, line


def test_bash_completes_commands_files_members_and_functions(folder):
    assert COMMANDS <= bash(folder, "psf", "")
    assert bash(folder, "psf", "sh") == {"show"}
    assert bash(folder, "psf", "show", "") == {"Main.PSF"}
    assert {"references", "functions/Blink", "events/OnMsg"} <= bash(folder, "psf", "show", "Main.PSF", "")
    assert bash(folder, "psf", "set", "Main.PSF", "events/OnK") == {"events/OnKey"}
    assert bash(folder, "psf", "delete", "Main.PSF", "") == {"Blink"}
    assert bash(folder, "psf", "rename", "Main.PSF", "") == {"Blink"}
    assert bash(folder, "psf", "rename", "Main.PSF", "Blink", "") == {""}
    assert bash(folder, "psf", "build", "--jobs", "2", "") == {"Main.PSF"}
    assert "--json" in bash(folder, "psf", "show", "--")
    assert {"--lint", "--format", "--files-from", "--name"} <= bash(folder, "psf", "check", "--")
    assert TEST_OPTIONS <= bash(folder, "psf", "test", "--")
    assert bash(folder, "psf", "test", "--junit", "n") == {"notes.txt"}
    assert bash(folder, "psf", "test", "--timeout", "3", "--channel", "a=1", "--coverage", "") == {"Main.PSF"}
    assert bash(folder, "psf", "check", "--format", "s") == {"sarif"}
    assert bash(folder, "psf", "tidy", "--files-from", "n") == {"notes.txt"}
    assert bash(folder, "psf", "tidy", "--name", "x", "") == {"Main.PSF"}
    assert bash(folder, "psf", "merge", "Main.PSF", "no") == {"notes.txt"}
    assert "--c-file" in bash(folder, "psf", "map", "--")
    assert bash(folder, "psf", "map", "Main.PSF", "--c-file", "") == {"Main.PSF", "notes.txt"}
    assert bash(folder, "psf", "map", "--c-file", "notes.txt", "") == {"Main.PSF"}
    assert "--delete" in bash(folder, "psf", "recover", "--")
    assert bash(folder, "psf", "recover", "1", "-o", "") == {"Main.PSF"}
    assert bash(folder, "psf", "--codepage", "1251", "show", "Main.PSF", "functions/") == {"functions/Blink"}


@pytest.mark.parametrize("word", [r"my\ block.PSF", '"my block.PSF"', r"~/my\ block.PSF"])
def test_bash_knows_files_however_they_are_written(folder, word):
    (folder / "my block.PSF").write_bytes((folder / "Main.PSF").read_bytes())
    assert bash(folder, "psf", "delete", word, "") == {"Blink"}
    assert {os.path.basename(name) for name in bash(folder, "psf", "check", word[:-6])} == {"my block.PSF"}


def test_bash_runs_nothing_of_what_is_written(folder):
    bash(folder, "psf", "show", "$(touch run).PSF", "")
    assert not (folder / "run").exists()


def test_fish_completes_commands_files_members_and_functions(folder):
    assert COMMANDS <= fish(folder, "psf ")
    assert "Main.PSF" in fish(folder, "psf show ")
    assert {"references", "functions/Blink", "events/OnMsg"} <= fish(folder, "psf show Main.PSF ")
    assert fish(folder, "psf delete Main.PSF ") == {"Blink"}
    assert fish(folder, "psf rename Main.PSF ") == {"Blink"}
    assert "--jobs" in fish(folder, "psf build --")
    assert "--json" in fish(folder, "psf show --")
    assert {"--lint", "--format", "--files-from", "--name"} <= fish(folder, "psf check --")
    assert TEST_OPTIONS <= fish(folder, "psf test --")
    assert "notes.txt" in fish(folder, "psf test --junit ")
    assert "Main.PSF" in fish(folder, "psf test --timeout 3 --channel a=1 --coverage ")
    assert fish(folder, "psf check --format s") == {"sarif"}
    assert "Main.PSF" in fish(folder, "psf tidy --name x ")
    assert "notes.txt" in fish(folder, "psf merge Main.PSF ")
    assert "--global" in fish(folder, "psf git-setup --")
    assert "--c-file" in fish(folder, "psf map --")
    assert "notes.txt" in fish(folder, "psf map Main.PSF --c-file ")
    assert "--delete" in fish(folder, "psf recover --")


def test_numbers_of_what_was_kept_are_completed(folder):
    kept = folder / ".local/state/tessaly/recovery"
    kept.mkdir(parents=True)
    for number in range(2):
        leave(kept, f"copy-{number}", (folder / "Main.PSF").read_bytes(), process=number)
    assert bash(folder, "psf", "recover", "") == {"1", "2"}
    assert fish(folder, "psf recover ") == {"1", "2"}
    assert fish(folder, "psf recover --delete ") == {"1", "2"}
