"""The help's page "Your first program block": what it has one type, typed with real keys into the real window."""

import re
import textwrap
from types import SimpleNamespace

from harness import ROOT, wait_until, xdotool


def first_block(language):
    """The page's names and texts."""
    page = (ROOT / f"help/{language}/first-block.md").read_text(encoding="utf-8")
    function, handler, events, windows, powershell, linux, printed = [
        textwrap.dedent(block) for block in re.findall(r"(?<=\n\n)(?: {4}.*\n|\n(?= {8}))+", page)]
    return SimpleNamespace(
        name=re.search(r"<kbd>F5</kbd>.*?`(\w+)`", page, re.S)[1], function=function, handler=handler,
        file=re.search(r"`(\w+\.PSF)`", page)[1], script=re.search(r"`(\w+\.events)`", page)[1], events=events,
        run={"windows": windows.strip(), "powershell": powershell.strip(), "linux": linux.strip()}, printed=printed)


def window_with_the_keyboard():
    found = xdotool("getactivewindow", check=False)
    return found if found and xdotool("getwindowfocus", check=False) == found else None


def key(*keys):
    for each in keys:
        xdotool("key", "--clearmodifiers", each)


def type_line(text):
    xdotool("type", "--clearmodifiers", "--delay", 15, "--", text)


def answer(main, asking, text):
    """Presses the key that asks for something, types the answer, and waits for the main window to come back."""
    key(asking)
    wait_until("a window that asks", lambda: window_with_the_keyboard() not in (None, main))
    type_line(text)
    key("Return")
    wait_until("the end of that window", lambda: window_with_the_keyboard() == main)


def change_text(text):
    """In place of what is in the pane. The pane indents by itself."""
    key("F3", "ctrl+a", "Delete")
    for number, line in enumerate(text.splitlines()):
        if number:
            key("Return")
        type_line(line.strip())


def write_and_build(page, path):
    """All that the page does in the window: from an empty program block to the build of its file."""
    main = wait_until("the window", window_with_the_keyboard)
    answer(main, "F5", page.name)
    change_text(page.function)
    key("F2", "End", *["Up"] * 5)  # OnKey, the third of eight
    change_text(page.handler)
    answer(main, "ctrl+s", path)
    key("F10")


def without_indent(text):
    return [line.strip() for line in text.strip().splitlines()]
