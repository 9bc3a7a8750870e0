// Two ways of counting. That by indentation is taken when it finds as many as the plain one: then the text is indented
// as its braces are meant.
#include "syntax/BraceMatching.h"

#include <algorithm>
#include <optional>
#include <utility>

namespace tessaly {

namespace {

class Matcher {
public:
    explicit Matcher(bool byIndent) : mByIndent(byIndent) {}

    std::vector<OpenEnd> Run(const std::vector<BraceEvent>& events) {
        for (const BraceEvent& event : events) {
            Take(event);
        }
        for (const BraceEvent* brace : mOpen) {
            Report(OpenEndKind::Brace, *brace);
        }
        std::stable_sort(mFound.begin(), mFound.end(),
                         [](const OpenEnd& a, const OpenEnd& b) { return a.line < b.line; });
        return std::move(mFound);
    }

private:
    using Stack = std::vector<const BraceEvent*>;
    struct Branches {
        Stack before;
        std::optional<Stack> first;
    };

    void Take(const BraceEvent& event) {
        switch (event.kind) {
        case BraceEvent::Kind::Open:
            mOpen.push_back(&event);
            break;
        case BraceEvent::Kind::Close:
            Close(event);
            break;
        case BraceEvent::Kind::If:
            mBranches.push_back({mOpen, std::nullopt});
            break;
        case BraceEvent::Kind::Else:
            if (!mBranches.back().first) {
                mBranches.back().first = std::move(mOpen);
            }
            mOpen = mBranches.back().before;
            break;
        case BraceEvent::Kind::EndIf:
            if (mBranches.back().first) {
                mOpen = std::move(*mBranches.back().first);
            }
            mBranches.pop_back();
            break;
        }
    }

    void Close(const BraceEvent& event) {
        if (mOpen.empty()) {
            Report(OpenEndKind::StrayBrace, event);
            return;
        }
        if (mByIndent && event.isFirst && mOpen.back()->indent != event.indent) {
            const auto same = std::find_if(mOpen.rbegin(), mOpen.rend(),
                                           [&event](const BraceEvent* brace) { return brace->indent == event.indent; });
            const bool isFound = same != mOpen.rend();
            if (!isFound && event.indent > mOpen.back()->indent) {
                Report(OpenEndKind::StrayBrace, event);
                return;
            }
            while (isFound && mOpen.back()->indent != event.indent) {
                Report(OpenEndKind::Brace, *mOpen.back());
                mOpen.pop_back();
            }
        }
        mOpen.pop_back();
    }

    void Report(OpenEndKind kind, const BraceEvent& event) { mFound.push_back({kind, event.line}); }

    bool mByIndent;
    Stack mOpen;
    std::vector<Branches> mBranches;
    std::vector<OpenEnd> mFound;
};

} // namespace

std::vector<OpenEnd> MatchBraces(const std::vector<BraceEvent>& events) {
    std::vector<OpenEnd> plain = Matcher(false).Run(events);
    if (plain.empty()) {
        return plain;
    }
    std::vector<OpenEnd> byIndent = Matcher(true).Run(events);
    return byIndent.size() == plain.size() ? byIndent : plain;
}

} // namespace tessaly
