"""The tree, its tool bar and keys, adding and deleting functions."""

import subprocess

import pytest
from harness import wait_until, windows_path, xdotool
from windows_harness import CODE_TREE, FUNC_BODY, FUNC_LABEL, FUNC_VAR_NAME, NAME_LABEL, install

NEW_FUNCTION = "void {}(void)\r\n{{\r\n\r\n}}"


def wait_functions(program, *names):
    wait_until(lambda: f"{names} in {program.functions()}", lambda: program.functions() == list(names))


def name_window(program):
    dialog = program.dialog("UserFuncVarFrm")
    program.bring(dialog.window)
    return dialog


def retype(program, dialog, name):
    program.keys("ctrl+a", "Delete")
    xdotool("type", "--delay", "5", "--", name)
    box = dialog.control(FUNC_VAR_NAME)["window"]
    wait_until("the typed name", lambda: program.probe.ask("text", box) == name)


def test_f5_adds_a_function_under_functions_and_selects_it(launch, installed):
    program = launch()
    program.click_item("OnKey()")
    program.add_function("Blink").wait_gone()
    wait_functions(program, "Blink")
    assert program.selected() == "Blink"
    assert program.pane() == NEW_FUNCTION.format("Blink")


def test_the_name_window_asks_for_a_name_and_cancel_adds_nothing(launch, installed):
    program = launch()
    program.press_key("F5")
    dialog = name_window(program)
    assert dialog.caption == "Add Function"
    assert dialog.control(NAME_LABEL)["text"] == "Please type in the name of the function you wish to add."
    retype(program, dialog, "Never")
    dialog.press("Cancel")
    program.idle()
    assert program.functions() == []


def test_ok_with_an_empty_name_adds_nothing(launch, installed):
    program = launch()
    program.press_key("F5")
    name_window(program).press("OK")
    program.idle()
    assert program.functions() == []


@pytest.mark.parametrize("name, message", [
    ("1abc", "Function names cannot have a number for the first character! Function add aborted!"),
    ("a_b", "Function names must only contain letters or numbers! Function add aborted!"),
    ("a b", "Function names must only contain letters or numbers! Function add aborted!"),
])
def test_a_wrong_name_is_refused_and_can_be_corrected(launch, installed, name, message):
    program = launch()
    dialog = program.add_function(name)
    box = program.dialog()
    assert (box.caption, box.text(), box.buttons()) == ("Function Name Error", message, ["OK"])
    box.press("OK")
    program.bring(dialog.window)
    assert program.probe.ask("text", dialog.control(FUNC_VAR_NAME)["window"]) == name
    program.click(dialog.control(FUNC_VAR_NAME)["rect"])
    retype(program, dialog, "Right1")
    dialog.press("OK")
    wait_functions(program, "Right1")


def test_a_name_with_an_umlaut_is_refused(launch, installed, german_keyboard):
    program = launch()
    program.add_function("Größe")
    box = program.dialog()
    assert (box.caption, box.text()) == (
        "Function Name Error", "Function names must only contain letters or numbers! Function add aborted!")
    box.press("OK")
    program.dialog("UserFuncVarFrm").press("Cancel")
    program.idle()
    assert program.functions() == []


def test_a_name_that_exists_is_refused(launch, installed, example):
    program = launch(windows_path(example))
    program.add_function("SetLamp")
    box = program.dialog()
    assert box.caption == "Duplicate Function Error!"
    assert box.text().replace("\r\n", "\n") == (
        "The function you are trying to enter already exists.\nPlease choose an alternate name.")
    box.press("OK")
    assert program.functions() == ["SetLamp", "ChangePace"]


