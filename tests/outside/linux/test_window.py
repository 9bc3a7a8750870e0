"""What a user does with the window, from outside: keys in, files out."""

import os
import re
import resource
import shutil
import signal

import pytest
from harness import click, example_file, run, wait_until, xdotool


def open_by_menu(program, path):
    program.key("alt+f", "p")
    program.wait_for("Open Program Source File")
    program.type(str(path))
    program.key("Return")
    program.wait_for("Tessaly")


def test_a_block_is_opened_edited_built_and_run(home, start, picture):
    block = home / "a b.PSF"
    shutil.copy(example_file("blink", ".PSF"), block)
    program = start()
    program.wait_for("Tessaly")
    open_by_menu(program, block)
    picture("opened")

    program.key("F2", "Home")  # the references
    program.key("F3", "ctrl+Home")
    program.type("int typed;\n")
    program.key("F2", "End")  # the last event, which stores them
    program.key("F5")
    program.wait_for("Add Function")
    program.type("1")
    program.key("Return")
    program.wait_for("Function Name Error")
    picture("bad-name")
    program.key("Return")
    program.wait_for("Add Function")
    program.key("BackSpace")
    program.type("Added")
    picture("name")
    program.key("Return")
    program.wait_for("Tessaly")
    picture("added")

    program.key("F10")
    program.wait_for("Save As")
    picture("save-question")
    program.key("Return")
    built = home / "a b.out"
    wait_until("the program block", built.exists)
    text = block.read_text("cp1252")
    assert "int typed;" in text and "void Added(void)" in text
    assert "int typed;" in (home / ".cache/tessaly/program.c").read_text("cp1252")
    wait_until("a program block that can be run", lambda: os.access(built, os.X_OK))
    done = run(built, example_file("blink", ".events"), text=True)
    assert done.stdout == example_file("blink", ".expected").read_text()

    program.wait_for("Tessaly")
    program.key("alt+F4")
    assert program.wait_for_end() == 0


def test_a_mistake_comes_up_in_a_window_and_stands_in_the_log(home, start, picture):
    block = home / "wrong.PSF"
    block.write_bytes((example_file("blink", ".PSF")).read_bytes().replace(b"[GVars]\r\n", b"[GVars]\r\nint = 1;\r\n"))
    program = start(block)
    program.wait_for("Tessaly")
    program.key("F10")
    log = home / ".local/state/tessaly/build.log"
    wait_until("the messages window", lambda: program.windows("^Messages of the build$"))
    wait_until("the mistake in the log", lambda: "error" in log.read_text())
    program.wait_for("Tessaly")  # it still has the keyboard
    picture("mistake")


def test_a_second_copy_ends_silently_and_a_killed_one_leaves_no_lock(start):
    first = start()
    first.wait_for("Tessaly")
    assert start().wait_for_end() == 0
    assert first.process.poll() is None
    first.process.send_signal(signal.SIGKILL)
    first.wait_for_end()
    again = start()
    again.wait_for("Tessaly")
    assert again.process.poll() is None


def test_a_second_copy_ends_before_it_asks_for_a_display(home, start):
    start().wait_for("Tessaly")
    assert start(DISPLAY=":no-display").wait_for_end() == 0


def test_a_window_that_is_destroyed_from_outside_ends_the_program(start):
    program = start()
    xdotool("windowclose", program.wait_for("Tessaly"))
    assert program.wait_for_end() == 0
    start().wait_for("Tessaly")


def test_edits_are_asked_for_when_the_window_is_destroyed_from_outside(home, start):
    block = home / "edit.PSF"
    shutil.copy(example_file("blink", ".PSF"), block)
    program = start(block)
    window = program.wait_for("Tessaly")
    program.go_to_references()
    program.type("int kept;")
    xdotool("windowclose", window)
    program.wait_for("Save Dialog")
    program.key("Return")
    assert program.wait_for_end() == 0
    assert "int kept;" in block.read_text("cp1252")


def test_a_dialog_that_is_destroyed_from_outside_counts_as_closed(start):
    program = start()
    program.wait_for("Tessaly")
    program.key("F5")
    xdotool("windowclose", program.wait_for("Add Function"))
    program.wait_for("Tessaly")
    program.key("alt+F4")
    assert program.wait_for_end() == 0


def middle(window):
    """Of what the window itself draws."""
    told = dict(line.split("=") for line in xdotool("getwindowgeometry", "--shell", window) if "=" in line)
    return int(told["X"]) + int(told["WIDTH"]) // 2, int(told["Y"]) + int(told["HEIGHT"]) // 2


