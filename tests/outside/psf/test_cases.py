"""Golden cases: tests/cases/NAME/in.PSF is loaded and generated, and what comes out is compared with loaded.json,
out.c and status. A mismatch leaves the new output beside the expected one, as NAME.new, to be read and promoted."""

import json

import pytest
from harness import ROOT
from psf_harness import psf

CASES = ROOT / "tests" / "cases"
EXPECTED = ["loaded.json", "out.c", "status"]
NAMES = sorted(path.parent.name for path in CASES.glob("*/in.PSF"))


def compare(path, new):
    promoted = path.with_name(path.name + ".new")
    if path.exists() and path.read_bytes() == new:
        promoted.unlink(missing_ok=True)
        return
    promoted.write_bytes(new)
    pytest.fail(f"{path} differs from {promoted}")


def outcome(file):
    """What loading and generating give: the document as readable JSON, the C file, the two statuses."""
    loaded = psf("show", "--json", file)
    document = json.loads(loaded.out)
    generated = psf("generate", file)
    readable = json.dumps(document, indent=2, ensure_ascii=False) + "\n"
    return readable.encode(), generated.out, f"load {loaded.status}\ngenerate {generated.status}\n".encode()


@pytest.mark.parametrize("name", NAMES)
def test_case(name):
    for file, new in zip(EXPECTED, outcome(CASES / name / "in.PSF")):
        compare(CASES / name / file, new)


@pytest.mark.parametrize("name", NAMES)
def test_case_with_a_lone_carriage_return_as_line_end(name, tmp_path):
    """CR and CR LF are the same to the reader. Only a line that begins with a lone LF would be taken for CR LF."""
    content = (CASES / name / "in.PSF").read_bytes()
    if b"\r\n\n" in content:
        pytest.skip("an LF stands at the beginning of a line")
    (tmp_path / "in.PSF").write_bytes(content.replace(b"\r\n", b"\r"))
    assert outcome(tmp_path / "in.PSF") == tuple((CASES / name / file).read_bytes() for file in EXPECTED)


def test_there_are_cases():
    assert len(NAMES) >= 15
