"""One Wine for the whole run: its start costs more than most tests."""

import pytest
from harness import keep_wine


@pytest.fixture(scope="session", autouse=True)
def windows():
    with keep_wine():
        yield
