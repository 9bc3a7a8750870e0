"""Keeps Wine running between the calls of a psf.exe."""

import pytest
from harness import windows_shell
from psf_harness import IS_EXE


@pytest.fixture(scope="session", autouse=True)
def windows():
    yield IS_EXE and windows_shell()
    if IS_EXE:
        windows_shell().end()
