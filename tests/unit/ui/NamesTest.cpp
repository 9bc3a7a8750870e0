#include "ui/Names.h"

#include "platform/text/SingleByteCodePage.h"
#include "tests/desktop/SequentialFiles.h"
#include "tests/unit/editing/TextModel.h"

#include <algorithm>
#include <gtest/gtest.h>

namespace tessaly {
namespace {

class HeadersTest : public ::testing::Test {
public:
    // The declarations of what is included, in their order, with blanks between them.
    std::string Names(const std::vector<std::string>& included) {
        std::string all;
        for (const CName& name : headers.Names(included, places)) {
            all += (all.empty() ? "" : "; ") + name.declaration;
        }
        return all;
    }

    memory::SequentialFiles files;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    Headers headers{files, codePage};
    Headers::Places places = {"/kit/compile.sh", "/project/program.c", "/home/me/Mine.PSF"};
};

TEST_F(HeadersTest, AreInTheFoldersThatTheBatchFilesListNames) {
    files.contents["/kit/compile.sh.includes"] = "# the kit's own\r\n\r\n  include \r\n/usr/include\n";
    files.contents["/kit/include/own.h"] = "int own;";
    files.contents["/usr/include/system.h"] = "int system;";
    files.contents["/usr/include/own.h"] = "int hidden;";
    EXPECT_EQ(Names({"<own.h>", "\"system.h\"", "<nowhere.h>"}), "int own; int system");
}

TEST_F(HeadersTest, OfABatchFileInQuotesAndOnWindows) {
    places.compBat = "\"C:\\My Kit\\compile.bat\"";
    files.contents["C:\\My Kit\\compile.bat.includes"] = "include\r\nD:\\more";
    files.contents["C:\\My Kit\\include/own.h"] = "int own;";
    files.contents["D:\\more/more.h"] = "int more;";
    EXPECT_EQ(Names({"<own.h>", "<more.h>"}), "int own; int more");
}

TEST_F(HeadersTest, MayLieBesideTheDocumentOrTheCFile) {
    files.contents["/home/me/mine.h"] = "int mine;";
    files.contents["/project/beside.h"] = "int beside;";
    EXPECT_EQ(Names({"\"mine.h\"", "\"beside.h\"", "<beside.h>"}), "int mine; int beside");
    places.document = "";
    EXPECT_EQ(Names({"\"mine.h\""}), "");
    EXPECT_EQ(Names({"\"/home/me/mine.h\""}), "int mine") << "by its full path";
}

TEST_F(HeadersTest, IncludeOthersAndEachOther) {
    files.contents["/home/me/a.h"] = "#include \"sub/b.h\"\nint a;";
    files.contents["/home/me/sub/b.h"] = "#include \"c.h\"\n#include \"../a.h\"\n#include <a.h>\nint b;";
    files.contents["/home/me/sub/c.h"] = "#include \"c.h\"\nint c;";
    EXPECT_EQ(Names({"\"a.h\""}), "int a; int b; int c");
}

TEST_F(HeadersTest, AreReadOnceAndAgainWhenTheyMayHaveChanged) {
    files.contents["/home/me/a.h"] = "int before;";
    EXPECT_EQ(Names({"<a.h>"}), "int before");
    files.contents["/home/me/a.h"] = "int after;";
    EXPECT_EQ(Names({"<a.h>"}), "int before");
    headers.LookAgain();
    EXPECT_EQ(Names({"<a.h>"}), "int after");
    files.contents.erase("/home/me/a.h");
    headers.LookAgain();
    EXPECT_EQ(Names({"<a.h>"}), "");
}

TEST_F(HeadersTest, OfOtherPlacesAreOthers) {
    files.contents["/home/me/a.h"] = "int mine;";
    files.contents["/home/you/a.h"] = "int yours;";
    EXPECT_EQ(Names({"<a.h>"}), "int mine");
    places.document = "/home/you/Yours.PSF";
    EXPECT_EQ(Names({"<a.h>"}), "int yours");
}

TEST_F(HeadersTest, ThatAreTooLargeOrNoTextHarmNothing) {
    files.contents["/home/me/huge.h"] = "int huge;" + std::string(10'000'000, ' ');
    std::string bytes;
    for (int i = 0; i < 100'000; ++i) {
        bytes += static_cast<char>(i * 7 + i / 256);
    }
    files.contents["/home/me/binary.h"] = bytes;
    files.contents["/home/me/good.h"] = "int good;";
    const std::string names = Names({"<huge.h>", "<binary.h>", "<good.h>"});
    EXPECT_TRUE(names.ends_with("int good")) << names.substr(0, 200);
    EXPECT_EQ(names.find("huge"), std::string::npos);
}

TEST_F(HeadersTest, ThatCannotBeReadHaveNoNames) {
    files.contents["/home/me/bad.h"] = "int bad;";
    files.contents["/home/me/good.h"] = "int good;";
    files.FailAt(memory::SequentialFiles::Call::Read, 1);
    EXPECT_EQ(Names({"<bad.h>", "<good.h>"}), "int good");
}

TEST_F(HeadersTest, InTheCodePageAreDecoded) {
    files.contents["/home/me/a.h"] = "int gr\xF6\xDF"
                                     "e; // \xFC";
    EXPECT_EQ(Names({"<a.h>"}), "int größe");
}

class NamesTest : public ::testing::Test {
public:
    // The declaration of `name` at the end of a text; "?" where it is not known.
    std::string Declaration(const std::string& name, const std::string& member, const std::string& text) {
        const TextModel lines(text + "▮");
        const KnownNames known = names.At(lines, lines.Selected().caret, document, member, {});
        const CName* const found = FindName(known, name, {});
        return found == nullptr ? "?" : found->declaration;
    }

