// The marks that messages leave on the lines of a text, and what is left of them when the text is edited. Positions
// are in units of UTF-16 from the beginning of the text, each line break counted as one.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace tessaly {

// What is shown beside a line or an item. Each has a shape of its own; the later one is the graver.
enum class Mark : std::uint8_t { None, Warning, Error };

struct LineMark {
    std::size_t line = 0; // from 1, as CR LF, LF and CR each end one
    Mark mark = Mark::Error;
    std::size_t begin = 0; // what is underlined, in this line; nothing where both are the same
    std::size_t end = 0;
    std::string text = {}; // what a screen reader is told of it

    bool operator==(const LineMark&) const = default;
};

// Where a line begins and where its break, or the end of the text, is.
struct LineSpan {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// In place of `removed` units from `start`, in which there were `removedBreaks`, stand `added` ones.
struct TextEdit {
    std::size_t start = 0;
    std::size_t removed = 0;
    std::size_t added = 0;
    std::size_t line = 0; // that the start is in
    std::size_t removedBreaks = 0;
    std::size_t addedBreaks = 0;
};

class LineMarks {
public:
    // Where a line that is there, counted from 1, stands in the text as it is now.
    using FindLine = std::function<LineSpan(std::size_t line)>;

    // Replaces all marks. Lines that are not there get none, and underlines end with their line.
    void Set(std::span<const LineMark> marks, std::size_t lineCount, const FindLine& find);

    // The text has been edited. A mark goes with its line, and away when all of the line is gone. The underline goes
    // as soon as the line is no more what it was. Returns whether a mark or an underline is gone.
    bool Follow(const TextEdit& edit, const FindLine& find);

    // The gravest one of a line.
    Mark On(std::size_t line) const;

    std::vector<LineMark> All() const;
    bool AreNone() const { return mMarks.empty(); }

private:
    struct Marked {
        LineMark mark;
        LineSpan span; // of the line
    };

    std::vector<Marked> mMarks;
};

} // namespace tessaly
