// Sequential files by CreateFileW. What is being read may be written, renamed and deleted by others meanwhile; what is
// being written may only be read.
#pragma once

#include "platform/system/SequentialFiles.h"

#include <string>

namespace tessaly::win32 {

class SequentialFiles final : public tessaly::SequentialFiles {
public:
    // Errors are those of Windows, in the system category, but for a folder, which is errc::is_a_directory.
    std::unique_ptr<tessaly::InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<tessaly::OutputFile> OpenForOutput(const std::string& path) override;
    bool FileExists(const std::string& path) const override;
};

// `path` as the calls of Windows take it, also where it is longer than they take by themselves. Throws
// std::system_error for a path with a NUL in it, which would name another file.
std::wstring WidePath(const std::string& path);

} // namespace tessaly::win32
