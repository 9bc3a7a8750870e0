// The sequences are those of ECMA-48, in the form that begins with ESC.
#include "platform/text/TerminalText.h"

namespace tessaly {

namespace {

constexpr char Escape = '\x1B';
constexpr char Bell = '\x07';

bool IsBetween(char character, char first, char last) {
    return character >= first && character <= last;
}

// Behind the text of an operating system command, such as a title or a link. `at` is behind its opening.
std::size_t EndOfString(std::string_view text, std::size_t at) {
    for (; at < text.size() && text[at] != '\n'; ++at) {
        if (text[at] == Bell) {
            return at + 1;
        }
        if (text[at] == Escape) {
            return at + (text.substr(at + 1).starts_with('\\') ? 2 : 0);
        }
    }
    return at;
}

// Behind the sequence that begins with the ESC at `at`.
std::size_t EndOfSequence(std::string_view text, std::size_t at) {
    ++at;
    const char kind = at < text.size() ? text[at] : '\0';
    if (kind == ']' || kind == 'P' || kind == 'X' || kind == '^' || kind == '_') {
        return EndOfString(text, at + 1);
    }
    at += kind == '[' ? 1 : 0;
    while (at < text.size() && IsBetween(text[at], ' ', kind == '[' ? '?' : '/')) {
        ++at;
    }
    return at + (at < text.size() && IsBetween(text[at], '0', '~') ? 1 : 0);
}

} // namespace

std::string WithoutTerminalSequences(std::string_view text) {
    std::string plain;
    plain.reserve(text.size());
    for (std::size_t at = 0; at < text.size();) {
        const char character = text[at];
        if (character == Escape) {
            at = EndOfSequence(text, at);
            continue;
        }
        const bool stays = character == '\n' || character == '\r' || character == '\t' ||
                           (static_cast<unsigned char>(character) >= ' ' && character != '\x7F');
        plain.append(stays ? 1 : 0, character);
        ++at;
    }
    return plain;
}

} // namespace tessaly
