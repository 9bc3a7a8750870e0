// Line breaks of a text that a user edits.
#include "tests/desktop/LineBreaks.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <string>
#include <vector>

namespace tessaly {
namespace {

using memory::LineBreaks;

// The text after it was set and then edited.
std::string Edited(std::string_view text, std::string_view shown) {
    LineBreaks breaks;
    breaks.Set(text);
    breaks.Edit(shown);
    EXPECT_EQ(breaks.Shown(), shown);
    return breaks.Text();
}

TEST(LineBreaksTest, ATextThatWasNotEditedComesBack) {
    for (const std::string_view text : {"", "a", "\n", "\r", "\r\n", "\n\r", "\r\r\n\n", "a\nb\r\nc\rd", "a\r\n\r\n"}) {
        LineBreaks breaks;
        breaks.Set(text);
        EXPECT_EQ(breaks.Text(), text);
    }
}

TEST(LineBreaksTest, EveryBreakIsShownAsOneLineFeed) {
    LineBreaks breaks;
    breaks.Set("a\nb\r\nc\rd\r\r\n");
    EXPECT_EQ(breaks.Shown(), "a\nb\nc\nd\n\n");
}

TEST(LineBreaksTest, ACarriageReturnBelongsToTheLineFeedBehindIt) {
    LineBreaks breaks;
    breaks.Set("\n\r\n\r");
    EXPECT_EQ(breaks.Shown(), "\n\n\n");
    EXPECT_EQ(breaks.Text(), "\n\r\n\r");
}

TEST(LineBreaksTest, ANulByteIsText) {
    LineBreaks breaks;
    breaks.Set(std::string_view("a\0\nb", 4));
    EXPECT_EQ(breaks.Text(), std::string_view("a\0\nb", 4));
}

TEST(LineBreaksTest, AnEditThatChangesNothingKeepsEverything) {
    EXPECT_EQ(Edited("a\nb\r\nc\r", "a\nb\nc\n"), "a\nb\r\nc\r");
}

TEST(LineBreaksTest, ATypedBreakIsCrLf) {
    EXPECT_EQ(Edited("ab", "a\nb"), "a\r\nb");
    EXPECT_EQ(Edited("", "\n"), "\r\n");
    EXPECT_EQ(Edited("x\nab\ry", "x\na\nb\ny"), "x\na\r\nb\ry");
}

TEST(LineBreaksTest, BreaksInFrontOfAndBehindTheEditStay) {
    EXPECT_EQ(Edited("a\nb\rc\r\nd\ne", "a\nb\nC1\n2\nd\ne"), "a\nb\rC1\r\n2\r\nd\ne");
}

TEST(LineBreaksTest, ARemovedBreakTakesNoOtherWithIt) {
    EXPECT_EQ(Edited("a\nb\rc\nd", "a\nbc\nd"), "a\nbc\nd");
    EXPECT_EQ(Edited("a\nb\rc\nd", ""), "");
    EXPECT_EQ(Edited("a\nb\rc\nd", "d"), "d");
}

TEST(LineBreaksTest, EditsAddUp) {
    LineBreaks breaks;
    breaks.Set("a\nb\rc");
    breaks.Edit("a\nb\nc!");
    breaks.Edit("?a\nb\nc!");
    breaks.Edit("?a\n\nb\nc!");
    EXPECT_EQ(breaks.Text(), "?a\n\r\nb\rc!");
    breaks.Edit("?a\n\nb c!");
    EXPECT_EQ(breaks.Text(), "?a\n\r\nb c!");
}

TEST(LineBreaksTest, SetForgetsWhatWasThere) {
    LineBreaks breaks;
    breaks.Set("a\rb\rc");
    breaks.Set("x\n");
    EXPECT_EQ(breaks.Shown(), "x\n");
    EXPECT_EQ(breaks.Text(), "x\n");
}

TEST(LineBreaksTest, ARepeatedCharacterAtTheEdgesOfAnEditIsCountedOnce) {
    EXPECT_EQ(Edited("\n\r\n", "\n"), "\n");
    EXPECT_EQ(Edited("a\ra\na", "a\na"), "a\ra");
    EXPECT_EQ(Edited("\r", "\n\n\n"), "\r\r\n\r\n");
}

// The same, slowly: one string for each character that is shown.
class NaiveLineBreaks {
public:
    void Set(const std::string& text) {
        mPieces.clear();
        for (const char c : text) {
            if (c == '\n' && !mPieces.empty() && mPieces.back() == "\r") {
                mPieces.back() = "\r\n";
            } else {
                mPieces.emplace_back(1, c);
            }
        }
    }

    std::string Shown() const {
        std::string shown;
        for (const std::string& piece : mPieces) {
            shown += Shown(piece);
        }
        return shown;
    }

