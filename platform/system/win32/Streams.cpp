// The console belongs to whoever started this program, so it gets its own code page back.
#include "platform/system/win32/Streams.h"

#include "platform/system/win32/Handle.h"
#include "platform/system/win32/Text.h"

#include <cstdio>
#include <fcntl.h>
#include <io.h>
#include <shellapi.h>

namespace tessaly::win32 {

Streams::Streams() : mConsoleCodePage(GetConsoleOutputCP()) {
    for (std::FILE* stream : {stdin, stdout, stderr}) {
        _setmode(_fileno(stream), _O_BINARY);
    }
    SetConsoleOutputCP(CP_UTF8);
}

Streams::~Streams() {
    if (mConsoleCodePage != 0) {
        std::fflush(stdout);
        SetConsoleOutputCP(mConsoleCodePage);
    }
}

std::vector<std::string> Arguments() {
    int count = 0;
    wchar_t** const wide = CommandLineToArgvW(GetCommandLineW(), &count);
    if (wide == nullptr) {
        ThrowLastError("CommandLineToArgvW");
    }
    std::vector<std::string> arguments;
    for (int i = 0; i < count; ++i) {
        arguments.push_back(ToUtf8(wide[i]));
    }
    LocalFree(wide);
    return arguments;
}

} // namespace tessaly::win32
