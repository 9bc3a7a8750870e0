"""Finding, replacing and going somewhere by real keys."""

import pytest
from harness import ROOT, screenshot, wait_until, windows_path, xdotool
from windows_harness import FUNC_BODY, install

WANTED, REPLACEMENT = 112, 120


def typed(program, control, text):
    wait_until("the bar to have the keyboard", lambda: in_bar(program, control))
    xdotool("type", "--delay", "5", "--", text)
    wait_until(f"{text} in the bar", lambda: program.probe.ask("text", program.control(control)["window"]) == text)


def in_bar(program, control):
    focus = program.probe.ask("focus", program.main)["focus"]
    return any(c["id"] == control and c["window"] == focus for c in program.probe.ask("children", program.main))


@pytest.mark.parametrize("language, percent", [(0, 100), (1, 100), (0, 200)])
def test_all_of_a_text_is_replaced_and_a_line_gone_to(launch, folder, installed, example, resolution, language,
                                                      percent):
    resolution(96 * percent // 100)
    install(**installed, Language=language)
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    program.click_pane()
    before = program.pane()
    program.keys("ctrl+h")
    typed(program, WANTED, "FRAME")
    program.keys(*["Tab"] * 6)
    typed(program, REPLACEMENT, "picture")
    screenshot(ROOT / f"build/screenshots/windows-find-{language}-{percent}.png", "-trim", "+repage")
    program.keys("Return")
    wait_until("the first one to be replaced", lambda: "    Datapicture frame" in program.pane())
    program.keys("Escape")
    wait_until("the pane to have the keyboard", lambda: program.focus() == FUNC_BODY)
    program.keys("ctrl+z", "ctrl+g")
    typed(program, WANTED, "3")
    program.keys("Return")
    wait_until("the pane to have the keyboard", lambda: program.focus() == FUNC_BODY)
    program.keys("x")
    wait_until(lambda: f"the third line in {program.pane()!r}", lambda: program.pane() == before.replace(
        "    DataFrame", "x    DataFrame", 1))


def test_the_places_in_the_whole_document_are_listed_and_led_to(launch, installed, example):
    program = launch(windows_path(example))
    program.bring()
    program.keys("ctrl+shift+f")
    typed(program, WANTED, "halfPeriod")
    program.keys("Return")
    wait_until("the places", lambda: any(w["text"] == "Places found" for w in program.windows()))
    screenshot(ROOT / "build/screenshots/windows-places.png", "-trim", "+repage")
    program.keys("ctrl+j")
    wait_until("the references", lambda: "long halfPeriod = 500;" in program.pane())
    program.keys("ctrl+j")
    wait_until("the function", lambda: program.pane().startswith("void ChangePace"))
    program.keys("ctrl+Home", "ctrl+Right", "ctrl+d")
    assert program.selected() == "ChangePace"


def test_ctrl_d_goes_to_a_function_and_alt_left_back(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("OnStart()")
    program.click_pane()
    program.keys("ctrl+Home", "Down", "Down", "End", *["Left"] * 4, "ctrl+d")
    wait_until("the function", lambda: program.selected() == "SetLamp")
    program.keys("alt+Left")
    wait_until("the event", lambda: program.selected() == "OnStart()")
    assert program.pane().startswith("void OnStart(")