    void Edit(const std::string& shown) {
        std::vector<std::string> front;
        std::vector<std::string> back;
        std::string middle = shown;
        while (!mPieces.empty() && !middle.empty() && Shown(mPieces.front()) == middle.front()) {
            front.push_back(mPieces.front());
            mPieces.erase(mPieces.begin());
            middle.erase(0, 1);
        }
        while (!mPieces.empty() && !middle.empty() && Shown(mPieces.back()) == middle.back()) {
            back.insert(back.begin(), mPieces.back());
            mPieces.pop_back();
            middle.pop_back();
        }
        for (const char c : middle) {
            front.push_back(c == '\n' ? "\r\n" : std::string(1, c));
        }
        front.insert(front.end(), back.begin(), back.end());
        mPieces = front;
    }

    std::string Text() const {
        std::string text;
        for (const std::string& piece : mPieces) {
            // A lone LF behind a lone CR would become one break with it.
            text += piece == "\n" && text.ends_with('\r') ? "\r\n" : piece;
        }
        return text;
    }

private:
    static char Shown(const std::string& piece) { return piece.back() == '\r' ? '\n' : piece.back(); }

    std::vector<std::string> mPieces;
};

class RandomEdits {
public:
    explicit RandomEdits(std::uint32_t seed) : mRandom(seed) {}

    std::string Text(std::string_view alphabet, std::size_t longest) {
        std::string text(Below(longest + 1), ' ');
        std::generate(text.begin(), text.end(), [&] { return alphabet[Below(alphabet.size())]; });
        return text;
    }

    // `shown` with one stretch replaced.
    std::string Change(std::string shown) {
        const std::size_t start = Below(shown.size() + 1);
        const std::size_t length = Below(std::min<std::size_t>(shown.size() - start, 4) + 1);
        return shown.replace(start, length, Text("ab\n", 4));
    }

private:
    std::size_t Below(std::size_t limit) { return mRandom() % limit; }

    std::mt19937 mRandom;
};

TEST(LineBreaksTest, RandomEditsAgreeWithOneStringForEachCharacter) {
    for (std::uint32_t seed = 1; seed <= 500; ++seed) {
        RandomEdits random(seed);
        const std::string text = random.Text("ab\n\r", 30);
        LineBreaks breaks;
        NaiveLineBreaks naive;
        breaks.Set(text);
        naive.Set(text);
        ASSERT_EQ(breaks.Text(), text) << "seed " << seed;
        for (int edit = 0; edit < 10; ++edit) {
            const std::string shown = random.Change(breaks.Shown());
            breaks.Edit(shown);
            naive.Edit(shown);
            ASSERT_EQ(breaks.Shown(), naive.Shown()) << "seed " << seed << ", edit " << edit;
            ASSERT_EQ(breaks.Text(), naive.Text()) << "seed " << seed << ", edit " << edit;
        }
    }
}

TEST(LineBreaksTest, ALoneCarriageReturnAndALoneLineFeedBroughtTogetherStayTwoBreaks) {
    LineBreaks breaks;
    breaks.Set("a\rX\nb");
    breaks.Edit("a\n\nb");
    EXPECT_EQ(breaks.Text(), "a\r\r\nb");
    LineBreaks again;
    again.Set(breaks.Text());
    EXPECT_EQ(again.Shown(), "a\n\nb");
}

TEST(BreakListTest, WhatTheUserDidNotTouchKeepsItsBreaks) {
    BreakList breaks;
    EXPECT_EQ(breaks.Set("a\nb\rc\r\nd"), "a\nb\nc\nd");
    EXPECT_EQ(breaks.Apply("a\nb\nc\nd"), "a\nb\rc\r\nd");
    breaks.Replace(1, 0, 2);
    EXPECT_EQ(breaks.Apply("a\n1\n2\nb\nc\nd"), "a\n1\r\n2\r\nb\rc\r\nd");
    breaks.Replace(0, 4, 1);
    EXPECT_EQ(breaks.Apply("x\nc\nd"), "x\r\nc\r\nd");
}

TEST(BreakListTest, WhatReachesBeyondTheLastBreakIsLeftOut) {
    BreakList breaks;
    breaks.Set("a\nb");
    breaks.Replace(5, 3, 1);
    EXPECT_EQ(breaks.Apply("a\nb\nc"), "a\nb\r\nc");
    breaks.Replace(1, 9, 0);
    EXPECT_EQ(breaks.Apply("a\nb"), "a\nb");
}

TEST(BreakListTest, ATextOfFewerBreaksIsNotReadBeyondItsEnd) {
    BreakList breaks;
    breaks.Set("a\nb\nc");
    EXPECT_EQ(breaks.Apply("a"), "a\n\n") << "every break is kept";
}

} // namespace
} // namespace tessaly
