// Encoding in slices, so that a text of any length needs a small buffer only.
#include "document/EncodedOutput.h"

#include "platform/system/SequentialFiles.h"
#include "platform/text/CodePage.h"
#include "platform/text/Utf8.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace tessaly {

namespace {

constexpr std::size_t FlushSize = std::size_t{1024} * 1024;
constexpr std::size_t SliceSize = std::size_t{64} * 1024;

// The length of the next slice of `text`, which must not end inside a character.
std::size_t NextSlice(std::string_view text) {
    if (text.size() <= SliceSize) {
        return text.size();
    }
    std::size_t size = SliceSize;
    while (size > SliceSize - 3 && IsContinuation(text[size])) {
        --size;
    }
    return size;
}

} // namespace

EncodedOutput::EncodedOutput(std::unique_ptr<OutputFile> file, const CodePage& codePage)
    : mFile(std::move(file)),
      mCodePage(codePage),
      mPending(std::make_unique_for_overwrite<char[]>(FlushSize + CodePage::MostEncoded(SliceSize))) {}

EncodedOutput::~EncodedOutput() = default;

void EncodedOutput::Write(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = NextSlice(text);
        const char* const end = mCodePage.Encode(text.substr(0, size), mPending.get() + mPendingSize);
        mPendingSize = static_cast<std::size_t>(end - mPending.get());
        text.remove_prefix(size);
        if (mPendingSize >= FlushSize) { // a slice must always fit behind it
            Flush();
        }
    }
}

void EncodedOutput::WriteAscii(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = std::min(text.size(), SliceSize);
        std::memcpy(mPending.get() + mPendingSize, text.data(), size);
        mPendingSize += size;
        text.remove_prefix(size);
        if (mPendingSize >= FlushSize) { // a slice must always fit behind it
            Flush();
        }
    }
}

void EncodedOutput::WriteLine(std::string_view key, std::string_view text) {
    WriteAscii(key);
    Write(text);
    WriteAscii("\r\n");
}

void EncodedOutput::Close() {
    Flush();
    mFile->Close();
}

void EncodedOutput::Flush() {
    mFile->Write({mPending.get(), mPendingSize});
    mPendingSize = 0;
}

} // namespace tessaly
