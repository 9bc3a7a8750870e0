"""One Wine for the whole run: its start costs more than most tests."""

import pytest
from harness import wine_shell


@pytest.fixture(scope="session", autouse=True)
def windows():
    yield wine_shell()
    wine_shell().end()
