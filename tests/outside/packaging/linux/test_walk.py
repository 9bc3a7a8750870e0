"""From an empty Debian to a program block that runs and a test that passes, by what README and the help say alone."""
import os
import re
import subprocess

import pytest
from first_block import first_block, without_indent, write_and_build
from fresh_debian import DEB, Debian
from harness import run, wait_until, xdotool
from pages import blocks, section, steps, walk

README = "README.md"


@pytest.fixture(scope="module", name="debian")
def fixture_debian():
    """One with a user who may become root, and git; the package is installed as README says."""
    system = Debian(DEB)
    try:
        system.run("apt-get update -qq && apt-get install -y -qq --no-install-recommends sudo git procps")
        system.run("useradd -m tester && echo 'tester ALL=(ALL) NOPASSWD: ALL' >/etc/sudoers.d/tester")
        system.run(f"mv /root/{DEB.name} /home/tester/")
        install = next(step for step in steps(section(README, "Install"), "linux") if "apt" in step.text)
        assert f" ./{DEB.name}" in install.text
        system.run(f"cd && {install.text}", user="tester", input="y\n")
        yield system
    finally:
        system.close()


def test_readme_leads_to_a_block_that_runs_and_a_test_that_passes(debian):
    debian.run("git config --global user.email a; git config --global user.name a; mkdir ~/empty", user="tester")

    def save(name, text):
        debian.run(f"cat >~/empty/{name}", user="tester", input=text)

    def command(line):
        return debian.run(f"cd ~/empty && {line}", user="tester")
    for heading in ("Your first program block", "Test it", "Keep it in git"):
        walk(section(README, heading), "linux", save, command)
    debian.run("cd && git clone -q empty clone && cp *.deb clone", user="tester")
    for sample in blocks(section(README, "In a pipeline"), "yaml"):
        install = re.search(r"- (?:run: )?(apt-get.*)$", sample, re.M)[1]
        debian.run(f"cd /home/tester/clone && {install}")
    pipeline = steps(section(README, "In a pipeline"), "linux")[0].text
    assert "\nok 1 - " in debian.run(f"cd ~/clone && {pipeline}", user="tester")


@pytest.mark.parametrize("language, layout", [("en", "us"), ("de", "de")])
def test_the_page_of_the_help_leads_to_a_block_that_runs(debian, keyboard, language, layout):
    keyboard(layout)
    page = first_block(language)
    folder = f"/home/tester/{language}"
    debian.run(f"mkdir {folder}", user="tester")
    block = f"{folder}/{page.file}"
    command = debian.enter(f"exec env DISPLAY={os.environ['DISPLAY']} tessaly", user="tester")
    with subprocess.Popen(command) as process:
        try:
            wait_until("the window", lambda: xdotool("search", "--onlyvisible", "--class", "tessaly", check=False))
            write_and_build(page, block)
            is_built = debian.enter(f"test -x {block.replace('.PSF', '.out')}", "tester")
            wait_until("the built program", lambda: run(*is_built).returncode == 0)
        finally:
            process.terminate()
            process.wait(timeout=20)
    for member, text in ((f"functions/{page.name}", page.function), ("events/OnKey", page.handler)):
        shown = debian.run(f"psf show {block} {member}", user="tester")
        assert without_indent(shown) == without_indent(text), debian.run(f"cat {block}")
    debian.run(f"cat >{folder}/{page.script}", user="tester", input=page.events)
    assert debian.run(f"cd {folder} && {page.run['linux']}", user="tester") == page.printed
