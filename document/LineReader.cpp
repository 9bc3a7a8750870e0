// Lines out of one buffer that grows only where a line is longer. Runs of plain lines that already end in
// CR LF, which is nearly all of a file, are decoded in one go.
#include "document/LineReader.h"

#include "platform/system/SequentialFiles.h"
#include "platform/text/CodePage.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstring>

namespace tessaly {

namespace {

constexpr std::size_t BufferSize = std::size_t{32} * 1024;
constexpr std::string_view LineEnd = "\r\n";

} // namespace

void AppendLine(std::string& text, std::string_view line) {
    text.reserve(text.size() + line.size() + LineEnd.size());
    text.append(line).append(LineEnd);
}

// A buffer beside a file in memory takes a sixth of the memory of psf check and tidy.
LineReader::LineReader(InputFile& file, const CodePage& codePage) : mFile(file), mCodePage(codePage) {
    if (const std::optional<std::string_view> whole = file.Whole()) {
        mBytes = whole->data();
        mEnd = whole->size();
        mAtEnd = true;
    }
}

bool LineReader::Next(std::string_view& line) {
    std::size_t scanned = 0;
    while (true) {
        const std::string_view unread(mBytes + mPosition, mEnd - mPosition);
        const std::size_t length = std::min(unread.find('\r', scanned), unread.size());
        // A CR at the end of the buffer may be half of a CR LF.
        if (length + 1 < unread.size() || mAtEnd) {
            if (unread.empty()) {
                return false;
            }
            const bool crLf = length + 1 < unread.size() && unread[length + 1] == '\n';
            mLineOffset = NextOffset();
            mPosition += std::min(length + (crLf ? 2 : 1), unread.size());
            line = unread.substr(0, length);
            if (AsciiPrefix(line) != length) { // else an endless line takes 1.5 times the memory
                mDecoded.clear();
                mCodePage.AppendDecoded(line, mDecoded);
                line = mDecoded;
            }
            return true;
        }
        scanned = length;
        Fill();
    }
}

void LineReader::AppendPlainLines(std::string& text) {
    const char* const begin = mBytes + mPosition;
    const char* const end = begin + std::min(mEnd - mPosition, BufferSize); // what the caches hold
    const char* run = begin;
    const char* line = begin;
    while (line < end && *line != '[') {
        const auto* cr = static_cast<const char*>(std::memchr(line, '\r', static_cast<std::size_t>(end - line)));
        if (cr == nullptr || cr + 1 == end) {
            break;
        }
        line = cr + 2;
        if (cr[1] != '\n') {
            mCodePage.AppendDecoded({run, static_cast<std::size_t>(cr - run)}, text);
            text.append(LineEnd);
            run = line = cr + 1;
        }
    }
    mCodePage.AppendDecoded({run, static_cast<std::size_t>(line - run)}, text);
    mPosition += static_cast<std::size_t>(line - begin);
}

// Reads on behind what is in the buffer; false at the end of the file.
bool LineReader::Fill() {
    if (mAtEnd) {
        return false;
    }
    if (mPosition > 0) {
        std::memmove(mBuffer.get(), mBuffer.get() + mPosition, mEnd - mPosition);
        mBufferOffset += mPosition;
        mEnd -= mPosition;
        mPosition = 0;
    }
    if (mEnd == mCapacity) {
        mCapacity = std::max(BufferSize, mCapacity * 2);
        auto larger = std::make_unique_for_overwrite<char[]>(mCapacity);
        std::copy_n(mBuffer.get(), mEnd, larger.get());
        mBuffer = std::move(larger);
        mBytes = mBuffer.get();
    }
    const std::size_t count = mFile.Read(mBuffer.get() + mEnd, mCapacity - mEnd);
    mEnd += count;
    mAtEnd = count == 0;
    return !mAtEnd;
}

} // namespace tessaly
