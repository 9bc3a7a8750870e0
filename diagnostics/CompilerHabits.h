// How a compiler counts lines and columns, found out from what it wrote.
#pragma once

#include "diagnostics/BuildMap.h"

#include <cstddef>
#include <string_view>

namespace tessaly {

// The evidence on how a tool counts lines. gcc and clang take a lone CR for a line end. A column after a colon is their
// mark and decides. Without one, messages are tried both ways: the quoted names must stand in the lines named. A tie is
// a line end. The excerpts of the source are no help: gcc itself prints the wrong line there.
class CountingVotes {
public:
    // Takes the next line of the output. False when nothing behind it can change the result.
    bool Add(const BuildMap& map, std::string_view line);

    LineCounting Result() const;

private:
    bool mIsDecided = false;
    int mVotes = 0;
    std::size_t mVoters = 0;
};

// The result for a whole output.
LineCounting CountingOf(const BuildMap& map, std::string_view output);

// What the columns of `output` are: the quoted names must stand there. Where none tells, gcc's other marks do.
ColumnUnit ColumnUnitOf(const BuildMap& map, std::string_view output, LineCounting counting);

} // namespace tessaly
