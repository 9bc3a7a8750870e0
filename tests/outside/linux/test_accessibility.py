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
