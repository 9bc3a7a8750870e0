// A unified diff turns the old text into the new one and is as short as can be.
#include "programs/psf/base/Diff.h"

#include <algorithm>
#include <gtest/gtest.h>
#include <random>
#include <sstream>

namespace tessaly::psf {
namespace {

using Lines = std::vector<std::string>;

Lines LinesOf(const std::string& text) {
    std::istringstream input(text);
    Lines lines;
    for (std::string line; std::getline(input, line);) {
        lines.push_back(line);
    }
    return lines;
}

std::string Diff(const std::string& oldText, const std::string& newText) {
    return UnifiedDiff("old", "new", oldText, newText);
}

// The old lines with a diff put to them, as patch would: what stays or goes must be there.
Lines Apply(const Lines& oldLines, const std::string& diff) {
    Lines result;
    std::size_t next = 0;
    for (const std::string& line : LinesOf(diff)) {
        if (line.starts_with("---") || line.starts_with("+++")) {
            continue;
        }
        unsigned first = 0;
        if (std::sscanf(line.c_str(), "@@ -%u", &first) == 1) {
            const bool hasNone = line.find(",0 +") != std::string::npos;
            for (; next < (hasNone ? first : first - 1); ++next) {
                result.push_back(oldLines.at(next));
            }
        } else if (line[0] == '+') {
            result.push_back(line.substr(1));
        } else {
            EXPECT_EQ(oldLines.at(next), line.substr(1));
            if (line[0] == ' ') {
                result.push_back(oldLines[next]);
            }
            ++next;
        }
    }
    result.insert(result.end(), oldLines.begin() + static_cast<std::ptrdiff_t>(next), oldLines.end());
    return result;
}

std::size_t LongestCommon(const Lines& a, const Lines& b) {
    std::vector<std::size_t> row(b.size() + 1, 0);
    for (const std::string& line : a) {
        std::size_t diagonal = 0;
        for (std::size_t j = 0; j < b.size(); ++j) {
            const std::size_t above = row[j + 1];
            row[j + 1] = line == b[j] ? diagonal + 1 : std::max(above, row[j]);
            diagonal = above;
        }
    }
    return row.back();
}

TEST(DiffTest, EqualTextsHaveNone) {
    EXPECT_EQ(Diff("a\nb", "a\nb\n"), "");
    EXPECT_EQ(Diff("", ""), "");
}

TEST(DiffTest, AChangeHasThreeLinesAround) {
    EXPECT_EQ(Diff("1\n2\n3\n4\n5\n6\n7\n8\n9", "1\n2\n3\n4\nfive\n6\n7\n8\n9"),
              "--- old\n+++ new\n@@ -2,7 +2,7 @@\n 2\n 3\n 4\n-5\n+five\n 6\n 7\n 8\n");
}

TEST(DiffTest, AnEmptyTextHasTheLineNumberNought) {
    EXPECT_EQ(Diff("", "a\nb"), "--- old\n+++ new\n@@ -0,0 +1,2 @@\n+a\n+b\n");
    EXPECT_EQ(Diff("a", ""), "--- old\n+++ new\n@@ -1 +0,0 @@\n-a\n");
}

TEST(DiffTest, ChangesFarApartAreTwoHunksAndNearOnesOne) {
    const std::string text = "1\n2\n3\n4\n5\n6\n7\n8\n9\n";
    EXPECT_EQ(Diff(text, "x\n2\n3\n4\n5\n6\n7\ny\n9\n"),
              "--- old\n+++ new\n@@ -1,9 +1,9 @@\n-1\n+x\n 2\n 3\n 4\n 5\n 6\n 7\n-8\n+y\n 9\n");
    EXPECT_EQ(Diff(text, "x\n2\n3\n4\n5\n6\n7\n8\ny\n"),
              "--- old\n+++ new\n@@ -1,4 +1,4 @@\n-1\n+x\n 2\n 3\n 4\n@@ -6,4 +6,4 @@\n 6\n 7\n 8\n-9\n+y\n");
}

TEST(DiffTest, AnyTwoTextsGiveTheShortestDiffThatTurnsOneIntoTheOther) {
    std::mt19937 random(1);
    for (int round = 0; round < 3000; ++round) {
        const auto text = [&random] {
            std::string lines;
            for (auto count = random() % 20; count > 0; --count) {
                lines += std::string(1, static_cast<char>('a' + random() % 4)) + "\n";
            }
            return lines;
        };
        const Lines oldLines = LinesOf(text());
        const Lines newLines = LinesOf(text());
        const auto join = [](const Lines& lines) {
            std::string joined;
            for (const std::string& line : lines) {
                joined += line + "\n";
            }
            return joined;
        };
        const std::string diff = Diff(join(oldLines), join(newLines));
        ASSERT_EQ(Apply(oldLines, diff), newLines) << diff;
        const Lines diffLines = LinesOf(diff);
        const auto changed = std::count_if(diffLines.begin(), diffLines.end(), [](const std::string& line) {
            return (line[0] == '-' || line[0] == '+') && line.size() == 2;
        });
        const std::size_t shortest = oldLines.size() + newLines.size() - 2 * LongestCommon(oldLines, newLines);
        ASSERT_EQ(static_cast<std::size_t>(changed), shortest) << diff;
    }
}

TEST(DiffTest, ThousandsOfChangesAreStillADiff) {
    std::string oldText = "same\n";
    std::string newText = "same\n";
    for (int i = 0; i < 3000; ++i) {
        oldText += "old " + std::to_string(i) + "\n";
        newText += "new " + std::to_string(i) + "\n";
    }
    const std::string diff = Diff(oldText, newText);
    EXPECT_EQ(Apply(LinesOf(oldText), diff), LinesOf(newText));
    EXPECT_LT(diff.rfind("\n-old"), diff.find("\n+new")) << "what goes stands in front";
}

} // namespace
} // namespace tessaly::psf
