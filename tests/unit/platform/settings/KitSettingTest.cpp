// The kit's own reader of settings files beside the program's, on files of all kinds: both must find the same C file.
#include "app/Settings.h"
#include "platform/settings/RegistryStore.h"
#include "platform/settings/RegistryText.h"
#include "tests/unit/Checkout.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <random>
#include <string>
#include <unistd.h>
#include <vector>

namespace tessaly {
namespace {

using namespace std::string_literals;

constexpr int Files = 400;

// Makes settings files out of lines that matter, and spoils some.
class Generator {
public:
    std::string NextFile() {
        std::string text = Chance(90) ? "Windows Registry Editor Version 5.00\r\n" : "";
        text += Chance(80) ? "[HKEY_LOCAL_MACHINE\\SOFTWARE\\Ostrel\\OstrelCompiler]\r\n" : "";
        for (int lines = 1 + Below(9); lines > 0; --lines) {
            text += Chance(20) ? Key() : Value();
            text += Mostly("\r\n", {"\n", " \t\r\n", "\r\r\n", ""});
        }
        if (Chance(25)) {
            Spoil(text);
        }
        return Encoded(text);
    }

private:
    int Below(int limit) { return static_cast<int>(mRandom() % static_cast<unsigned>(limit)); }
    bool Chance(int percent) { return Below(100) < percent; }
    // `text`, or sometimes one of the others.
    std::string Mostly(const std::string& text, const std::vector<std::string>& others) {
        return Chance(75) ? text : Pick(others);
    }
    std::string Pick(const std::vector<std::string>& texts) {
        return texts[static_cast<std::size_t>(Below(static_cast<int>(texts.size())))];
    }

    std::string Key() {
        return Mostly("", {" ", "\t"}) + "[" + Mostly("", {"-"}) +
               Mostly("HKEY_LOCAL_MACHINE", {"hkey_Local_machine", "HKLM", "hklm", "HKCU", "HKEY_USERS", "HK"}) +
               Mostly("\\SOFTWARE\\Ostrel\\OstrelCompiler",
                      {"\\software\\OSTREL\\ostrelcompiler", "\\SOFTWARE\\Ostrel\\OstrelCompiler\\",
                       "\\SOFTWARE\\Ostrel\\OstrelCompiler\\\\", "\\SOFTWARE\\Ostrel\\OstrelCompiler\\x",
                       "\\SOFTWARE\\Ostrel", "\\SOFTWARE\\Ost", "\\SOFTWARE\\", "\\", "", "\\\\"}) +
               Mostly("]", {"", "] ; x", "];]", "] x", "]]", " ]", "\x81]"});
    }

    std::string Value() {
        return Mostly("", {" ", "\t", ";"}) +
               Mostly("\"FCompFileName\"", {"\"fcompfilenamE\"", "\"FCompFileName", "FCompFileName",
                                            "\"FCompFileNames\"", "\"FComp\\\\\"", "\"FCompBat\"", "@"}) +
               Mostly("=", {" = ", "\t=", "", ":"}) + Data() + Mostly("", {" ; x", ";", " x", "\\"});
    }

    std::string Data() {
        switch (Below(6)) {
        case 0:
            return Pick({"dword:", "dword:", "DWORD:", "dword"}) +
                   Pick({"0", "7", "80000000", "ffffffff", "7FFFFFFF", "123456789", "", "g"});
        case 1:
            return Pick({"-", "-x", "--", "- ", "-;"});
        case 2:
        case 3:
            return Pick({"hex(1):", "hex(1):", "hex(1):", "hex(00000001):", "hex:", "hex(2):", "hex(4):", "hex(4):",
                         "hex(", "hex(x):", "hex(1)", "HEX(1):", "hex(000000001):"}) +
                   Bytes();
        default:
            return Pick({"\"a.c\"", "\"/home/me/a.c\"", "\"C:\\\\a \\\"b\\\".c\"", "\"\"", "\"a\\n\"", "\"a",
                         "\"\xC3\xA4\"", "\"\xE4\"", "\"\xED\xA0\x80\"", "\"\xF0\x9F\x98\x84\"", "\"[x]\"", "\"a;b\"",
                         "\"\\", "\"a\0b\""s});
        }
    }

