"""English and German, and the language that is written back in vain."""

from harness import KEY, registry_value, wait_until, windows_path
from windows_harness import CODE_TREE, FUNC_LABEL, FUNC_VAR_NAME, NAME_CANCEL, TREE_LABEL, install


def test_german_changes_every_text_at_once_and_back(launch, installed, example):
    program = launch(windows_path(example))
    program.click_item("SetLamp")
    wait_until("the blank panel", lambda: program.panels()[1] == "")
    program.choose("Language", "German")
    wait_until("German", lambda: program.text(TREE_LABEL) == "Ereignistypauswahl")
    program.idle()
    assert program.text(FUNC_LABEL) == "Funktionen"
    assert program.panels() == [f"Datei={windows_path(example)}", ""]
    assert [t for t in program.tree_texts() if not t.startswith(" ")] == ["Referenzen", "Funktionen", "Ereignisse"]
    assert [[i["text"] for i in top["items"] if not i["separator"]] for top in program.menu()] == [
        ["Programmquelldatei &neu", "Programmquelldatei &öffnen", "Programmquelldatei &speichern",
         "Programmquelldatei speichern &unter...", "B&eenden"],
        ["&Exe erstellen"], ["&Englisch", "&Deutsch"], ["&Hilfe öffnen", "Ho&t Keys", "&Info..."]]
    assert [i["checked"] for i in program.menu()[2]["items"]] == [False, True]
    program.choose("Sprache", "Englisch")
    wait_until("English", lambda: program.text(TREE_LABEL) == "Code Viewer")
    assert program.text(FUNC_LABEL) == "Function Code"
    assert [i["checked"] for i in program.menu()[2]["items"]] == [True, False]


def test_a_screen_reader_says_what_the_controls_are(launch, installed, example):
    """Wine takes the name of a rich edit control from its text; what stands in front of the pane is tried elsewhere."""
    program = launch(windows_path(example))

    def spoken(control):
        return program.probe.ask("spoken", control["window"])
    assert spoken(program.control(CODE_TREE)) == "Code Viewer"
    program.choose("Language", "German")
    wait_until("the name in German", lambda: spoken(program.control(CODE_TREE)) == "Ereignistypauswahl")
    program.click_item("SetLamp")
    wait_until("the buttons", lambda: [b["text"] for b in program.buttons()] == ["Funktion hinzufügen", "Löschen"])
    program.press_key("F5")
    dialog = program.dialog("UserFuncVarFrm")
    assert spoken(dialog.control(FUNC_VAR_NAME)).startswith("Bitte Namen der Funktion")
    assert spoken(dialog.control(NAME_CANCEL)) == "Abbruch"
    dialog.press("Abbruch")


def test_the_menus_have_their_lines_where_they_belong(launch, installed):
    program = launch()
    shown = [["-" if i["separator"] else i["text"] for i in top["items"]] for top in program.menu()]
    assert shown == [["&New Program Source File", "O&pen Program Source File", "-", "&Save Program Source File",
                      "S&ave Program Source File As", "-", "E&xit"],
                     ["&Build Exe"], ["&English", "&German"], ["&Open", "Ho&t Keys", "-", "&About"]]


def test_a_message_in_the_panel_is_shown_again_in_the_other_language(launch, installed, example):
    program = launch(windows_path(example))
    program.choose("Language", "German")
    wait_until("the message in German", lambda: program.panels()[1] == "Datei wurde erfolgreich geöffnet!")


def test_the_language_is_written_without_access_rights_and_so_stays_as_it_was(launch, folder, installed):
    install(**installed, Language=0)
    program = launch()
    program.choose("Language", "German")
    wait_until("German", lambda: program.text(TREE_LABEL) == "Ereignistypauswahl")
    program.close()
    assert program.wait_end() == 0
    assert registry_value(KEY, "Language") == ("REG_DWORD", "0x0")
    assert launch().text(TREE_LABEL) == "Code Viewer"


def test_the_save_question_is_german_in_german(launch, folder, installed, example):
    install(**installed, Language=1)
    program = launch(windows_path(example))
    program.edit("Referenzen" if "Referenzen" in program.tree_texts() else "References", "/* x */")
    program.choose("Datei", "Programmquelldatei neu")
    box = program.dialog()
    assert (box.caption, box.text()) == ("Dialog speichern", "Wollen Sie die Daten speichern?")
    box.press("Cancel")
    wait_until("the message", lambda: program.panels()[1] == "Befehl abbrechen!")


def test_the_german_file_menu_obeys_its_umlaut(launch, folder, installed, german_keyboard):
    install(**installed, Language=1)
    program = launch()
    program.choose("Datei", "Programmquelldatei öffnen")
    assert program.dialog().control(0x480, 0x47C)
