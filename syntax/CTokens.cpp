// A directive ends where its line does that ends without a backslash.
#include "syntax/CTokens.h"

#include <algorithm>

namespace tessaly {

namespace {

class Tokenizer {
public:
    explicit Tokenizer(std::string_view text) : mText(text) {}

    void Run() {
        bool isLineStart = true;
        bool hasBlank = false;
        while (mAt < mText.size()) {
            const char c = mText[mAt];
            if (IsCBlankByte(c)) {
                isLineStart = isLineStart || c == '\n' || c == '\r';
                hasBlank = true;
                ++mAt;
            } else if (mText.substr(mAt, 2) == "/*" || mText.substr(mAt, 2) == "//") {
                SkipComment();
                hasBlank = true;
            } else if (c == '#' && isLineStart) {
                TakeDirective();
            } else {
                isLineStart = false;
                const std::size_t begin = mAt;
                mAt = TokenEnd();
                code.tokens.push_back({mText.substr(begin, mAt - begin), begin, hasBlank});
                hasBlank = false;
            }
        }
    }

    CCode code;

private:
    std::size_t TokenEnd() const {
        std::size_t end = mAt + 1;
        if (IsCWordByte(mText[mAt])) {
            while (end < mText.size() && IsCWordByte(mText[end])) {
                ++end;
            }
        } else if (mText[mAt] == '"' || mText[mAt] == '\'') {
            while (end < mText.size() && mText[end] != mText[mAt] && mText[end] != '\n') {
                end += mText[end] == '\\' ? 2 : 1;
            }
            end = std::min(end + 1, mText.size());
        }
        return end;
    }

    void SkipComment() {
        const bool isBlock = mText[mAt + 1] == '*';
        const std::size_t end = isBlock ? mText.find("*/", mAt + 2) : mText.find_first_of("\r\n", mAt);
        mAt = end == std::string_view::npos ? mText.size() : end + (isBlock ? 2 : 0);
    }

    void TakeDirective() {
        CDirective directive = {"", mAt};
        while (mAt < mText.size()) {
            const std::size_t end = std::min(mText.find_first_of("\r\n/\\\"", mAt), mText.size());
            directive.text.append(mText, mAt, end - mAt);
            mAt = end;
            const std::string_view rest = mText.substr(mAt);
            if (rest.starts_with("/*") || rest.starts_with("//")) {
                SkipComment();
            } else if (rest.starts_with("\\\r\n") || rest.starts_with("\\\n") || rest.starts_with("\\\r")) {
                mAt += rest.starts_with("\\\r\n") ? 3 : 2;
            } else if (rest.starts_with('"')) {
                const std::size_t literalEnd = TokenEnd();
                directive.text.append(mText, mAt, literalEnd - mAt);
                mAt = literalEnd;
            } else if (rest.starts_with('/') || rest.starts_with('\\')) {
                directive.text += mText[mAt++];
            } else {
                break;
            }
        }
        code.directives.push_back(std::move(directive));
    }

    std::string_view mText;
    std::size_t mAt = 0;
};

} // namespace

std::string_view CDirective::RestBehind(std::string_view name) const {
    const std::string_view directive = text;
    std::size_t at = directive.find_first_not_of(" \t", 1);
    if (at == std::string_view::npos || directive.substr(at, name.size()) != name) {
        return {};
    }
    at = directive.find_first_not_of(" \t", at + name.size());
    return at == std::string_view::npos ? std::string_view() : directive.substr(at);
}

CCode TokenizeC(std::string_view text) {
    Tokenizer tokenizer(text);
    tokenizer.Run();
    return std::move(tokenizer.code);
}

} // namespace tessaly
