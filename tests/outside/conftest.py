"""Names of cases that can be read, in all folders: no escaped bytes and no "arguments3"."""

import unicodedata


def shown(character):
    plain = unicodedata.normalize("NFKD", character.replace("ß", "ss")).encode("ascii", "ignore").decode()
    return plain if plain and plain.isprintable() else f"<{ord(character):02X}>"


def pytest_make_parametrize_id(val):
    if isinstance(val, bytes):
        return "".join(chr(byte) if 32 <= byte < 127 else f"<{byte:02X}>" for byte in val)
    if isinstance(val, (list, tuple)):
        return " ".join(map(str, val)) or "nothing"
    return "".join(map(shown, val)) if isinstance(val, str) else None