    memory::SequentialFiles files;
    SingleByteCodePage codePage{Windows1252HighHalf()};
    VornSrcObj document{files, codePage};
    Names names{files, codePage};
};

TEST_F(NamesTest, FunctionsHaveThePrototypeOfTheCFile) {
    document.AddFunction("Work", "", "long Work(int a,\r\n          char* b) // works\r\n{\r\n    int inner;\r\n}");
    document.AddFunction("Odd", "", "MACRO\r\n  (x)\r\n{\r\n}");
    EXPECT_EQ(Declaration("Work", "events/OnKey", ""), "long Work(int a, char* b)");
    EXPECT_EQ(Declaration("Odd", "events/OnKey", ""), "MACRO (x)");
    EXPECT_EQ(Declaration("inner", "events/OnKey", ""), "?") << "a local of another function";
    EXPECT_EQ(Declaration("a", "events/OnKey", ""), "?");
}

TEST_F(NamesTest, WhatIsInThePaneCountsAndNotWhatIsStored) {
    document.AddFunction("Work", "", "long Work(int a)\r\n{\r\n}");
    EXPECT_EQ(Declaration("Work", "functions/Work", "int Work(void)\n{\n"), "int Work(void)");
    document.UpdateVarCode("int stored;");
    EXPECT_EQ(Declaration("stored", "functions/Work", ""), "int stored");
    EXPECT_EQ(Declaration("stored", "references", ""), "?");
    EXPECT_EQ(Declaration("typed", "references", "int typed;\n"), "int typed");
}

TEST_F(NamesTest, WhatIsNearerHidesWhatIsFarther) {
    document.UpdateVarCode("#define LIMIT 1\nint count;");
    EXPECT_EQ(Declaration("count", "events/OnKey", "void f(long count)\n{\n"), "long count");
    EXPECT_EQ(Declaration("count", "events/OnKey", "void f(long other)\n{\n"), "int count");
    EXPECT_EQ(Declaration("LIMIT", "events/OnKey", ""), "#define LIMIT 1");
    EXPECT_EQ(Declaration("while", "events/OnKey", ""), "") << "a word of C";
}

TEST_F(NamesTest, FollowTheDocument) {
    document.AddFunction("Work", "", "long Work(int a)\r\n{\r\n}");
    EXPECT_EQ(Declaration("Work", "references", ""), "long Work(int a)");
    document.UpdateFunction("Work", "", "int Work(void)\r\n{\r\n}");
    EXPECT_EQ(Declaration("Work", "references", ""), "int Work(void)");
    document.DeleteFunction("Work");
    EXPECT_EQ(Declaration("Work", "references", ""), "?");
}

TEST_F(NamesTest, HeadersAreThoseOfTheCFileAndOfTheReferences) {
    files.contents["/d/vexlib.h"] = "int kit;";
    files.contents["/d/mine.h"] = "int mine;";
    document.UpdateVarCode("#include \"mine.h\"");
    const TextModel lines("▮");
    const KnownNames known = names.At(lines, {}, document, "events/OnKey", {"", "", "/d/A.PSF"});
    EXPECT_NE(FindName(known, "kit", {}), nullptr);
    EXPECT_NE(FindName(known, "mine", {}), nullptr);
}

} // namespace
} // namespace tessaly
