"""What a screen reader is told of the running program: spoken.py ROLE... prints "role: name" of the visible objects of
these roles, one a line. spoken.py --where ROLE NAME prints the edges of the last one, from the left on, in the
program's own pixels, spoken.py --text NAME what is told of a text. Run beside the program in a session of D-Bus that
has the accessibility service."""

import sys

import gi

gi.require_version("Atspi", "2.0")
from gi.repository import Atspi  # noqa: E402  pylint: disable=wrong-import-position


def walk(item, roles):
    """The visible ones."""
    if item is None:
        return
    if item.get_role_name() in roles and item.get_state_set().contains(Atspi.StateType.SHOWING):
        yield item
    for number in range(item.get_child_count()):
        yield from walk(item.get_child_at_index(number), roles)


def of_program(roles):
    desktop = Atspi.get_desktop(0)
    for index in range(desktop.get_child_count()):
        program = desktop.get_child_at_index(index)
        if program is not None and program.get_name() == "tessaly":
            yield from walk(program, roles)


def tell_text(item):
    """The caret, the selection, each stretch that is marked, and the description."""
    text = item.get_text_iface()
    print("caret", text.get_caret_offset())
    for number in range(text.get_n_selections()):
        selected = text.get_selection(number)
        print(f"selected {selected.start_offset}-{selected.end_offset}")
    end = 0
    while end < text.get_character_count():
        attributes, begin, end = text.get_text_attributes(end)
        for name in ("bg-color", "background-color", "invalid"):
            if name in attributes:
                print(f"{begin}-{end} {text.get_text(begin, end)} {name}:{attributes[name]}")
    print("description", item.get_description())


if sys.argv[1] == "--text":
    for found in of_program(["text"]):
        if found.get_name() == sys.argv[2]:
            tell_text(found)
elif sys.argv[1] == "--where":
    places = [found.get_extents(Atspi.CoordType.SCREEN) for found in of_program(sys.argv[2:3])
              if found.get_name() == sys.argv[3]]
    for place in places[-1:]:
        print(place.x, place.y, place.x + place.width, place.y + place.height)
else:
    for found in of_program(sys.argv[1:]):
        print(f"{found.get_role_name()}: {found.get_name()}")
