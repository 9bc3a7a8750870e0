"""What a screen reader says of the window, through the accessibility service of the system."""

from harness import example_file, wait_until


def test_every_control_has_a_name(start, spoken):
    program = start(example_file("blink", ".PSF"), **spoken.session)
    program.wait_for("Tessaly")
    program.key("F2", "Up", "Up")

    def says(line, role):
        wait_until(f"“{line}” to be said", lambda: line in spoken(role))

    says("tree: Code Viewer", "tree")
    says("text: Event Code", "text")
    says("push button: Add Function", "push button")
    says("push button: Delete", "push button")
    says("status bar: ", "status bar")
    assert f"label: File={example_file('blink', '.PSF')}" in spoken("label")
    program.key("alt+l", "g")
    says("tree: Ereignistypauswahl", "tree")
    says("push button: Funktion hinzufügen", "push button")
    program.key("F5")
    program.wait_for("Funktion hinzufügen")
    says("text: Bitte Namen der Funktion die Sie erzeugen wollen eintragen", "text")
    says("push button: Abbruch", "push button")


def test_caret_selection_and_what_is_marked_are_told_with_the_text(start, spoken, block, keyboard):
    program = start(block, **spoken.session)
    program.wait_for("Tessaly")
    program.key("F2", "Home", "F3", "ctrl+a")
    program.type("(a)")
    keyboard("gr")
    program.key("Greek_alpha", "Home")
    marks = ["0-1 ( bg-color:47,123,234", "2-3 ) bg-color:47,123,234", "3-4 α bg-color:224,43,38",
             "3-4 α invalid:spelling"]

    def told(*lines):
        wanted = [*lines, "description The file cannot hold this character. It is saved as: ?"]
        seen = []

        def is_told():
            seen[:] = spoken("--text", "Global References")
            return seen == wanted

        wait_until(lambda: f"{wanted} to be told, in place of {seen}", is_told)

    told("caret 0", *marks)
    program.key("shift+Right")
    told("caret 1", "selected 0-1", *marks)
