// First every text by itself, then names across the members.
#include "diagnostics/Lint.h"

#include "document/Members.h"
#include "document/VornSrcObj.h"
#include "platform/text/Utf8.h"
#include "syntax/COutline.h"

#include <algorithm>
#include <array>
#include <map>
#include <utility>

namespace tessaly {

namespace {

using Kind = CCodeOrigin::Kind;

constexpr std::size_t LongestQuote = 100;
constexpr std::size_t MostOpenEnds = 10; // of a text
constexpr std::string_view LintBlanks = " \t\r\n\f\v";

// What the frame defines or calls, and what the kit's library offers.
constexpr std::array FrameNames = std::to_array<std::string_view>({"main", "OnShutdown", "initialize", "EventLoop"});
constexpr std::array KitNames =
    std::to_array<std::string_view>({"SendFrame", "StartTimer", "StartTimerOnce", "StopTimer", "SerialWrite", "Print"});

bool IsAmong(const auto& names, std::string_view name) {
    return std::find(names.begin(), names.end(), name) != names.end();
}

std::string InQuotes(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}

// `text` with single blanks, cut short when it is long.
std::string OneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        if (LintBlanks.find(c) == std::string_view::npos) {
            line += c;
        } else if (!line.empty() && line.back() != ' ') {
            line += ' ';
        }
    }
    if (line.size() > LongestQuote) { // the end of a prototype tells more than the comment in front of it
        std::size_t begin = line.size() - LongestQuote;
        while (IsContinuation(line[begin])) {
            ++begin;
        }
        line.replace(0, begin, "...");
    }
    return line;
}

class Linter {
public:
    explicit Linter(const VornSrcObj& document) : mDocument(document), mMembers(AllMembers(document)) {}

    std::vector<Finding> Run() {
        for (const CCodeOrigin& member : mMembers) {
            mOutlines.push_back(OutlineC(MemberText(mDocument, member)));
            mHasBraceMacro = mHasBraceMacro || mOutlines.back().hasBraceMacro;
        }
        for (std::size_t i = 0; i < mMembers.size(); ++i) {
            LintMember(i);
        }
        return std::move(mFindings);
    }

private:
    void LintMember(std::size_t index) {
        mMember = mMembers[index];
        mText = MemberText(mDocument, mMember);
        const auto first = static_cast<std::ptrdiff_t>(mFindings.size());
        const COutline& outline = mOutlines[index];
        if (!ConflictMarkers()) {
            OpenEnds(outline);
            if (mMember.kind == Kind::Function) {
                Prototype(outline);
            } else if (mMember.kind == Kind::Event) {
                Handler(outline);
            }
            Names(outline);
        }
        std::stable_sort(mFindings.begin() + first, mFindings.end(),
                         [](const Finding& a, const Finding& b) { return a.line < b.line; });
    }

    void Tell(std::size_t line, std::string_view rule, std::string message, bool isHidden) {
        mFindings.push_back({mMember, line, rule, std::move(message), isHidden});
    }

    // Both sides of a conflict are in the text, so that nothing else is worth telling.
    bool ConflictMarkers() {
        bool isFound = false;
        for (const std::string_view marker : {std::string_view("<<<<<<<"), std::string_view(">>>>>>>")}) {
            for (std::size_t at = mText.find(marker); at != mText.npos; at = mText.find(marker, at + 1)) {
                const bool isFirst = at == 0 || mText[at - 1] == '\n' || mText[at - 1] == '\r';
                const std::size_t end = at + marker.size();
                if (isFirst && (end == mText.size() || LintBlanks.find(mText[end]) != LintBlanks.npos)) {
                    Tell(CLineAt(mText, at), rule::ConflictMarker, "a merge left its conflict marker here", false);
                    isFound = true;
                }
            }
        }
        return isFound;
    }

    void OpenEnds(const COutline& outline) {
        std::size_t count = 0;
        std::vector<OpenEnd> ends = outline.openEnds;
        ends.erase(std::unique(ends.begin(), ends.end()), ends.end()); // lines are all that is told
        for (const OpenEnd& open : ends) {
            const bool isBrace = open.kind == OpenEndKind::Brace || open.kind == OpenEndKind::StrayBrace ||
                                 open.kind == OpenEndKind::Declaration;
            if (!(isBrace && mHasBraceMacro) && ++count <= MostOpenEnds) {
                OpenEndFound(open);
            }
        }
    }

    void OpenEndFound(const OpenEnd& open) {
        switch (open.kind) {
        case OpenEndKind::Comment:
            Tell(open.line, rule::OpenComment, "the comment that begins here does not end in this text", true);
            break;
        case OpenEndKind::Literal:
            Tell(open.line, rule::OpenString, "the string or character that begins here does not end on its line",
                 false);
            break;
        case OpenEndKind::Conditional:
            Tell(open.line, rule::OpenConditional, "the \"#if\" in this line has no \"#endif\" in this text", false);
            break;
        case OpenEndKind::Declaration:
            Tell(open.line, rule::OpenDeclaration, "the last declaration of this text has no \";\" and no body", true);
            break;
        case OpenEndKind::Brace:
            Tell(open.line, rule::OpenBrace, "the \"{\" in this line has no \"}\" in this text", true);
            break;
        case OpenEndKind::StrayBrace:
            Tell(open.line, rule::StrayBrace, "the \"}\" in this line has no \"{\" in this text", true);
            break;
        }
    }

