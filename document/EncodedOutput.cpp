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
constexpr std::size_t FirstRoom = std::size_t{32} * 1024;
constexpr std::size_t MostRoom = FlushSize + CodePage::MostEncoded(SliceSize);

} // namespace

EncodedOutput::EncodedOutput(std::unique_ptr<OutputFile> file, const CodePage& codePage)
    : mFile(std::move(file)),
      mCodePage(codePage) {}

EncodedOutput::~EncodedOutput() = default;

void EncodedOutput::Write(std::string_view text) {
    while (!text.empty()) {
        const std::string_view slice = Utf8Front(text, SliceSize);
        char* const start = Room(CodePage::MostEncoded(slice.size()));
        mPendingSize += static_cast<std::size_t>(mCodePage.Encode(slice, start) - start);
        text.remove_prefix(slice.size());
    }
}

void EncodedOutput::WriteAscii(std::string_view text) {
    while (!text.empty()) {
        const std::size_t size = std::min(text.size(), SliceSize);
        std::memcpy(Room(size), text.data(), size);
        mPendingSize += size;
        text.remove_prefix(size);
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

// Where `size` more bytes have room. Most files are small and do without the whole buffer.
char* EncodedOutput::Room(std::size_t size) {
    if (mPendingSize >= FlushSize) {
        Flush();
    }
    if (mRoom < mPendingSize + size) {
        const std::size_t room = mPendingSize + size <= FirstRoom ? FirstRoom : MostRoom;
        auto larger = std::make_unique_for_overwrite<char[]>(room);
        std::copy_n(mPending.get(), mPendingSize, larger.get());
        mPending = std::move(larger);
        mRoom = room;
    }
    return mPending.get() + mPendingSize;
}

void EncodedOutput::Flush() {
    mFile->Write({mPending.get(), mPendingSize});
    mPendingSize = 0;
}

} // namespace tessaly
