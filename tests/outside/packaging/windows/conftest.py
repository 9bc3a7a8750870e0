"""One Wine for the whole run: its start costs more than most tests."""
import subprocess

import pytest

from wine_harness import wine_command


@pytest.fixture(scope="session", autouse=True)
def windows():
    with subprocess.Popen(
        wine_command("cmd"), stdin=subprocess.PIPE, stdout=subprocess.PIPE, stderr=subprocess.DEVNULL
    ) as shell:
        assert shell.stdout.readline()  # it is up
        yield
        shell.stdin.close()
