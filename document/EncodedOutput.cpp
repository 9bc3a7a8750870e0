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

} // namespace

EncodedOutput::EncodedOutput(std::unique_ptr<OutputFile> file, const CodePage& codePage)
    : mFile(std::move(file)),
      mCodePage(codePage),
      mPending(std::make_unique_for_overwrite<char[]>(FlushSize + CodePage::MostEncoded(SliceSize))) {}

EncodedOutput::~EncodedOutput() = default;

void EncodedOutput::Write(std::string_view text) {
    while (!text.empty()) {
        const std::string_view slice = Utf8Front(text, SliceSize);
        const char* const end = mCodePage.Encode(slice, mPending.get() + mPendingSize);
        mPendingSize = static_cast<std::size_t>(end - mPending.get());
        text.remove_prefix(slice.size());
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
