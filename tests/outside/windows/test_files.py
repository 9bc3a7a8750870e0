"""New, Open, Save and Save As, and the questions they ask."""

import shutil

import pytest
from harness import wait_until, windows_path, xdotool
from windows_harness import psf

SAVE_QUESTION = ("Save Dialog", "Do you wish to save data?", ["Yes", "No", "Cancel"])


def seen(box):
    return box.caption, box.text(), box.buttons()


def read(file):
    with open(file, "rb") as opened:
        return opened.read()


def wait_panel(program, text):
    wait_until(lambda: f"{text!r} in {program.panels()}", lambda: program.panels()[1] == text)


def saved_by_psf(folder, source, member, text):
    """The bytes of a file after the same edit by psf, which shares the document with the window."""
    copy = folder / "expected.PSF"
    shutil.copy(source, copy)
    before = psf("show", copy, member)
    psf("set", copy, member, stdin=text.encode() + before)
    return read(copy)


def test_open_edit_and_save_changes_just_that_in_the_file(launch, folder, installed, example):
    expected = saved_by_psf(folder, example, "references", "/* new */")
    program = launch()
    program.open_file(example)
    wait_panel(program, "File was opened successfully!")
    assert program.panels()[0] == f"File={windows_path(example)}"
    program.edit("References", "/* new */")
    program.choose("File", "Save Program Source File")
    wait_panel(program, "File was saved successfully!")
    program.idle()
    assert read(example) == expected


def test_an_edited_function_is_saved_like_psf_does(launch, folder, installed, example):
    expected = saved_by_psf(folder, example, "functions/ChangePace", "/* edited */")
    program = launch(windows_path(example))
    program.edit("ChangePace", "/* edited */")
    program.click_item("Events")
    program.choose("File", "Save Program Source File")
    wait_panel(program, "File was saved successfully!")
    assert read(example) == expected


def test_visiting_members_without_an_edit_changes_no_text_of_them(launch, folder, installed, example):
    expected = saved_by_psf(folder, example, "functions/SetLamp", "")  # a visit, too, empties the stored prototype
    program = launch(windows_path(example))
    for item in ("References", "SetLamp", "OnKey()", "OnSerial()"):
        program.click_item(item)
    program.choose("File", "Save Program Source File")
    wait_panel(program, "File was saved successfully!")
    assert read(example) == expected


def test_opening_a_file_that_is_none_complains_and_keeps_the_name(launch, folder, installed, example):
    (folder / "bad.PSF").write_bytes(b"nothing\r\n")
    program = launch(windows_path(example))
    program.open_file(folder / "bad.PSF")
    wait_panel(program, "Program Source File is incorrect or not found.  Load aborted!")
    box = program.dialog()
    assert seen(box) == ("Error", "Program Source File is incorrect or not found.  Load aborted!", ["OK"])
    box.press("OK")
    assert program.panels()[0] == f"File={windows_path(example)}"


def test_a_cancelled_open_changes_nothing(launch, installed, example):
    program = launch(windows_path(example))
    program.choose("File", "Open Program Source File")
    dialog = program.dialog()
    program.bring(dialog.window)
    program.keys("Escape")
    dialog.wait_gone()
    program.idle()
    assert program.functions() == ["SetLamp", "ChangePace"]
    assert program.panels()[0] == f"File={windows_path(example)}"


@pytest.mark.parametrize("name", ["new.PSF", "new with blanks.PSF", "Größe.PSF"])
def test_save_as_writes_a_new_file(launch, folder, installed, example, name):
    psf("resave", example, folder / "expected.PSF")
    program = launch(windows_path(example))
    program.choose("File", "Save Program Source File As")
    program.dialog().choose_file(windows_path(folder / name))
    wait_panel(program, "File was saved successfully!")
    assert program.panels()[0] == f"File={windows_path(folder / name)}"
    assert read(folder / name) == read(folder / "expected.PSF")


def test_save_as_asks_before_it_replaces_and_no_shows_the_dialog_again(launch, folder, installed, example):
    (folder / "old.PSF").write_bytes(b"old")
    program = launch(windows_path(example))
    program.choose("File", "Save Program Source File As")
    first = program.dialog()
    first.choose_file(windows_path(folder / "old.PSF"))
    first.wait_gone()
    box = program.dialog()
    old = windows_path(folder / "old.PSF")
    assert (box.caption, box.buttons()) == ("Save As", ["Yes", "No"])
    assert box.text().replace("\r\n", "\n") == f"{old}\nThis file already exists\n\nReplace existing file?"
    box.press("No")
    again = program.dialog()
    assert read(folder / "old.PSF") == b"old"
    again.choose_file(old)
    again.wait_gone()
    program.dialog().press("Yes")
    wait_panel(program, "File was saved successfully!")
    psf("resave", example, folder / "expected.PSF")
    assert read(folder / "old.PSF") == read(folder / "expected.PSF")


