// The texts of the window: which row is found, and that no text is changed by accident.
#include "app/Catalogue.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tessaly {
namespace {

struct Expected {
    std::string_view identifier;
    std::string_view english;
    std::string_view german;
};

// All but the hot-key list. Written down apart from the program's own table.
constexpr Expected Texts[] = {
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
    {"vornMainFrmPrmpt24", "The function you are trying to enter already exists.\nPlease choose an alternate name.",
     "Die Funktion , die Sie versuchen zu bearbeiten!"},
    {"vornMainFrmPrmpt25", "Duplicate Function Error!", "Wiederholter Funktionsfehler!"},
    {"vornMainFrmPrmpt26", "Save", "Speichern"},
    {"vornMainFrmPrmpt27", "Save As", "Speichern Unter.."},
    {"vornMainFrmPrmpt28", "New File Name", "Dateiname neu"},
    {"vornMainFrmPrmpt29", "Success!", "Erfolg!"},
    {"vornMainFrmPrmpt32", "Do you wish to save data?", "Wollen Sie die Daten speichern?"},
    {"vornMainFrmPrmpt33", "Program source code must be saved to a file before compiling\nDo you wish to do this now?",
     "Vor der Compilierung muss der Programmquellcode in einer Datei gespeichert werden.\nWollen Sie diesen jetzt "
     "tun?"},
    {"vornMainFrmPrmpt34", "Your file has been saved!", "Ihre Datei wurde gespeichert!"},
    {"vornMainFrmPrmpt35", "Success!", "Erfolg!"},
    {"vornMainFrmPrmpt36", "File was created successfully!", "Datei wurde erfolgreich erzeugt!"},
    {"vornMainFrmPrmpt37", "File was opened successfully!", "Datei wurde erfolgreich geöffnet!"},
    {"vornMainFrmPrmpt38", "File was saved successfully!", "Datei wurde erfolgreich gespeichert!"},
    {"vornMainFrmPrmpt39", "Compilation Complete!", "Compilierung durchgeführt!"},
    {"vornMainFrmPrmpt40", "File=", "Datei="},
    {"vornMainFrmPrmpt41", "Please restart the application!", "Bitte starten Sie die Anwendung neu!"},
    {"vornMainFrmPrmpt43", "Hot-Keys", "Hot-Keys"},
    {"unknown", "Unknown error!", "Unbekannter Fehler!"},
};

std::string Lookup(std::string_view identifier, std::uint8_t language) {
    std::string text = "untouched";
    LookupPrompt(identifier, language, text);
    return text;
}

TEST(CatalogueTest, EveryIdentifierHasItsEnglishText) {
    for (const Expected& expected : Texts) {
        EXPECT_EQ(Lookup(expected.identifier, 0), expected.english) << expected.identifier;
    }
}

TEST(CatalogueTest, EveryIdentifierHasItsGermanText) {
    for (const Expected& expected : Texts) {
        EXPECT_EQ(Lookup(expected.identifier, 1), expected.german) << expected.identifier;
    }
}

TEST(CatalogueTest, TheRowsStandInTheOrderInWhichTheyAreLookedFor) {
    std::string expected;
    for (const Expected& text : Texts) {
        expected += text.identifier == "vornMainFrmPrmpt43" ? "vornMainFrmPrmpt42\n" : "";
        expected += std::string(text.identifier) + "\n";
    }
    std::string rows;
    for (const CatalogueRow& row : CatalogueRows) {
        rows += std::string(row.identifier) + "\n";
    }
    EXPECT_EQ(rows, expected);
}

TEST(CatalogueTest, TheEnglishHotKeysAreEightLinesWithAGap) {
    EXPECT_EQ(Lookup("vornMainFrmPrmpt42", 0), "<F2>\x09"
                                               "Select Code Viewer\x0A"
                                               "<F3>\x09"
                                               "Select Global References, Function Code, Event Code\x0A"
                                               "<F4>\x09"
                                               "Add Function\x0A"
                                               "<F5>\x09"
                                               "Delete Current Function\x0A"
                                               "<F10>\x09"
                                               "Build Exe\x0A\x0A"
                                               "<CTRL-C>\x09"
                                               "Copy Text\x0A"
                                               "<CTRL-V>\x09"
                                               "Paste Text\x0A"
                                               "<CTRL-X>\x09"
                                               "Cut Text");
}

TEST(CatalogueTest, TheGermanHotKeysAreEightLinesWithAGap) {
    EXPECT_EQ(Lookup("vornMainFrmPrmpt42", 1), "<F2>\x09"
                                               "Code Anzeige selektieren\x0A"
                                               "<F3>\x09"
                                               "Globale Referenzen ausw\xC3\xA4"
                                               "hlen, Funktionscode, Ereigniscode\x0A"
                                               "<F4>\x09"
                                               "Funktion hinzuf\xC3\xBC"
                                               "gen\x0A"
                                               "<F5>\x09"
                                               "Aktuelle Funktion l\xC3\xB6"
                                               "schen\x0A"
                                               "<F10>\x09"
                                               "Exe erstellen\x0A\x0A"
                                               "<CTRL-C>\x09"
                                               "Text kopieren\x0A"
                                               "<CTRL-V>\x09"
                                               "Text einf\xC3\xBC"
                                               "gen\x0A"
                                               "<CTRL-X>\x09"
                                               "Text ausschneiden");
}

TEST(CatalogueTest, UmlautsAreUtf8) {
    EXPECT_EQ(Lookup("mnuOpenPSF", 1), "Programmquelldatei &\xC3\xB6"
                                       "ffnen");
    EXPECT_EQ(Lookup("vornMainFrmPrmpt22", 1), "Best\xC3\xA4tigen");
    EXPECT_EQ(Lookup("vornMainFrmPrmpt39", 1), "Compilierung durchgef\xC3\xBChrt!");
}

TEST(CatalogueTest, BlanksAtTheEndBelongToTheText) {
    EXPECT_TRUE(Lookup("vornMainFrmPrmpt4", 0).ends_with("function "));
    EXPECT_TRUE(Lookup("vornMainFrmPrmpt4", 1).ends_with("schen"));
    EXPECT_TRUE(Lookup("userFuncVarFrmPrmpt1", 1).ends_with("erzeugt! "));
    EXPECT_TRUE(Lookup("userFuncVarFrmPrmpt1", 0).ends_with("aborted!"));
}

TEST(CatalogueTest, AnIdentifierThatIsNotThereGivesATextThatSaysSo) {
    for (const char* identifier :
         {"vornMainFrmPrmpt17", "vornMainFrmPrmpt18", "vornMainFrmPrmpt30", "vornMainFrmPrmpt31", "vornMainFrmPrmpt0",
          "vornMainFrmPrmpt44", "vornMainFrmPrmpt", "vornMainFrmPrmpt01", "userFuncVarFrmPrmpt4", "", " ", "mnuFile ",
          " mnuFile", "File"}) {
        EXPECT_EQ(Lookup(identifier, 0), "Unknown error!") << identifier;
        EXPECT_EQ(Lookup(identifier, 1), "Unbekannt Fehler!") << identifier;
    }
}

TEST(CatalogueTest, UnknownHasAGermanTextOfItsOwn) {
    EXPECT_EQ(Lookup("unknown", 0), "Unknown error!");
    EXPECT_EQ(Lookup("unknown", 1), "Unbekannter Fehler!");
}

TEST(CatalogueTest, CaseCounts) {
    for (const char* identifier : {"MnuFile", "MNUFILE", "mnufile", "TitleVorn", "Unknown", "vornmainfrmprmpt6"}) {
        EXPECT_EQ(Lookup(identifier, 0), "Unknown error!") << identifier;
        EXPECT_EQ(Lookup(identifier, 1), "Unbekannt Fehler!") << identifier;
    }
}

TEST(CatalogueTest, AnotherLanguageLeavesTheOutputAsItIs) {
    for (const std::uint8_t language : {std::uint8_t{2}, std::uint8_t{255}}) {
        EXPECT_EQ(Lookup("mnuFile", language), "untouched");
        EXPECT_EQ(Lookup("unknown", language), "untouched");
        EXPECT_EQ(Lookup("noSuchIdentifier", language), "untouched");
    }
}

TEST(CatalogueTest, TheOutputMayBeTheIdentifier) {
    std::string text = "mnuExit";
    LookupPrompt(text, 1, text);
    EXPECT_EQ(text, "B&eenden");
}

TEST(CatalogueTest, TheWindowKeepsTheTitleThePromptsThreeLabelsAndTheUnknownError) {
    for (const CatalogueRow& row : CatalogueRows) {
        const std::string identifier(row.identifier);
        const bool isKept = identifier.find("Prmpt") != std::string::npos || identifier.starts_with("lblcodeEdit") ||
                            identifier == "titleVorn" || identifier == "unknown";
        EXPECT_EQ(row.member != nullptr, isKept) << identifier;
    }
}

TEST(CatalogueTest, ALanguageFillsEveryMemberWithTheTextOfItsOwnName) {
    WindowTexts window;
    for (const std::uint8_t language : {std::uint8_t{1}, std::uint8_t{0}}) {
        ApplyLanguage(window, language);
        for (const CatalogueRow& row : CatalogueRows) {
            if (row.member != nullptr) {
                EXPECT_EQ(window.*row.member, Lookup(row.identifier, language)) << row.identifier;
            }
        }
    }
    EXPECT_EQ(window.titleVorn, "Tessaly");
    EXPECT_EQ(window.userFuncVarFrmPrmpt3, "Function Name Error");
    EXPECT_EQ(window.vornMainFrmPrmpt43, "Hot-Keys");
    EXPECT_EQ(window.lblcodeEditVariableCode, "Global References");
    EXPECT_EQ(window.unknown, "Unknown error!");
}

TEST(CatalogueTest, AnotherLanguageEmptiesEveryMember) {
    for (const std::uint8_t language : {std::uint8_t{2}, std::uint8_t{255}}) {
        WindowTexts window;
        ApplyLanguage(window, 0);
        ApplyLanguage(window, language);
        for (const CatalogueRow& row : CatalogueRows) {
            EXPECT_TRUE(row.member == nullptr || (window.*row.member).empty()) << row.identifier;
        }
    }
}

TEST(CatalogueTest, TheNamesInTheCodeLeadToTheMembers) {
    WindowTexts window;
    EXPECT_EQ(window.Words(Text::Error), "");
    ApplyLanguage(window, 1);
    EXPECT_EQ(&window.Words(Text::Error), &window.vornMainFrmPrmpt6);
    EXPECT_EQ(&window.Words(Text::Title), &window.titleVorn);
    EXPECT_EQ(&window.Words(Text::UnknownError), &window.unknown);
    EXPECT_THROW(window.Words(Text::MenuFile), std::out_of_range);
}

TEST(CatalogueTest, AllButGermanHasTheTagOfEnglish) {
    EXPECT_EQ(LanguageTag(EnglishLanguage), "en");
    EXPECT_EQ(LanguageTag(GermanLanguage), "de");
    EXPECT_EQ(LanguageTag(7), "en");
}

} // namespace
} // namespace tessaly
