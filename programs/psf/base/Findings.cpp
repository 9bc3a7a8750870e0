// The little that is needed to tell, when a line counts again, what was lost before it.
#include "programs/psf/base/Findings.h"

#include "diagnostics/Lint.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstdio>

namespace tessaly::psf {

namespace {

constexpr std::size_t MostWarnings = 10000;
constexpr std::size_t LongestName = 200;

} // namespace

std::string Shown(std::string_view text) {
    const std::string shown(text.substr(0, LongestName));
    return text.size() > LongestName ? shown + "..." : shown;
}

std::string Quoted(std::string_view text) {
    return "\"" + Shown(text) + "\"";
}

void Findings::Warn(std::uint64_t offset, const std::string& member, const std::string& text, std::string_view rule) {
    if (mWarnings.size() + 1 < MostWarnings) {
        mWarnings.push_back({offset, member, text, rule});
    } else if (mWarnings.size() + 1 == MostWarnings) {
        mWarnings.push_back({offset, member, "there are more warnings than are shown", rule::FileMore});
    }
}

void Findings::TextEnded(PsfLine line, const std::string& member) {
    mEnding = {line.offset, std::string(line.text), member};
}

void Findings::Ignored(PsfLine line) {
    if (!mIgnored && line.text.find_first_not_of(BlanksAndBreaks) != std::string_view::npos) {
        mIgnored = line.offset;
    }
}

void Findings::TellIgnored(const std::string& beforeWhat, const std::string& member) {
    if (mIgnoredIsTold) {
        mIgnoredIsTold = false;
    } else if (mIgnored && mEnding) {
        Warn(mEnding->offset, mEnding->member,
             "the line " + Quoted(mEnding->line) + " ends its text early; what follows up to " + beforeWhat +
                 " is lost",
             rule::FileEndsEarly);
    } else if (mIgnored) {
        Warn(*mIgnored, member, "the text before " + beforeWhat + " is ignored", rule::FileIgnored);
    }
    mIgnored.reset();
    mEnding.reset();
}

void Findings::CheckCharacters(const std::string& bytes, const CodePage& codePage) {
    if (codePage.FindLost(bytes) == std::string_view::npos) {
        return;
    }
    auto stretch = mStretches.begin();
    const std::string* member = nullptr;
    for (std::size_t start = 0; start < bytes.size();) {
        const std::size_t end = std::min(bytes.find('\r', start), bytes.size());
        for (; stretch != mStretches.end() && stretch->offset <= start; ++stretch) {
            member = &stretch->member;
        }
        const std::size_t place = codePage.FindLost(std::string_view(bytes).substr(start, end - start));
        if (place != std::string_view::npos && member != nullptr && !member->empty()) {
            char code[8];
            std::snprintf(code, sizeof code, "%02X",
                          static_cast<unsigned>(static_cast<unsigned char>(bytes[start + place])));
            Warn(start + place, *member, "the byte " + std::string(code) + " is no character of the code page",
                 rule::CodePageLoss);
        }
        start = end + 1;
    }
}

void Findings::CheckUtf8(const std::string& bytes, const CodePage& codePage) {
    constexpr std::string_view umlaut = "\xC3\xA4";
    std::string decoded;
    codePage.AppendDecoded(umlaut, decoded);
    if (decoded == umlaut) {
        return;
    }
    for (std::size_t i = 0; i < mStretches.size(); ++i) {
        const auto begin = static_cast<std::size_t>(mStretches[i].offset);
        const std::size_t end =
            i + 1 < mStretches.size() ? static_cast<std::size_t>(mStretches[i + 1].offset) : bytes.size();
        const std::string_view text = std::string_view(bytes).substr(begin, end - begin);
        const auto first = std::find_if(text.begin(), text.end(), [](char c) { return (c & 0x80) != 0; });
        if (!mStretches[i].member.empty() && first != text.end() && IsUtf8(text)) {
            Warn(begin + static_cast<std::size_t>(first - text.begin()), mStretches[i].member,
                 "the bytes are UTF-8, so a load shows two or more wrong letters for each of these", rule::Utf8Bytes);
        }
    }
}

std::vector<PsfWarning> Findings::Take() {
    std::stable_sort(mWarnings.begin(), mWarnings.end(),
                     [](const PsfWarning& a, const PsfWarning& b) { return a.offset < b.offset; });
    return std::move(mWarnings);
}

} // namespace tessaly::psf
