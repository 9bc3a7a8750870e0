"""Starting and ending the program."""

import shutil

import pytest
from harness import KEY, registry_value, wait_until, windows_path, wine, xdotool
from windows_harness import CODE_TREE, EXE, FUNC_BODY, FUNC_LABEL, TREE_LABEL, install

CORRUPTED = "This installation has been corrupted.  Please reinstall the software."
EMPTY_TREE = ["References", "Functions", "Events", "  OnError()", "  OnFrame()", "  OnKey()", "  OnStart()",
              "  OnStop()", "  OnTimer()", "  OnTrigger()", "  OnSerial()"]


def test_without_settings_one_message_comes_and_the_window_is_usable(launch, folder):
    install()
    program = launch(wait=False)
    box = program.dialog()
    assert (box.caption, box.text(), box.buttons()) == ("Error", CORRUPTED, ["OK"])
    box.press("OK")
    program.wait_main()
    program.idle()
    assert program.tree_texts() == EMPTY_TREE
    program.edit("OnKey()", "/* typed */")


def test_with_settings_the_window_comes_up_empty_and_in_english(launch, installed):
    program = launch()
    program.idle()
    assert program.caption() == "Tessaly"
    assert program.tree_texts() == EMPTY_TREE
    assert program.selected() == "Events"
    assert program.panels()[:2] == ["File=", ""]
    assert program.text(TREE_LABEL) == "Code Viewer"
    assert program.text(FUNC_LABEL) == "Event Code"
    assert program.pane() == ""
    assert program.buttons() == []


@pytest.mark.parametrize("missing", ["FCompBat", "FCompFileName", "FHelp"])
def test_each_missing_setting_is_complained_about(launch, folder, installed, missing):
    install(**{name: value for name, value in installed.items() if name != missing})
    program = launch(wait=False)
    assert program.dialog().text() == CORRUPTED


def test_language_one_gives_a_german_window_and_a_german_message(launch, folder):
    install(Language=1)
    program = launch(wait=False)
    box = program.dialog()
    assert box.caption == "Fehler"
    assert box.text() == "Die Installation wurde abgebrochen. Bitte installieren Sie die Software neu!"
    box.press("OK")
    program.wait_main()
    assert program.tree_texts()[:3] == ["Referenzen", "Funktionen", "Ereignisse"]
    assert program.text(TREE_LABEL) == "Ereignistypauswahl"
    assert program.panels()[0] == "Datei="
    assert [item["text"] for item in program.menu()] == ["&Datei", "&Compiler", "&Sprache", "&Hilfe"]


def test_a_language_stored_as_text_works_like_the_number(launch, folder, installed):
    install(**installed, Language="1")
    assert launch().text(TREE_LABEL) == "Ereignistypauswahl"


@pytest.mark.parametrize("name", ["plain.PSF", "with a blank.PSF", "Prüfstand Öl.PSF"])
def test_the_whole_command_line_is_the_file_to_open(launch, folder, installed, example, name):
    file = shutil.move(example, folder / name)
    program = launch(windows_path(file))
    program.idle()
    assert program.panels()[:2] == [f"File={windows_path(file)}", "File was opened successfully!"]
    assert program.functions() == ["SetLamp", "ChangePace"]
    program.click_item("SetLamp")
    assert program.pane().startswith("void SetLamp(int on)\r\n{\r\n")


def test_quotes_on_the_command_line_are_part_of_the_name(launch, installed, example):
    program = launch(f'"{windows_path(example)}"')
    program.idle()
    assert program.panels()[:2] == ["File=", ""]
    assert program.functions() == []


def test_a_file_that_cannot_be_loaded_gives_no_message(launch, folder, installed):
    program = launch(windows_path(folder / "missing.PSF"))
    program.idle()
    assert program.panels()[:2] == ["File=", ""]
    assert program.tree_texts() == EMPTY_TREE


def test_a_second_copy_ends_silently(launch, installed, example):
    first = launch()
    second = launch(windows_path(example), wait=False)
    assert second.wait_end() == 0
    assert second.windows() == []
    assert first.status() is None
    assert first.panels()[0] == "File="


def test_a_second_copy_makes_no_window_at_all(launch, installed):
    first = launch()
    # Wine tells of every window that the program makes, also of those that are never shown.
    done = wine(EXE, env={"WINEDEBUG": "-all,+win"})
    assert done.returncode == 0
    assert b"CreateWindow" not in done.stderr
    assert first.status() is None


def test_a_killed_program_can_be_started_again(launch, installed, example):
    launch(windows_path(example)).kill()
    program = launch(windows_path(example))
    program.idle()
    assert program.functions() == ["SetLamp", "ChangePace"]


def test_exit_ends_the_program_with_status_zero(launch, installed):
    program = launch()
    program.choose("File", "Exit")
    assert program.wait_end() == 0


def test_closing_the_window_ends_the_program_and_leaves_the_settings(launch, installed):
    program = launch()
    program.close()
    assert program.wait_end() == 0
    assert registry_value(KEY, "Language") is None
    assert registry_value(KEY, "FCompBat") == ("REG_SZ", installed["FCompBat"])


def test_the_end_of_the_session_asks_for_unsaved_edits_and_closes(launch, probe, installed, example):
    program = launch(windows_path(example))
    program.edit("References", "/* logged off */")
    probe.ask("post", program.main, 0x11, 0, 0)  # WM_QUERYENDSESSION alone
    box = program.dialog()
    assert box.text() == "Do you wish to save data?"
    box.press("Yes")
    assert program.wait_end() == 0
    assert b"[GVars]\r\n/* logged off *//* Blink" in open(example, "rb").read()


def test_a_session_that_ends_by_force_gets_no_question(launch, probe, installed, example):
    before = open(example, "rb").read()
    program = launch(windows_path(example))
    program.edit("References", "/* lost */")
    probe.ask("post", program.main, 0x16, 1, 0)  # WM_ENDSESSION without the question before it
    assert program.wait_end() == 0
    assert open(example, "rb").read() == before


def test_no_control_but_the_pane_takes_the_tab_key(launch, installed):
    program = launch()
    program.click_item("OnKey()")
    following = program.functions("Events")
    following = following[following.index("OnKey()") + 1]
    program.keys("Tab", "shift+Tab", "Tab", "Down")  # the tree has the last one, too
    wait_until(f"{following} to be selected", lambda: program.selected() == following)
    program.click_pane()
    program.type_at_start("\t")
    assert program.focus() == FUNC_BODY


def test_the_controls_keep_their_share_of_the_window(launch, installed):
    program = launch()
    before = {i: program.control(i)["rect"] for i in (CODE_TREE, FUNC_BODY)}
    window = program.description()["rect"]
    width, height = window[2] - window[0], window[3] - window[1]
    xdotool("getactivewindow", "windowsize", width - 150, height - 100)

    def current_width():
        left, _, right, _ = program.description()["rect"]
        return right - left
    wait_until("the new size", lambda: current_width() < width - 100)
    now = program.description()["rect"]
    ratio = (now[2] - now[0]) / width
    for i, old in before.items():
        wait_until(f"control {i} to follow", lambda: abs(
            (program.control(i)["rect"][2] - program.control(i)["rect"][0]) - (old[2] - old[0]) * ratio) <= 2, 10)
