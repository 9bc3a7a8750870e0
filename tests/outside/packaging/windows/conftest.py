"""One Wine for the whole run: its start costs more than most tests."""

import pytest
from harness import windows_shell


@pytest.fixture(scope="session", autouse=True)
def windows():
    yield windows_shell()
    windows_shell().end()
