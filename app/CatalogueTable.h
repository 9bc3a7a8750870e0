// All texts of the program, in the order in which they are looked for, and which of them the window keeps.
// Blanks at the end of a text belong to it; an ampersand marks a menu's access key.
#pragma once

#include <string_view>

namespace tessaly {

struct CatalogueRow {
    std::string_view identifier;
    std::string_view english;
    std::string_view german;
};

inline constexpr CatalogueRow CatalogueRows[] = {
    {"mnuFile", "&File", "&Datei"},
    {"mnuNewPSF", "&New Program Source File", "Programmquelldatei &neu"},
    {"mnuOpenPSF", "O&pen Program Source File", "Programmquelldatei &öffnen"},
    {"mnuSavePSF", "&Save Program Source File", "Programmquelldatei &speichern"},
    {"mnuSaveAsPSF", "S&ave Program Source File As", "Programmquelldatei speichern &unter..."},
    {"mnuExit", "E&xit", "B&eenden"},
    {"mnuCompilePSF", "&Compile", "&Compiler"},
    {"mnuBuildExe", "&Build Exe", "&Exe erstellen"},
    {"mnuOptions", "&Language", "&Sprache"},
    {"mnuEnglish", "&English", "&Englisch"},
    {"mnuGerman", "&German", "&Deutsch"},
    {"mnuHelp", "&Help", "&Hilfe"},
    {"mnuOpenHelp", "&Open", "&Hilfe öffnen"},
    {"mnuHelpHotKeys", "Ho&t Keys", "Ho&t Keys"},
    {"mnuAbout", "&About", "&Info..."},
    {"lblcodeTreeViewer", "Code Viewer", "Ereignistypauswahl"},
    {"lblcodeEditVariableCode", "Global References", "Globale Referenzen"},
    {"lblcodeEditEventCode", "Event Code", "Ereignisse"},
    {"lblcodeEditFunctionCode", "Function Code", "Funktionen"},
    {"titleVorn", "Tessaly", "Tessaly"},
    {"nodeEvents", "Events", "Ereignisse"},
    {"nodeFunctions", "Functions", "Funktionen"},
    {"nodeVariables", "References", "Referenzen"},
    {"userFuncVarFrmPrmpt1", "Function names cannot have a number for the first character! Function add aborted!",
     "Erstes Zeichen eines Funktionsname darf keine Zahl sein. Funktion wurde nicht erzeugt! "},
    {"userFuncVarFrmPrmpt2", "Function names must only contain letters or numbers! Function add aborted!",
     "Funktionsnamen dürfen nur aus Buchstaben oder Zahlen bestehen! Funktion wurde nicht erzeugt!"},
    {"userFuncVarFrmPrmpt3", "Function Name Error", "Fehler Funktionsnamen"},
    {"vornMainFrmPrmpt1", "Add Function", "Funktion hinzufügen"},
    {"vornMainFrmPrmpt2", "Please type in the name of the function you wish to add.",
     "Bitte Namen der Funktion die Sie erzeugen wollen eintragen"},
    {"vornMainFrmPrmpt3", "Delete", "Löschen"},
    {"vornMainFrmPrmpt4", "Do you really wish to delete the function ", "Möchten Sie tatsächlich die Funktion löschen"},
    {"vornMainFrmPrmpt5", "This installation has been corrupted.  Please reinstall the software.",
     "Die Installation wurde abgebrochen. Bitte installieren Sie die Software neu!"},
    {"vornMainFrmPrmpt6", "Error", "Fehler"},
    {"vornMainFrmPrmpt7", "has occurred! Please contact technical support!",
     "ist gescheitert! Bitte wenden Sie sich an die technische Kundenbetreuung!"},
    // A file dialog's filter: what the user reads, and the pattern.
    {"vornMainFrmPrmpt8", "Program Source Files (*.PSF)|*.PSF", "Programmquelldateien (*.PSF)|*.PSF"},
    {"vornMainFrmPrmpt9", "Do you wish to save the current session to disk?",
     "Wollen Sie die aktuelle Sitzung speichern?"},
    {"vornMainFrmPrmpt10", "File write error!", "Fehler beim schreiben der Datei!"},
    {"vornMainFrmPrmpt11", "This file already exists", "Diese Datei existiert bereits"},
    {"vornMainFrmPrmpt12", "Replace existing file?", "Bestehende Datei ersetzen?"},
    {"vornMainFrmPrmpt13", "The compiler could not be found!  Please reinstall the software!",
     "Der Compiler wurde nicht gefunden! Bitte installieren Sie die Software neu!"},
    {"vornMainFrmPrmpt14", "Do you wish to save data before compiling?",
     "Wollen Sie die Daten vor der Compilierung speichern?"},
    {"vornMainFrmPrmpt15", "Save Dialog", "Dialog speichern"},
    {"vornMainFrmPrmpt16", "Cancel", "Abbruch"},
    {"vornMainFrmPrmpt19", "Do you wish to save data before exiting?",
     "Wollen sie die Daten speichern bevor die Sitzung beendet wird"},
    {"vornMainFrmPrmpt20", "Command canceled!", "Befehl abbrechen!"},
    {"vornMainFrmPrmpt21", "Do you still wish to exit?", "Wollen Sie beenden?"},
    {"vornMainFrmPrmpt22", "Confirm", "Bestätigen"},
    {"vornMainFrmPrmpt23", "Program Source File is incorrect or not found.  Load aborted!",
     "Programmquelldatei ist falsch oder fand nicht. Einlesen abgebrochen!"},
    {"vornMainFrmPrmpt24",
     "The function you are trying to enter already exists.\n"
     "Please choose an alternate name.",
     "Die Funktion , die Sie versuchen zu bearbeiten!"},
    {"vornMainFrmPrmpt25", "Duplicate Function Error!", "Wiederholter Funktionsfehler!"},
    {"vornMainFrmPrmpt26", "Save", "Speichern"},
    {"vornMainFrmPrmpt27", "Save As", "Speichern Unter.."},
    {"vornMainFrmPrmpt28", "New File Name", "Dateiname neu"},
    {"vornMainFrmPrmpt29", "Success!", "Erfolg!"},
    {"vornMainFrmPrmpt32", "Do you wish to save data?", "Wollen Sie die Daten speichern?"},
    {"vornMainFrmPrmpt33",
     "Program source code must be saved to a file before compiling\n"
     "Do you wish to do this now?",
     "Vor der Compilierung muss der Programmquellcode in einer Datei gespeichert werden.\n"
     "Wollen Sie diesen jetzt tun?"},
    {"vornMainFrmPrmpt34", "Your file has been saved!", "Ihre Datei wurde gespeichert!"},
    {"vornMainFrmPrmpt35", "Success!", "Erfolg!"},
    {"vornMainFrmPrmpt36", "File was created successfully!", "Datei wurde erfolgreich erzeugt!"},
    {"vornMainFrmPrmpt37", "File was opened successfully!", "Datei wurde erfolgreich geöffnet!"},
    {"vornMainFrmPrmpt38", "File was saved successfully!", "Datei wurde erfolgreich gespeichert!"},
    {"vornMainFrmPrmpt39", "Compilation Complete!", "Compilierung durchgeführt!"},
    {"vornMainFrmPrmpt40", "File=", "Datei="},
    {"vornMainFrmPrmpt41", "Please restart the application!", "Bitte starten Sie die Anwendung neu!"},
    {"vornMainFrmPrmpt42",
     "<F2>\tSelect Code Viewer\n"
     "<F3>\tSelect Global References, Function Code, Event Code\n"
     "<F4>\tAdd Function\n"
     "<F5>\tDelete Current Function\n"
     "<F10>\tBuild Exe\n"
     "\n"
     "<CTRL-C>\tCopy Text\n"
     "<CTRL-V>\tPaste Text\n"
     "<CTRL-X>\tCut Text",
     "<F2>\tCode Anzeige selektieren\n"
     "<F3>\tGlobale Referenzen auswählen, Funktionscode, Ereigniscode\n"
     "<F4>\tFunktion hinzufügen\n"
     "<F5>\tAktuelle Funktion löschen\n"
     "<F10>\tExe erstellen\n"
     "\n"
     "<CTRL-C>\tText kopieren\n"
     "<CTRL-V>\tText einfügen\n"
     "<CTRL-X>\tText ausschneiden"},
    {"vornMainFrmPrmpt43", "Hot-Keys", "Hot-Keys"},
    {"unknown", "Unknown error!", "Unbekannter Fehler!"},
};

// The identifiers whose text the main window keeps in a member of the same name, in the order in which ApplyLanguage
// fills them. `titleVorn` is one more, filled before these.
inline constexpr std::string_view TextMembers[] = {
    "userFuncVarFrmPrmpt1",    "userFuncVarFrmPrmpt2",
    "userFuncVarFrmPrmpt3",    "vornMainFrmPrmpt1",
    "vornMainFrmPrmpt2",       "vornMainFrmPrmpt3",
    "vornMainFrmPrmpt4",       "vornMainFrmPrmpt5",
    "vornMainFrmPrmpt6",       "vornMainFrmPrmpt7",
    "vornMainFrmPrmpt8",       "vornMainFrmPrmpt9",
    "vornMainFrmPrmpt10",      "vornMainFrmPrmpt11",
    "vornMainFrmPrmpt12",      "vornMainFrmPrmpt13",
    "vornMainFrmPrmpt14",      "vornMainFrmPrmpt15",
    "vornMainFrmPrmpt16",      "vornMainFrmPrmpt19",
    "vornMainFrmPrmpt20",      "vornMainFrmPrmpt21",
    "vornMainFrmPrmpt22",      "vornMainFrmPrmpt23",
    "vornMainFrmPrmpt24",      "vornMainFrmPrmpt25",
    "vornMainFrmPrmpt26",      "vornMainFrmPrmpt27",
    "vornMainFrmPrmpt28",      "vornMainFrmPrmpt29",
    "vornMainFrmPrmpt32",      "vornMainFrmPrmpt33",
    "vornMainFrmPrmpt34",      "vornMainFrmPrmpt35",
    "vornMainFrmPrmpt36",      "vornMainFrmPrmpt37",
    "vornMainFrmPrmpt38",      "vornMainFrmPrmpt39",
    "vornMainFrmPrmpt40",      "vornMainFrmPrmpt41",
    "vornMainFrmPrmpt42",      "vornMainFrmPrmpt43",
    "lblcodeEditVariableCode", "lblcodeEditEventCode",
    "lblcodeEditFunctionCode", "unknown",
};

} // namespace tessaly
