// The text becomes tokens first. Then statements are taken one after the other, those in bodies likewise: what begins
// with a type and goes on with a name is a declaration.
#include "syntax/CDeclarations.h"

#include "syntax/CTokens.h"

#include <algorithm>
#include <array>
#include <set>

namespace tessaly {

namespace {

bool StartsName(std::string_view word) {
    return !word.empty() && IsCWordByte(word.front()) && (word.front() < '0' || word.front() > '9');
}

template <std::size_t Count>
bool IsOneOf(std::string_view word, const std::array<std::string_view, Count>& words) {
    return std::find(words.begin(), words.end(), word) != words.end();
}

constexpr std::size_t DeepestBlock = 200; // what is further in is passed over

// Begin a statement that declares nothing.
bool IsStatementWord(std::string_view word) {
    return IsOneOf(word, std::to_array<std::string_view>({"if", "else", "while", "do", "switch", "case", "default",
                                                          "return", "goto", "break", "continue", "sizeof"}));
}

bool BeginsAttribute(std::string_view word) {
    return IsOneOf(word, std::to_array<std::string_view>({"__attribute__", "__attribute", "__declspec", "__asm__",
                                                          "__asm", "asm", "_Alignas", "__pragma"}));
}

// Belong to a type and are never the name that is declared.
bool IsTypeWord(std::string_view word) {
    return IsOneOf(word,
                   std::to_array<std::string_view>(
                       {"void",    "char",     "short",     "int",      "long",       "float",      "double",
                        "signed",  "unsigned", "const",     "volatile", "restrict",   "static",     "extern",
                        "inline",  "register", "auto",      "_Bool",    "struct",     "union",      "enum",
                        "typedef", "_Complex", "_Noreturn", "__inline", "__inline__", "__restrict", "__extension__"}));
}

// What is declared from the tokens, a statement at a time.
class Declarations {
public:
    // `macros` may stand in front of a declaration.
    Declarations(const std::vector<CCodeToken>& tokens, const std::set<std::string_view>& macros,
                 std::vector<CName>& names)
        : mTokens(tokens),
          mMacros(macros),
          mNames(names) {}

    void Run() {
        while (mAt < mTokens.size()) {
            Block(false);
            ++mAt; // a "}" too many
        }
    }

private:
    bool IsAt(std::string_view text) const { return mAt < mTokens.size() && mTokens[mAt].text == text; }

    // Statements up to the "}" that ends them, or the end of the text.
    void Block(bool isLocal) {
        ++mDepth;
        while (mAt < mTokens.size() && !IsAt("}")) {
            Statement(isLocal);
        }
        --mDepth;
    }

    // From behind an opening bracket to its closing one, or to what shows that a round one has none.
    void SkipToClosing(bool isRound = false) {
        for (std::size_t depth = 1; mAt < mTokens.size(); ++mAt) {
            const std::string_view text = mTokens[mAt].text;
            if (isRound && (text == ";" || (text == "{" && mTokens[mAt - 1].text != ")"))) {
                return;
            }
            depth += text == "(" || text == "[" || text == "{" ? 1U : 0U;
            depth -= text == ")" || text == "]" || text == "}" ? 1U : 0U;
            if (depth == 0) {
                return;
            }
        }
    }

    // Behind a bracket with what is in it, or behind any other token.
    void SkipPart() {
        const bool isOpening = IsAt("(") || IsAt("[") || IsAt("{");
        ++mAt;
        if (isOpening) {
            SkipToClosing();
            ++mAt;
        }
    }

    // One statement, with what stands in its braces.
    void Statement(bool isLocal) {
        std::vector<CCodeToken> part;
        const std::size_t firstField = mNames.size();
        bool hasFields = false;
        while (mAt < mTokens.size() && !IsAt("}")) {
            const CCodeToken& token = mTokens[mAt];
            if (token.text == ";") {
                ++mAt;
                break;
            }
            if (token.text == "{") {
                const CCodeToken braces = {"{}", token.position, token.hasBlankBefore};
                if (!OpenBrace(part, isLocal)) {
                    return;
                }
                part.push_back(braces);
                hasFields = true;
            } else if (BeginsAttribute(token.text)) {
                ++mAt;
                if (IsAt("(")) {
                    SkipPart();
                }
            } else if (token.text == ":" && part.size() == 1) { // a label
                part.clear();
                ++mAt;
            } else if (token.text == "(" || token.text == "[" || token.text == "=") {
                TakeGroup(part);
            } else {
                part.push_back(token);
                ++mAt;
            }
        }
        const std::size_t endOfFields = mNames.size();
        Declare(part, isLocal);
        if (!part.empty() && part.front().text == "for") {
            EndLocals(endOfFields, mAt - 1);
        }
        if (hasFields) {
            GiveOwner(firstField, endOfFields, part);
        }
    }

