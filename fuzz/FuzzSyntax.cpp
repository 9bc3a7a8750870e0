// Any line behind any other: its tokens stand in order within it, and are what they are called. Any text: the names
// declared in it are there, and what it leaves open stands in one of its lines.
// The first byte is the state before the line; the line is in UTF-8 and in a block of exactly its own size.
#include "fuzz/Check.h"
#include "platform/text/Utf8.h"
#include "syntax/CDeclarations.h"
#include "syntax/COutline.h"
#include "syntax/CSyntax.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <string>

namespace {

using namespace tessaly;

bool IsNameCharacter(char16_t c) {
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '_';
}

void CheckToken(std::u16string_view line, const CToken& token, CLineState before) {
    const std::u16string_view text = line.substr(token.start, token.length);
    const bool front = token.start == 0 && before != CLineState::Code; // it goes on from the line before
    switch (token.kind) {
    case CTokenKind::Keyword:
    case CTokenKind::Type:
        for (const char16_t character : text) {
            CHECK(IsNameCharacter(character));
        }
        CHECK(token.start == 0 || !IsNameCharacter(line[token.start - 1]));
        CHECK(token.start + token.length == line.size() || !IsNameCharacter(line[token.start + token.length]));
        break;
    case CTokenKind::Number:
        CHECK((text[0] >= '0' && text[0] <= '9') || text[0] == '.');
        break;
    case CTokenKind::Comment:
        CHECK(front || text.starts_with(u"/*") || text.starts_with(u"//"));
        break;
    case CTokenKind::String:
        CHECK(front || text.find_first_of(u"\"'") != text.npos);
        break;
    case CTokenKind::Preprocessor:
        break;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) {
        return 0;
    }
    const auto before = static_cast<CLineState>(data[0] % 9);
    std::u16string text;
    const std::string_view bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    const std::size_t lines = CLineAt(bytes, bytes.size());
    for (const OpenEnd& open : OutlineC(bytes).openEnds) {
        CHECK(open.line >= 1 && open.line <= lines);
    }
    for (std::size_t at = 0; at < bytes.size();) {
        const char32_t character = ReadUtf8(bytes, at);
        text += static_cast<char16_t>(character > 0xFFFF ? 0xD800 + (character & 0x7FF) : character);
    }
    std::erase(text, u'\n');
    std::erase(text, u'\r');
    const auto exact = std::make_unique<char16_t[]>(text.size());
    std::memcpy(exact.get(), text.data(), text.size() * sizeof(char16_t));
    const std::u16string_view line(exact.get(), text.size());

    std::vector<CToken> tokens = {{99, 99, CTokenKind::String}};
    const CLineState after = ScanCLine(line, before, tokens);
    std::size_t end = 0;
    for (const CToken& token : tokens) {
        CHECK(token.start >= end && token.length > 0 && token.start + token.length <= line.size());
        end = token.start + token.length;
        CheckToken(line, token, before);
    }
    const bool goesOn = after == CLineState::Code || after == CLineState::BlockComment ||
                        after == CLineState::PreprocessorBlockComment || line.ends_with(u'\\');
    CHECK(goesOn);
    if (before == CLineState::Code && line.find_first_of(u"/\"'#\\%?") == line.npos) {
        CHECK(after == CLineState::Code);
        for (const CToken& token : tokens) {
            CHECK(token.kind == CTokenKind::Keyword || token.kind == CTokenKind::Type ||
                  token.kind == CTokenKind::Number);
        }
    }
    for (const CName& name : DeclaredNames(bytes)) {
        CHECK(!name.name.empty() && !name.declaration.empty() && name.position < bytes.size());
    }
    std::vector<CToken> again;
    CHECK(ScanCLine(line, before, again) == after && again == tokens);
    return 0;
}
