// The numbers of lines in a file, from its offsets.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace tessaly::psf {

// Counts lines as a text editor does: LF, CR LF and CR each end one.
class LineCounter {
public:
    explicit LineCounter(const std::string& bytes) : mBytes(bytes) {}

    // The number of the line at `offset`, from 1. Offsets must come in order.
    std::size_t LineAt(std::uint64_t offset) {
        for (; mPosition < offset && mPosition < mBytes.size(); ++mPosition) {
            const char c = mBytes[mPosition];
            const bool crOfCrLf = c == '\r' && mPosition + 1 < mBytes.size() && mBytes[mPosition + 1] == '\n';
            mLine += c == '\n' || (c == '\r' && !crOfCrLf) ? 1 : 0;
        }
        return mLine;
    }

private:
    const std::string& mBytes;
    std::size_t mPosition = 0;
    std::size_t mLine = 1;
};

} // namespace tessaly::psf
