// The compiler's command line, and the name of its output.
#include "app/CompilerCommand.h"

#include <gtest/gtest.h>

namespace tessaly {
namespace {

TEST(OutputNameTest, TheExtensionIsReplaced) {
    EXPECT_EQ(OutputName("/home/ann/Blink.PSF"), "/home/ann/Blink.out");
}

TEST(OutputNameTest, TheExtensionIsFoundInAnyCase) {
    EXPECT_EQ(OutputName("Blink.psf"), "Blink.out");
    EXPECT_EQ(OutputName("Blink.pSf"), "Blink.out");
}

TEST(OutputNameTest, AFolderWithTheExtensionCutsThePathShort) {
    EXPECT_EQ(OutputName("/home/ann/old.PSF/Blink.PSF"), "/home/ann/old.out");
    EXPECT_EQ(OutputName("/home/ann/old.psfs/Blink.PSF"), "/home/ann/old.out");
}

TEST(OutputNameTest, WhatFollowsTheExtensionIsLost) {
    EXPECT_EQ(OutputName("Blink.PSF.bak"), "Blink.out");
}

TEST(OutputNameTest, APathWithoutTheExtensionGivesTheBareSuffix) {
    EXPECT_EQ(OutputName("/home/ann/Blink.txt"), ".out");
    EXPECT_EQ(OutputName("/home/ann/BlinkPSF"), ".out");
    EXPECT_EQ(OutputName("Blink.PS"), ".out");
    EXPECT_EQ(OutputName(""), ".out");
}

TEST(OutputNameTest, TheExtensionAloneHasAnEmptyBase) {
    EXPECT_EQ(OutputName(".PSF"), ".out");
}

TEST(OutputNameTest, OtherLettersThanAsciiStayAsTheyAre) {
    EXPECT_EQ(OutputName("/Pr\xC3\xBC"
                         "fung/T\xC3\xBCr.psf"),
              "/Pr\xC3\xBC"
              "fung/T\xC3\xBCr.out");
}

TEST(CompilerCommandLineTest, TheOutputNameIsQuotedBehindOneBlank) {
    EXPECT_EQ(CompilerCommandLine("compile.bat", OutputName("/my blocks/Blink.PSF")),
              "compile.bat \"/my blocks/Blink.out\"");
}

TEST(CompilerCommandLineTest, TheCompilerIsPutInAsItStands) {
    EXPECT_EQ(CompilerCommandLine("C:\\my tools\\c.bat -v ", "a.out"), "C:\\my tools\\c.bat -v  \"a.out\"");
    EXPECT_EQ(CompilerCommandLine("", "a.out"), " \"a.out\"");
}

} // namespace
} // namespace tessaly
