"""psf check --lint: each small program has exactly the findings that stand behind it, or none."""

import re

import pytest
from harness import EXAMPLES, example_file
from lint_cases import CASES, LINE_ENDS, Case
from psf_harness import psf


def found(output):
    """What a text of psf check says, as (line, member, rule) for each file."""
    result = {}
    for line in output.decode().splitlines():
        match = re.fullmatch(r"(.*?):(\d+): warning: (?:([\w/]+): )?.* \[([\w-]+)\]", line)
        assert match, line
        result.setdefault(match[1], []).append((int(match[2]), match[3], match[4]))
    return result


def test_there_are_cases_of_every_rule_about_texts():
    rules = {rule for case in CASES for _, _, rule in case.findings}
    assert rules == {"open-comment", "open-brace", "open-string", "open-if", "open-declaration", "stray-brace",
                     "prototype-cut", "prototype-comment", "handler-missing", "reserved-name", "same-name",
                     "conflict-marker"}
    assert sum(bool(case.findings) for case in CASES) >= 160
    assert sum(not case.findings for case in CASES) >= 50
    assert len({case.name for case in CASES}) == len(CASES)


@pytest.mark.parametrize("line_end", LINE_ENDS)
def test_every_case_has_its_findings_and_no_others(tmp_path, line_end):
    expected = {}
    for number, case in enumerate(CASES):
        content, begins = case.psf(LINE_ENDS[line_end])
        (tmp_path / f"{number}.PSF").write_bytes(content)
        if case.findings:
            expected[f"{number}.PSF"] = [(begins[member] + line - 1, member, rule)
                                         for member, line, rule in case.findings]
    result = psf("check", "--lint", *(f"{number}.PSF" for number in range(len(CASES))), cwd=tmp_path)
    assert (result.status, result.err) == (1, "")
    got = found(result.out)
    for number, case in enumerate(CASES):
        file = f"{number}.PSF"
        assert got.get(file, []) == expected.get(file, []), case.name


def test_without_the_option_nothing_of_it_is_said(tmp_path):
    for number, case in enumerate(CASES):
        (tmp_path / f"{number}.PSF").write_bytes(case.psf("\r\n")[0])
    result = psf("check", *(f"{number}.PSF" for number in range(len(CASES))), cwd=tmp_path)
    assert (result.status, result.out, result.err) == (0, b"", "")


@pytest.mark.parametrize("name", EXAMPLES)
def test_the_examples_have_no_findings(name):
    result = psf("check", "--lint", example_file(name, ".PSF"))
    assert (result.status, result.out, result.err) == (0, b"", "")


def one(tmp_path, content, *options):
    (tmp_path / "x.PSF").write_bytes(content)
    return psf("check", "--lint", "x.PSF", *options, cwd=tmp_path)


def simple(member, text, line_end="\r\n"):
    case = Case("")
    case.members = {member: text}
    return case.psf(line_end)


def test_a_line_says_where_what_and_by_which_rule(tmp_path):
    content, begins = simple("functions/Foo", "void Foo(int a){\n}")
    assert one(tmp_path, content).out.decode() == (
        f'x.PSF:{begins["functions/Foo"]}: warning: functions/Foo: the generated prototype is "void Foo(int a;": '
        'there is no space or line end in front of the "{" [prototype-cut]\n')


@pytest.mark.parametrize("line_end", LINE_ENDS)
def test_a_line_comment_takes_in_the_end_of_the_prototype(tmp_path, line_end):
    content, begins = simple("functions/Foo", "void Foo(void) // blinks\n{\n}", LINE_ENDS[line_end])
    assert found(one(tmp_path, content).out) == {"x.PSF": [(begins["functions/Foo"], "functions/Foo",
                                                            "prototype-comment")]}


def test_wrong_line_ends_are_one_line(tmp_path):
    content = simple("functions/Foo", "void Foo(void)\n{\n}")[0]
    for wrong, word in [(content.replace(b"\r\n", b"\n"), b"LF;"), (content.decode().encode("utf-16"), b"UTF-16;"),
                        (content.decode().encode("utf-16-le"), b"UTF-16;"),
                        (content.decode().encode("utf-16-be"), b"UTF-16;")]:
        result = one(tmp_path, wrong)
        assert result.status == 2
        assert found(result.out) == {"x.PSF": [(1, None, "line-ends")]}
        assert word in result.out
        assert psf("check", "x.PSF", cwd=tmp_path).out.count(b"\n") == 1
    result = one(tmp_path, content.replace(b"\r\n", b"\r"))
    assert (result.status, found(result.out)) == (1, {"x.PSF": [(1, None, "line-ends")]})
    assert b" CR;" in result.out


def test_lone_line_feeds_in_texts_are_no_wrong_line_ends(tmp_path):
    psf("new", tmp_path / "x.PSF")
    assert one(tmp_path, (tmp_path / "x.PSF").read_bytes()).out == b""


def test_bytes_of_utf8_are_told_once_for_each_member(tmp_path):
    case = Case("")
    case.members = {"references": "int a;\n/* gr\u00f6\u00dfer */ /* \u00e4 */",
                    "functions/Foo": "/* \u00fc */\nvoid Foo(void)\n{\n}"}
    content, begins = case.psf("\r\n")
    wrong = content.decode("cp1252").encode()
    expected = [(begins["references"] + 1, "references", "utf-8"), (begins["functions/Foo"], "functions/Foo", "utf-8")]
    assert [entry for entry in found(one(tmp_path, wrong).out)["x.PSF"] if entry[2] == "utf-8"] == expected
    assert one(tmp_path, content).out == b""


def test_bytes_that_are_no_characters_have_a_rule(tmp_path):
    content, begins = simple("references", "int a;\n/* x */")
    result = one(tmp_path, content.replace(b"/* x", b"/* \x81"), "--codepage", "932")
    assert found(result.out) == {"x.PSF": [(begins["references"] + 1, "references", "code-page")]}
    plain = psf("check", "x.PSF", "--codepage", "932", cwd=tmp_path)
    assert plain.out == result.out.replace(b" [code-page]", b"")


def test_findings_stand_among_the_other_warnings_in_the_order_of_lines(tmp_path):
    content, begins = simple("references", "int a; /* never\n")
    content = content.replace(b"[EndPSF]\r\n", b"[EndPSF]\r\nmore\r\n")
    content = content.replace(b"[GFuncs]\r\n", b"[GFuncs]\r\nstray\r\n")
    result = one(tmp_path, content)
    numbers = [int(line.split(b":")[1]) for line in result.out.splitlines()]
    assert len(numbers) == 3
    assert numbers == sorted(numbers)
    assert b"[open-comment]" in result.out.splitlines()[0]
