"""What a screen reader is told of the running program: spoken.py ROLE... prints "role: name" of the visible objects of
these roles, one a line. Run beside the program in a session of D-Bus that has the accessibility service."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402  pylint: disable=wrong-import-position


def walk(item, roles):
    if item is None:
        return
    if item.get_role_name() in roles and item.get_state_set().contains(Atspi.StateType.SHOWING):
        print(f"{item.get_role_name()}: {item.get_name()}")
    for number in range(item.get_child_count()):
        walk(item.get_child_at_index(number), roles)


desktop = Atspi.get_desktop(0)
for index in range(desktop.get_child_count()):
    program = desktop.get_child_at_index(index)
    if program is not None and program.get_name() == "tessaly":
        walk(program, sys.argv[1:])
