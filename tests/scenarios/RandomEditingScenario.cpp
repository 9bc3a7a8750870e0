// A user who presses keys at random, beside a plain string on which the same is done.
#include "tests/scenarios/ProgramScenario.h"
#include "tests/unit/editing/TextModel.h"
#include "ui/Editing.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <random>

namespace tessaly {
namespace {

// The text with what its breaks really are, and where it is selected.
class PlainString {
public:
    explicit PlainString(const std::string& text) {
        BreakList breaks;
        units = ToUtf16(breaks.Set(text));
        kinds = breaks.Some(0, static_cast<std::size_t>(std::count(units.begin(), units.end(), u'\n')));
    }

    std::string Bytes() const {
        std::string bytes;
        std::size_t next = 0;
        for (const char16_t unit : units) {
            if (unit == u'\n') {
                const LineBreak kind = kinds[next++];
                const bool joins = kind == LineBreak::Lf && bytes.ends_with('\r');
                bytes += joins || kind == LineBreak::CrLf ? "\r\n" : kind == LineBreak::Lf ? "\n" : "\r";
            } else {
                bytes += ToUtf8(std::u16string(1, unit));
            }
        }
        return bytes;
    }

    TextModel Model() const {
        TextModel model(ToUtf8(units) + "\xE2\x96\xAE"); // the mark of the caret
        model.Select({PlaceAt(anchor), PlaceAt(caret)});
        return model;
    }

    Place PlaceAt(std::size_t position) const {
        const std::u16string_view front = std::u16string_view(units).substr(0, position);
        const std::size_t line = CountBreaks(front);
        return {line, position - (front.rfind(u'\n') + 1)};
    }

    std::size_t PositionOf(Place place) const {
        std::size_t begin = 0;
        for (; place.line > 0; --place.line) {
            begin = units.find(u'\n', begin) + 1;
        }
        return begin + place.column;
    }

    void Do(const Edit& edit) {
        for (auto change = edit.changes.rbegin(); change != edit.changes.rend(); ++change) {
            const std::size_t start = PositionOf(change->begin);
            Replace(start, PositionOf(change->end), change->text, 0);
        }
        anchor = PositionOf(edit.after.anchor);
        caret = PositionOf(edit.after.caret);
    }

    // In place of what is selected. Of breaks in a row those that come or go are the last.
    void Type(const std::u16string& text) {
        const std::size_t start = std::min(anchor, caret);
        const std::size_t end = std::max(anchor, caret);
        const bool isBreaksAlone =
            CountBreaks(text) == text.size() && CountBreaks(units.substr(start, end - start)) == end - start;
        std::size_t behind = 0;
        while (isBreaksAlone && (text.empty() || start == end) && end + behind < units.size() &&
               units[end + behind] == u'\n') {
            ++behind;
        }
        Replace(start, end, text, behind);
        anchor = start + text.size();
        caret = anchor;
    }

    void TakeBack() {
        anchor -= anchor == caret && anchor > 0 ? 1 : 0;
        Type(u"");
    }

    std::u16string units;
    std::vector<LineBreak> kinds;
    std::size_t anchor = 0;
    std::size_t caret = 0;

private:
    static std::size_t CountBreaks(std::u16string_view text) {
        return static_cast<std::size_t>(std::count(text.begin(), text.end(), u'\n'));
    }

    void Replace(std::size_t start, std::size_t end, const std::u16string& text, std::size_t breaksBehind) {
        const auto first =
            kinds.begin() + static_cast<std::ptrdiff_t>(CountBreaks(units.substr(0, start)) + breaksBehind);
        const auto gone = static_cast<std::ptrdiff_t>(CountBreaks(units.substr(start, end - start)));
        kinds.insert(kinds.erase(first, first + gone), CountBreaks(text), LineBreak::CrLf);
        units.replace(start, end - start, text);
    }
};

// A hundred make 100,000 actions, which the desktop in memory does in no time. $TESSALY_ROUNDS has the others do as
// many.
int RoundsOn([[maybe_unused]] const std::string& desktop) {
    const char* const wanted = std::getenv("TESSALY_ROUNDS");
#ifdef TESSALY_SANITIZED
    const int usual = 2;
#else
    const int usual = desktop == "Memory" ? 100 : desktop == "Qt" ? 5 : 1;
#endif
    return wanted != nullptr ? std::stoi(wanted) : usual;
}

class RandomUser {
public:
    RandomUser(DesktopDriver& user, std::uint32_t seed) : mUser(user), mRandom(seed) {}

    std::string Text(std::size_t longest) {
        static const std::string pieces[] = {"a",  "{",  "}",        "(",  " ",  "    ",
                                             "\t", "//", "\xC3\xA4", "\n", "\r", "\r\n"};
        std::string text;
        for (std::size_t count = Below(longest + 1); count > 0; --count) {
            text += pieces[Below(std::size(pieces))];
        }
        return text;
    }

