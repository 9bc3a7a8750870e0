// What lies beside a copy: read back exactly, or refused.
#include "recovery/Origin.h"

#include <gtest/gtest.h>
#include <limits>

namespace tessaly {
namespace {

Origin FullOrigin() {
    Origin origin;
    origin.reason = Reason::FileOpened;
    origin.path = "/home/\xC3\xA4 %41\n=/a\x7f\x01.PSF";
    origin.file = FileMark{12, std::numeric_limits<std::uint64_t>::max()};
    origin.time = -5;
    origin.number = std::numeric_limits<std::uint64_t>::max();
    origin.codePage = "windows-1250";
    origin.language = 1031;
    origin.item = "functions/Blink";
    origin.caret = 99;
    origin.process = {4711, "88@boot"};
    origin.copy = {3, 4};
    return origin;
}

TEST(OriginTest, IsReadAsItWasWritten) {
    EXPECT_EQ(ReadOrigin(WriteOrigin(FullOrigin())), FullOrigin());
    EXPECT_EQ(ReadOrigin(WriteOrigin({})), Origin());
}

TEST(OriginTest, IsLinesOfReadableText) {
    const std::string text = WriteOrigin(FullOrigin());
    EXPECT_NE(text.find("\nitem=functions/Blink\n"), std::string::npos);
    EXPECT_NE(text.find("\npath=/home/\xC3\xA4 %2541%0a=/a%7f%01.PSF\n"), std::string::npos);
}

TEST(OriginTest, ACutOneIsRefusedAtEveryByte) {
    const std::string text = WriteOrigin(FullOrigin());
    for (std::size_t size = 0; size < text.size(); ++size) {
        EXPECT_FALSE(ReadOrigin(std::string_view(text).substr(0, size))) << size;
    }
}

TEST(OriginTest, OneWithAnyOtherByteIsRefused) {
    const std::string text = WriteOrigin(FullOrigin());
    for (std::size_t at = 0; at < text.size(); ++at) {
        for (int change = 1; change < 256; ++change) {
            std::string damaged = text;
            damaged[at] = static_cast<char>(damaged[at] ^ change);
            ASSERT_FALSE(ReadOrigin(damaged)) << at << " " << change;
        }
    }
}

TEST(OriginTest, OneWithMoreBehindItIsRefused) {
    EXPECT_FALSE(ReadOrigin(WriteOrigin(FullOrigin()) + "\n"));
}

// The checksum is right here, so the values themselves are looked at.
TEST(OriginTest, ValuesThatNobodyWritesAreRefused) {
    const std::pair<std::string, std::string> changes[] = {{"reason=5", "reason=11"},
                                                           {"reason=5", "reason=-1"},
                                                           {"reason=5", "reason=05"},
                                                           {"time=-5", "time="},
                                                           {"caret=99", "caret=9x"},
                                                           {"copy=3 4", "copy=3"},
                                                           {"copy=3 4", "copy="},
                                                           {"%0a", "%0A"},
                                                           {"%0a", "%"},
                                                           {"%7f", "%zz"},
                                                           {"language=1031", "langu=1"},
                                                           {"number=1", "number=91"}};
    for (const auto& [from, to] : changes) {
        std::string text = WriteOrigin(FullOrigin());
        text.replace(text.find(from), from.size(), to);
        text.resize(text.find("checksum="));
        char checksum[32];
        std::snprintf(checksum, sizeof checksum, "checksum=%llx\n", static_cast<unsigned long long>(MarkOf(text).hash));
        EXPECT_FALSE(ReadOrigin(text + checksum)) << to;
    }
}

// Also two bits in different words, where they could cancel each other.
TEST(OriginTest, AMarkSeesOneAndTwoChangedBits) {
    std::string text(75, 'x');
    const FileMark mark = MarkOf(text);
    EXPECT_EQ(mark.size, text.size());
    EXPECT_EQ(MarkOf(std::string(75, 'x')), mark);
    const auto flip = [&text](std::size_t bit) {
        text[bit / 8] = static_cast<char>(static_cast<unsigned char>(text[bit / 8]) ^ (1U << bit % 8));
    };
    std::size_t same = 0;
    for (std::size_t a = 0; a < text.size() * 8; ++a) {
        flip(a);
        same += MarkOf(text) == mark ? 1U : 0U;
        for (std::size_t b = a + 1; b < text.size() * 8; ++b) {
            flip(b);
            same += MarkOf(text) == mark ? 1U : 0U;
            flip(b);
        }
        flip(a);
    }
    EXPECT_EQ(same, 0U);
}

TEST(OriginTest, EveryReasonHasANameOfItsOwnThatFitsIntoAFileName) {
    std::vector<std::string> names;
    for (int reason = 0; reason <= static_cast<int>(Reason::OlderCopy); ++reason) {
        names.emplace_back(ReasonName(static_cast<Reason>(reason)));
        EXPECT_EQ(names.back().find_first_not_of("abcdefghijklmnopqrstuvwxyz "), std::string::npos);
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(std::unique(names.begin(), names.end()), names.end());
}

} // namespace
} // namespace tessaly
