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

std::size_t FirstTokenBehind(const std::vector<CCodeToken>& tokens, std::size_t position) {
    const auto behind = std::partition_point(tokens.begin(), tokens.end(),
                                             [&](const CCodeToken& token) { return token.position < position; });
    return static_cast<std::size_t>(behind - tokens.begin());
}

// Those from `begin` to before `end` without a partner there.
void RemoveLoneBraces(const std::vector<CCodeToken>& tokens, std::size_t begin, std::size_t end,
                      std::vector<bool>& isRemoved) {
    std::vector<std::size_t> open;
    for (std::size_t at = begin; at < end; ++at) {
        if (isRemoved[at]) {
            continue;
        }
        if (tokens[at].text == "{") {
            open.push_back(at);
        } else if (tokens[at].text == "}" && !open.empty()) {
            open.pop_back();
        } else if (tokens[at].text == "}") {
            isRemoved[at] = true;
        }
    }
    for (const std::size_t at : open) {
        isRemoved[at] = true;
    }
}

} // namespace

std::string_view CDirective::Name() const {
    const auto begin = std::find_if_not(text.begin() + 1, text.end(), IsCBlankByte);
    return {begin, std::find_if_not(begin, text.end(), IsCWordByte)};
}

std::string_view CDirective::RestBehind(std::string_view name) const {
    const std::string_view found = Name();
    if (found != name) {
        return {};
    }
    const char* const begin = std::find_if_not(found.data() + found.size(), text.data() + text.size(), IsCBlankByte);
    const std::string_view rest(begin, text.data() + text.size());
    return rest.substr(0, rest.find_last_not_of(" \t\v\f") + 1);
}

CCode TokenizeC(std::string_view text) {
    Tokenizer tokenizer(text);
    tokenizer.Run();
    return std::move(tokenizer.code);
}

CCode WithBracesOfOneBranch(CCode code) {
    struct Branch {
        std::size_t begin;
        bool counts;
        bool isBehindCounting;
    };
    std::vector<Branch> branches; // the innermost last
    std::vector<bool> isRemoved(code.tokens.size());
    for (const CDirective& directive : code.directives) {
        const std::size_t token = FirstTokenBehind(code.tokens, directive.position);
        const std::string_view name = directive.Name();
        const bool isOther = name.starts_with("el"); // "#else", "#elif"
        if ((isOther || name == "endif") && !branches.empty()) {
            Branch& branch = branches.back();
            if (!branch.counts) {
                RemoveLoneBraces(code.tokens, branch.begin, token, isRemoved);
            }
            const bool hasCounted = branch.counts || branch.isBehindCounting;
            branch = {token, !hasCounted, hasCounted};
        }
        if (name == "endif" && !branches.empty()) {
            branches.pop_back();
        } else if (name.starts_with("if")) {
            branches.push_back({token, directive.RestBehind("if") != "0", false});
        }
    }
    std::size_t at = 0;
    std::erase_if(code.tokens, [&](const CCodeToken& /*token*/) { return isRemoved[at++]; });
    return code;
}

} // namespace tessaly
