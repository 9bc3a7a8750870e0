// Records the pieces of the file. Lines are counted across pieces: a CR at the end of one and a LF at the front of the
// next are one line end.
#include "diagnostics/CFileLines.h"

#include <algorithm>

namespace tessaly {

void CFileLines::Write(std::string_view text, CCodeOrigin origin) {
    const std::size_t begin = mText.size();
    mText.append(text);
    FindLineStarts();
    if (origin.kind != CCodeOrigin::Kind::Frame) {
        mMembers.push_back({begin, mText.size(), origin});
    }
}

std::optional<MemberLine> CFileLines::Find(std::size_t line, LineCounting counting) const {
    const std::vector<std::size_t>& starts = Starts(counting);
    if (line == 0 || line > starts.size()) {
        return std::nullopt;
    }
    const std::size_t begin = starts[line - 1];
    const std::size_t end = line < starts.size() ? starts[line] : mText.size();
    // A text may end with a line end. The frame goes on in the empty line behind that, which counts as the text's.
    const auto member = std::lower_bound(mMembers.begin(), mMembers.end(), begin,
                                         [](const Piece& piece, std::size_t position) { return piece.end < position; });
    if (member == mMembers.end() || member->begin >= end) {
        return std::nullopt;
    }
    const std::size_t first = std::max(begin, member->begin);
    return MemberLine{member->origin, EditorLineAt(first) - EditorLineAt(member->begin) + 1};
}

std::string_view CFileLines::Text(std::size_t line, LineCounting counting) const {
    const std::vector<std::size_t>& starts = Starts(counting);
    if (line == 0 || line > starts.size()) {
        return {};
    }
    const std::size_t end = line < starts.size() ? starts[line] : mText.size();
    return std::string_view(mText).substr(starts[line - 1], end - starts[line - 1]);
}

std::string_view CFileLines::MemberText(CCodeOrigin member) const {
    // The prototype of a function stands in front of its text, and is no longer than it.
    const auto piece = std::find_if(mMembers.rbegin(), mMembers.rend(), [member](const Piece& each) {
        return each.origin.kind == member.kind && each.origin.index == member.index;
    });
    return piece == mMembers.rend() ? std::string_view()
                                    : std::string_view(mText).substr(piece->begin, piece->end - piece->begin);
}

// Looks at what is new. A CR at the end of a piece waits for the next: it may be that of a CR LF.
void CFileLines::FindLineStarts() {
    for (std::size_t i = mText.find_first_of("\r\n", mSearched); i != std::string::npos;
         i = mText.find_first_of("\r\n", i + 1)) {
        mSearched = i;
        if (mText[i] == '\n') {
            mStarts.push_back(i + 1);
            mStartsWithoutCr.push_back(i + 1);
        } else if (i + 1 == mText.size()) {
            return;
        } else if (mText[i + 1] != '\n') {
            mStarts.push_back(i + 1);
        }
    }
    mSearched = mText.size();
}

const std::vector<std::size_t>& CFileLines::Starts(LineCounting counting) const {
    return counting == LineCounting::LoneCrEndsLine ? mStarts : mStartsWithoutCr;
}

std::size_t CFileLines::EditorLine(std::size_t line, LineCounting counting) const {
    const std::vector<std::size_t>& starts = Starts(counting);
    return line == 0 || line > starts.size() ? 0 : EditorLineAt(starts[line - 1]);
}

std::size_t CFileLines::EditorLineAt(std::size_t position) const {
    const auto next = std::upper_bound(mStarts.begin(), mStarts.end(), position);
    return static_cast<std::size_t>(next - mStarts.begin());
}

} // namespace tessaly
