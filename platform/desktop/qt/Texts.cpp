// One word may stand in several of Qt's contexts, and means the same in all of them.
#include "platform/desktop/qt/Texts.h"

#include <algorithm>
#include <iterator>
#include <string_view>

namespace tessaly::qt {

namespace {

struct Entry {
    std::string_view english;
    const char* german;
};

constexpr Entry Entries[] = {
    // Buttons
    {"&Yes", "&Ja"},
    {"&No", "&Nein"},
    {"Cancel", "Abbrechen"},
    {"&Cancel", "&Abbrechen"},
    {"Open", "Öffnen"},
    {"&Open", "Ö&ffnen"},
    {"Save", "Speichern"},
    {"&Save", "&Speichern"},
    {"Close", "Schließen"},
    {"&Close", "S&chließen"},

    // Menus of texts
    {"&Undo", "&Rückgängig"},
    {"&Redo", "&Wiederholen"},
    {"Cu&t", "&Ausschneiden"},
    {"&Copy", "&Kopieren"},
    {"Copy &Link Location", "&Adresse kopieren"},
    {"&Paste", "&Einfügen"},
    {"Delete", "Löschen"},
    {"Select All", "Alles auswählen"},

    // Keys in menus
    {"Ctrl", "Strg"},
    {"Shift", "Umschalt"},
    {"Del", "Entf"},

    // Menus of scroll bars
    {"Scroll here", "Hierher blättern"},
    {"Left edge", "Linker Rand"},
    {"Top", "Anfang"},
    {"Right edge", "Rechter Rand"},
    {"Bottom", "Ende"},
    {"Page left", "Eine Seite nach links"},
    {"Page up", "Eine Seite nach oben"},
    {"Page right", "Eine Seite nach rechts"},
    {"Page down", "Eine Seite nach unten"},
    {"Scroll left", "Nach links blättern"},
    {"Scroll up", "Nach oben blättern"},
    {"Scroll right", "Nach rechts blättern"},
    {"Scroll down", "Nach unten blättern"},

    // File dialogs
    {"Look in:", "Suchen in:"},
    {"Directory:", "Ordner:"},
    {"&Directory:", "&Ordner:"},
    {"File &name:", "Datei&name:"},
    {"Files of type:", "Dateien vom Typ:"},
    {"Find Directory", "Ordner suchen"},
    {"Save As", "Speichern unter"},
    {"&Choose", "&Auswählen"},
    {"Back", "Zurück"},
    {"Forward", "Vor"},
    {"Go back", "Zurück"},
    {"Go forward", "Vor"},
    {"Parent Directory", "Übergeordneter Ordner"},
    {"Go to the parent directory", "Zum übergeordneten Ordner"},
    {"Create New Folder", "Neuen Ordner anlegen"},
    {"Create a New Folder", "Einen neuen Ordner anlegen"},
    {"List View", "Liste"},
    {"Change to list view mode", "Als Liste anzeigen"},
    {"Detail View", "Einzelheiten"},
    {"Change to detail view mode", "Mit Einzelheiten anzeigen"},
    {"Sidebar", "Seitenleiste"},
    {"List of places and bookmarks", "Liste der Orte und Lesezeichen"},
    {"Files", "Dateien"},
    {"Remove", "Entfernen"},
    {"&Rename", "&Umbenennen"},
    {"&Delete", "&Löschen"},
    {"Show &hidden files", "&Versteckte Dateien anzeigen"},
    {"&New Folder", "&Neuer Ordner"},
    {"New Folder", "Neuer Ordner"},
    {"Recent Places", "Zuletzt besucht"},
    {"My Computer", "Mein Computer"},
    {"Show ", "Anzeigen "},
    {"All Files (*)", "Alle Dateien (*)"},
    {"Size", "Größe"},
    {"Kind", "Art"},
    {"Type", "Typ"},
    {"Date Modified", "Änderungsdatum"},
    {"Drive", "Laufwerk"},
    {"File", "Datei"},
    {"%1 File", "%1-Datei"},
    {"File Folder", "Ordner"},
    {"Folder", "Ordner"},
    {"Shortcut", "Verknüpfung"},
    {"Alias", "Verknüpfung"},
    {"Unknown", "Unbekannt"},
    {"%1 already exists.\nDo you want to replace it?", "%1 ist schon vorhanden.\nMöchten Sie die Datei ersetzen?"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\nDie Datei wurde nicht gefunden.\nBitte prüfen Sie ihren Namen."},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\nDer Ordner wurde nicht gefunden.\nBitte prüfen Sie seinen Namen."},
    {"'%1' is write protected.\nDo you want to delete it anyway?",
     "„%1“ ist schreibgeschützt.\nMöchten Sie die Datei trotzdem löschen?"},
    {"Are you sure you want to delete '%1'?", "Möchten Sie „%1“ wirklich löschen?"},
    {"Could not delete directory.", "Der Ordner konnte nicht gelöscht werden."},
    {"Invalid filename", "Ungültiger Dateiname"},
    {"<b>The name \"%1\" cannot be used.</b><p>Try using another name, with fewer characters or no punctuation marks.",
     "<b>Der Name „%1“ kann nicht verwendet werden.</b><p>Versuchen Sie einen kürzeren Namen oder einen ohne "
     "Satzzeichen."},
};

} // namespace

QString Texts::translate(const char*, const char* text, const char*, int) const {
    const auto* const entry = std::find_if(std::begin(Entries), std::end(Entries),
                                           [text](const Entry& each) { return each.english == text; });
    return entry != std::end(Entries) && mLanguage() == "de" ? QString::fromUtf8(entry->german) : QString();
}

} // namespace tessaly::qt