def open_about(program, main):
    """Returns its window, which has the keyboard."""
    program.wait_for("Tessaly")
    program.key("alt+h", "Up", "Return")
    return wait_until("the About box with the keyboard", lambda: next((
        w for w in program.windows() if w != main and xdotool("getwindowfocus", check=False) == [w]), None))


def test_about_stands_in_the_middle_and_goes_at_a_key_and_a_left_click(start):
    program = start()
    main = program.wait_for("Tessaly")
    xdotool("windowsize", "--sync", main, 700, 500, "windowmove", "--sync", main, 540, 270)
    about = open_about(program, main)
    owner = middle(main)
    wait_until(f"{middle(about)} to be {owner}", lambda: all(abs(a - b) <= 2 for a, b in zip(middle(about), owner)))
    program.key("shift", "ctrl", "ISO_Level3_Shift", "Caps_Lock", "Caps_Lock")
    click(*owner, button=3)
    assert program.windows() and about in program.windows()
    program.key("alt")
    program.key("Tab")
    wait_until("the end of the About box at a key", lambda: about not in program.windows())
    about = open_about(program, main)
    click(*owner)
    wait_until("the end of the About box at a click", lambda: about not in program.windows())
    program.wait_for("Tessaly")


def test_at_200_percent_the_file_dialog_is_on_the_screen(start, block):
    program = start(block, QT_SCALE_FACTOR="2")
    program.wait_for("Tessaly")
    dialog = program.come_up(lambda: program.key("ctrl+o"))
    told = run("xwininfo", "-id", dialog, text=True).stdout
    top, height = (int(re.search(rf"{what}: *(-?\d+)", told)[1]) for what in ("Absolute upper-left Y", "Height"))
    assert 0 <= top and top + height <= 800


def test_without_a_browser_the_help_has_a_window_of_its_own(home, opener, start, picture):
    opener("Development;TextEditor;")
    for language in ("en", "de"):
        (home / "help" / language / "index.html").write_text(
            f"<title>{language} first</title><h1>First</h1><p><a href='next.html'>next</a>")
        (home / "help" / language / "next.html").write_text(f"<title>{language} next</title><h1>Next</h1>")
    program = start()
    program.wait_for("Tessaly")
    program.key("F1")
    program.wait_for("en first")
    program.key("Tab", "Return")
    program.wait_for("en next")
    program.key("Escape")
    program.wait_for("Tessaly")

    program.key("alt+l", "g", "F5")
    program.wait_for("Funktion hinzufügen")
    program.key("F1")
    program.wait_for("de first")
    program.key("Tab", "Return")  # it can be used in spite of the dialog
    program.wait_for("de next")
    picture("help")
    program.key("Escape")
    program.wait_for("Funktion hinzufügen")
    program.key("Escape")
    program.wait_for("Tessaly")
    assert not (home / "opened").exists()


def test_f1_in_the_name_dialog_opens_the_help_in_the_browser(home, start):
    program = start()
    program.wait_for("Tessaly")
    program.key("F5")
    program.wait_for("Add Function")
    program.key("F1")
    opened = home / "opened"
    wait_until("the help", opened.exists)
    wait_until("the path of the help", lambda: opened.read_text().endswith("\n"))
    assert opened.read_text() == f"{home}/help/en/index.html\n"


def test_the_language_is_kept_for_the_next_start_and_so_is_the_file(home, start, picture):
    own = home / ".config/tessaly/settings.reg"
    own.parent.mkdir(parents=True)
    before = "Windows Registry Editor Version 5.00\r\n; mine\r\n[HKCU\\Else]\r\n\"a\"=\"b\"\r\n"
    own.write_bytes(before.encode())
    program = start(example_file("blink", ".PSF"))
    program.wait_for("Tessaly")
    program.key("alt+l", "g")
    program.key("F1")
    opened = home / "opened"
    wait_until("the help", opened.exists)
    wait_until("the path of the help", lambda: opened.read_text().endswith("\n"))
    assert opened.read_text() == f"{home}/help/de/index.html\n"
    picture("german")
    program.key("alt+d", "Up")
    picture("german-menu")
    program.key("Return")  # Beenden
    assert program.wait_for_end() == 0
    after = own.read_bytes().decode()
    assert after.startswith(before) and '"Language"=dword:00000001' in after
    opened.unlink()
    program = start()
    program.wait_for("Tessaly")
    program.key("F1")
    wait_until("the help", opened.exists)
    assert "/help/de/" in wait_until("the path of the help", opened.read_text)


