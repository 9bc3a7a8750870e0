// Random and hostile files. The reader must agree with the literal reader, for every code page and every size of the
// pieces in which a file arrives.
#include "tests/unit/document/Agreement.h"

#include "platform/system/CodePages.h"
#include "tests/unit/document/PsfBuilder.h"

#include <gtest/gtest.h>
#include <random>

namespace tessaly {
namespace {

std::string RandomFile(std::mt19937& random) {
    static const std::vector<std::string> pieces = {"[BeginPSF]\r\n",
                                                    "[GVars]\r\n",
                                                    "[GFuncs]\r\n",
                                                    "[FuncCode]\r\n",
                                                    "[EventCode]\r\n",
                                                    "[EndPSF]\r\n",
                                                    "[a]\r\n",
                                                    "[b]\r\n",
                                                    "[B]\r\n",
                                                    "[]\r\n",
                                                    "[ab]\r\n",
                                                    "ProtoType=",
                                                    "PROTOTYPE=p\r\n",
                                                    "FuncBody=",
                                                    "funcbody=c\r\n",
                                                    "NumFuncs= 2\r\n",
                                                    "NumFuncs=3\r\n",
                                                    "NumFuncs=0\r\n",
                                                    "NumFuncs= 2147483647\r\n",
                                                    "FuncNames=a,b\r\n",
                                                    "FuncNames=a,b,c,ab\r\n",
                                                    "FuncNames=\r\n",
                                                    "[OnError]\r\n",
                                                    "[OnFrame]\r\n",
                                                    "[OnKey]\r\n",
                                                    "[OnStart]\r\n",
                                                    "[OnStop]\r\n",
                                                    "[OnTimer]\r\n",
                                                    "[OnTrigger]\r\n",
                                                    "[OnSerial]\r\n",
                                                    "[OnMsg]\r\n",
                                                    "\r\n",
                                                    "\r",
                                                    "\n",
                                                    "x\r\n",
                                                    "{\r\n",
                                                    "\xE4=",
                                                    "\x81[",
                                                    "text ",
                                                    std::string(1, '\0'),
                                                    "\x1A"};
    std::string file;
    if (random() % 2 == 0) {
        file = PsfHead() + Lines({"NumFuncs= 2", "FuncNames=a,b", "[FuncCode]"});
    }
    for (std::size_t count = random() % 60; count > 0; --count) {
        file += pieces[random() % pieces.size()];
    }
    if (random() % 2 == 0) {
        file += "[EventCode]\r\n" + PsfEvents();
    }
    return file;
}

TEST(AgreementTest, RandomFilesAreReadAsTheStateTablesSay) {
    std::mt19937 random(20261120);
    const std::unique_ptr<CodePage> codePages[] = {MakeCodePage("1252"), MakeCodePage("1253"), MakeCodePage("932"),
                                                   MakeCodePage("utf-8")};
    for (int round = 0; round < 5000; ++round) {
        const std::string file = RandomFile(random);
        const std::size_t readSize = round % 3 == 0 ? 4096 : 1 + random() % 40;
        ASSERT_EQ(FindDisagreement(file, *codePages[random() % std::size(codePages)], readSize), "")
            << "round " << round << ":\n"
            << file;
    }
}

TEST(AgreementTest, LinesLongerThanEveryBufferAreReadAsTheStateTablesSay) {
    const auto codePage = MakeCodePage("1252");
    for (const std::size_t size : {262142U, 262143U, 262144U, 262145U, 700000U}) {
        const std::string line(size, 'x');
        for (const std::string& references :
             {line, line + "\r\ny", line + "\ry", "[" + line, "y\r\n[" + line + "\r\nz"}) {
            const std::string file =
                PsfHead(references) + Psf(" 1", "a", PsfFunction("a", line)).substr(PsfHead().size());
            ASSERT_EQ(FindDisagreement(file, *codePage, 1 << 20), "") << size;
            ASSERT_EQ(FindDisagreement(file, *codePage, 65537), "") << size;
        }
    }
}

TEST(AgreementTest, ALineEndThatIsCutByTheBufferIsStillOneLineEnd) {
    const auto codePage = MakeCodePage("1252");
    for (std::size_t fill = 262000; fill < 262150; ++fill) {
        const std::string file = "[GVars]\r\n" + std::string(fill, 'x') + "\r\n[GFuncs]\r\n";
        ASSERT_EQ(FindDisagreement(file, *codePage, 1 << 20), "") << fill;
    }
}

} // namespace
} // namespace tessaly
