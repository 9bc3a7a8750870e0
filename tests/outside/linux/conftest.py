"""Homes and programs that are gone at the end of the test, and pictures."""

import functools

import pytest
from harness import ROOT, identify, screenshot, wait_until
from linux_harness import Program, make_home, make_opener


@pytest.fixture(name="home")
def fixture_home(tmp_path):
    return make_home(tmp_path)


@pytest.fixture(name="opener")
def fixture_opener(home):
    return functools.partial(make_opener, home)


@pytest.fixture(name="start")
def fixture_start(home):
    programs = []

    def start(*arguments, limits=None, **variables):
        programs.append(Program(home, arguments, limits or {}, variables))
        return programs[-1]

    yield start
    for program in programs:
        program.kill()


@pytest.fixture(name="picture")
def fixture_picture():
    """Takes a picture of the whole screen once it stands still."""

    def picture(name):
        path = ROOT / f"build/screenshots/linux-{name}.png"
        earlier = []

        def still():
            screenshot(path)
            earlier.append(identify(path, "%#"))
            return len(earlier) > 1 and earlier[-1] == earlier[-2]

        wait_until("a screen that stands still", still)
        return path

    return picture