def test_f4_deletes_the_function_when_that_is_confirmed(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.press_key("F4")
    box = program.dialog()
    assert (box.caption, box.text(), box.buttons()) == ("Delete function", "Delete SetLamp ?", ["Yes", "No"])
    box.press("No")
    assert program.functions() == ["SetLamp", "ChangePace"]
    program.press_key("F4")
    program.dialog().press("Yes")
    wait_functions(program, "ChangePace")
    assert program.selected() == "Functions"
    assert program.pane() == ""


def test_the_question_before_deleting_is_wide_enough_for_its_caption(launch, folder, installed, example):
    install(**installed, Language=1)
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.press_key("F4")
    box = program.dialog()
    program.bring(box.window)
    display = program.probe.ask("focus", box.window)["display"]
    frame = subprocess.run(["xprop", "-id", str(display), "_NET_FRAME_EXTENTS"], check=True, capture_output=True).stdout
    title_height = int(frame.split(b"=")[1].split(b",")[2])
    caption = program.probe.ask("measure", box.window, "caption")[0]
    assert box.rect[2] - box.rect[0] >= caption + 4 * title_height  # an icon and three square buttons
    yes, no = (next(c["rect"] for c in box.controls if c["id"] == number) for number in (6, 7))
    assert abs((yes[0] - box.rect[0]) - (box.rect[2] - no[2])) < yes[2] - yes[0], "the buttons in the middle"
    box.press("No")


def test_f4_does_nothing_on_an_event(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("OnKey()")
    program.press_key("F4")
    program.press_key("F5")  # its window comes when F4 has been worked off
    assert name_window(program).caption == "Add Function"
    assert program.functions() == ["SetLamp", "ChangePace"]


def test_the_tool_bar_has_its_two_buttons_at_functions_alone(launch, installed, example):
    program = launch(windows_path(example))
    for item, count in (("Functions", 2), ("OnKey()", 0), ("SetLamp", 2), ("References", 0)):
        program.click_item(item)
        wait_until(f"{count} buttons at {item}", lambda: len(program.buttons()) == count)


def test_the_first_button_adds_and_the_second_deletes(launch, installed):
    program = launch()
    program.click_item("Functions")
    program.press_button(1)
    dialog = name_window(program)
    retype(program, dialog, "Foo")
    dialog.press("OK")
    wait_functions(program, "Foo")
    program.press_button(2)
    program.dialog().press("Yes")
    wait_functions(program)


def test_the_button_stores_the_panes_text_but_f5_does_not(launch, installed, example):
    program = launch(windows_path(example))
    program.edit("SetLamp", "/* stored */")
    program.press_button(1)
    dialog = name_window(program)
    retype(program, dialog, "Foo")
    dialog.press("OK")
    wait_functions(program, "SetLamp", "ChangePace", "Foo")
    program.edit("ChangePace", "/* lost */")
    program.add_function("Bar").wait_gone()
    wait_functions(program, "SetLamp", "ChangePace", "Foo", "Bar")
    program.click_item("SetLamp")
    assert program.pane().startswith("/* stored */void SetLamp")
    program.click_item("ChangePace")
    assert program.pane().startswith("void ChangePace")


def test_f2_goes_to_the_tree_and_f3_to_the_pane(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("OnKey()")
    program.press_key("F3")
    wait_until("the focus in the pane", lambda: program.focus() == FUNC_BODY)
    program.press_key("F2")
    wait_until("the focus in the tree", lambda: program.focus() == CODE_TREE)
    program.press_key("Down")
    wait_until("the next item", lambda: program.selected() == "OnStart()")
    assert program.pane().startswith("void OnStart(")
    program.click_item("Events")
    program.press_key("F3")
    program.press_key("Down")  # goes to the tree still
    wait_until("the first event", lambda: program.selected() == "OnError()")


def test_the_label_names_what_is_edited(launch, installed):
    program = launch()
    for item, label in (("References", "Global References"), ("Functions", "Function Code"), ("Events", "Event Code")):
        program.click_item(item)
        wait_until(label, lambda: program.text(FUNC_LABEL) == label)


def test_a_group_shows_an_empty_pane_that_takes_no_text(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    assert program.pane() != ""
    program.click_item("Functions")
    wait_until("an empty pane", lambda: program.pane() == "")
    rect = program.controls[FUNC_BODY]["rect"]
    program.click([rect[0] + 20, rect[1] + 4, rect[0] + 22, rect[1] + 16])
    program.keys("x")
    program.click_item("SetLamp")
    program.choose("File", "Exit")  # asks nothing: nothing was changed
    assert program.wait_end() == 0
