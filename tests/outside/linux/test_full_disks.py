"""Full disks, quotas, folders that are gone or read-only: what was typed is in the file or comes back, and the file is
never cut while no copy is whole."""

import ctypes
import os
import resource
import shutil

import pytest
from harness import example_file, wait_until, xdotool
from kill_rounds import newest_copy, read_members
from x11 import Display

LIBC = ctypes.CDLL(None, use_errno=True)
CLONE_NEWNS, MS_RDONLY, MS_REMOUNT, MS_BIND, MS_REC, MS_PRIVATE = 0x20000, 1, 32, 4096, 16384, 1 << 18
MNT_DETACH = 2
PAGE = 4096


def call(function, *arguments):
    if function(*arguments) != 0:
        raise OSError(ctypes.get_errno(), f"{function.__name__}: {os.strerror(ctypes.get_errno())}")


@pytest.fixture(name="private_mounts", scope="module")
def fixture_private_mounts():
    """What is mounted from here on is for this process and those it starts."""
    try:
        call(LIBC.unshare, CLONE_NEWNS)
        call(LIBC.mount, b"none", b"/", None, ctypes.c_ulong(MS_REC | MS_PRIVATE), None)
    except OSError as error:
        pytest.skip(f"nothing can be mounted here: {error}")


@pytest.fixture(name="mount")
def fixture_mount(private_mounts):
    """mount(folder, size) gives a folder a disk of its own."""
    mounted = []

    def mount(folder, size=None):
        options = None if size is None else f"size={size}".encode()
        flags = MS_BIND if size is None else 0
        source = b"tmpfs" if size else os.fsencode(folder)
        call(LIBC.mount, source, os.fsencode(folder), b"tmpfs", ctypes.c_ulong(flags), options)
        mounted.append(folder)

    yield mount
    for folder in reversed(mounted):
        LIBC.umount2(os.fsencode(folder), MNT_DETACH)


def fill(folder):
    """Leaves no room there."""
    with (folder / "filler").open("wb", buffering=0) as filler:
        try:
            while True:
                filler.write(bytes(PAGE))
        except OSError:
            pass


class Place:
    """A user's folders, a block in one of them, and the window that works on it."""

    def __init__(self, home, start):
        self.home, self.start = home, start
        self.work, self.state, self.temporary = home / "work", home / "state", home / "temporary"
        for folder in (self.work, self.state, self.temporary):
            folder.mkdir()
        self.recovery = self.state / "tessaly/recovery"
        self.block = self.work / "edit.PSF"
        self.display = Display()
        self.typed = ""
        self.before = self.program = self.texts = None

    def write_block(self):
        """One that ends just before the end of a page: what is typed needs another one."""
        data = example_file("blink", ".PSF").read_bytes()
        room = PAGE - len(data) % PAGE - 20
        self.before = data.replace(b"[GVars]\r\n", b"[GVars]\r\n//" + b"x" * (room - 4) + b"\r\n")
        self.block.write_bytes(self.before)
        self.texts = read_members(self.block)

    def launch(self, *arguments, limits=None):
        self.program = self.start(*arguments, limits=limits, XDG_STATE_HOME=self.state, TMPDIR=self.temporary)

    def begin(self, limits=None):
        self.write_block()
        self.launch(self.block, limits=limits)
        self.program.go_to_references()

    def type(self, text):
        self.display.key(*text)
        self.typed += text
        self.settle()

    def settle(self):
        self.display.taken(self.display.focus()[0], lambda: None)

    def expected(self):
        return {**self.texts, "References": self.typed + self.texts["References"]}

    def copied(self):
        """The newest copy."""
        found = newest_copy(self.recovery, self.temporary / f"tessaly-{os.geteuid()}")
        return found and found[1]

    def wait_for_copy(self):
        wait_until("the copy", lambda: self.copied() == self.expected())

    def wait_for_file(self, path=None):
        wait_until("the saved text", lambda: read_members(path or self.block) == self.expected())

    def save(self):
        self.display.key("alt+f", "s")

    def save_fails(self):
        self.save()
        self.program.wait_for("File write error!")
        assert read_members(self.block) == self.texts or self.copied() == self.expected()
        self.program.key("Return")
        self.program.wait_for("Tessaly")

    def kill(self):
        self.program.kill()
        wait_until("the end of its windows", lambda: not xdotool("search", "--name", "^Tessaly$", check=False))

    def comes_back(self):
        """A Yes brings back what was typed: the window's own copy says what it holds."""
        self.wait_for_copy()
        self.kill()
        self.launch()
        self.program.wait_for("Recovery")
        self.program.key("Return")
        self.program.wait_for("Tessaly")
        self.wait_for_copy()
        wait_until("its own copy", lambda: newest_copy(
            self.recovery, self.temporary / f"tessaly-{os.geteuid()}")[0]["process"] == str(self.program.process.pid))

    def save_as(self, path):
        """A document whose file is another one by now has no name."""
        self.save()
        self.program.wait_for("Save Program Source File As")
        self.display.key(*str(path), "Return")
        self.wait_for_file(path)


