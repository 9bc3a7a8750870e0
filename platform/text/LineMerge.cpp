// Lines of the base that both sides still have divide the texts into regions. In each, one side may differ from the
// base.
#include "platform/text/LineMerge.h"

#include "platform/text/Ascii.h"
#include "platform/text/LineDiff.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace tessaly {

namespace {

constexpr std::size_t None = static_cast<std::size_t>(-1);

struct MergeSource {
    std::vector<std::string_view> lines; // without their ends
    std::vector<std::string_view> ends;  // "" behind the last one

    explicit MergeSource(std::string_view text) {
        while (!text.empty()) {
            const std::size_t lf = text.find('\n');
            std::string_view line = text.substr(0, std::min(lf, text.size()));
            text.remove_prefix(line.size());
            const bool hasCr = lf != std::string_view::npos && line.ends_with('\r');
            line.remove_suffix(hasCr ? 1 : 0);
            lines.push_back(line);
            ends.push_back(hasCr ? "\r\n" : text.substr(0, 1));
            text.remove_prefix(std::min<std::size_t>(text.size(), 1));
        }
    }

    // For each line of `base` the number of the line here that it became, or None.
    std::vector<std::size_t> Partners(const MergeSource& base) const {
        std::vector<std::size_t> partners(base.lines.size(), None);
        for (const CommonLines& common : FindCommonLines(base.lines, lines)) {
            for (std::size_t i = 0; i < common.count; ++i) {
                partners[common.oldLine + i] = common.newLine + i;
            }
        }
        return partners;
    }
};

// A stretch of lines of one side.
struct Stretch {
    const MergeSource& source;
    std::size_t begin;
    std::size_t end;

    std::span<const std::string_view> Lines() const { return std::span(source.lines).subspan(begin, end - begin); }
    bool operator==(const Stretch& other) const {
        return std::equal(Lines().begin(), Lines().end(), other.Lines().begin(), other.Lines().end());
    }
};

class LineMerger {
public:
    LineMerger(std::string_view base, std::string_view ours, std::string_view theirs)
        : mBase(base),
          mOurs(ours),
          mTheirs(theirs) {}

    MergedText Merge() {
        const std::vector<std::size_t> ours = mOurs.Partners(mBase);
        const std::vector<std::size_t> theirs = mTheirs.Partners(mBase);
        for (std::size_t i = 0; i < mBase.lines.size(); ++i) {
            if (ours[i] != None && theirs[i] != None) {
                TakeRegion(i, ours[i], theirs[i]);
                const std::string_view ourEnd = mOurs.ends[ours[i]];
                Add(mBase.lines[i], ourEnd == mBase.ends[i] ? mTheirs.ends[theirs[i]] : ourEnd);
                mBaseLine = i + 1;
                mOurLine = ours[i] + 1;
                mTheirLine = theirs[i] + 1;
            }
        }
        TakeRegion(mBase.lines.size(), mOurs.lines.size(), mTheirs.lines.size());
        mResult.text.resize(TrimBack(mResult.text, "\r\n").size());
        return std::move(mResult);
    }

private:
    // Takes over the lines up to these.
    void TakeRegion(std::size_t baseEnd, std::size_t ourEnd, std::size_t theirEnd) {
        const Stretch base{mBase, mBaseLine, baseEnd};
        const Stretch ours{mOurs, mOurLine, ourEnd};
        const Stretch theirs{mTheirs, mTheirLine, theirEnd};
        if (ours == base) {
            Add(theirs);
        } else if (theirs == base || ours == theirs) {
            Add(ours);
        } else {
            AddConflict(ours, theirs);
        }
    }

    // What both have at the front and at the back is in no conflict.
    void AddConflict(Stretch ours, Stretch theirs) {
        mResult.hasConflict = true;
        while (ours.begin < ours.end && theirs.begin < theirs.end && ours.Lines().front() == theirs.Lines().front()) {
            Add(ours.Lines().front(), ours.source.ends[ours.begin]);
            ++ours.begin;
            ++theirs.begin;
        }
        Stretch back{ours.source, ours.end, ours.end};
        while (ours.begin < ours.end && theirs.begin < theirs.end && ours.Lines().back() == theirs.Lines().back()) {
            back.begin = --ours.end;
            --theirs.end;
        }
        AddMarker("<<<<<<< ours");
        Add(ours);
        AddMarker("=======");
        Add(theirs);
        AddMarker(">>>>>>> theirs");
        Add(back);
    }

    void AddMarker(std::string_view marker) { Add(marker, Break()); }

    void Add(const Stretch& stretch) {
        for (std::size_t i = stretch.begin; i < stretch.end; ++i) {
            Add(stretch.source.lines[i], stretch.source.ends[i]);
        }
    }

    // A line that was the last one of its text may get one behind it.
    void Add(std::string_view line, std::string_view end) {
        if (mLacksBreak) {
            mResult.text += Break();
        }
        mResult.text.append(line).append(end);
        mLacksBreak = end.empty();
    }

    // The line break that the texts have.
    std::string_view Break() const {
        for (const MergeSource* source : {&mOurs, &mTheirs}) {
            if (source->ends.size() > 1) {
                return source->ends.front();
            }
        }
        return "\r\n";
    }

    MergeSource mBase;
    MergeSource mOurs;
    MergeSource mTheirs;
    std::size_t mBaseLine = 0;
    std::size_t mOurLine = 0;
    std::size_t mTheirLine = 0;
    bool mLacksBreak = false;
    MergedText mResult;
};

} // namespace

MergedText MergeLines(std::string_view base, std::string_view ours, std::string_view theirs) {
    return LineMerger(base, ours, theirs).Merge();
}

bool HaveSameLines(std::string_view a, std::string_view b) {
    return a == b || MergeSource(a).lines == MergeSource(b).lines;
}

} // namespace tessaly
