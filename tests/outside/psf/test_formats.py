"""psf check for other programs: its formats."""

import json
import os
import re

import pytest
from psf_harness import not_on_windows, psf, source

ODD = source([("Main", "int ä;")], references="int a; /* never")


def check(tmp_path, format, *more, content=ODD, name="x.PSF"):
    (tmp_path / name).write_bytes(content)
    return psf("check", "--format", format, *more, name, cwd=tmp_path)


def test_text_is_what_there_is_without_the_option(tmp_path):
    for more in ([], ["--lint"]):
        result = check(tmp_path, "text", *more)
        assert (result.status, result.out) == (1, psf("check", *more, "x.PSF", cwd=tmp_path).out)
    assert b" [file-" not in result.out


def test_gcc_is_what_editors_take_from_a_compiler(tmp_path):
    lines = check(tmp_path, "gcc", "--lint").out.decode().splitlines()
    assert len(lines) == 2
    for line, place in zip(lines, ["x.PSF:5:1: warning: references: the comment", "x.PSF:12:1: warning: functions/M"]):
        assert line.startswith(place)
        assert re.search(r" \[[a-z-]+\]$", line)


def test_json_is_one_object_a_line(tmp_path):
    result = check(tmp_path, "json", "--lint")
    assert result.status == 1
    found = [json.loads(line) for line in result.out.decode().splitlines()]
    assert [list(one) for one in found] == [["file", "line", "member", "rule", "severity", "message"]] * 2
    assert found[0] == {"file": "x.PSF", "line": 5, "member": "references", "rule": "open-comment",
                        "severity": "warning", "message": "the comment that begins here does not end in this text"}
    assert (found[1]["line"], found[1]["member"], found[1]["rule"]) == (12, "functions/Main", "file-no-prototype")


def test_a_file_that_does_not_load_is_an_error_in_every_format_for_machines(tmp_path):
    result = check(tmp_path, "json", content=ODD[:-30])
    assert result.status == 2
    assert json.loads(result.out.splitlines()[-1])["severity"] == "error"
    assert result.err == "psf: x.PSF: not a complete PSF file\n"
    assert b"::error file=x.PSF,line=" in check(tmp_path, "github", content=ODD[:-30]).out
    assert b": error: not a complete" in check(tmp_path, "gcc", content=ODD[:-30]).out
    assert json.loads(check(tmp_path, "sarif", content=ODD[:-30]).out)["runs"][0]["results"][-1]["level"] == "error"


def test_what_cannot_be_read_is_an_error_in_every_format_for_machines(tmp_path):
    (tmp_path / "good.PSF").write_bytes(source())
    reason = {"none.PSF": "No such file or directory", "list": "No such file or directory"}

    def result(format):
        done = psf("check", "--format", format, "good.PSF", "none.PSF", "--files-from", "list", cwd=tmp_path)
        assert done.status == 2
        assert done.err == "".join(f"psf: {file}: {why}\n" for file, why in reason.items())
        return done.out.decode()
    assert result("text") == ""
    assert [json.loads(line) for line in result("json").splitlines()] == [
        {"file": file, "line": 1, "member": "", "rule": "file-unreadable", "severity": "error", "message": why}
        for file, why in reason.items()]
    assert result("gcc") == "".join(f"{file}:1:1: error: {why} [file-unreadable]\n" for file, why in reason.items())
    assert result("github") == "".join(f"::error file={file},line=1,title=file-unreadable::{why}\n"
                                       for file, why in reason.items())
    run = json.loads(result("sarif"))["runs"][0]
    assert [(one["ruleId"], one["level"], one["message"]["text"]) for one in run["results"]] == [
        ("file-unreadable", "error", why) for why in reason.values()]


@not_on_windows("no modes")
@pytest.mark.skipif(hasattr(os, "geteuid") and os.geteuid() == 0, reason="nothing is closed to root")
def test_a_folder_that_cannot_be_read_is_an_error_too(tmp_path):
    (tmp_path / "closed").mkdir(mode=0)
    result = psf("check", "--format", "json", "closed", cwd=tmp_path)
    assert (result.status, json.loads(result.out)["file"]) == (2, "closed")


def test_sarif_is_one_document_of_all_files(tmp_path):
    (tmp_path / "a b ä.PSF").write_bytes(ODD)
    result = psf("check", "--lint", "--format", "sarif", ".", cwd=tmp_path)
    assert result.status == 1
    document = json.loads(result.out)
    assert document["version"] == "2.1.0"
    driver = document["runs"][0]["tool"]["driver"]
    assert driver["name"] == "psf"
    results = document["runs"][0]["results"]
    assert [one["ruleId"] for one in results] == [rule["id"] for rule in driver["rules"]]
    assert results[0]["ruleId"] == "open-comment"
    location = results[0]["locations"][0]
    assert location["physicalLocation"] == {"artifactLocation": {"uri": "./a%20b%20%C3%A4.PSF"},
                                            "region": {"startLine": 5}}
    assert location["logicalLocations"] == [{"fullyQualifiedName": "references"}]
    assert results[0]["message"]["text"].startswith("references: the comment")
    empty = json.loads(check(tmp_path, "sarif", content=source()).out)
    assert empty["runs"][0]["results"] == []


@not_on_windows("no such names")
def test_github_has_workflow_commands_that_no_name_can_break(tmp_path):
    result = check(tmp_path, "github", name="\x1b[31ma,b:c%\n::error::x.PSF")
    assert result.out.decode() == (
        "::warning file=?[31ma%2Cb%3Ac%25%0A%3A%3Aerror%3A%3Ax.PSF,line=12,title=file-no-prototype"
        '::functions/Main: its code holds no "{", so all of it becomes the prototype\n')


@pytest.mark.parametrize("format", ["text", "gcc", "json", "github"])
def test_a_good_file_is_nothing_to_report(tmp_path, format):
    result = check(tmp_path, format, "--lint", content=source())
    assert (result.status, result.out, result.err) == (0, b"", "")


def test_an_unknown_format_is_named(tmp_path):
    result = check(tmp_path, "xml")
    assert (result.status, result.out) == (64, b"")
    assert "xml" in result.err and "sarif" in result.err
