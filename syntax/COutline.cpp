// Lines are coloured as in the window, and what has no colour or is a keyword is code. Braces are matched behind that,
// when all of them are known: the indentation then tells which of several is meant.
#include "syntax/COutline.h"

#include "syntax/BraceMatching.h"
#include "syntax/CSyntax.h"
#include "syntax/OpenDeclaration.h"

#include <algorithm>
#include <array>
#include <optional>

namespace tessaly {

namespace {

constexpr std::size_t TabWidth = 4;

bool IsBlankByte(char c) {
    return c == ' ' || (c >= '\t' && c <= '\r');
}

bool IsWordByte(char c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

std::size_t WordEnd(std::string_view line, std::size_t at) {
    while (at < line.size() && IsWordByte(line[at])) {
        ++at;
    }
    return at;
}

std::size_t SkipBlanks(std::string_view line, std::size_t at) {
    while (at < line.size() && IsBlankByte(line[at])) {
        ++at;
    }
    return at;
}

// Words that stand in front of a "(" and are no name of a function.
bool IsAttributeWord(std::string_view word) {
    constexpr std::array words = std::to_array<std::string_view>(
        {"__attribute__", "__attribute", "__declspec", "__asm__", "__asm", "asm", "__extension__", "__typeof__",
         "typeof", "_Alignas", "_Static_assert", "static_assert", "__pragma"});
    return std::find(words.begin(), words.end(), word) != words.end();
}

bool IsAggregateWord(std::string_view word) {
    return word == "struct" || word == "union" || word == "enum";
}

// Whether a literal that began in front of `text`, or begins in it, is closed where `text` ends.
bool IsClosedLiteral(std::string_view text, bool hasBegun, char quote) {
    std::size_t at = 0;
    if (!hasBegun) {
        at = text.find_first_of("\"'"); // behind a prefix
        quote = text[at++];
    }
    while (at < text.size()) {
        const char c = text[at];
        if (c == quote) {
            return true;
        }
        at += c == '\\' ? 2 : 1;
    }
    return false;
}

bool IsIn(CLineState state, CLineState plain, CLineState inDirective) {
    return state == plain || state == inDirective;
}

bool IsInComment(CLineState state) {
    return IsIn(state, CLineState::BlockComment, CLineState::PreprocessorBlockComment);
}

bool IsInString(CLineState state) {
    return IsIn(state, CLineState::String, CLineState::PreprocessorString);
}

bool IsInCharacter(CLineState state) {
    return IsIn(state, CLineState::Character, CLineState::PreprocessorCharacter);
}

// One pass over the text. What stands in a branch that is never taken is left out, but for its comments.
class Outliner {
public:
    explicit Outliner(std::string_view text) : mText(text) {}

    COutline Run() {
        std::size_t begin = 0;
        for (bool isLast = false; !isLast;) {
            const std::size_t end = std::min(mText.find_first_of("\r\n", begin), mText.size());
            isLast = end == mText.size();
            ScanLine(begin, end);
            begin = end + (mText.substr(end, 2) == "\r\n" ? 2 : 1);
            ++mLineNumber;
        }
        EndDirective();
        if (IsInComment(mState)) {
            mOutline.openEnds.push_back({OpenEndKind::Comment, mCommentLine});
        } else if (IsInString(mState) || IsInCharacter(mState)) {
            mOutline.openEnds.push_back({OpenEndKind::Literal, mLiteralLine});
        }
        if (mOutline.openEnds.empty() && !mConditionals.empty()) {
            mOutline.openEnds.push_back({OpenEndKind::Conditional, mConditionals.front().line});
        }
        if (mOutline.openEnds.empty()) {
            mOutline.openEnds = MatchBraces(mBraces);
        }
        const std::optional<std::size_t> declaration = mDeclaration.Line();
        if (mOutline.openEnds.empty() && declaration) {
            mOutline.openEnds.push_back({OpenEndKind::Declaration, *declaration});
        }
        return std::move(mOutline);
    }

private:
    struct Conditional {
        std::size_t line = 0;
        bool isOuterSkipped = false;
        bool isSkipped = false;
        bool isDecided = false; // "#if 1": no other branch is taken
        bool wasTaken = false;
        std::size_t depth = 0;                   // at its "#if"
        std::optional<std::size_t> depthOfFirst; // behind the first branch, which counts
    };

    bool IsSkipped() const { return !mConditionals.empty() && mConditionals.back().isSkipped; }

    void ScanLine(std::size_t begin, std::size_t end) {
        mLineBegin = begin;
        mLine = mText.substr(begin, end - begin);
        mWide.assign(mLine.size(), u' ');
        std::transform(mLine.begin(), mLine.end(), mWide.begin(),
                       [](char c) { return static_cast<char16_t>(static_cast<unsigned char>(c)); });
        mBefore = mState;
        mState = ScanCLine(mWide, mBefore, mTokens);
        if (mBefore < CLineState::Preprocessor) {
            EndDirective();
        }
        std::size_t at = 0;
        for (const CToken& token : mTokens) {
            Code(at, token.start);
            at = token.start + token.length;
            Token(token);
        }
        Code(at, mLine.size());
    }

    void Token(const CToken& token) {
        const std::string_view text = mLine.substr(token.start, token.length);
        switch (token.kind) {
        case CTokenKind::Comment:
            Comment(token, text);
            break;
        case CTokenKind::String:
            Literal(token, text);
            break;
        case CTokenKind::Preprocessor:
            mDirectiveLine = mIsDirective ? mDirectiveLine : mLineNumber;
            mIsDirective = true;
            mDirective.append(text).append(" ");
            break;
        default:
            if (!IsSkipped()) {
                Word(text, token.kind);
            }
            break;
        }
    }

    void Comment(const CToken& token, std::string_view text) {
        const std::size_t brace = text.find('{');
        if (mOutline.commentBrace == COutline::None && brace != std::string_view::npos) {
            mOutline.commentBrace = mLineBegin + token.start + brace;
        }
        const bool goesOn = token.start == 0 && (IsInComment(mBefore) || mBefore == CLineState::LineComment);
        if (goesOn) {
            return;
        }
        mCommentLine = mLineNumber;
        if (mOutline.brace == COutline::None && !IsSkipped()) {
            mOutline.lastComment = mLineBegin + token.start;
            mOutline.lastCommentLine = mLineNumber;
            mOutline.lastCommentIsLine = text.starts_with("//");
        }
    }

    void Literal(const CToken& token, std::string_view text) {
        const bool goesOn = token.start == 0 && (IsInString(mBefore) || IsInCharacter(mBefore));
        mLiteralLine = goesOn ? mLiteralLine : mLineNumber;
        const bool endsLine = token.start + token.length == mLine.size();
        const bool isUnfinished = endsLine && !IsInString(mState) && !IsInCharacter(mState) &&
                                  !IsClosedLiteral(text, goesOn, IsInString(mBefore) ? '"' : '\'');
        // Only a definition is C up to its end. "#error" and the like may have any words.
        const bool isProse = mIsDirective && DirectiveName() != "define";
        if (isUnfinished && !IsSkipped() && !isProse) {
            mOutline.openEnds.push_back({OpenEndKind::Literal, mLiteralLine});
        }
        if (!mIsDirective && !IsSkipped()) {
            mDeclaration.Literal(mLineNumber);
            Advance(CodeKind::Other, {});
        }
    }

    // Code without keywords between two bytes of the line.
    void Code(std::size_t at, std::size_t end) {
        if (IsSkipped()) {
            return;
        }
        while ((at = SkipBlanks(mLine, at)) < end) {
            if (IsWordByte(mLine[at])) {
                const std::size_t wordEnd = std::min(WordEnd(mLine, at), end);
                Word(mLine.substr(at, wordEnd - at), CTokenKind::Preprocessor);
                at = wordEnd;
            } else {
                Punctuation(at, mLine[at]);
                ++at;
            }
        }
    }

    enum class CodeKind { None, Word, Keyword, Open, Close, Semicolon, Star, Other };

    // The code goes on.
    void Advance(CodeKind kind, std::string_view word) {
        if (mOutline.brace == COutline::None) {
            mOutline.lastComment = COutline::None;
        }
        mWordBefore = mLastWord;
        mLastWord = word;
        mKindBefore = mLastKind;
        mLastKind = kind;
    }

    void Word(std::string_view word, CTokenKind kind) {
        const bool isPlain = kind == CTokenKind::Preprocessor && !IsAttributeWord(word);
        if (isPlain && mDepth == 0 && mParentheses == 0) {
            mNameLine = mLineNumber;
        }
        mDeclaration.Word(word, kind == CTokenKind::Keyword || kind == CTokenKind::Type, mLineNumber);
        Advance(isPlain ? CodeKind::Word : CodeKind::Keyword, word);
    }

    void Punctuation(std::size_t at, char c) {
        mDeclaration.Punctuation(c, mLineNumber);
        if (c == '{') {
            OpenBrace(at);
        } else if (c == '}') {
            CloseBrace(at);
        } else if (mDepth == 0) {
            TopLevel(c);
        }
        const CodeKind kind = c == '('   ? CodeKind::Open
                              : c == ')' ? CodeKind::Close
                              : c == ';' ? CodeKind::Semicolon
                              : c == '*' ? CodeKind::Star
                                         : CodeKind::Other;
        if (c != '{' || mOutline.brace != mLineBegin + at) {
            Advance(kind, {});
        } else {
            mLastKind = CodeKind::Other;
        }
    }

    void OpenBrace(std::size_t at) {
        if (mOutline.brace == COutline::None) {
            mOutline.brace = mLineBegin + at;
            mOutline.braceLine = mLineNumber;
            const bool isWord =
                mLastKind == CodeKind::Word && !IsAggregateWord(mWordBefore) && !IsAggregateWord(mLastWord);
            mOutline.isBody = mLastKind == CodeKind::Close || mLastKind == CodeKind::Semicolon || isWord;
        }
        // Behind old-style declarations of parameters stands their ";".
        if (mDepth == 0 && mCandidate && (!mIsDeclared || mLastKind == CodeKind::Semicolon)) {
            mOutline.definitions.push_back(*mCandidate);
        }
        mCandidate.reset();
        mParentheses = 0;
        ++mDepth;
        AddBrace(BraceEvent::Kind::Open, at);
    }

    void CloseBrace(std::size_t at) {
        mDepth -= mDepth > 0 ? 1 : 0;
        mParentheses = 0;
        mCandidate.reset();
        AddBrace(BraceEvent::Kind::Close, at);
    }

    void AddBrace(BraceEvent::Kind kind, std::size_t at) {
        const std::size_t first = SkipBlanks(mLine, 0);
        std::size_t indent = 0;
        for (std::size_t i = 0; i < first; ++i) {
            indent = mLine[i] == '\t' ? (indent / TabWidth + 1) * TabWidth : indent + 1;
        }
        mBraces.push_back({kind, mLineNumber, indent, first == at});
    }

    // What decides about a function's name outside of all braces.
    void TopLevel(char c) {
        if (c == '(') {
            if (mParentheses == 0 && mLastKind == CodeKind::Word &&
                (!mCandidate || mIsDeclared || !mCandidate->hasType)) {
                const bool hasType =
                    mKindBefore == CodeKind::Word || mKindBefore == CodeKind::Keyword || mKindBefore == CodeKind::Star;
                mCandidate = {std::string(mLastWord), mNameLine, hasType, !mConditionals.empty()};
                mIsDeclared = false;
            }
            ++mParentheses;
        } else if (c == ')') {
            mParentheses -= mParentheses > 0 ? 1 : 0;
        } else if (mParentheses == 0 && c == ';') {
            if (mLastKind == CodeKind::Close) {
                mCandidate.reset();
            }
            mIsDeclared = true;
        } else if (mParentheses == 0 && c == '=') {
            mCandidate.reset();
        }
    }

    // The first word of the directive behind "#".
    std::string_view DirectiveName() const {
        const std::string_view directive = mDirective;
        const std::size_t begin = SkipBlanks(directive, std::min<std::size_t>(1, directive.size()));
        return directive.substr(begin, WordEnd(directive, begin) - begin);
    }

    // The directive that went on up to the line before is complete.
    void EndDirective() {
        if (!mIsDirective) {
            return;
        }
        const std::string_view name = DirectiveName();
        const std::string_view directive = mDirective;
        std::string_view rest =
            directive.substr(static_cast<std::size_t>(name.data() + name.size() - directive.data()));
        rest.remove_prefix(SkipBlanks(rest, 0));
        while (rest.ends_with(' ') || rest.ends_with('\t')) {
            rest.remove_suffix(1);
        }
        if (name == "include") {
            // A name in quotes is a literal and no part of the directive.
            mOutline.mayDefineMore = mOutline.mayDefineMore || rest.empty();
        } else if (name == "define") {
            mOutline.mayDefineMore = true;
            const bool isEven = std::count(rest.begin(), rest.end(), '{') == std::count(rest.begin(), rest.end(), '}');
            mOutline.hasBraceMacro = mOutline.hasBraceMacro || (!isEven && !IsSkipped());
        } else if (name.starts_with("if")) {
            BeginConditional(name == "if" && rest == "0", name == "if" && rest == "1");
        } else if (name.starts_with("el")) {
            BeginBranch(name == "elif" && rest == "0");
        } else if (name == "endif") {
            EndConditional();
        }
        mIsDirective = false;
        mDirective.clear();
    }

    void BeginConditional(bool isNever, bool isAlways) {
        const bool isOuterSkipped = IsSkipped();
        mDeclaration.Branch();
        mConditionals.push_back({mDirectiveLine, isOuterSkipped, isOuterSkipped || isNever, isAlways,
                                 !isOuterSkipped && !isNever, mDepth, std::nullopt});
        mBraces.push_back({BraceEvent::Kind::If, mLineNumber, 0, false});
    }

    void BeginBranch(bool isNever) {
        if (mConditionals.empty()) {
            return;
        }
        mDeclaration.Branch();
        Conditional& conditional = mConditionals.back();
        if (conditional.wasTaken && !conditional.depthOfFirst) {
            conditional.depthOfFirst = mDepth;
        }
        conditional.isSkipped = conditional.isOuterSkipped || conditional.isDecided || isNever;
        if (conditional.wasTaken && !conditional.isSkipped) {
            mBraces.push_back({BraceEvent::Kind::Else, mLineNumber, 0, false});
            mDepth = conditional.depth;
        }
        conditional.wasTaken = conditional.wasTaken || !conditional.isSkipped;
    }

    void EndConditional() {
        if (mConditionals.empty()) {
            return;
        }
        mDeclaration.Branch();
        mDepth = mConditionals.back().depthOfFirst.value_or(mDepth);
        mConditionals.pop_back();
        mBraces.push_back({BraceEvent::Kind::EndIf, mLineNumber, 0, false});
    }

    std::string_view mText;
    COutline mOutline;
    std::vector<BraceEvent> mBraces;
    std::vector<Conditional> mConditionals;
    OpenDeclaration mDeclaration;

    // The line.
    std::string_view mLine;
    std::size_t mLineBegin = 0;
    std::size_t mLineNumber = 1;
    std::u16string mWide;
    std::vector<CToken> mTokens;
    CLineState mBefore = CLineState::Code;
    CLineState mState = CLineState::Code;
    std::size_t mCommentLine = 0; // where the last comment and the last literal begin
    std::size_t mLiteralLine = 0;
    bool mIsDirective = false;
    std::size_t mDirectiveLine = 0;
    std::string mDirective; // without its comments and literals

    // The last two pieces of code.
    CodeKind mLastKind = CodeKind::None;
    CodeKind mKindBefore = CodeKind::None;
    std::string_view mLastWord;
    std::string_view mWordBefore;

    // Outside of all braces: what may become a definition.
    std::size_t mDepth = 0;
    std::size_t mParentheses = 0;
    std::size_t mNameLine = 0;
    std::optional<CDefinition> mCandidate;
    bool mIsDeclared = false; // a ";" stands behind it
};

} // namespace

COutline OutlineC(std::string_view text) {
    return Outliner(text).Run();
}

std::size_t CLineAt(std::string_view text, std::size_t position) {
    std::size_t line = 1;
    for (std::size_t i = text.find_first_of("\r\n"); i < position; i = text.find_first_of("\r\n", i + 1)) {
        line += text[i] == '\n' || i + 1 == text.size() || text[i + 1] != '\n' ? 1 : 0;
    }
    return line;
}

} // namespace tessaly
