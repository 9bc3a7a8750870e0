"""The page on the installation: what it names is what the packages have. Their own tests look whether it is there."""

import re
import shutil

import pytest
from harness import EXAMPLES, ROOT, example_file
from help_pages import LANGUAGES, Workplace, sections, source

SETTINGS = (ROOT / "packaging/linux/settings.reg").read_text(encoding="utf-8")
INSTALLER = "".join(file.read_text(encoding="utf-8") for file in sorted((ROOT / "packaging/windows").glob("*.ns[hi]")))


@pytest.fixture(name="page", params=LANGUAGES)
def fixture_page(request):
    return source(request.param, "install")


def test_the_packages_have_the_version_that_they_are_called_by(page):
    version = re.search(r"project\(Tessaly VERSION ([\d.]+)", (ROOT / "CMakeLists.txt").read_text(encoding="utf-8"))[1]
    named = re.findall(r"[Tt]essaly[-_]([\d.]+)[-_]", page)
    assert len(named) >= 3 and set(named) == {version}


def test_what_an_example_prints_is_what_it_must_print(page):
    lines = [line.strip() for line in re.findall(r"^ {8}(.*)$", page, re.M)]
    assert len(lines) == 4 and lines == example_file("blink", ".expected").read_text(encoding="utf-8").splitlines()[:4]


def test_psf_is_checked_as_the_page_says(page, tmp_path):
    command, last = re.search(r"^5\. .*?`(psf .*?)`.*?`(.*?)`", page, re.M).groups()
    workplace = Workplace(tmp_path / "blink")
    for file in example_file("blink", ".PSF").parent.iterdir():
        shutil.copy(file, workplace.folder)
    assert workplace.does(*command.split()).splitlines()[-1] == last


@pytest.mark.parametrize("language", LANGUAGES)
def test_menu_entries_are_called_as_the_packages_call_them(language):
    number = LANGUAGES.index(language)
    windows = re.findall(r'TextExamplesEntry .*"(.*)"', INSTALLER)[number]
    section = re.findall(r'TextPathSection .*"(.*)"', INSTALLER)[number].partition(" (")[0]
    entry = (ROOT / "packaging/linux/tessaly-examples.desktop").read_text(encoding="utf-8")
    linux = re.findall(r"^Name.*=(.*)$", entry, re.M)[number]
    quotes = "“{}”" if language == "en" else "„{}“"
    for name in (windows, linux, section):
        assert quotes.format(name) in source(language, "install"), name


def test_places_are_those_that_the_packages_set(page):
    where = sections(page)["where"]
    c_file = re.search(r'"FCompFileName"="(.*)"', SETTINGS)[1]
    help_folder, kit = re.search(r'"FHelp"="(.*)"', SETTINGS)[1], re.search(r'"FCompBat"="(.*)"', SETTINGS)[1]
    assert r'StrCpy $Work "$APPDATA\Ostrel\Tessaly"' in INSTALLER and r'"$Work\program.c"' in INSTALLER
    for place in (f"`{c_file}`", f"`{kit}`", f"`{help_folder}/", r"`C:\ProgramData\Ostrel\Tessaly\program.c`"):
        assert place in where, place
    assert "blink" in EXAMPLES and r"`examples\blink\Blink.PSF`" in where
