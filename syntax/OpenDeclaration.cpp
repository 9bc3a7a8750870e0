// Only what stands outside of all braces counts.
#include "syntax/OpenDeclaration.h"

#include <algorithm>

namespace tessaly {

namespace {

bool IsCapitals(std::string_view word) {
    return std::none_of(word.begin(), word.end(), [](char c) { return c >= 'a' && c <= 'z'; });
}

} // namespace

void OpenDeclaration::Word(std::string_view word, bool isKeyword, std::size_t line) {
    if (mDepth > 0) {
        return;
    }
    if (mParentheses == 0) {
        mIsDeclaration = mIsDeclaration || isKeyword;
        mHasAggregate = mHasAggregate || word == "struct" || word == "union" || word == "enum";
    }
    mWasCapitals = IsCapitals(word);
    Goes('w', line);
}

void OpenDeclaration::Punctuation(char c, std::size_t line) {
    if (c == '{') {
        if (mDepth == 0) {
            mIsData = mHasValue || (mHasAggregate && mParentheses == 0 && mLast == 'w');
            mParentheses = 0;
            mHasBegun = true;
        }
        ++mDepth;
        return;
    }
    if (c == '}') {
        mDepth -= mDepth > 0 ? 1 : 0;
        if (mDepth == 0 && !mIsData) {
            Ends();
        } else if (mDepth == 0) {
            Goes(c, line);
        }
        return;
    }
    if (mDepth > 0) {
        return;
    }
    if (c == ';') {
        Ends();
        return;
    }
    if (c == '(') {
        mIsMacro = mParentheses == 0 ? mLast == 'w' && mWasCapitals : mIsMacro;
        ++mParentheses;
    } else if (c == ')') {
        mParentheses -= mParentheses > 0 ? 1 : 0;
    } else if (c == '=' && mParentheses == 0) {
        mHasValue = true;
        mIsDeclaration = true;
    }
    Goes(c, line);
}

std::optional<std::size_t> OpenDeclaration::Line() const {
    const bool isOpen = mHasBegun && mDepth == 0 && mIsDeclaration && !mIsUncertain;
    const bool isMacro = mIsMacro && mLast == ')' && mParentheses == 0;
    return isOpen && !isMacro ? std::optional(mLine) : std::nullopt;
}

void OpenDeclaration::Goes(char last, std::size_t line) {
    if (mDepth == 0) {
        mHasBegun = true;
        mLast = last;
        mLine = line;
    }
}

void OpenDeclaration::Ends() {
    *this = {};
}

} // namespace tessaly