    std::string Bytes() {
        std::string bytes;
        for (int count = Below(5); count > 0; --count) {
            bytes +=
                Pick({"41,00", "42,00", "ac,20", "E4,0", "3d,d8,04,de", "3d,d8", "04,de", "00,00", "7", "", "123"});
            bytes +=
                count > 1 ? Pick({",", ",", ",", ", ", ",\\\r\n  ", ",\\\n", ",\\ ; x\r\n", "\\\r\n", " ", ",,"}) : "";
        }
        return bytes + Pick({"", ",00,00", ",00,00", ",00,00", ",", ",\\\r\n", ",\\\r\n\r\n", ",\\"});
    }

    void Spoil(std::string& text) {
        for (int changes = 1 + Below(3); changes > 0 && !text.empty(); --changes) {
            const auto at = static_cast<std::size_t>(Below(static_cast<int>(text.size())));
            if (Chance(50)) {
                text.erase(at, 1);
            } else {
                text.insert(at, Pick({"\"", "\\", "]", "[", "-", ";", "\r", "\n", "\0"s, "\xFF", "\xC3", " ", ","}));
            }
        }
    }

    // As UTF-16 in some cases, with a broken character or half a one at the end in a few.
    std::string Encoded(const std::string& text) {
        if (!Chance(30)) {
            return Mostly("", {"\xEF\xBB\xBF", "\xFF"}) + text;
        }
        std::string bytes = "\xFF\xFE";
        for (const char character : text) {
            bytes += {character, Chance(1) ? '\xD8' : '\0'};
        }
        return bytes + Mostly("", {"x"});
    }

    std::mt19937 mRandom{20261121};
};

class KitSettingTest : public testing::Test {
protected:
    KitSettingTest()
        : mFolder(std::filesystem::path(testing::TempDir()) / ("kit-setting" + std::to_string(::getpid()))) {
        std::filesystem::create_directories(mFolder);
    }
    ~KitSettingTest() override { std::filesystem::remove_all(mFolder); }

    std::filesystem::path FileOf(int number) const { return mFolder / std::to_string(number); }

    // What the kit says of all files: "FILE.out" holds its answer. As compile.sh does it.
    void AskTheKit() const {
        const std::string command = "cd '" + mFolder.string() +
                                    "' && for file in *; do od -An -v -tu1 <\"$file\" | LC_ALL=C awk -f "
                                    "'" +
                                    InCheckout("kit/setting.awk") + "' >\"$file.out\"; done; true";
        ASSERT_EQ(std::system(command.c_str()), 0);
    }

    static std::string Read(const std::filesystem::path& path) {
        std::ifstream file(path, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    std::filesystem::path mFolder;
};

// The system takes a path up to the first NUL.
std::string AsTheProgramReads(const std::string& bytes) {
    RegistryStore store;
    ReadRegistryText(bytes, store);
    const std::string value = ReadRegValue(store, Registry::LocalMachine, SettingsKey, CompFileNameSetting);
    return value.substr(0, value.find('\0'));
}

TEST_F(KitSettingTest, FindsTheCFileThatTheProgramFinds) {
    Generator generator;
    for (int i = 0; i < Files; ++i) {
        std::ofstream(FileOf(i), std::ios::binary) << generator.NextFile();
    }
    AskTheKit();
    int named = 0;
    for (int i = 0; i < Files; ++i) {
        const std::string bytes = Read(FileOf(i));
        const std::string expected = AsTheProgramReads(bytes);
        EXPECT_EQ(Read(FileOf(i).string() + ".out"), expected.empty() ? "" : expected + "\n")
            << testing::PrintToString(bytes);
        named += expected.empty() ? 0 : 1;
    }
    EXPECT_GT(named, Files / 10); // the files are worth reading
}

} // namespace
} // namespace tessaly
