// One pass over the line. A directive of the preprocessor is of one colour but for the comments and literals in it.
#include "syntax/CSyntax.h"

#include <algorithm>
#include <array>

namespace tessaly {

namespace {

using Word = std::u16string_view;

constexpr std::array Keywords = std::to_array<Word>({
    u"_Alignas",      u"_Alignof", u"_Atomic", u"_Generic", u"_Noreturn", u"_Static_assert",
    u"_Thread_local", u"auto",     u"break",   u"case",     u"const",     u"continue",
    u"default",       u"do",       u"else",    u"enum",     u"extern",    u"for",
    u"goto",          u"if",       u"inline",  u"register", u"restrict",  u"return",
    u"sizeof",        u"static",   u"struct",  u"switch",   u"typedef",   u"union",
    u"volatile",      u"while",
});

constexpr std::array Types = std::to_array<Word>({
    u"_Bool",          u"_Complex",       u"_Imaginary",     u"bool",
    u"char",           u"double",         u"float",          u"int",
    u"int16_t",        u"int32_t",        u"int64_t",        u"int8_t",
    u"int_fast16_t",   u"int_fast32_t",   u"int_fast64_t",   u"int_fast8_t",
    u"int_least16_t",  u"int_least32_t",  u"int_least64_t",  u"int_least8_t",
    u"intmax_t",       u"intptr_t",       u"long",           u"max_align_t",
    u"ptrdiff_t",      u"short",          u"signed",         u"size_t",
    u"uint16_t",       u"uint32_t",       u"uint64_t",       u"uint8_t",
    u"uint_fast16_t",  u"uint_fast32_t",  u"uint_fast64_t",  u"uint_fast8_t",
    u"uint_least16_t", u"uint_least32_t", u"uint_least64_t", u"uint_least8_t",
    u"uintmax_t",      u"uintptr_t",      u"unsigned",       u"void",
    u"wchar_t",
});

static_assert(std::is_sorted(Keywords.begin(), Keywords.end()));
static_assert(std::is_sorted(Types.begin(), Types.end()));

constexpr std::array LiteralPrefixes = std::to_array<Word>({u"L", u"U", u"u", u"u8"});

bool IsBlank(char16_t character) {
    return character == u' ' || (character >= u'\t' && character <= u'\r');
}

bool IsDigit(char16_t character) {
    return character >= u'0' && character <= u'9';
}

// Letters beyond ASCII are taken as such, as compilers do.
bool IsWordCharacter(char16_t character) {
    return (character >= u'a' && character <= u'z') || (character >= u'A' && character <= u'Z') || character == u'_' ||
           IsDigit(character) || character >= 0x80;
}

class LineScanner {
public:
    LineScanner(Word line, CLineState before, std::vector<CToken>& tokens)
        : mLine(line),
          mTokens(tokens),
          mInDirective(before >= CLineState::Preprocessor) {
        tokens.clear();
    }

    CLineState Scan(CLineState before) {
        CLineState end = Continue(before);
        while (end == CLineState::Code && mAt < mLine.size()) {
            end = Next();
        }
        FlushDirective(mLine.size());
        if (end != CLineState::Code) {
            return mInDirective && end != CLineState::LineComment ? InDirective(end) : end;
        }
        return mInDirective && EndsWithBackslash() ? CLineState::Preprocessor : CLineState::Code;
    }

private:
    // The functions from here to Next return what is unfinished at the end of the line, or Code.

    CLineState Continue(CLineState before) {
        switch (before) {
        case CLineState::BlockComment:
        case CLineState::PreprocessorBlockComment:
            return BlockComment(0);
        case CLineState::LineComment:
            return LineComment(0);
        case CLineState::String:
        case CLineState::PreprocessorString:
            return Literal(0, u'"');
        case CLineState::Character:
        case CLineState::PreprocessorCharacter:
            return Literal(0, u'\'');
        case CLineState::Code:
        case CLineState::Preprocessor:
            break;
        }
        return CLineState::Code;
    }

    CLineState BlockComment(std::size_t start) {
        const std::size_t end = mLine.find(u"*/", mAt);
        mAt = end == Word::npos ? mLine.size() : end + 2;
        Add(start, CTokenKind::Comment);
        return end == Word::npos ? CLineState::BlockComment : CLineState::Code;
    }

    CLineState LineComment(std::size_t start) {
        mAt = mLine.size();
        Add(start, CTokenKind::Comment);
        return EndsWithBackslash() ? CLineState::LineComment : CLineState::Code;
    }

    CLineState Literal(std::size_t start, char16_t quote) {
        while (mAt < mLine.size()) {
            const char16_t character = mLine[mAt++];
            if (character == quote) {
                Add(start, CTokenKind::String);
                return CLineState::Code;
            }
            if (character == u'\\') {
                if (mAt == mLine.size()) {
                    Add(start, CTokenKind::String);
                    return quote == u'"' ? CLineState::String : CLineState::Character;
                }
                ++mAt;
            }
        }
        Add(start, CTokenKind::String);
        return CLineState::Code;
    }

