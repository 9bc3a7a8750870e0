// Settings, files and code page of a desktop.
#include "tests/contract/DesktopContract.h"

#include <string>
#include <system_error>

namespace tessaly {
namespace {

using namespace std::string_literals;

class OpenedKey {
public:
    OpenedKey(Registry& registry, Registry::Handle key) : mRegistry(registry), mKey(key) {}
    OpenedKey(const OpenedKey&) = delete;
    OpenedKey& operator=(const OpenedKey&) = delete;
    ~OpenedKey() { EXPECT_EQ(mRegistry.CloseKey(mKey), Registry::Success); }

    std::int32_t Set(std::string_view name, std::uint32_t type, std::string_view bytes) {
        return mRegistry.SetValue(mKey, name, type, bytes);
    }

    // "type:bytes", or "error" and its number.
    std::string Get(std::string_view name) {
        std::uint32_t type = 0;
        std::uint32_t size = 0;
        std::int32_t error = mRegistry.QueryValue(mKey, name, type, nullptr, size);
        std::string bytes(size, '?');
        if (error == Registry::Success) {
            error = mRegistry.QueryValue(mKey, name, type, bytes.data(), size);
        }
        return error == Registry::Success ? std::to_string(type) + ":" + bytes : "error " + std::to_string(error);
    }

