"""Keeps Wine running between the calls of a psf.exe: a start of it takes longer than the calls."""

import subprocess

import pytest
from psf_harness import COMMAND, WINE, source


@pytest.fixture(scope="session", autouse=True)
def running_wine(tmp_path_factory):
    if WINE is None:
        yield
        return
    path = tmp_path_factory.mktemp("wine") / "x.PSF"
    path.write_bytes(source())
    # It waits for its standard input. What Wine starts beside it must not hold the pipes of a later call.
    waiting = subprocess.Popen([*COMMAND, "set", str(path), "references"], stdin=subprocess.PIPE,
                               stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL)
    subprocess.run([*COMMAND, "--version"], stdout=subprocess.DEVNULL, stderr=subprocess.DEVNULL, timeout=300)
    yield
    waiting.communicate(b"", timeout=120)
    assert waiting.returncode == 0