def test_without_any_settings_the_message_comes_and_the_program_goes_on(home, start, picture):
    (home / "system/tessaly/settings.reg").unlink()
    program = start()
    program.wait_for("Error")
    picture("no-settings")
    program.key("Return")
    program.wait_for("Tessaly")
    program.key("alt+F4")
    assert program.wait_for_end() == 0


def test_closing_by_the_frame_with_edits_asks_and_saves(home, start):
    block = home / "edit.PSF"
    shutil.copy(example_file("blink", ".PSF"), block)
    program = start(block)
    program.go_to_references()
    program.type("int kept;")
    program.close_and_save()
    assert "int kept;" in block.read_text("cp1252")


def with_references(path, text):
    """A block with many lines of references."""
    path.write_bytes((example_file("blink", ".PSF")).read_bytes().replace(b"[GVars]\r\n", b"[GVars]\r\n" + text))
    return path


def test_a_save_over_the_limit_for_the_size_of_files_is_told(home, start):
    block = with_references(home / "large.PSF", b"extern int x;\r\n" * 10_000)
    program = start(block, limits={resource.RLIMIT_FSIZE: 64 * 1024})
    program.wait_for("Tessaly")
    program.key("alt+f", "s")
    program.wait_for("File write error!")
    program.key("Return")
    program.wait_for("Tessaly")
    program.key("alt+F4")
    assert program.wait_for_end() == 0


@pytest.mark.parametrize("lines", [b"extern int x;\r\n" * 4_000_000, b"/*" + b"x" * 60_000_000 + b"*/\r\n",
                                   b"\r\n" * 5_000_000], ids=["lines", "one-line", "empty-lines"])
def test_a_text_that_there_is_no_memory_for_is_refused_and_the_program_lives(home, start, lines):
    block = with_references(home / "large.PSF", lines)
    program = start(block, limits={resource.RLIMIT_AS: 800 << 20})
    program.wait_for("Tessaly")
    program.key("F2", "Home", "End", "Home")  # the references, an event, the references
    program.key("F3", "ctrl+Home")
    program.type("a")
    program.key("F2", "End")
    program.key("F5")
    program.wait_for("Add Function")
    program.key("Escape")
    program.wait_for("Tessaly")
    program.key("alt+f", "s", "alt+F4")
    assert program.wait_for_end() == 0
    assert b"[GVars]\r\n" + lines in block.read_bytes()


def references(path):
    """The words of the references in a PSF file."""
    return path.read_bytes().partition(b"[GVars]\r\n")[2].partition(b"[GFuncs]")[0].split()


def test_a_copy_has_the_text_without_the_numbers_of_its_lines(home, start):
    block = with_references(home / "numbered.PSF", b"extern int a;\nextern int b;\rextern int c;\r\n")
    before = references(block)
    program = start(block)
    program.wait_for("Tessaly")
    program.key("F2", "Home", "F3", "ctrl+a", "ctrl+c", "ctrl+Home", "ctrl+v")
    program.key("alt+f", "s", "alt+F4")
    assert program.wait_for_end() == 0
    assert references(block) == 2 * before


def test_pictures_of_a_dark_theme_and_of_200_percent(home, start, picture):
    colours = home / "dark/kdeglobals"
    colours.parent.mkdir()
    view = "BackgroundNormal=27,30,32\nForegroundNormal=252,252,252\n"
    other = "BackgroundNormal=42,46,50\nForegroundNormal=252,252,252\n"
    selected = "BackgroundNormal=61,174,233\nForegroundNormal=252,252,252\n"
    colours.write_text(f"[Colors:View]\n{view}[Colors:Window]\n{other}[Colors:Button]\n{other}"
                       f"[Colors:Selection]\n{selected}")
    for name, variables in {
        "light": {},
        "dark": {"XDG_CONFIG_HOME": str(colours.parent), "XDG_CURRENT_DESKTOP": "KDE", "KDE_FULL_SESSION": "true",
                 "KDE_SESSION_VERSION": "5"},
        "200": {"QT_SCALE_FACTOR": "2"},
    }.items():
        program = start(example_file("blink", ".PSF"), **variables)
        program.wait_for("Tessaly")
        program.key("F2", "Up", "Up")
        picture(name)
        open_about(program, program.wait_for("Tessaly"))
        picture(f"{name}-about")
        program.key("space")
        program.wait_for("Tessaly")
        program.key("alt+F4")
        assert program.wait_for_end() == 0
