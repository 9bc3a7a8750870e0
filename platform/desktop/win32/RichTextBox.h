// The editing pane: a rich edit control that holds plain text.
#pragma once

#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/MarginView.h"
#include "platform/desktop/win32/ViewFormat.h"
#include "platform/text/LineBreaks.h"

#include <optional>
#include <string>
#include <vector>

namespace tessaly::win32 {

class RichTextBox final : public Control<tessaly::RichTextBox> {
public:
    explicit RichTextBox(Parent& parent);

    std::string Text() const override;
    void SetText(std::string_view text) override;
    float CharacterWidth() const override;
    void SetTabStops(const std::vector<float>& stops) override {
        mTabStops = stops;
        ShowTabStops();
    }
    std::size_t CaretPosition() const override {
        return static_cast<std::size_t>((mFuncBodyAvailable ? Selection() : mHiddenSelection).cpMax);
    }
    void MoveCaret(std::size_t position) override;

    bool TakesTabKey() const override { return true; }
    void Command(int id, int code) override;
    void Rescale() override;
    void ColoursChanged() override {
        ShowBackground();
        mFormat.ReadColours();
        mMargin.ColoursChanged();
    }

protected:
    LRESULT Message(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void SetUpControl();
    void ApplyFont();
    LOGFONTW TextFont() const;
    void ShowTabStops();
    void ShowAvailable(bool available) override;
    std::size_t LineCount() const override {
        return mFuncBodyAvailable ? mFormat.LineCount() : CodeLines(mText).Count();
    }
    LineSpan SpanOf(std::size_t line) const override {
        return mFuncBodyAvailable ? mFormat.SpanOf(mText, line - 1) : CodeLines(mText).SpanOf(mText, line - 1);
    }
    void ShowMarks() override;
    void ShowBackground();
    void ShowScrollBars();
    void PutInOrBack(std::wstring_view text);
    bool PutIn(std::wstring_view text);

    // Where a message that edits does so. At the selection: it begins there, or at the caret behind it, and ends at the
    // caret.
    enum class EditPlace { AtSelection, Anywhere };

    // An edit that the control is at work with.
    struct Edit {
        std::optional<LONG> start; // where it is known
        RegionOwner toPaint;       // what the control wanted to paint; null for nothing
    };

    // What decides where the text stands in the view, and what of it.
    struct Sight {
        std::size_t lines = 0;
        CHARRANGE selection = {};
        POINTL text = {}; // where its beginning is, in pixels of the client area
    };

    LRESULT EdgeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Key(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Paste();
    LRESULT DefaultOfEdit(UINT message, WPARAM wParam, LPARAM lParam, EditPlace place);
    LRESULT Paint(WPARAM wParam, LPARAM lParam);
    void HoldPaintingBack();
    Sight WhatIsSeen() const;
    static bool IsInOneLine(const Sight& before, const Sight& now);
    void Changed();
    void TakeOver(std::size_t start, std::size_t end, std::wstring_view now);
    std::wstring ShownText() const { return ShownText(0, ShownLength()); }
    std::wstring ShownText(LONG start, LONG end) const;
    LONG ShownLength() const;
    CHARRANGE Selection() const; // the caret is at its end
    void Select(CHARRANGE selection) const;

    BreakList mBreaks;
    std::wstring mText;        // as the control shows it, every line break a single CR
    bool mHasPictures = false; // of control characters
    bool mIsEdited = false;    // by the user, since it was put in
    ViewFormat mFormat;
    MarginView mMargin;
    std::vector<float> mTabStops;
    CHARRANGE mHiddenSelection = {}; // while it is not
    std::optional<Edit> mEdit;
};

} // namespace tessaly::win32
