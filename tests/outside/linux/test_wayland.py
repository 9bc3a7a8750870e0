"""The same program on a Wayland compositor without a screen."""

import subprocess

import pytest
from harness import ROOT, environment, example_file, identify, run, wait_until

BACKGROUND = "0xff404040"


@pytest.fixture(name="compositor")
def fixture_compositor(tmp_path):
    (tmp_path / "wayland").mkdir(mode=0o700)
    settings = tmp_path / "weston.ini"
    settings.write_text(f"[core]\nshell=desktop-shell.so\nidle-time=0\n[shell]\npanel-position=none\nlocking=false\n"
                        f"startup-animation=none\nanimation=none\nbackground-color={BACKGROUND}\n")
    log = (tmp_path / "weston.log").open("wb")
    weston = subprocess.Popen(
        ["weston", f"--config={settings}", "--backend=headless-backend.so", "--use-pixman", "--width=1280",
         "--height=800", "--socket=wayland-test", "--debug"],
        env=environment({"XDG_RUNTIME_DIR": tmp_path / "wayland"}), stdout=log, stderr=log)
    wait_until("the compositor", (tmp_path / "wayland/wayland-test").exists)
    yield {"WAYLAND_DISPLAY": str(tmp_path / "wayland/wayland-test"), "QT_QPA_PLATFORM": "wayland"}
    weston.terminate()
    weston.wait()
    log.close()


def colours(folder, variables):
    """Takes a picture; returns its path and how many colours it has."""
    for old in folder.glob("wayland-screenshot*.png"):
        old.unlink()
    run("weston-screenshooter", cwd=folder, env=variables)
    pictures = list(folder.glob("wayland-screenshot*.png"))
    if not pictures:
        return None, 0
    return pictures[0], int(identify(pictures[0], "%k"))


def test_the_window_comes_up_on_wayland(start, compositor, tmp_path):
    program = start(example_file("blink", ".PSF"), **compositor)

    def shown():
        assert program.process.poll() is None
        path, count = colours(tmp_path, compositor)
        return path if count > 50 else None

    path = wait_until("the window on the compositor's screen", shown)
    folder = ROOT / "build/screenshots"
    folder.mkdir(parents=True, exist_ok=True)
    path.rename(folder / "linux-wayland.png")
