"""Keeps Wine running between the calls of a psf.exe."""

import pytest
from harness import running_wine
from psf_harness import IS_EXE


@pytest.fixture(scope="session", autouse=True)
def windows():
    if not IS_EXE:
        yield
        return
    with running_wine():
        yield
