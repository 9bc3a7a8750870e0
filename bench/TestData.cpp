// Bodies that look like ordinary C. Distributions of the standard library differ between libraries, so all
// choices are remainders of the generator's own numbers.
#include "bench/TestData.h"

#include "bench/Measure.h"
#include "tests/unit/document/PsfBuilder.h"

#include <array>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <numeric>
#include <random>
#include <unistd.h>
#include <vector>

namespace tessaly {

namespace {

using Body = std::vector<std::string>;

constexpr std::int32_t GrowthBodyLines = 6;
constexpr std::int32_t MostFunctions = 1'000'000; // as many as six digits tell apart

class Author {
public:
    std::uint64_t Below(std::uint64_t limit) { return mGenerator() % limit; }

    std::string Number(std::uint64_t limit) { return std::to_string(Below(limit)); }

    // The body of the function `name`, in Windows-1252.
    Body Write(const std::string& name, std::int32_t lines) {
        Body body = {"void " + name + "(struct Window *window, int id, long value)", "{",
                     "    int i, n = " + Number(999) + ";"};
        std::size_t depth = 1;
        while (static_cast<std::int32_t>(body.size() + depth) < lines) {
            body.push_back(Statement(depth));
        }
        for (; depth > 0; --depth) {
            body.push_back(std::string(4 * (depth - 1), ' ') + "}");
        }
        return body;
    }

private:
    std::string Statement(std::size_t& depth) {
        const std::string indent(4 * depth, ' ');
        const std::uint64_t choice = Below(100);
        if (choice < 20 && depth < 4) {
            ++depth;
            return choice < 12
                       ? indent + "if (window->state == STATE_" + Number(40) + " && value > " + Number(9999) + ") {"
                       : indent + "for (i = 0; i < n; i++) {";
        }
        if (choice < 42 && depth > 1) {
            --depth;
            return std::string(4 * depth, ' ') + "}";
        }
        if (choice < 50) {
            return "";
        }
        if (choice < 60) {
            return indent +
                   "/* St\xE4rke \xFC"
                   "ber " +
                   Number(99) + ": check the limit before the next event */";
        }
        if (choice < 75) {
            return indent + "SendMessage(window->child[" + Number(9) + "], MSG_" + Number(99) + ", id, value);";
        }
        return choice < 90 ? indent + "window->total += table[i % " + Number(64) + "] * " + Number(64) + ";"
                           : indent + "snprintf(text, sizeof text, \"%d: %s\", id, NameOf(" + Number(999) + "));";
    }

    std::mt19937_64 mGenerator{1};
};

// The number comes before the words and always has six digits: names ascend with it, and none is the
// beginning of another.
std::string FunctionName(std::int32_t number) {
    constexpr std::array<std::string_view, 8> words = {"Open",    "CheckValve", "Tick",          "SendStatus",
                                                       "Measure", "ResetAll",   "PressureAlarm", "Log"};
    const std::string digits = std::to_string(MostFunctions + number).substr(1);
    return "Fn" + digits + std::string(words[static_cast<std::size_t>(number) % words.size()]);
}

// The numbers from 0 to `count` - 1.
std::vector<std::int32_t> Numbers(std::int32_t count, NameOrder order) {
    std::vector<std::int32_t> numbers(static_cast<std::size_t>(count));
    std::iota(numbers.begin(), numbers.end(), 0);
    Author author;
    for (std::size_t i = numbers.size(); order == NameOrder::Random && i > 1; --i) {
        std::swap(numbers[i - 1], numbers[author.Below(i)]);
    }
    return numbers;
}

// The function sections of a PSF file and the list of their names, growing.
struct Functions {
    void Add(const std::string& name, const Body& body) {
        names += (names.empty() ? "" : ",") + name;
        sections += "[" + name + "]\r\nProtoType=" + body.front() + ";\r\nFuncBody=";
        for (const std::string& line : body) {
            sections += line + "\r\n";
        }
        ++count;
    }

    std::int64_t Size() const { return static_cast<std::int64_t>(names.size() + sections.size()); }

    std::int32_t count = 0;
    std::string names;
    std::string sections;
};

// On disk before it returns, so that no late writing disturbs a measurement.
void WriteWhole(const std::string& path, std::string_view bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    const bool stored = file >= 0 && fsync(file) == 0;
    close(file);
    Check(stored && FileSize(path) == static_cast<std::int64_t>(bytes.size()), "cannot write the test data");
}

void WritePsf(const std::string& path, const Functions& functions) {
    WriteWhole(path, Psf(" " + std::to_string(functions.count), functions.names, functions.sections));
}

std::int32_t BodyLines(Author& author) {
    return 8 + static_cast<std::int32_t>(author.Below(53));
}

} // namespace

void WriteGrowthPsf(const std::string& path, std::int32_t functions, NameOrder order) {
    Author author;
    Functions written;
    for (const std::int32_t number : Numbers(functions, order)) {
        const std::string name = FunctionName(number);
        written.Add(name, author.Write(name, GrowthBodyLines));
    }
    WritePsf(path, written);
}

std::int32_t WriteLargePsf(const std::string& path, std::int64_t size) {
    const std::vector<std::int32_t> numbers = Numbers(MostFunctions, NameOrder::Random);
    Author author;
    Functions written;
    while (written.Size() < size) {
        const std::string name = FunctionName(numbers.at(static_cast<std::size_t>(written.count)));
        written.Add(name, author.Write(name, BodyLines(author)));
    }
    WritePsf(path, written);
    return written.count;
}

std::int64_t WriteLargeIni(const std::string& path, std::int64_t size) {
    const std::vector<std::int32_t> numbers = Numbers(MostFunctions, NameOrder::Random);
    Author author;
    std::string text;
    std::int64_t keys = 0;
    for (std::size_t i = 0; static_cast<std::int64_t>(text.size()) < size; ++i) {
        const std::string name = FunctionName(numbers.at(i));
        text += "[" + name + "]\r\n";
        std::int32_t key = 0;
        for (const std::string& line : author.Write(name, BodyLines(author))) {
            text += "L" + std::to_string(key++) + "=" + line + "\r\n";
            ++keys;
        }
    }
    WriteWhole(path, text);
    return keys;
}

void WriteHostilePsf(const std::string& path) {
    const std::string bytes = Lines({"[GVars]", "[GFuncs]", "NumFuncs= 2147483647", "FuncNames=A", "[FuncCode]", "[A]",
                                     "ProtoType=", "FuncBody=int x;"});
    Check(bytes.size() == 100, "the hostile file is not 100 bytes long");
    WriteWhole(path, bytes);
}

std::string ReadWhole(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    std::string bytes(static_cast<std::size_t>(FileSize(path)), '\0');
    file.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    Check(file.gcount() == static_cast<std::streamsize>(bytes.size()), "cannot read a file");
    return bytes;
}

std::int64_t FileSize(const std::string& path) {
    return static_cast<std::int64_t>(std::filesystem::file_size(path));
}

} // namespace tessaly
