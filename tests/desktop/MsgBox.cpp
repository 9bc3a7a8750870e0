// Message boxes that a test has answered beforehand.
#include "tests/desktop/MsgBox.h"

#include "tests/desktop/TestFailure.h"

#include <algorithm>

namespace tessaly::memory {

namespace {

const std::vector<MsgResult>& ButtonsOf(MsgButtons buttons) {
    static const std::vector<MsgResult> ok = {MsgResult::Ok};
    static const std::vector<MsgResult> yesNo = {MsgResult::Yes, MsgResult::No};
    static const std::vector<MsgResult> yesNoCancel = {MsgResult::Yes, MsgResult::No, MsgResult::Cancel};
    return buttons == MsgButtons::Ok ? ok : buttons == MsgButtons::YesNo ? yesNo : yesNoCancel;
}

// What closing a box counts as; nothing where it cannot be closed.
std::optional<MsgResult> ClosingResult(MsgButtons buttons) {
    return buttons == MsgButtons::YesNo ? std::nullopt : std::optional(AnswerOfNobody(buttons));
}

} // namespace

MsgResult MsgBox::Ask(std::string_view text, std::string_view caption, MsgButtons buttons, MsgIcon icon) {
    mFaults.Count();
    const Block block(mFocus);
    records.push_back({std::string(text), std::string(caption), buttons, icon});
    const std::vector<MsgResult>& possible = ButtonsOf(buttons);
    while (!mAnswers.empty()) {
        const std::optional<MsgResult> answer = mAnswers.front();
        mAnswers.pop_front();
        if (answer && std::find(possible.begin(), possible.end(), *answer) == possible.end()) {
            throw ImpossibleAction("a press of a button that the message box \"" + std::string(text) + "\" has not");
        }
        if (const std::optional<MsgResult> result = answer ? answer : ClosingResult(buttons)) {
            return *result;
        }
    }
    if (decide) {
        return decide(records.back());
    }
    throw UnexpectedDialog("a message box without a prepared answer: \"" + std::string(text) + "\"");
}

} // namespace tessaly::memory