@pytest.fixture(name="place")
def fixture_place(home, start):
    return Place(home, start)


MORE = "int second; " * 4  # more than there is room for in the page


@pytest.mark.parametrize("pages", [4, 16, 256])
def test_a_full_disk_under_the_file(place, mount, pages):
    mount(place.work, pages * PAGE)
    place.begin()
    place.type("int first;")
    fill(place.work)
    place.type(MORE)
    place.save_fails()
    place.type("int third;")
    place.comes_back()
    place.save_as(place.home / "elsewhere.PSF")


@pytest.mark.parametrize("pages", [8, 16, 256])
def test_a_full_disk_under_the_copies(place, mount, pages):
    mount(place.state, pages * PAGE)
    place.begin()
    place.type("int first;")
    place.wait_for_copy()
    fill(place.state)
    place.type(MORE)
    place.comes_back()
    place.program.key("F3")  # the caret is where it was
    place.type("int third;")
    place.save()
    place.wait_for_file()
    place.settle()
    place.kill()
    place.launch()
    place.program.wait_for("Tessaly")
    assert not xdotool("search", "--all", "--pid", place.program.process.pid, "--name", "^Recovery$", check=False)


@pytest.mark.parametrize("pages", [8, 256])
def test_a_full_disk_under_the_file_and_the_copies(place, mount, pages):
    mount(place.work, pages * PAGE)
    mount(place.state, pages * PAGE)
    place.begin()
    place.type("int first;")
    fill(place.work)
    fill(place.state)
    place.type(MORE)
    place.save_fails()
    place.comes_back()
    place.save_as(place.home / "elsewhere.PSF")


def test_one_full_disk_under_everything(place, mount):
    for folder in (place.work, place.state, place.temporary):
        mount(folder, 8 * PAGE)
    place.begin()
    for folder in (place.work, place.state, place.temporary):
        fill(folder)
    place.type(MORE)
    for _ in range(2):
        place.save_fails()
        assert place.block.read_bytes() == place.before
    (place.work / "filler").unlink()
    place.save()
    place.wait_for_file()


def test_a_save_as_with_room_nowhere_destroys_nothing(place, mount):
    for folder in (place.work, place.state, place.temporary):
        mount(folder, 8 * PAGE)
    place.begin()
    other = shutil.copy(place.block, place.work / "other.PSF")
    for folder in (place.work, place.state, place.temporary):
        fill(folder)
    place.type(MORE)
    place.display.key("alt+f", "a")
    place.program.wait_for("Save Program Source File As")
    place.program.type(str(other))
    place.program.key("Return")
    place.program.wait_for("Save As")  # whether to replace it
    place.program.key("Return")
    place.program.wait_for("File write error!")
    place.program.key("Return")
    place.program.wait_for("Tessaly")
    assert place.block.read_bytes() == place.before == other.read_bytes()
    (place.state / "filler").unlink()
    place.type("int third;")
    place.comes_back()


def test_a_limit_for_the_size_of_files(place):
    """It holds for the copies, too: the file is not opened, and the text stays in the window."""
    place.write_block()
    place.begin(limits={resource.RLIMIT_FSIZE: len(place.before)})
    place.type(MORE)
    place.save_fails()
    assert place.block.read_bytes() == place.before
    resource.prlimit(place.program.process.pid, resource.RLIMIT_FSIZE, (2 * PAGE, 2 * PAGE))
    place.type("int third;")
    place.comes_back()
    place.save()
    place.wait_for_file()


def test_a_folder_of_copies_that_goes_is_made_again(place):
    place.begin()
    place.type("int first;")
    place.wait_for_copy()
    shutil.rmtree(place.state / "tessaly")
    place.type(MORE)
    place.comes_back()
    place.save()
    place.wait_for_file()


def test_the_folder_of_the_file_goes(place):
    place.begin()
    place.type("int first;")
    shutil.rmtree(place.work)
    place.save()
    place.program.wait_for("File write error!")
    place.program.key("Return")
    place.program.wait_for("Tessaly")
    place.comes_back()
    place.save_as(place.home / "elsewhere.PSF")


@pytest.mark.parametrize("is_late", [False, True], ids=["from the start", "while it runs"])
def test_a_folder_of_copies_that_is_read_only(place, mount, is_late):
    def close():
        mount(place.state)
        call(LIBC.mount, None, os.fsencode(place.state), None, ctypes.c_ulong(MS_BIND | MS_REMOUNT | MS_RDONLY), None)

    if not is_late:
        close()
    place.begin()
    place.type("int first;")
    place.wait_for_copy()
    if is_late:
        close()
    place.type(MORE)
    place.comes_back()
    place.save()
    place.wait_for_file()