    CLineState Next() {
        const std::size_t start = mAt;
        const char16_t character = mLine[mAt];
        const Word rest = mLine.substr(mAt);
        if (rest.starts_with(u"/*")) {
            mAt += 2;
            return BlockComment(start);
        }
        if (rest.starts_with(u"//")) {
            return LineComment(start);
        }
        if (character == u'"' || character == u'\'') {
            ++mAt;
            return Literal(start, character);
        }
        if (IsDigit(character) || (character == u'.' && rest.size() > 1 && IsDigit(rest[1]))) {
            Number();
        } else if (IsWordCharacter(character)) {
            return WordOrLiteral();
        } else {
            if (character == u'#' && mOnlyBlanks && !mInDirective) {
                mInDirective = true;
                mDirectiveStart = mAt;
            }
            mOnlyBlanks = mOnlyBlanks && IsBlank(character);
            ++mAt;
        }
        return CLineState::Code;
    }

    // What a preprocessing number takes in: ISO/IEC 9899:2011, 6.4.8.
    void Number() {
        const std::size_t start = mAt;
        while (mAt < mLine.size() && (IsWordCharacter(mLine[mAt]) || mLine[mAt] == u'.')) {
            const Word exponents = u"eEpP";
            const bool isExponent = exponents.find(mLine[mAt++]) != Word::npos;
            if (isExponent && mAt < mLine.size() && (mLine[mAt] == u'+' || mLine[mAt] == u'-')) {
                ++mAt;
            }
        }
        AddInCode(start, CTokenKind::Number);
    }

    CLineState WordOrLiteral() {
        const std::size_t start = mAt;
        while (mAt < mLine.size() && IsWordCharacter(mLine[mAt])) {
            ++mAt;
        }
        const Word word = mLine.substr(start, mAt - start);
        const char16_t next = mAt < mLine.size() ? mLine[mAt] : u' ';
        if ((next == u'"' || next == u'\'') && std::ranges::find(LiteralPrefixes, word) != LiteralPrefixes.end()) {
            ++mAt;
            return Literal(start, next);
        }
        if (std::ranges::binary_search(Keywords, word)) {
            AddInCode(start, CTokenKind::Keyword);
        } else if (std::ranges::binary_search(Types, word)) {
            AddInCode(start, CTokenKind::Type);
        }
        mOnlyBlanks = false;
        return CLineState::Code;
    }

    // Adds what has its own colour within a directive, too.
    void Add(std::size_t start, CTokenKind kind) {
        FlushDirective(start);
        if (mAt > start) {
            mTokens.push_back({start, mAt - start, kind});
        }
        mDirectiveStart = mAt;
        mOnlyBlanks = mOnlyBlanks && kind == CTokenKind::Comment;
    }

    void AddInCode(std::size_t start, CTokenKind kind) {
        mOnlyBlanks = false;
        if (!mInDirective) {
            mTokens.push_back({start, mAt - start, kind});
        }
    }

    // Adds the stretch of the directive that ends before `end`.
    void FlushDirective(std::size_t end) {
        if (mInDirective && end > mDirectiveStart) {
            mTokens.push_back({mDirectiveStart, end - mDirectiveStart, CTokenKind::Preprocessor});
        }
    }

    static CLineState InDirective(CLineState state) {
        switch (state) {
        case CLineState::BlockComment:
            return CLineState::PreprocessorBlockComment;
        case CLineState::String:
            return CLineState::PreprocessorString;
        default:
            return CLineState::PreprocessorCharacter;
        }
    }

    bool EndsWithBackslash() const { return mLine.ends_with(u'\\'); }

    Word mLine;
    std::vector<CToken>& mTokens;
    std::size_t mAt = 0;
    std::size_t mDirectiveStart = 0; // where the part of the directive begins that has no token yet
    bool mInDirective;
    bool mOnlyBlanks = true; // and comments, so far
};

} // namespace

CLineState ScanCLine(std::u16string_view line, CLineState before, std::vector<CToken>& tokens) {
    return LineScanner(line, before, tokens).Scan(before);
}

// Of the types those are none that a header defines.
std::vector<std::string> CKeywords() {
    std::vector<std::string> keywords(Keywords.size());
    const auto narrow = [](Word word) { return std::string(word.begin(), word.end()); };
    std::transform(Keywords.begin(), Keywords.end(), keywords.begin(), narrow);
    for (const Word type : Types) {
        if (!type.ends_with(u"_t") && type != u"bool") {
            keywords.push_back(narrow(type));
        }
    }
    return keywords;
}

} // namespace tessaly
