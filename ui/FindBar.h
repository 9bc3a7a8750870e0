// The bar over the pane's text, in which the user says what to look for or where to go: what stands on it and where,
// and which of its keys means what. What is found is not its business.
#pragma once

#include "editing/Find.h"
#include "platform/desktop/Desktop.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

class FindBar {
public:
    enum class Purpose { Find, Replace, Everywhere, Line };

    // Closed at first; its controls are made when it opens. The desktop must outlive it.
    explicit FindBar(Desktop& desktop);
    FindBar(const FindBar&) = delete;
    FindBar& operator=(const FindBar&) = delete;
    ~FindBar() = default;

    // The user has changed the text or an option.
    std::function<void()> onChange;

    // The user wants the next place, or the one before; where there is only one way it is forward.
    std::function<void(bool isForward)> onGo;
    std::function<void()> onReplaceOne;
    std::function<void()> onReplaceAll;

    // It is closed now, and the keyboard where it came from.
    std::function<void()> onClosed;

    // Opens it, if it is not open for that, with the keyboard in its first line, whose text is selected. That is
    // `wanted`, or else what it was for this purpose.
    void Open(Purpose purpose, const std::optional<std::string>& wanted);
    void Close();

    // What it is open for; no value when it is closed.
    std::optional<Purpose> OpenFor() const { return mOpenFor; }

    // Whether it had a use for the key, which is another one's while the keyboard is not here.
    bool TakeKey(int keyCode, int shift);

    // What stands on it. It must have been open.
    std::string Wanted() const { return mControls->wanted.Text(); }
    std::string Replacement() const { return mControls->replacement.Text(); }
    FindOptions Options() const { return {mControls->wholeWord.IsChecked(), mControls->matchCase.IsChecked()}; }

    // How many there are, for example. It must have been open.
    void ShowCount(std::string_view text) { mControls->count.SetCaption(text); }

    void SetLanguage(std::uint8_t language);

    // The pane has another place.
    void LayOut();

private:
    class Row;
    class Rows;

    bool IsOpenFor(Purpose purpose) const { return mOpenFor == purpose; }
    bool IsFinding() const { return IsOpenFor(Purpose::Find) || IsOpenFor(Purpose::Replace); }
    void Make();
    void ShowCaptions();
    void ShowControls();
    float LabelWidth() const;
    void LayOutFirstLine(Rows& rows);
    void LayOutSecondLine(Rows& rows);

    Desktop& mDesktop;
    RichTextBox& mPane;
    const BarControls* mControls = nullptr;
    std::optional<Purpose> mOpenFor;
    std::string mToFind; // while it is open for a line
    std::uint8_t mLanguage = 0;
    std::string mWantedCaption;
    std::string mReplacementCaption;
};

} // namespace tessaly
