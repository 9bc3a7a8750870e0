"""Hot keys, help and About."""

import re

from windows_harness import import_registry, wait_until

HOT_KEYS = ("<F2>\tSelect Code Viewer\n<F3>\tSelect Global References, Function Code, Event Code\n<F4>\tAdd Function\n"
            "<F5>\tDelete Current Function\n<F10>\tBuild Exe\n\n<CTRL-C>\tCopy Text\n<CTRL-V>\tPaste Text\n"
            "<CTRL-X>\tCut Text")


def test_the_hot_keys_are_listed(launch, installed):
    program = launch()
    program.choose("Help", "Hot Keys")
    box = program.dialog()
    assert (box.caption, box.text().replace("\r\n", "\n"), box.buttons()) == ("Hot-Keys", HOT_KEYS, ["OK"])


def test_about_shows_title_and_version_and_any_key_closes_it(launch, installed):
    program = launch()
    program.choose("Help", "About")
    about = program.dialog("frmSplash")
    texts = about.texts()
    assert '"Tessaly"' in texts
    assert any(re.fullmatch(r"Version \d+\.\d+\.\d+", text) for text in texts), texts
    program.bring(about.window)
    program.keys("x")
    about.wait_gone()
    program.idle()


def test_a_click_closes_about_too(launch, installed):
    program = launch()
    program.choose("Help", "About")
    about = program.dialog("frmSplash")
    program.bring(about.window)
    rect = next(w["rect"] for w in program.windows() if w["window"] == about.window)
    program.click(rect)
    about.wait_gone()
    program.idle()


def other_windows(program, probe):
    return [w for w in probe.ask("windows", 0) if w["process"] != program.process and w["text"]]


def help_is_shown(program, probe, known):
    return [w for w in other_windows(program, probe) if w["window"] not in known and "help" in w["text"].lower()]


def test_f1_and_the_help_command_open_the_help_file(launch, probe, folder, installed):
    # Wine knows how to show a text, but not which files are texts.
    import_registry('[HKEY_CLASSES_ROOT\\.txt]\r\n@="txtfile"\r\n', folder)
    program = launch()
    for ask_for_help in (lambda: program.press_key("F1"), lambda: program.choose("Help", "Open")):
        known = {w["window"] for w in other_windows(program, probe)}
        ask_for_help()
        shown = wait_until(lambda: f"the help among {other_windows(program, probe)}",
                           lambda: help_is_shown(program, probe, known))
        for window in shown:
            probe.ask("post", window["window"], 0x10, 0, 0)
        wait_until("the end of the help", lambda: not help_is_shown(program, probe, known))
