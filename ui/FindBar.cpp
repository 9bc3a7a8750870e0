// Positions are worked out anew each time: captions change with the language, and the pane with the window.
#include "ui/FindBar.h"

#include "app/Catalogue.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tessaly {

namespace {

// In twips.
constexpr float Gap = 60;
constexpr float LeastLine = 2400;
constexpr float LeastLineWithButtons = 800; // nobody could type in less
constexpr float CharactersInCount = 15;

} // namespace

FindBar::FindBar(Desktop& desktop) : mDesktop(desktop), mPane(desktop.FuncBody()) {}

void FindBar::Make() {
    mControls = &mDesktop.Bar();
    const auto changed = [this] { Raise(onChange); };
    mControls->wanted.onChange = changed;
    mControls->matchCase.onClick = changed;
    mControls->wholeWord.onClick = changed;
    mControls->next.onClick = [this] { Raise(onGo, true); };
    mControls->previous.onClick = [this] { Raise(onGo, false); };
    mControls->replaceOne.onClick = [this] { Raise(onReplaceOne); };
    mControls->replaceAll.onClick = [this] { Raise(onReplaceAll); };
    mControls->close.onClick = [this] { Close(); };
}

void FindBar::Open(Purpose purpose, const std::optional<std::string>& wanted) {
    if (mControls == nullptr) {
        Make();
    }
    if (mOpenFor != purpose) {
        if (purpose == Purpose::Line) {
            mToFind = Wanted();
        } else if (IsOpenFor(Purpose::Line)) {
            mControls->wanted.SetText(mToFind);
        }
        mOpenFor = purpose;
        ShowCount("");
        ShowCaptions();
        ShowControls();
        LayOut();
    }
    mControls->wanted.SetText(wanted ? *wanted : mControls->wanted.Text());
    mControls->wanted.SetFocus();
}

// The keyboard leaves a control before that goes.
void FindBar::Close() {
    if (!mOpenFor) {
        return;
    }
    if (IsOpenFor(Purpose::Line)) {
        mControls->wanted.SetText(mToFind);
    }
    mOpenFor.reset();
    Raise(onClosed);
    ShowControls();
    mPane.SetRoomAbove(0);
}

// The buttons have keys of their own.
bool FindBar::TakeKey(int keyCode, int shift) {
    if (!mOpenFor) {
        return false;
    }
    const std::array<Control*, 12> all = mControls->All();
    if (std::none_of(all.begin(), all.end(), [](const Control* control) { return control->HasKeyboard(); })) {
        return false;
    }
    if (keyCode == KeyEscape) {
        Close();
        return true;
    }
    if (keyCode != KeyEnter) {
        return false;
    }
    if (mControls->wanted.HasKeyboard()) {
        Raise(onGo, (shift & 1) == 0 || !IsFinding());
        return true;
    }
    if (mControls->replacement.HasKeyboard()) {
        Raise(onReplaceOne);
        return true;
    }
    return false;
}

void FindBar::SetLanguage(std::uint8_t language) {
    mLanguage = language;
    if (mOpenFor) {
        ShowCaptions();
        LayOut();
    }
}

void FindBar::ShowCaptions() {
    const auto words = [this](OwnText text) { return OwnWords(text, mLanguage); };
    mWantedCaption = words(IsOpenFor(Purpose::Line)         ? OwnText::LineWanted
                           : IsOpenFor(Purpose::Everywhere) ? OwnText::WantedEverywhere
                                                            : OwnText::Wanted);
    mReplacementCaption = words(OwnText::ReplaceWith);
    mControls->wantedLabel.SetCaption(mWantedCaption);
    mControls->replacementLabel.SetCaption(mReplacementCaption);
    mControls->matchCase.SetCaption(words(OwnText::MatchCase));
    mControls->wholeWord.SetCaption(words(OwnText::WholeWord));
    mControls->previous.SetCaption(words(OwnText::PreviousMatch));
    mControls->next.SetCaption(words(IsFinding()                ? OwnText::NextMatch
                                     : IsOpenFor(Purpose::Line) ? OwnText::GoToLine
                                                                : OwnText::ListMatches));
    mControls->close.SetCaption(words(OwnText::CloseBar));
    mControls->replaceOne.SetCaption(words(OwnText::ReplaceOne));
    mControls->replaceAll.SetCaption(words(OwnText::ReplaceAll));
}

