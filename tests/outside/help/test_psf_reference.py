"""The reference of psf in the help: every command and option that --help lists, and nothing else, with its statuses."""

import re

import pytest
from help_pages import LANGUAGES, PSF, sections, source
from harness import run

OPTION = re.compile(r"(?<![\w-])-{1,2}[a-z][\w-]*")


def helped(*command):
    done = run(PSF, *command, "--help", text=True)
    assert done.returncode == 0
    return done.stdout


def options(text):
    """Those of a --help, without the one for help itself."""
    listed = re.findall(r"^  (-[\w,-]*)", text.partition("Options:")[2], re.M)
    return {option for each in listed for option in each.split(",")} - {"-h", "--help"}


def commands():
    names = re.findall(r"^  ([a-z][\w-]*)  ", helped().partition("Subcommands:")[2], re.M)
    assert len(names) >= 18
    return names


def parts(language):
    """What the page says of each command."""
    found = re.split(r"^### `psf [\w-]+` \{#([\w-]+)\}$", source(language, "psf-reference").partition("{#status}")[0],
                     flags=re.M)
    return {name: text.partition("\n## ")[0] for name, text in zip(found[1::2], found[2::2])}


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_page_has_the_commands_that_there_are(language):
    assert sorted(parts(language)) == sorted(commands())


@pytest.mark.parametrize("language", LANGUAGES)
def test_each_option_has_a_line_and_stands_in_the_usage(language):
    for name, text in parts(language).items():
        usage = next(line for line in text.splitlines() if line.startswith("    psf "))
        lines = [line.partition(": ")[0] for line in text.splitlines() if line.startswith("- ")]
        known = options(helped(name))
        assert {option for line in lines for option in OPTION.findall(line)} == known, name
        assert set(OPTION.findall(usage)) <= known, name
        assert len(lines) == len(OPTION.findall(usage)), name


@pytest.mark.parametrize("language", LANGUAGES)
def test_the_usage_names_what_the_command_takes(language):
    for name, text in parts(language).items():
        listed = helped(name).partition("Positionals:")[2].partition("Options:")[0]
        usage = next(line for line in text.splitlines() if line.startswith("    psf "))
        for positional in re.findall(r"^  ([A-Z]+) ", listed, re.M):
            assert re.search(rf"\b{positional}\b", usage), (name, positional)


@pytest.mark.parametrize("language", LANGUAGES)
def test_each_exit_status_of_a_command_is_told_and_explained(language):
    explained = re.findall(r"^\| (\d+) \|", sections(source(language, "psf-reference"))["status"], re.M)
    for name, text in parts(language).items():
        footer = re.search(r"Exit status: (.*?)\nExample", helped(name), re.S)[1]
        told = re.search(r"Exit[\s-][Ss]tatus:(.*?)\n(?:\n|\Z)", text, re.S)[1]
        for status in re.findall(r"(?:^|; ?|;\n)(\d+) ", footer):
            assert re.search(rf"\b{status}\b", told), (name, status)
            assert status in explained, (name, status)


@pytest.mark.parametrize("language", LANGUAGES)
def test_options_before_the_command_are_told(language):
    text = sections(source(language, "psf-reference"))["options"]
    for option in options(helped()) | {"-h", "--help"}:
        assert f"`{option}" in text, option