def test_save_of_a_new_document_asks_for_a_name(launch, folder, installed):
    program = launch()
    program.choose("File", "Save Program Source File")
    program.dialog().choose_file(windows_path(folder / "first.PSF"))
    wait_panel(program, "File was saved successfully!")
    psf("new", folder / "expected.PSF")
    assert read(folder / "first.PSF") == read(folder / "expected.PSF")


def test_new_empties_the_document(launch, installed, example):
    program = launch(windows_path(example))
    program.choose("File", "New Program Source File")
    wait_panel(program, "File was created successfully!")
    assert program.functions() == []
    assert program.panels()[0] == "File="
    assert program.selected() == "Events"


def ask_for_new(launch, example):
    """A new document over edits; returns the program and its question."""
    program = launch(windows_path(example))
    program.edit("References", "/* kept */")
    program.choose("File", "New Program Source File")
    return program, program.dialog()


def test_new_with_edits_and_yes_saves_first(launch, installed, example):
    program, box = ask_for_new(launch, example)
    assert seen(box) == SAVE_QUESTION
    box.press("Yes")
    wait_panel(program, "File was created successfully!")
    assert b"[GVars]\r\n/* kept *//* Blink" in read(example)


def test_new_with_edits_and_no_drops_them(launch, installed, example):
    before = read(example)
    program, box = ask_for_new(launch, example)
    box.press("No")
    wait_panel(program, "File was created successfully!")
    assert read(example) == before
    assert program.functions() == []


def test_new_with_edits_and_cancel_keeps_the_document(launch, installed, example):
    program, box = ask_for_new(launch, example)
    box.press("Cancel")
    wait_panel(program, "Command canceled!")
    assert program.functions() == ["SetLamp", "ChangePace"]
    assert program.panels()[0] == f"File={windows_path(example)}"


def test_the_frames_cross_cancels_the_save_question(launch, probe, installed, example):
    program, box = ask_for_new(launch, example)
    probe.ask("post", box.window, 0x10, 0, 0)
    box.wait_gone()
    wait_panel(program, "Command canceled!")


@pytest.mark.parametrize("answer", ["Yes", "No", "Cancel"])
def test_closing_with_edits_asks_once_and_closes_whatever_is_answered(launch, installed, example, answer):
    before = read(example)
    program = launch(windows_path(example))
    program.edit("References", "/* last words */")
    program.bring()
    program.keys("alt+F4")
    box = program.dialog()
    assert seen(box) == SAVE_QUESTION
    box.press(answer)
    assert program.wait_end() == 0
    if answer == "Yes":
        assert b"/* last words *//* Blink" in read(example)
    else:
        assert read(example) == before


def test_exit_with_edits_and_cancel_stays(launch, installed, example):
    program = launch(windows_path(example))
    program.edit("References", "/* kept */")
    program.choose("File", "Exit")
    program.dialog().press("Cancel")
    wait_panel(program, "Command canceled!")
    program.idle()
    assert program.status() is None


def test_a_dropped_file_opens_with_the_same_question_as_open(launch, probe, folder, installed, example):
    psf("new", folder / "dropped.PSF")
    program = launch(windows_path(example))
    assert program.description()["exStyle"] & 0x10, "the window takes files"
    program.edit("References", "/* kept */")
    probe.ask("drop", program.main, windows_path(folder / "dropped.PSF"))
    box = program.dialog()
    assert seen(box) == SAVE_QUESTION
    box.press("Yes")
    wait_panel(program, "File was opened successfully!")
    assert program.panels()[0] == f"File={windows_path(folder / 'dropped.PSF')}"
    assert program.functions() == []
    assert b"[GVars]\r\n/* kept *//* Blink" in read(example)


def test_undo_takes_back_what_was_typed(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    before = program.pane()
    program.type_at_start("int x;")
    program.keys("ctrl+z")
    for _ in range(5):
        if program.pane() != before:
            program.keys("ctrl+z")
    wait_until("the text from before", lambda: program.pane() == before)


def test_copied_text_is_pasted_as_plain_text(launch, folder, installed, example):
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    text = program.pane()
    program.keys("ctrl+a", "ctrl+c")
    program.click_item("OnTrigger()")
    program.click_pane()
    program.keys("ctrl+a", "ctrl+v")
    wait_until("the pasted text", lambda: program.pane() == text)
    program.choose("File", "Save Program Source File")
    wait_panel(program, "File was saved successfully!")
    assert psf("show", example, "events/OnTrigger").decode().startswith("void SetLamp(int on)\r\n{\r\n    DataFrame")


def test_return_and_umlauts_reach_the_file_in_the_ansi_code_page(launch, installed, example, german_keyboard):
    program = launch(windows_path(example))
    program.click_item("References")
    program.click_pane()
    program.keys("ctrl+Home")
    for key in ("odiaeresis", "Return"):
        xdotool("key", key)
    wait_until("the typed letter", lambda: program.pane().startswith("ö\r\n/* Blink"))
    program.choose("File", "Save Program Source File")
    wait_panel(program, "File was saved successfully!")
    assert b"[GVars]\r\n\xf6\r\n/* Blink" in read(example)