void FindBar::ShowControls() {
    const bool isOpen = mOpenFor.has_value();
    const bool hasOptions = isOpen && !IsOpenFor(Purpose::Line);
    const bool isReplacing = IsOpenFor(Purpose::Replace);
    const std::pair<Control*, bool> visible[] = {
        {&mControls->wantedLabel, isOpen},
        {&mControls->wanted, isOpen},
        {&mControls->count, isOpen},
        {&mControls->matchCase, hasOptions},
        {&mControls->wholeWord, hasOptions},
        {&mControls->previous, IsFinding()},
        {&mControls->next, isOpen},
        {&mControls->close, isOpen},
        {&mControls->replacementLabel, isReplacing},
        {&mControls->replacement, isReplacing},
        {&mControls->replaceOne, isReplacing},
        {&mControls->replaceAll, isReplacing},
    };
    for (const auto& [control, isVisible] : visible) {
        control->SetVisible(isVisible);
    }
}

// A row of controls above the pane, filled from both ends.
class FindBar::Row {
public:
    explicit Row(const Extent& place)
        : mLeft(place.left),
          mRight(place.left + place.width),
          mTop(place.top),
          mHeight(place.height) {}

    float Left() const { return mRight - mLeft; } // over

    void AddLeft(Control& control, float width, float height) {
        Put(control, mLeft, width, height);
        mLeft += width + Gap;
    }
    void AddRight(Control& control, float width, float height) {
        Put(control, mRight - width, width, height);
        mRight -= width + Gap;
    }
    void AddRight(Button& button) {
        if (button.IsVisible()) {
            const Size size = button.PreferredSize();
            AddRight(button, size.width, size.height);
        }
    }
    void Fill(Control& control, float height) { AddLeft(control, std::max(Left(), 0.0F), height); }

private:
    void Put(Control& control, float left, float width, float height) const {
        control.SetExtent({left, mTop + (mHeight - height) / 2, width, height});
    }

    float mLeft;
    float mRight;
    float mTop;
    float mHeight;
};

// The rows of the bar, from the pane's upper edge on.
class FindBar::Rows {
public:
    Rows(const Extent& pane, float height) : mNext{pane.left, pane.top, pane.width, height}, mTop(pane.top) {}

    Row Next() {
        const Row row(mNext);
        mNext.top += mNext.height + Gap;
        return row;
    }
    float Height() const { return mNext.top - mTop; } // of all, with the gap below

private:
    Extent mNext;
    float mTop;
};

// The same for both labels, so that the lines stand under each other. The font of labels is no wider than the code's.
float FindBar::LabelWidth() const {
    const std::size_t second = IsOpenFor(Purpose::Replace) ? mReplacementCaption.size() : 0;
    return static_cast<float>(std::max(mWantedCaption.size(), second)) * mPane.CharacterWidth();
}

// In a narrow window what else stands there goes into a row of its own, and in a very narrow one the buttons do, too.
void FindBar::LayOutFirstLine(Rows& rows) {
    const float label = mControls->count.PreferredHeight();
    const auto withButtons = [this](Row row) {
        row.AddRight(mControls->close);
        row.AddRight(mControls->next);
        row.AddRight(mControls->previous);
        return row;
    };
    const auto withOthers = [&](Row row) {
        row.AddRight(mControls->wholeWord);
        row.AddRight(mControls->matchCase);
        const float most = CharactersInCount * mPane.CharacterWidth();
        row.AddRight(mControls->count, std::clamp(row.Left(), 0.0F, most), label);
        return row;
    };
    Row line = rows.Next();
    line.AddLeft(mControls->wantedLabel, LabelWidth(), label);
    const Row narrow = withButtons(line);
    const Row wide = withOthers(narrow);
    if (wide.Left() >= LeastLine) {
        line = wide;
    } else {
        if (narrow.Left() >= LeastLineWithButtons) {
            line = narrow;
        } else {
            withButtons(rows.Next());
        }
        withOthers(rows.Next());
    }
    line.Fill(mControls->wanted, mControls->wanted.PreferredHeight());
}

void FindBar::LayOutSecondLine(Rows& rows) {
    const auto withButtons = [this](Row row) {
        row.AddRight(mControls->replaceAll);
        row.AddRight(mControls->replaceOne);
        return row;
    };
    Row line = rows.Next();
    line.AddLeft(mControls->replacementLabel, LabelWidth(), mControls->count.PreferredHeight());
    const Row narrow = withButtons(line);
    if (narrow.Left() >= LeastLineWithButtons) {
        line = narrow;
    } else {
        withButtons(rows.Next());
    }
    line.Fill(mControls->replacement, mControls->wanted.PreferredHeight());
}

void FindBar::LayOut() {
    if (!mOpenFor) {
        return;
    }
    const float height = std::max(mControls->wanted.PreferredHeight(), mControls->next.PreferredSize().height);
    Rows rows(mPane.GetExtent(), height);
    LayOutFirstLine(rows);
    if (IsOpenFor(Purpose::Replace)) {
        LayOutSecondLine(rows);
    }
    mPane.SetRoomAbove(rows.Height());
}

} // namespace tessaly