    Registry::Handle Handle() const { return mKey; }

private:
    Registry& mRegistry;
    Registry::Handle mKey;
};

constexpr std::uint32_t ReadAndWrite = Registry::QueryAccess | Registry::SetAccess;

OpenedKey MakeKey(DesktopDriver& user, std::string_view below = "") {
    const RegistryPlace place = user.WritablePlace();
    Registry& registry = user.TheDesktop().Settings();
    Registry::Handle key = 0;
    EXPECT_EQ(registry.CreateKey(place.root, place.path + std::string(below), ReadAndWrite, key), Registry::Success);
    return {registry, key};
}

TEST_P(DesktopContract, AMissingKeyIsNotFound) {
    const RegistryPlace place = user->WritablePlace();
    Registry::Handle key = 0;
    EXPECT_EQ(TheDesktop().Settings().OpenKey(place.root, place.path, Registry::QueryAccess, key), Registry::NotFound);
}

TEST_P(DesktopContract, AMadeKeyCanBeOpenedWithoutRegardToCase) {
    { const OpenedKey made = MakeKey(*user, "\\Above\\Below"); }
    const RegistryPlace place = user->WritablePlace();
    for (const std::string below : {"", "\\Above", "\\Above\\Below", "\\ABOVE\\below"}) {
        Registry::Handle key = 0;
        ASSERT_EQ(TheDesktop().Settings().OpenKey(place.root, place.path + below, Registry::QueryAccess, key),
                  Registry::Success)
            << below;
        EXPECT_EQ(TheDesktop().Settings().CloseKey(key), Registry::Success);
    }
}

TEST_P(DesktopContract, AValueComesBackAsItWasStored) {
    OpenedKey key = MakeKey(*user);
    EXPECT_EQ(key.Set("text", Registry::StringType, "abc\0"s), Registry::Success);
    EXPECT_EQ(key.Set("number", Registry::DwordType, "\1\0\0\2"s), Registry::Success);
    EXPECT_EQ(key.Set("bytes", Registry::BinaryType, "\0\xFF\0"s), Registry::Success);
    EXPECT_EQ(key.Set("empty", Registry::BinaryType, ""), Registry::Success);
    EXPECT_EQ(key.Set("", Registry::StringType, "default\0"s), Registry::Success);
    EXPECT_EQ(key.Get("text"), "1:abc\0"s);
    EXPECT_EQ(key.Get("number"), "4:\1\0\0\2"s);
    EXPECT_EQ(key.Get("bytes"), "3:\0\xFF\0"s);
    EXPECT_EQ(key.Get("empty"), "3:");
    EXPECT_EQ(key.Get(""), "1:default\0"s);
    EXPECT_EQ(key.Get("TEXT"), "1:abc\0"s);
    EXPECT_EQ(key.Get("missing"), "error 2");
}

TEST_P(DesktopContract, NobodyAddsATerminatingNul) {
    OpenedKey key = MakeKey(*user);
    key.Set("text", Registry::StringType, "abc");
    EXPECT_EQ(key.Get("text"), "1:abc");
}

TEST_P(DesktopContract, ANewValueReplacesTheOldOneAndItsType) {
    OpenedKey key = MakeKey(*user);
    key.Set("value", Registry::StringType, "long text\0"s);
    key.Set("VALUE", Registry::DwordType, "\4\3\2\1"s);
    EXPECT_EQ(key.Get("value"), "4:\4\3\2\1"s);
}

TEST_P(DesktopContract, ValuesStayWhenTheKeyIsClosed) {
    { MakeKey(*user).Set("value", Registry::BinaryType, "x"); }
    EXPECT_EQ(MakeKey(*user).Get("value"), "3:x");
    EXPECT_EQ(MakeKey(*user, "\\Below").Get("value"), "error 2");
}

TEST_P(DesktopContract, ABufferThatIsTooSmallIsToldHowMuchIsNeeded) {
    OpenedKey key = MakeKey(*user);
    key.Set("value", Registry::BinaryType, "12345");
    std::string buffer(5, '?');
    std::uint32_t type = 0;
    std::uint32_t size = 4;
    EXPECT_EQ(TheDesktop().Settings().QueryValue(key.Handle(), "value", type, buffer.data(), size), Registry::MoreData);
    EXPECT_EQ(size, 5U);
    EXPECT_EQ(type, Registry::BinaryType);
    EXPECT_EQ(TheDesktop().Settings().QueryValue(key.Handle(), "value", type, buffer.data(), size), Registry::Success);
    EXPECT_EQ(buffer, "12345");
}

TEST_P(DesktopContract, TheSizeThatGoesInDoesNotCountWithoutABuffer) {
    OpenedKey key = MakeKey(*user);
    key.Set("value", Registry::BinaryType, "12345");
    std::uint32_t type = 0;
    std::uint32_t size = 99;
    EXPECT_EQ(TheDesktop().Settings().QueryValue(key.Handle(), "value", type, nullptr, size), Registry::Success);
    EXPECT_EQ(size, 5U);
}

TEST_P(DesktopContract, AHandleThatIsNotOpenIsBad) {
    Registry& registry = TheDesktop().Settings();
    const Registry::Handle closed = [this] { return MakeKey(*user).Handle(); }();
    std::uint32_t type = 0;
    std::uint32_t size = 0;
    EXPECT_EQ(registry.QueryValue(closed, "value", type, nullptr, size), Registry::BadHandle);
    EXPECT_EQ(registry.SetValue(closed, "value", Registry::BinaryType, "x"), Registry::BadHandle);
    EXPECT_EQ(registry.CloseKey(closed), Registry::BadHandle);
}

// All of a file, read in pieces of `size`.
std::string ReadAll(SequentialFiles& files, const std::string& path, std::size_t size) {
    const std::unique_ptr<InputFile> file = files.OpenForInput(path);
    std::string content;
    std::string buffer(size, '\0');
    while (const std::size_t count = file->Read(buffer.data(), size)) {
        EXPECT_LE(count, size);
        content.append(buffer, 0, count);
    }
    EXPECT_EQ(file->Read(buffer.data(), size), 0U);
    file->Close();
    return content;
}

TEST_P(DesktopContract, AFileIsReadAsItWasWritten) {
    const std::string path = user->FilePath("\xC3\xA4 1.PSF");
    std::string content = "a\r\nb\nc\r\0\x1A\xFF"s;
    for (int line = 0; line < 1000; ++line) {
        content += std::to_string(line) + "\r\n";
    }
    const std::unique_ptr<OutputFile> file = TheDesktop().Files().OpenForOutput(path);
    file->Write(std::string_view(content).substr(0, 5));
    file->Write("");
    file->Write(std::string_view(content).substr(5));
    file->Close();
    EXPECT_EQ(ReadAll(TheDesktop().Files(), path, 7), content);
    EXPECT_EQ(ReadAll(TheDesktop().Files(), path, 65536), content);
}

TEST_P(DesktopContract, AFileThatIsOpenedForOutputIsEmptied) {
    const std::string path = user->FilePath("file");
    const std::unique_ptr<OutputFile> first = TheDesktop().Files().OpenForOutput(path);
    first->Write("old content");
    first->Close();
    const std::unique_ptr<OutputFile> second = TheDesktop().Files().OpenForOutput(path);
    second->Write("new");
    second->Close();
    EXPECT_EQ(ReadAll(TheDesktop().Files(), path, 100), "new");
}

TEST_P(DesktopContract, AFileThatWasNotClosedKeepsWhatWasWritten) {
    const std::string path = user->FilePath("file");
    TheDesktop().Files().OpenForOutput(path)->Write("content");
    EXPECT_EQ(ReadAll(TheDesktop().Files(), path, 100), "content");
}

TEST_P(DesktopContract, AMissingFileCannotBeRead) {
    EXPECT_THROW(TheDesktop().Files().OpenForInput(user->FilePath("missing")), std::system_error);
    EXPECT_FALSE(TheDesktop().Files().FileExists(user->FilePath("missing")));
}

TEST_P(DesktopContract, AFolderCannotBeRead) {
    EXPECT_THROW(ReadAll(TheDesktop().Files(), user->FolderPath(), 10), std::system_error);
}

std::string Decoded(const CodePage& codePage, std::string_view bytes) {
    std::string text = "before ";
    codePage.AppendDecoded(bytes, text);
    return text;
}

std::string Encoded(const CodePage& codePage, std::string_view text) {
    std::string bytes = "before ";
    codePage.AppendEncoded(text, bytes);
    return bytes;
}

TEST_P(DesktopContract, AsciiIsTheSameInEveryCodePage) {
    const CodePage& codePage = TheDesktop().AnsiCodePage();
    std::string ascii;
    for (int byte = 0; byte < 0x80; ++byte) {
        ascii += static_cast<char>(byte);
    }
    EXPECT_EQ(Decoded(codePage, ascii), "before " + ascii);
    EXPECT_EQ(Encoded(codePage, ascii), "before " + ascii);
    EXPECT_EQ(codePage.FindLost(ascii), std::string::npos);
}

TEST_P(DesktopContract, WhatHasNoPlaceInTheCodePageBecomesAQuestionMark) {
    const CodePage& codePage = TheDesktop().AnsiCodePage();
    EXPECT_EQ(Encoded(codePage, "a\xF0\x9F\x98\x80z"), "before a?z");
    EXPECT_EQ(Encoded(codePage, "a\xFF\xFEz"), "before a??z");
}

TEST_P(DesktopContract, AByteBecomesACharacterThatEncodesToItAgain) {
    const CodePage& codePage = TheDesktop().AnsiCodePage();
    for (int byte = 0x80; byte <= 0xFF; ++byte) {
        const std::string bytes(1, static_cast<char>(byte));
        std::string text;
        codePage.AppendDecoded(bytes, text);
        if (text != "\xEF\xBF\xBD") {
            EXPECT_EQ(Encoded(codePage, text), "before " + bytes);
        }
    }
}

} // namespace
} // namespace tessaly
