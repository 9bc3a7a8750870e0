// What is the same on every system.
#include "platform/system/PrivateFiles.h"

#include "platform/system/SequentialFiles.h"

namespace tessaly {

std::error_code SystemPrivateFiles::Write(const std::string& path, std::string_view bytes, Flushing flushing) {
    std::error_code writeError;
    const auto write = [&](const std::string& temporary) {
        try {
            const std::unique_ptr<OutputFile> file = SystemFiles().OpenForOutput(temporary);
            file->Write(bytes);
            file->Close();
            return true;
        } catch (const std::system_error& error) {
            writeError = error.code();
            return false;
        }
    };
    const std::error_code error = ReplaceWhole(path, Existing::Replace, write, flushing, Readers::UserAlone);
    return writeError ? writeError : error;
}

} // namespace tessaly
