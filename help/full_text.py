"""Gives a CHM file a full-text index with umlauts: chmcmd's own takes each of them for a space.

A second CHM file, whose pages have LETTERS in place of the umlauts, has an index with whole words. That index gets new
nodes with the umlauts and is put into the first file. Both formats are described nowhere by their maker.
"""

import struct
from pathlib import Path

STREAM = b"/$FIftiMain"
LETTERS = {"ä": "qqae", "ö": "qqoe", "ü": "qque", "ß": "qqss"}
NODE_SIZE = 4096
ROOT, LEAVES, DEPTH = 0x14, 0x10, 0x18  # where the head of the index has them


def without_umlauts(page: str) -> str:
    for umlaut, letters in LETTERS.items():
        page = page.replace(umlaut, letters).replace(umlaut.upper() if umlaut != "ß" else "ẞ", letters)
    return page


def _with_umlauts(word: bytes) -> bytes:
    for umlaut, letters in LETTERS.items():
        word = word.replace(letters.encode(), umlaut.encode("cp1252"))
    return word


def _words(index: bytes):
    """Each word, with what tells where it is."""
    node, = struct.unpack_from("<I", index, ROOT)
    assert index[DEPTH] == 2, "a root over the leaves"
    at = node + 2
    node, = struct.unpack_from("<I", index, at + 1 + index[at])
    while node:
        following, _, free = struct.unpack_from("<IHH", index, node)
        at, word = node + 8, b""
        while at < node + NODE_SIZE - free:
            length, shared = index[at] - 1, index[at + 1]
            word = word[:shared] + index[at + 2:at + 2 + length]
            begin = at = at + 2 + length
            at = _after_number(index, at + 1) + 6  # title or text, how often; the places' offset and two zero bytes
            at = _after_number(index, at)
            yield word, index[begin:at]
        node = following


def _after_number(data: bytes, at: int) -> int:
    while data[at] & 0x80:
        at += 1
    return at + 1


def _nodes(entries: list[tuple[bytes, bytes]], head: int):
    """The bytes of nodes of `head` bytes and entries, each with its last word. No entry relies on the one before."""
    body, last = b"", b""
    for word, rest in entries:
        entry = bytes([len(word) + 1, 0]) + word + rest
        if head + len(body) + len(entry) > NODE_SIZE:
            yield body, last
            body = b""
        body, last = body + entry, word
    yield body, last


def _new_index(index: bytes) -> bytes:
    """The index with its words' umlauts. The places stay where they are; the old nodes stay, unused."""
    entries = sorted(((_with_umlauts(word), rest) for word, rest in _words(index)), key=lambda entry: entry[0])
    leaves = list(_nodes(entries, 8))
    made, upper = bytearray(index), []
    for number, (body, last) in enumerate(leaves, 1):
        upper.append((last, struct.pack("<IH", len(made), 0)))
        following = 0 if number == len(leaves) else len(made) + NODE_SIZE
        made += struct.pack("<IHH", following, 0, NODE_SIZE - 8 - len(body)) + body.ljust(NODE_SIZE - 8, b"\0")
    (body, _), = _nodes(upper, 2)
    for at in (0x08, ROOT):
        struct.pack_into("<I", made, at, len(made))
    struct.pack_into("<I", made, LEAVES, len(leaves))
    return bytes(made + struct.pack("<H", NODE_SIZE - 2 - len(body)) + body.ljust(NODE_SIZE - 2, b"\0"))


def _number(value: int, length: int) -> bytes:
    """Seven bits a byte, the highest first, as the directory has numbers."""
    assert value < 1 << 7 * length
    return bytes(value >> 7 * at & 0x7F | (0x80 if at else 0) for at in reversed(range(length)))


def add_full_text(chm: Path, index: bytes) -> None:
    """Puts the index with umlauts behind all else in the file, not compressed, and has the directory lead there."""
    data = bytearray(chm.read_bytes())
    assert data[:4] == b"ITSF" and data.count(STREAM) == 1
    sizes, = struct.unpack_from("<Q", data, 0x38)
    content, = struct.unpack_from("<Q", data, 0x58)
    new = _new_index(index)
    begin = data.index(STREAM) + len(STREAM)
    middle = _after_number(data, begin + 1)
    end = _after_number(data, middle)
    data[begin:end] = b"\0" + _number(len(data) - content, middle - begin - 1) + _number(len(new), end - middle)
    data += new
    struct.pack_into("<Q", data, sizes + 8, len(data))
    chm.write_bytes(data)
