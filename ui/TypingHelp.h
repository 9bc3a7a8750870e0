// Names that are offered while the user types in the pane, the parameters of a call, and what a name stands for.
#pragma once

#include "editing/Completion.h"
#include "platform/desktop/RichTextBox.h"
#include "platform/desktop/Suggestions.h"

#include <functional>
#include <optional>
#include <string>
#include <string_view>

namespace tessaly {

class TypingHelp {
public:
    // What is known at a place of the pane's text; good until it is asked again.
    using Known = std::function<KnownNames(Place place)>;

    // Both must outlive it.
    TypingHelp(RichTextBox& pane, Suggestions& suggestions, Known known);

    // Of RichTextBox::onKey, before anybody else.
    bool TakeKey(const PaneKey& key);

    // Of RichTextBox::onChange. Only what came of a key that was told before goes on with what is shown.
    void FollowChange();

    // Nothing is shown any more.
    void Close();

private:
    std::string TipAt(std::size_t line, std::optional<std::size_t> column);
    std::string TipOfCharacter(Place place);
    bool TakeListKey(const PaneKey& key);
    void Open(Place caret);
    void Narrow(Place caret);
    void ShowHint(Place caret);
    void Accept(std::size_t row);

    RichTextBox& mPane;
    Suggestions& mSuggestions;
    Known mAsk;
    KnownNames mKnown; // since something was shown first
    std::optional<Completion> mCompletion;
    char16_t mTyped = 0; // by the key that may change the text now
};

} // namespace tessaly
