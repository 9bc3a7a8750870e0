"""What a page tells its reader to save, to type and to see, so that a test can do just that.

A block after "as `NAME`:" is a file to save. One in `shell` is typed everywhere, one in `sh` on Linux, one in `bat` on
Windows. One without a language is what the command before it prints. Others only show something.
"""

import re
from collections import namedtuple

from harness import ROOT

Step = namedtuple("Step", "kind text name", defaults=("",))
SYSTEMS = {"shell": ("linux", "windows"), "sh": ("linux",), "bat": ("windows",)}


def section(path, heading):
    """The Markdown below a heading of the second order."""
    text = (ROOT / path).read_text(encoding="utf-8")
    return re.search(rf"^## {re.escape(heading)}\n(.*?)(?=^## |\Z)", text, re.M | re.S)[1]


def blocks(markdown, language):
    """The texts of all fenced blocks in this language."""
    return [text for found, text in re.findall(r"^```(\w*)\n(.*?)^```$", markdown, re.M | re.S) if found == language]


def steps(markdown, system):
    """What there is to do on `system`, linux or windows, in order."""
    found = []
    for before, language, text in re.findall(r"(.*?)^```(\w*)\n(.*?)^```$", markdown, re.M | re.S):
        name = re.search(r"\bas\s+`([^`]+)`[^`]*:\s*$", before)
        if name:
            found.append(Step("save", text, name[1]))
        elif language in SYSTEMS:
            found += [Step("type", line) for line in text.splitlines() if system in SYSTEMS[language]]
        elif not language:
            found.append(Step("see", text))
    return found


def walk(markdown, system, save, command):
    """Does what the page says, by save(name, text) and command(line), which returns what it printed."""
    printed = ""
    for step in steps(markdown, system):
        if step.kind == "save":
            save(step.name, step.text)
        elif step.kind == "type":
            printed = command(step.text)
        else:
            assert printed.replace("\r\n", "\n") == step.text
