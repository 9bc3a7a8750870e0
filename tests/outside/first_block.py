"""The help's page "Your first program block": done with real keys and the mouse in the real window."""

import re
import subprocess
import sys
import textwrap
from types import SimpleNamespace

from harness import ROOT, click, run, wait_until, xdotool

sys.path.insert(0, str(ROOT / "help"))

import catalogue  # noqa: E402

SCREEN_HEIGHT = 800  # of script/display
TREE_WIDTH = 250
ROWS_TO_ON_KEY = 6, 11  # of the tree: how far below the first, of how many; with one function, all open


def first_block(language):
    """The page's names and texts."""
    page = (ROOT / f"help/{language}/first-block.md").read_text(encoding="utf-8")
    function, handler, events, windows, powershell, linux, printed = [
        textwrap.dedent(block) for block in re.findall(r"(?<=\n\n)(?: {4}.*\n|\n(?= {8}))+", page)]
    return SimpleNamespace(
        language=language, save=re.search(r"\{menu:(\w+)>(\w+)\}", page).groups(),
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


def answer(main, ask, text):
    """Does what asks for something, types the answer, and waits for the main window to come back."""
    ask()
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


def open_menu():
    """The window of a menu that is open: one beside the window manager, and not one of those that nobody sees."""
    for line in run("xwininfo", "-root", "-children", text=True).stdout.splitlines():
        found = re.match(r" *(0x\w+) .* (\d+)x\d+\+", line)
        if found and int(found[2]) > 10:
            told = run("xwininfo", "-id", found[1], text=True).stdout
            if "IsViewable" in told and "Override Redirect State: yes" in told:
                return found[1]
    return None


def choose(path, language):
    """A command, by the underlined letters of the menu. A menu that still closes would take the next key."""
    menu, command = (re.search("&(.)", catalogue.text(name, language))[1].lower() for name in path)
    key(f"alt+{menu}")
    opened = wait_until("the menu", open_menu)
    key(command)
    wait_until("the end of the menu", lambda: open_menu() != opened)


def tree():
    """A byte for each pixel of the part of the screen where the tree is, and where that begins."""
    left = next(int(line[2:]) for line in xdotool("getactivewindow", "getwindowgeometry", "--shell")
                if line.startswith("X="))
    command = ["import", "-window", "root", "-crop", f"{TREE_WIDTH}x{SCREEN_HEIGHT}+{left}+0", "-depth", "8", "gray:-"]
    return subprocess.run(command, check=True, capture_output=True).stdout, left


def tree_after(press):
    """The tree as a key that changes it leaves it."""
    before = tree()
    key(press)
    return wait_until("the tree to be painted", lambda: (one := tree()) != before and one == tree() and one)


def place_of_on_key():
    """On the screen: the selected row is seen for the first row and the last."""
    tree_after("F2")
    (one, left), (other, _) = tree_after("Home"), tree_after("End")
    changed = [[x for x in range(TREE_WIDTH) if one[TREE_WIDTH * y + x] != other[TREE_WIDTH * y + x]]
               for y in range(SCREEN_HEIGHT)]
    rows = [y for y in range(SCREEN_HEIGHT) if len(changed[y]) > 20]
    first, last = rows[0], rows[-1]
    row_height = next(y for y in range(first, SCREEN_HEIGHT) if y not in rows) - first
    across = left + (min(changed[last]) + max(changed[last])) // 2
    below, rows_below = ROWS_TO_ON_KEY
    return across, first + row_height // 2 + (last - row_height + 1 - first) * below // rows_below


def write_and_build(page, path):
    """All that the page does in the window: from an empty program block to the build of its file."""
    main = wait_until("the window", window_with_the_keyboard)
    if page.language == "de":
        choose(("mnuOptions", "mnuGerman"), "en")
    answer(main, lambda: key("F5"), page.name)
    change_text(page.function)
    click(*place_of_on_key())
    change_text(page.handler)
    answer(main, lambda: choose(page.save, page.language), path)
    key("F10")


def without_indent(text):
    return [line.strip() for line in text.strip().splitlines()]