    // Does one thing to the pane and to the string.
    void Act(PlainString& text) {
        RichTextBox& pane = mUser.TheDesktop().FuncBody();
        if (text.units.size() > 600) {
            pane.SelectAll();
            text.anchor = 0;
            text.caret = text.units.size();
            mUser.Backspace();
            text.TakeBack();
            return;
        }
        switch (Below(8)) {
        case 0:
        case 1:
            Select(text);
            break;
        case 2:
            Paste(text);
            break;
        case 3:
        case 4:
        case 5:
            Press(text);
            break;
        default:
            Type(text);
            break;
        }
    }

    std::size_t Below(std::size_t limit) { return mRandom() % limit; }

private:
    void Select(PlainString& text) {
        text.anchor = Below(text.units.size() + 1);
        text.caret = Below(2) == 0 ? text.anchor : Below(text.units.size() + 1);
        mUser.TheDesktop().FuncBody().Select({text.PlaceAt(text.anchor), text.PlaceAt(text.caret)});
    }

    void Paste(PlainString& text) {
        const std::string pasted = Text(6);
        if (!pasted.empty()) { // some systems take it for no text
            mUser.Paste(pasted);
            text.Type(ToUtf16(BreakList().Set(pasted)));
        }
    }

    void Type(PlainString& text) {
        static const char16_t characters[] = {u'a', u'b', u' ', u'{', u'}', u'/', u'"', u'\u00E4'};
        const char16_t character = characters[Below(std::size(characters))];
        const TextModel model = text.Model();
        const std::optional<Edit> edit = EditOf({0, 0, character}, model, model.Selected());
        mUser.Type(ToUtf8(std::u16string(1, character)));
        edit ? text.Do(*edit) : text.Type(std::u16string(1, character));
    }

    // A key without a meaning there is not pressed: what the system does then is its own business.
    void Press(PlainString& text) {
        static const PaneKey keys[] = {{KeyEnter, 0, 0}, {KeyBackspace, 0, 0}, {KeyTab, 0, 0},
                                       {KeyTab, 1, 0},   {KeySlash, 2, 0},     {KeyUp, 4, 0},
                                       {KeyDown, 4, 0},  {'D', 3, 0},          {'K', 3, 0}};
        const PaneKey key = keys[Below(std::size(keys))];
        const TextModel model = text.Model();
        const std::optional<Edit> edit = EditOf(key, model, model.Selected());
        if (edit) {
            mUser.PressKey(key.keyCode, key.shift);
            text.Do(*edit);
        } else if (key.keyCode == KeyBackspace) {
            mUser.Backspace();
            text.TakeBack();
        } else if (key == PaneKey{KeyTab, 0, 0}) {
            mUser.PressKey(KeyTab, 0);
            text.Type(u"\t");
        }
    }

    DesktopDriver& mUser;
    std::mt19937 mRandom;
};

TEST_P(ProgramScenario, WhateverIsPressedTheTextIsThatOfAPlainStringAndAllOfItCanBeUndone) {
    BeginEditing({});
    const int rounds = RoundsOn(GetParam().name);
    const int actions = GetParam().name == "Win32" ? 200 : 1000; // each key takes its time there
    for (int round = 1; round <= rounds; ++round) {
        RandomUser random(*user, static_cast<std::uint32_t>(round));
        const std::string first = random.Text(60);
        Pane().SetText(first);
        PlainString text(first);
        std::vector<PlainString> before = {text};
        for (int action = 0; action < actions; ++action) {
            if (random.Below(20) == 0 && Pane().CanUndo()) {
                user->Undo();
                const std::string now = Pane().Text();
                const auto found = std::find_if(before.rbegin(), before.rend(),
                                                [&now](const PlainString& each) { return each.Bytes() == now; });
                ASSERT_NE(found, before.rend()) << "round " << round << ", action " << action << ": never seen";
                text = PlainString(*found);
                text.anchor = text.PositionOf(Pane().Selected().anchor);
                text.caret = text.PositionOf(Pane().Selected().caret);
            } else {
                random.Act(text);
            }
            ASSERT_EQ(Pane().Text(), text.Bytes()) << "round " << round << ", action " << action;
            ASSERT_EQ(Pane().Selected(), (Selection{text.PlaceAt(text.anchor), text.PlaceAt(text.caret)}))
                << "round " << round << ", action " << action;
            before.push_back(text);
        }
        const std::string last = Pane().Text();
        int steps = 0;
        for (; Pane().CanUndo(); ++steps) {
            user->Undo();
        }
        ASSERT_EQ(Pane().Text(), first) << "round " << round;
        for (; steps > 0; --steps) {
            user->PressKey('Y', 2);
        }
        ASSERT_EQ(Pane().Text(), last) << "round " << round;
    }
}

} // namespace
} // namespace tessaly
