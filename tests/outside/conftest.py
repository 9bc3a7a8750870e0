"""For all folders. Names of cases can be read: no escaped bytes and no "arguments3"."""

import subprocess
import unicodedata

import pytest


def shown(character):
    plain = unicodedata.normalize("NFKD", character.replace("ß", "ss")).encode("ascii", "ignore").decode()
    return plain if plain and plain.isprintable() else f"<{ord(character):02X}>"


def pytest_make_parametrize_id(val):
    if isinstance(val, bytes):
        return "".join(chr(byte) if 32 <= byte < 127 else f"<{byte:02X}>" for byte in val)
    if isinstance(val, (list, tuple)):
        return " ".join(map(str, val)) or "nothing"
    return "".join(map(shown, val)) if isinstance(val, str) else None


@pytest.fixture(name="keyboard")
def fixture_keyboard():
    """Puts a keyboard with the letters of a language on the display. A letter that it lacks would be there for
    the moment of the key alone, and a program that is late would look in vain."""
    yield lambda layout: subprocess.run(["setxkbmap", layout], check=True)
    subprocess.run(["setxkbmap", "us"], check=True)
