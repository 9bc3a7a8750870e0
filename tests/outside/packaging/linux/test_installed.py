"""The Debian package in a fresh Debian: installed by apt, used, removed. script/test-packages linux names it."""
import os
import re
import shlex
import subprocess

import pytest
from fresh_debian import DEB, Debian
from harness import EXAMPLES, run, wait_until, xdotool


@pytest.fixture(scope="module")
def debian():
    system = Debian(DEB)
    try:
        system.run("apt-get update -qq")
        # What a desktop has anyway, and what these tests look with.
        system.run("apt-get install -y -qq libglib2.0-bin shared-mime-info desktop-file-utils xdg-utils procps")
        # The needed packages come first, so that the difference afterwards is this package's own.
        needs = system.run(f"dpkg-deb -f /root/{DEB.name} Depends Recommends")
        names = [re.split(r"[ (|]", entry.strip())[0] for line in needs.splitlines()
                 for entry in line.split(":", 1)[1].split(",")]
        system.run("apt-get install -y -qq --no-install-recommends " + " ".join(names))
        system.run("useradd -m tester && useradd -m other")
        system.files_before = system.files()
        system.run(f"apt-get install -y -qq --no-install-recommends /root/{DEB.name}")
        yield system
    finally:
        system.close()


def copy_examples(debian):
    debian.run("cp -r /usr/share/doc/tessaly/examples ~/", user="tester")


@pytest.mark.parametrize("name", EXAMPLES)
def test_an_example_is_built_without_any_set_up_and_prints_what_it_must(debian, name):
    copy_examples(debian)
    block = f"~/examples/{name}/{EXAMPLES[name]}"
    assert debian.run(f"psf build {block}.PSF", user="tester") == ""
    expected = debian.run(f"cat {block}.expected", user="tester")
    assert debian.run(f"{block}.out {block}.events", user="tester") == expected


def test_each_user_has_a_c_file_of_his_own(debian):
    debian.run("cp -r /usr/share/doc/tessaly/examples ~/ && psf build ~/examples/blink/Blink.PSF", user="other")
    assert debian.run("stat -c %U ~/.cache/tessaly/program.c", user="other") == "other\n"


@pytest.mark.parametrize("documents", ["Documents", "Meine Dokumente"])
def test_the_menu_entry_gives_a_user_copies_of_the_examples_and_opens_them(debian, documents):
    opener = "printf '#!/bin/sh\\nprintf %%s \"$1\" >~/opened' >~/xdg-open && chmod +x ~/xdg-open"
    debian.run(f"mkdir -p ~/.config ~/'{documents}' && {opener} && rm -f ~/opened", user="other")
    debian.run(f"echo 'XDG_DOCUMENTS_DIR=\"$HOME/{documents}\"' >~/.config/user-dirs.dirs", user="other")
    entry = debian.run("sed -n 's/^Exec=//p' /usr/share/applications/tessaly-examples.desktop").strip()
    copies = f"'{documents}/Tessaly Examples'"
    debian.run(f"cd && PATH=$HOME:$PATH {entry}", user="other")
    assert debian.run("cat ~/opened", user="other") == f"/home/other/{documents}/Tessaly Examples"
    debian.run(f"diff -r /usr/share/doc/tessaly/examples ~/{copies}", user="other")
    debian.run(f"cd ~/{copies} && chmod 700 . && echo mine >blink/Blink.PSF && rm filter/Filter.PSF", user="other")
    debian.run(f"cd && PATH=$HOME:$PATH {entry}", user="other")
    assert debian.run(f"cd ~/{copies} && cat blink/Blink.PSF && stat -c %a .", user="other") == "mine\n700\n"
    debian.run(f"test -s ~/{copies}/filter/Filter.PSF", user="other")


@pytest.mark.parametrize("name", ["Block.PSF", "block.psf", "Block.Psf"])
def test_a_program_source_file_is_known_by_its_type(debian, name):
    debian.run(f"cp /usr/share/doc/tessaly/examples/blink/Blink.PSF ~/{name}", user="tester")
    kind = debian.run(f"XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype ~/{name}", user="tester")
    assert kind == "text/x-tessaly-psf\n"


def test_a_program_source_file_is_known_by_its_first_line(debian):
    debian.run("cp /usr/share/doc/tessaly/examples/blink/Blink.PSF ~/block", user="tester")
    kind = debian.run("XDG_CURRENT_DESKTOP=GNOME xdg-mime query filetype ~/block", user="tester")
    assert kind == "text/x-tessaly-psf\n"


def test_tessaly_opens_program_source_files_by_default(debian):
    assert debian.run("xdg-mime query default text/x-tessaly-psf", user="tester") == "tessaly.desktop\n"


def test_the_help_and_every_file_that_the_settings_name_are_there(debian):
    settings = debian.run("cat /etc/xdg/tessaly/settings.reg")
    for name, path in re.findall(r'^"(\w+)"="(/.*)"$', settings, re.MULTILINE):
        debian.run(f"test -e {path}")
    for language in ("en", "de"):
        debian.run(f"test -s /usr/share/tessaly/help/{language}/index.html")


def test_the_window_opens_an_example_and_f10_builds_it(debian):
    copy_examples(debian)
    block = "~/examples/filter/Filter"
    debian.run(f"rm -f {block}.out", user="tester")
    display = os.environ["DISPLAY"]
    command = debian.enter(f"exec env DISPLAY={shlex.quote(display)} tessaly {block}.PSF", user="tester")
    with subprocess.Popen(command) as process:
        try:
            wait_until("the window", lambda: xdotool("search", "--onlyvisible", "--class", "tessaly", check=False))
            wait_until("the keyboard in it",
                       lambda: xdotool("getactivewindow", "getwindowname", check=False) == ["Tessaly"] and
                       xdotool("getwindowfocus", check=False) == xdotool("getactivewindow", check=False))
            xdotool("key", "F10")
            is_built = debian.enter(f"test -x {block}.out", "tester")
            wait_until("the built program", lambda: run(*is_built).returncode == 0)
            expected = debian.run(f"cat {block}.expected", user="tester")
            assert debian.run(f"{block}.out {block}.events", user="tester") == expected
            assert debian.run("cat ~/.local/state/tessaly/build.log", user="tester") == ""
        finally:
            process.terminate()
            process.wait(timeout=20)


def test_removing_leaves_the_settings_and_purging_leaves_nothing(debian):
    copy_examples(debian)
    debian.run("apt-get remove -y -qq tessaly")
    debian.run("test -f /etc/xdg/tessaly/settings.reg && ! test -e /usr/bin/tessaly && ! test -e /usr/share/tessaly")
    debian.run("apt-get purge -y -qq tessaly")
    assert set(debian.files()) ^ set(debian.files_before) == set()
    debian.run("! test -e /etc/xdg/tessaly && ! test -e /usr/share/tessaly && ! test -e /usr/share/doc/tessaly")
    debian.run("test -f ~/examples/blink/Blink.PSF", user="tester")