    // A bracket with what is in it, or a first value, which is left out.
    void TakeGroup(std::vector<CCodeToken>& part) {
        if (IsAt("=")) {
            while (mAt < mTokens.size() && !IsAt(";") && !IsAt(",") && !IsAt("}")) {
                SkipPart();
            }
            return;
        }
        const std::size_t begin = mAt++;
        SkipToClosing(part.empty() || part.front().text != "for");
        const std::size_t end = IsAt(";") || IsAt("{") ? mAt : std::min(mAt + 1, mTokens.size());
        const auto at = [this](std::size_t index) { return mTokens.begin() + static_cast<std::ptrdiff_t>(index); };
        part.insert(part.end(), at(begin), at(end));
        mAt = end;
    }

    // Whether the statement goes on behind the "}".
    bool OpenBrace(const std::vector<CCodeToken>& part, bool isLocal) {
        const auto has = [&part](std::string_view word) {
            return std::any_of(part.begin(), part.end(), [&](const CCodeToken& token) { return token.text == word; });
        };
        const std::size_t first = mNames.size();
        ++mAt;
        if (mDepth == DeepestBlock) {
            SkipToClosing();
        } else if (!part.empty() && part.back().text == ")" && !IsStatementWord(part.front().text) &&
                   part.front().text != "for" && !isLocal) {
            Declare(part, false);
            Parameters(part);
            Block(true);
            EndLocals(first, mAt);
        } else if (has("enum") || has("struct") || has("union")) {
            has("enum") ? Enumerators() : Fields();
            ++mAt;
            return true;
        } else {
            Declare(part, true);
            Block(part.empty() || part.front().text != "extern"); // "C"
            EndLocals(first, mAt);
        }
        ++mAt;
        return false;
    }

    // The locals from `first` on are known up to this token. Those further in have their ends already.
    void EndLocals(std::size_t first, std::size_t token) {
        for (; token < mTokens.size() && first < mNames.size(); ++first) {
            CName& name = mNames[first];
            name.end = name.isLocal ? std::min(name.end, mTokens[token].position) : name.end;
        }
    }

    void Enumerators() {
        bool isName = true;
        for (; mAt < mTokens.size() && !IsAt("}"); ++mAt) {
            const CCodeToken& token = mTokens[mAt];
            if (isName && StartsName(token.text)) {
                mNames.push_back({std::string(token.text), CNameKind::Constant, "enum " + std::string(token.text), "",
                                  token.position, false});
                isName = false;
            } else if (token.text == "(" || token.text == "{") {
                ++mAt;
                SkipToClosing();
            }
            isName = isName || token.text == ",";
        }
    }

    void Fields() {
        const std::size_t first = mNames.size();
        Block(false);
        for (std::size_t i = first; i < mNames.size(); ++i) {
            CName& name = mNames[i];
            name.kind =
                name.kind == CNameKind::Variable || name.kind == CNameKind::Function ? CNameKind::Field : name.kind;
        }
    }

    // The fields of "struct TAG {...}" are TAG's, those of "typedef struct {...} NAME" NAME's.
    void GiveOwner(std::size_t first, std::size_t end, const std::vector<CCodeToken>& part) {
        std::string owner;
        for (std::size_t i = 0; i + 1 < part.size(); ++i) {
            if ((part[i].text == "struct" || part[i].text == "union") && StartsName(part[i + 1].text)) {
                owner = part[i + 1].text;
            }
        }
        if (!part.empty() && part.front().text == "typedef" && end < mNames.size()) {
            owner = mNames.back().name;
        }
        for (std::size_t i = first; i < end; ++i) {
            if (mNames[i].kind == CNameKind::Field && mNames[i].owner.empty()) {
                mNames[i].owner = owner;
            }
        }
    }

