// The editing pane: a rich edit control that holds plain text. The control tells screen readers text, caret and
// selection; what is painted over them reaches them by the description alone.
#pragma once

#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/win32/Child.h"
#include "platform/desktop/win32/Headers.h"
#include "platform/desktop/win32/PaneViews.h"
#include "platform/desktop/win32/ViewFormat.h"

#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace tessaly::win32 {

class RichTextBox final : public Control<tessaly::RichTextBox> {
public:
    explicit RichTextBox(Parent& parent);

    void SetText(std::string_view text) override;
    float CharacterWidth() const override;
    void SetTabStops(const std::vector<float>& stops) override {
        mTabStops = stops;
        ShowTabStops();
    }
    std::size_t Count() const override { return mFormat.Lines().Count(); }
    std::u16string Line(std::size_t index) const override;
    CLineState StateBefore(std::size_t index) const override { return mFormat.StateBefore(index); }
    using tessaly::RichTextBox::Do;
    void Do(Clip step) override { Send(step == Clip::Cut ? WM_CUT : step == Clip::Copy ? WM_COPY : WM_PASTE); }

    // Of the character at a place, on the screen.
    RECT CharacterPlace(tessaly::Place place) const;

    // The place of the character that is drawn there, in pixels of the client area; no value for none. In the margin
    // that of the first one in view.
    std::optional<tessaly::Place> PlaceUnder(POINT point) const;

    bool TakesTabKey() const override { return true; }
    bool HasMenu() const override { return true; }
    std::optional<POINT> MenuPlace() const override;
    void Command(int id, int code) override;
    LRESULT Notify(NMHDR& header) override;
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
    float Scale() const;
    LOGFONTW TextFont(int zoom) const; // in percent
    void ShowTabStops();
    void ShowAvailable(bool available) override;
    std::string ShownText() const override;
    LineSpan SpanOf(std::size_t line) const override { return mFormat.Lines().SpanOf(line - 1); }
    std::size_t LineAt(std::size_t position) const override { return mFormat.Lines().LineAt(position); }
    Ends SelectedEnds() const override;
    void SelectEnds(const Ends& ends) override;
    PaneScroll Scrolled() const override;
    void ScrollTo(const PaneScroll& scroll) override;
    void ShowReplaced(std::size_t start, std::size_t end, std::u16string_view text) override;
    void ShowTogether(const std::function<void()>& work) override;
    void ShowSpots(std::optional<std::size_t> line) override;
    void ShowZoom() override;
    void ShowDescription(const std::string& description) override;
    void ShowBackground();
    void ShowScrollBars();
    void PutInOrBack(std::wstring_view text);
    bool PutIn(std::wstring_view text);

    // An edit that the control is at work with.
    struct Edit {
        std::optional<LONG> start; // where it is known: the edit ends at the caret then
        RegionOwner toPaint;       // what the control wanted to paint; null for nothing
    };

    // What decides where the text stands in the view, and what of it.
    struct Sight {
        std::size_t lines = 0;
        CHARRANGE selection = {};
        POINTL text = {}; // where its beginning is, in pixels of the client area
    };

    LRESULT EdgeMessage(UINT message, WPARAM wParam, LPARAM lParam);
    std::optional<LRESULT> MouseMessage(UINT message, WPARAM wParam, LPARAM lParam);
    RECT LineOf(std::size_t position) const;
    LRESULT Key(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT PasteText();
    LRESULT DefaultOfEdit(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT Paint(WPARAM wParam, LPARAM lParam);
    void HoldPaintingBack();
    Sight WhatIsSeen() const;
    static bool IsInOneLine(const Sight& before, const Sight& now);
    std::wstring TextIn(LONG start, LONG end) const;
    LONG ShownLength() const;
    CHARRANGE SelectedRange() const;
    void SelectRange(CHARRANGE range) const;

    bool mHasPictures = false;  // of control characters
    bool mIsEdited = false;     // by the user, since it was put in
    mutable ViewFormat mFormat; // goes on where somebody looks
    MarginView mMargin;
    SpotView mSpots;
    std::vector<float> mTabStops;
    Ends mSelected;            // by the program, or while it is hidden
    bool mHasTakenKey = false; // the last one
    bool mIsCtrlClick = false; // if the button comes up now
    bool mHasReader = false;   // a screen reader has asked
    std::optional<Edit> mEdit;
};

} // namespace tessaly::win32
