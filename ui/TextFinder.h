// Finding and replacing in the pane's text, going to a line of it, and finding in all of the document.
#pragma once

#include "app/Catalogue.h"
#include "platform/desktop/Desktop.h"
#include "ui/FindBar.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tessaly {

class TextFinder {
public:
    // The desktop must outlive it.
    explicit TextFinder(Desktop& desktop);
    TextFinder(const TextFinder&) = delete;
    TextFinder& operator=(const TextFinder&) = delete;
    ~TextFinder() = default;

    // It has edited the pane's text, as the user wanted.
    std::function<void()> onEdited;

    // The user wants to see all places of this text in the document; "" for none any more. Returns how many there are.
    std::function<std::size_t(const std::string& wanted, FindOptions options)> onEverywhere;

    // Whether it had a use for the key: Ctrl+F, Ctrl+H, Ctrl+Shift+F and Ctrl+G, and those of the bar.
    bool TakeKey(int keyCode, int shift);

    // Opens the bar as its key does.
    void Open(FindBar::Purpose purpose);

    // The pane's text is another one.
    void NoteChange() { mIsBehind = true; }

    // The pane shows another item. A bar that is of no use for that goes.
    void NoteItem();

    // Finds anew where the text has changed: while somebody types it would be too much.
    void WhenIdle();

    // See FindBar.
    void SetLanguage(std::uint8_t language);
    void LayOut() { mBar.LayOut(); }

private:
    std::optional<std::string> FirstContent(FindBar::Purpose purpose) const;
    void Find();
    void Go(bool isForward);
    void GoToLine();
    void GoEverywhere();
    void SelectNext(Place from, bool isForward);
    void ReplaceOne();
    void ReplaceAll();
    void Replace(const std::vector<Match>& matches);
    void ShowCount();
    std::string Words(OwnText text) const { return std::string(OwnWords(text, mLanguage)); }
    void Closed();
    bool IsFinding() const;

    Desktop& mDesktop;
    RichTextBox& mPane;
    FindBar mBar;
    std::vector<Match> mMatches;
    bool mIsBehind = true; // the matches are those of another text
    std::uint8_t mLanguage = 0;
};

} // namespace tessaly
