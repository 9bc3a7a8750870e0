// Whether the last declaration of a C text has an end: a ";", or a function's body.
#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace tessaly {

// Is told the code of a text piece by piece, without comments and directives, with the lines that it stands in.
class OpenDeclaration {
public:
    void Word(std::string_view word, bool isKeyword, std::size_t line);
    void Literal(std::size_t line) { Goes('"', line); }
    void Punctuation(char c, std::size_t line);

    // A branch of the preprocessor begins or ends: what has been begun may be complete in another one.
    void Branch() { mIsUncertain = mHasBegun; }

    // The line of the last code, when that belongs to a declaration without its end. What may be the use of a macro is
    // none: only a macro knows what it stands for.
    std::optional<std::size_t> Line() const;

private:
    void Goes(char last, std::size_t line);
    void Ends();

    std::size_t mDepth = 0; // in braces
    bool mIsData = false;   // the outermost brace is no body: a ";" must follow it
    bool mHasBegun = false;
    bool mIsUncertain = false;
    bool mIsDeclaration = false; // for certain, because of a keyword or a "="
    bool mHasAggregate = false;
    bool mHasValue = false;
    bool mIsMacro = false; // the last "(" stands behind a name in capitals
    bool mWasCapitals = false;
    std::size_t mParentheses = 0;
    char mLast = ' '; // 'w' for a word
    std::size_t mLine = 0;
};

} // namespace tessaly
