#include "bench/Keystroke.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace tessaly::bench {
namespace {

constexpr int Lines = 10000;
constexpr int Rounds = 30;
constexpr int Rest = 200; // milliseconds between two keys, as quick typists leave

std::string Program() {
    std::string text;
    for (int line = 0; line < Lines; ++line) {
        text +=
            "    total += samples[" + std::to_string(line) + "] * 0x1F; // step \"" + std::to_string(line) + "\"\r\n";
    }
    return text;
}

struct Key {
    char character;
    const char* changed;
};

// Opens a comment in front of everything that is seen, types in it and takes it away again.
constexpr std::array<Key, 6> Keys = {
    {{'/', "one"}, {'*', "all"}, {'a', "one"}, {'\b', "one"}, {'\b', "all"}, {'\b', "one"}}};

// The whole way of a key, in milliseconds: the text changes, its colours are made anew and it is drawn.
double Time(const Typist& typist, char key) {
    const auto start = std::chrono::steady_clock::now();
    typist.type(key);
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - start).count();
}

} // namespace

void TypeKeystrokes(Desktop& desktop, const Typist& typist) {
    RichTextBox& pane = desktop.FuncBody();
    pane.SetExtent({4000, 900, 9000, 6500});
    desktop.MainWindow().Show();
    pane.SetFuncBodyAvailable(true);
    pane.SetText(Program());
    typist.rest(Rest);
    if (!typist.putCaret(Lines / 2)) { // lines in front and behind it
        throw std::runtime_error("the caret is not in the first line in view");
    }
    typist.rest(Rest);
    int changes = 0;
    pane.onChange = [&changes] { ++changes; };
    for (int round = 0; round < Rounds; ++round) {
        for (const Key& key : Keys) {
            std::printf("%s %.3f\n", key.changed, Time(typist, key.character));
            typist.rest(Rest);
        }
    }
    if (changes != Rounds * static_cast<int>(Keys.size())) {
        throw std::runtime_error("the keys did not change the text");
    }
}

} // namespace tessaly::bench
