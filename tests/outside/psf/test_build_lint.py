"""psf build with real compilers: the first message names the member and the line where a mistake is, also where the
compiler says nothing or points elsewhere; and a right program builds without a finding."""

import functools
import re

import pytest
from harness import ROOT, write_settings
from lint_cases import CASES, LINE_ENDS, ORDINARY
from psf_harness import IS_SANITIZED, not_on_windows, psf

pytestmark = not_on_windows("its compilers and batch files are those of Linux")
COMPILERS = ["gcc"] if IS_SANITIZED else ["gcc", "clang"]  # psf is the same with both
MESSAGE = re.compile(r"(.*?):(\d+)(?::\d+)?: (?:.*(?:error|warning)\b|undefined reference|multiple definition)")
FINDING = re.compile(r"x\.PSF:[\w/]+:\d+: warning: .* \[[a-z]+-[a-z]+\]")


def line_end(number, compiler):
    """Each compiler meets both kinds, and each case the other kind with the other compiler."""
    return list(LINE_ENDS)[(number + COMPILERS.index(compiler)) % 2]


@pytest.fixture(scope="module")
def build(tmp_path_factory):
    folder = tmp_path_factory.mktemp("lint")
    write_settings(folder / "settings.reg", FCompBat=ROOT / "kit" / "compile.sh", FCompFileName=folder / "program.c")

    @functools.cache
    def run(case, compiler, line_end):
        (folder / "x.PSF").write_bytes(case.psf(LINE_ENDS[line_end])[0])
        return psf("build", "x.PSF", cwd=folder, env={
            "TESSALY_SETTINGS": str(folder / "settings.reg"), "CC": compiler, "XDG_CACHE_HOME": str(folder)})
    return run


def first_place(output):
    """Where the first message of a build says that something is, as (member, line)."""
    for line in output.decode("utf-8", "replace").splitlines():
        match = MESSAGE.match(line)
        if match:
            member = match[1].removeprefix("x.PSF:")
            return member, int(match[2])
    return None


def findings(output):
    return [line for line in output.decode("utf-8", "replace").splitlines() if FINDING.fullmatch(line)]


@pytest.mark.parametrize("compiler", COMPILERS)
def test_the_first_message_of_a_wrong_program_names_the_mistake(build, compiler):
    wrong = [case for case in CASES + ORDINARY if case.in_build or case.said]
    assert len(wrong) >= 220
    elsewhere = {}
    for number, case in enumerate(wrong):
        result = build(case, compiler, line_end(number, compiler))
        if first_place(result.out) != case.first(compiler):
            elsewhere[case.name] = (case.first(compiler), result.out.decode("utf-8", "replace")[:500])
    assert elsewhere == {}


@pytest.mark.parametrize("compiler", COMPILERS)
def test_a_right_program_builds_without_a_finding(build, compiler):
    told = {}
    for number, case in enumerate(CASES):
        if not case.findings:
            result = build(case, compiler, line_end(number, compiler))
            if result.status != 0 or findings(result.out):
                told[case.name] = result
    assert told == {}


@pytest.mark.parametrize("compiler", COMPILERS)
def test_what_the_compiler_shows_itself_is_not_said_twice(build, compiler):
    shown = {"open-string", "same-name", "conflict-marker"}
    for case in CASES:
        if case.findings and {rule for _, _, rule in case.findings} <= shown:
            assert findings(build(case, compiler, "LF").out) == [], case.name


@pytest.mark.parametrize("compiler", COMPILERS)
def test_a_comment_left_open_builds_and_is_told(build, compiler):
    case = next(case for case in CASES if case.name == "a comment in the references")
    result = build(case, compiler, "CRLF")
    assert result.status == 0
    assert result.out.decode().splitlines()[0] == (
        "x.PSF:references:2: warning: the comment that begins here does not end in this text [open-comment]")