    // The prototype is cut off in front of the first "{", whatever that belongs to, and one character earlier.
    void Prototype(const COutline& outline) {
        const std::size_t brace = mText.find('{');
        std::string_view prototype;
        if (brace == std::string_view::npos || !CutPrototype(mText, prototype)) {
            return;
        }
        const std::string quote = "the generated prototype is " + InQuotes(OneLine(prototype) + ";");
        if (brace == outline.commentBrace) {
            Tell(CLineAt(mText, brace), rule::PrototypeComment, quote + ": it ends at the \"{\" in this comment", true);
        } else if (brace != outline.brace) {
            Tell(CLineAt(mText, brace), rule::PrototypeCut, quote + ": it ends at this \"{\"", true);
        } else if (!outline.isBody) {
            Tell(outline.braceLine, rule::PrototypeCut, quote + ": the first \"{\" is not that of the body", false);
        } else if (LintBlanks.find(mText[brace - 1]) == LintBlanks.npos) {
            Tell(outline.braceLine, rule::PrototypeCut, quote + ": there is no space or line end in front of the \"{\"",
                 true);
        } else if (outline.lastComment != COutline::None && outline.lastCommentIsLine) {
            LineComment(outline, prototype, quote);
        }
    }

    // A comment that goes on to the end of the prototype takes the ";" in. A CR, all that is left of a CR LF, ends it
    // for gcc and clang, but not for every compiler.
    void LineComment(const COutline& outline, std::string_view prototype, const std::string& quote) {
        const std::size_t end = prototype.find_first_of("\r\n", outline.lastComment);
        const bool endsWithCr = end != std::string_view::npos && prototype.substr(end) == "\r";
        if (end == std::string_view::npos || endsWithCr) {
            Tell(outline.lastCommentLine, rule::PrototypeComment, quote + ": its \";\" is part of the \"//\" comment",
                 end == std::string_view::npos);
        }
    }

    void Handler(const COutline& outline) {
        const std::string_view name = EventTable.at(static_cast<std::size_t>(mMember.index)).name;
        const bool isUnknown = outline.mayDefineMore || !outline.openEnds.empty() || IsDefinedAnywhere(name) ||
                               (UsesMacro(outline) && mText.find(name) != std::string_view::npos);
        if (!isUnknown) {
            Tell(outline.definitions.empty() ? 1 : outline.definitions.front().line, rule::HandlerMissing,
                 "this text defines no function " + InQuotes(name), true);
        }
    }

    static bool UsesMacro(const COutline& outline) {
        return std::any_of(outline.definitions.begin(), outline.definitions.end(),
                           [](const CDefinition& definition) { return !definition.hasType; });
    }

    static bool Defines(const COutline& outline, std::string_view name) {
        return std::any_of(outline.definitions.begin(), outline.definitions.end(),
                           [name](const CDefinition& definition) { return definition.name == name; });
    }

    bool IsDefinedAnywhere(std::string_view name) const {
        return std::any_of(mOutlines.begin(), mOutlines.end(),
                           [name](const COutline& outline) { return Defines(outline, name); });
    }

    void Names(const COutline& outline) {
        for (const CDefinition& definition : outline.definitions) {
            if (definition.isConditional) { // may be left out, so that another one counts
                continue;
            }
            const std::string quoted = InQuotes(OneLine(definition.name));
            if (IsAmong(FrameNames, definition.name)) {
                Tell(definition.line, rule::ReservedName, quoted + " is a name of the generated program", true);
            } else if (IsAmong(KitNames, definition.name)) {
                Tell(definition.line, rule::ReservedName, quoted + " is a name of the kit", false);
            } else if (IsEventOfAnother(definition.name)) {
                Tell(definition.line, rule::ReservedName, quoted + " is the name of an event", true);
            } else if (definition.hasType) {
                SameName(definition, quoted);
            }
        }
    }

    // A handler may as well stand elsewhere, while its event is empty.
    bool IsEventOfAnother(std::string_view name) const {
        for (std::int32_t i = 0; i < EventCount; ++i) {
            if (EventTable.at(static_cast<std::size_t>(i)).name == name) {
                const bool isOwn = mMember.kind == Kind::Event && mMember.index == i;
                return !isOwn && Defines(mOutlines[mOutlines.size() - EventCount + static_cast<std::size_t>(i)], name);
            }
        }
        return false;
    }

    void SameName(const CDefinition& definition, const std::string& quoted) {
        const std::string member = MemberName(mDocument, mMember);
        const auto [first, isNew] = mDefined.try_emplace(definition.name, member);
        if (!isNew && first->second != member) {
            Tell(definition.line, rule::SameName, quoted + " is defined in " + first->second + ", too", false);
        }
    }

    const VornSrcObj& mDocument;
    std::vector<CCodeOrigin> mMembers;
    std::vector<COutline> mOutlines;
    bool mHasBraceMacro = false;
    std::map<std::string, std::string, std::less<>> mDefined; // the member that defines a function first
    CCodeOrigin mMember;
    std::string_view mText;
    std::vector<Finding> mFindings;
};

} // namespace

std::vector<Finding> Lint(const VornSrcObj& document) {
    return Linter(document).Run();
}

} // namespace tessaly