    static std::string Joined(const std::vector<CCodeToken>& tokens, std::size_t begin, std::size_t end) {
        std::string text;
        for (std::size_t i = begin; i < end; ++i) {
            text += i > begin && tokens[i].hasBlankBefore ? " " : "";
            text += tokens[i].text;
        }
        return text;
    }

    // Behind the bracket at `at`, at most the end.
    static std::size_t BehindGroup(const std::vector<CCodeToken>& tokens, std::size_t at) {
        std::size_t depth = 0;
        for (; at < tokens.size(); ++at) {
            depth += tokens[at].text == "(" || tokens[at].text == "[" ? 1U : 0U;
            depth -= depth > 0 && (tokens[at].text == ")" || tokens[at].text == "]") ? 1U : 0U;
            if (depth == 0) {
                return at + 1;
            }
        }
        return at;
    }

    // The type is all words in front of the last one that a "(", "[", "," or the end follows.
    void Declare(std::vector<CCodeToken> part, bool isLocal) {
        if (!part.empty() && part.front().text == "for") {
            ForLoop(part);
            return;
        }
        while (part.size() > 2 && StartsName(part[1].text) && IsNoType(part.front().text)) {
            part.erase(part.begin());
        }
        if (part.empty() || !StartsName(part.front().text) || IsStatementWord(part.front().text)) {
            return;
        }
        const bool isType = part.front().text == "typedef";
        Tags(part);
        std::size_t at = 0;
        std::size_t name = part.size();
        std::size_t words = 0;
        while (at < part.size() && (StartsName(part[at].text) || part[at].text == "*" || part[at].text == "{}")) {
            if (StartsName(part[at].text) && !IsTypeWord(part[at].text)) {
                name = at;
            }
            words += part[at].text == "*" ? 0U : 1U;
            ++at;
        }
        const bool isPointer = at + 2 < part.size() && part[at].text == "(" && part[at + 1].text == "*";
        if (isPointer && StartsName(part[at + 2].text) && words > 0) { // to a function
            Add(part, at + 2, Joined(part, 0, part.size()), isType ? CNameKind::Type : CNameKind::Variable, isLocal);
            return;
        }
        if (name + 1 != at || words < 2 || (name > 0 && IsTag(part, name))) {
            return;
        }
        Declarators(part, name, isLocal, isType);
    }

    // Macros for attributes, those of the system among them, stand in front of a type.
    bool IsNoType(std::string_view word) const {
        return mMacros.contains(word) || (word.starts_with("__") && !IsTypeWord(word));
    }

    // Behind "struct", "union" and "enum" stands a tag.
    static bool IsTag(const std::vector<CCodeToken>& part, std::size_t at) {
        const std::string_view before = part[at - 1].text;
        return before == "struct" || before == "union" || before == "enum";
    }

    void Tags(const std::vector<CCodeToken>& part) {
        for (std::size_t i = 0; i + 1 < part.size(); ++i) {
            if (IsTag(part, i + 1) && StartsName(part[i + 1].text)) {
                Add(part, i + 1, Joined(part, i, i + 2), CNameKind::Type, false);
            }
        }
    }

    void Declarators(const std::vector<CCodeToken>& part, std::size_t name, bool isLocal, bool isType) {
        std::size_t typeEnd = name;
        while (typeEnd > 0 && part[typeEnd - 1].text == "*") {
            --typeEnd;
        }
        const std::string type = Joined(part, 0, typeEnd);
        std::size_t begin = typeEnd;
        while (begin < part.size()) {
            while (name < part.size() && part[name].text == "*") {
                ++name;
            }
            if (name >= part.size() || !StartsName(part[name].text)) {
                return;
            }
            const bool isFunction = name + 1 < part.size() && part[name + 1].text == "(";
            const std::size_t last = isFunction ? BehindGroup(part, name + 1) : part.size();
            std::size_t end = name + 1;
            while (end < part.size() && part[end].text != ",") {
                end = BehindGroup(part, end);
            }
            const bool isClose = part[begin].text == "*" && !part[begin].hasBlankBefore;
            Add(part, name, type + (isClose ? "" : " ") + Joined(part, begin, std::min(end, last)),
                isType       ? CNameKind::Type
                : isFunction ? CNameKind::Function
                             : CNameKind::Variable,
                isLocal);
            begin = name = end + 1;
        }
    }

