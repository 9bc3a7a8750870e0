"""Keeps Wine running between the calls of a psf.exe."""

import contextlib

import pytest
from harness import keep_wine
from psf_harness import IS_EXE


@pytest.fixture(scope="session", autouse=True)
def windows():
    with keep_wine() if IS_EXE else contextlib.nullcontext():
        yield
