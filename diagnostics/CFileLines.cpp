// Records the pieces of the file. Lines are counted across pieces: a CR at the end of one and a LF at the front of the
// next are one line end.
#include "diagnostics/CFileLines.h"

#include "document/VornSrcObj.h"

#include <algorithm>

namespace tessaly {

class CFileLines::Recorder final : public CCodeSink {
public:
    explicit Recorder(CFileLines& lines) : mLines(lines) {}

    void Write(std::string_view text, CCodeOrigin origin) override {
        const std::size_t begin = mLines.mText.size();
        mLines.mText.append(text);
        if (origin.kind != CCodeOrigin::Kind::Frame) {
            mLines.mMembers.push_back({begin, mLines.mText.size(), origin});
        }
    }

private:
    CFileLines& mLines;
};

CFileLines::CFileLines(const VornSrcObj& document) {
    Recorder recorder(*this);
    document.BuildCCode(recorder); // where it stops short the file does, too
    FindLineStarts();
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
    return MemberLine{member->origin, EditorLine(first) - EditorLine(member->begin) + 1};
}

std::string_view CFileLines::Text(std::size_t line, LineCounting counting) const {
    const std::vector<std::size_t>& starts = Starts(counting);
    if (line == 0 || line > starts.size()) {
        return {};
    }
    const std::size_t end = line < starts.size() ? starts[line] : mText.size();
    return std::string_view(mText).substr(starts[line - 1], end - starts[line - 1]);
}

void CFileLines::FindLineStarts() {
    mStarts.push_back(0);
    mStartsWithoutCr.push_back(0);
    for (std::size_t i = mText.find_first_of("\r\n"); i != std::string::npos; i = mText.find_first_of("\r\n", i + 1)) {
        if (mText[i] == '\n') {
            mStarts.push_back(i + 1);
            mStartsWithoutCr.push_back(i + 1);
        } else if (i + 1 == mText.size() || mText[i + 1] != '\n') {
            mStarts.push_back(i + 1);
        }
    }
}

const std::vector<std::size_t>& CFileLines::Starts(LineCounting counting) const {
    return counting == LineCounting::LoneCrEndsLine ? mStarts : mStartsWithoutCr;
}

std::size_t CFileLines::EditorLine(std::size_t position) const {
    const auto next = std::upper_bound(mStarts.begin(), mStarts.end(), position);
    return static_cast<std::size_t>(next - mStarts.begin());
}

} // namespace tessaly