    void Add(const std::vector<CCodeToken>& part, std::size_t name, std::string declaration, CNameKind kind,
             bool isLocal) {
        mNames.push_back(
            {std::string(part[name].text), kind, std::move(declaration), "", part[name].position, isLocal});
    }

    // Those of a definition, between its last brackets.
    void Parameters(const std::vector<CCodeToken>& part) {
        std::size_t begin = 0;
        while (begin < part.size() && part[begin].text != "(") {
            ++begin;
        }
        std::vector<CCodeToken> parameter;
        for (std::size_t at = begin + 1; at < part.size();) {
            const bool isEnd = part[at].text == "," || at + 1 == part.size();
            if (isEnd) {
                Declare(parameter, true);
                parameter.clear();
                ++at;
                continue;
            }
            const std::size_t next = part[at].text == "(" || part[at].text == "[" ? BehindGroup(part, at) : at + 1;
            for (; at < next; ++at) {
                parameter.push_back(part[at]);
            }
        }
    }

    void ForLoop(const std::vector<CCodeToken>& part) {
        std::vector<CCodeToken> first;
        for (std::size_t at = 2; at < part.size() && part[at].text != ";" && part[at].text != "="; ++at) {
            first.push_back(part[at]);
        }
        Declare(first, true);
    }

    const std::vector<CCodeToken>& mTokens;
    const std::set<std::string_view>& mMacros;
    std::vector<CName>& mNames;
    std::size_t mAt = 0;
    std::size_t mDepth = 0;
};

std::string_view MacroName(const CDirective& directive) {
    const std::string_view rest = directive.RestBehind("define");
    return rest.substr(
        0, static_cast<std::size_t>(std::find_if_not(rest.begin(), rest.end(), IsCWordByte) - rest.begin()));
}

// "#define NAME VALUE" and "#define NAME(A) ...", with single blanks. One without a value is a mark for the
// preprocessor alone.
void AddMacro(const CDirective& directive, std::vector<CName>& names) {
    constexpr std::size_t mostShown = 100;
    const std::string_view rest = directive.RestBehind("define");
    const std::string_view name = MacroName(directive);
    if (name.empty() || rest.find_first_not_of(" \t", name.size()) == std::string_view::npos) {
        return;
    }
    std::string shown = "#define ";
    for (const char c : rest) {
        if (!IsCBlankByte(c)) {
            shown += c;
        } else if (shown.back() != ' ') {
            shown += ' ';
        }
    }
    shown.resize(shown.find_last_not_of(' ') + 1);
    if (shown.size() > mostShown) {
        shown = shown.substr(0, mostShown) + "...";
    }
    names.push_back({std::string(name), CNameKind::Macro, shown, "", directive.position, false});
}

} // namespace

std::vector<CName> DeclaredNames(std::string_view text) {
    const CCode code = WithBracesOfOneBranch(TokenizeC(text));
    std::vector<CName> names;
    std::set<std::string_view> macros;
    for (const CDirective& directive : code.directives) {
        macros.insert(MacroName(directive));
    }
    Declarations(code.tokens, macros, names).Run();
    for (const CDirective& directive : code.directives) {
        AddMacro(directive, names);
    }
    std::stable_sort(names.begin(), names.end(),
                     [](const CName& a, const CName& b) { return a.position < b.position; });
    return names;
}

std::vector<std::string> IncludedNames(std::string_view text) {
    const CCode code = TokenizeC(text);
    std::vector<std::string> names;
    for (const CDirective& directive : code.directives) {
        const std::string_view rest = directive.RestBehind("include");
        const std::size_t end = rest.empty() ? std::string_view::npos : rest.find(rest.front() == '<' ? '>' : '"', 1);
        if (end != std::string_view::npos && (rest.front() == '<' || rest.front() == '"')) {
            names.emplace_back(rest.substr(0, end + 1));
        }
    }
    return names;
}

} // namespace tessaly
