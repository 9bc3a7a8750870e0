// Loading, saving and printing for all commands.
#include "tools/psf/Session.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <system_error>

namespace tessaly::psf {

namespace {

// Why `file` cannot be read, "" when it can.
std::string ReadProblem(PosixFiles& files, const std::string& file) {
    try {
        char byte = 0;
        files.OpenForInput(file)->Read(&byte, 1);
        return "";
    } catch (const std::system_error& error) {
        return error.code().message();
    }
}

} // namespace

int ExitStatus(Status status) {
    return static_cast<int>(static_cast<std::uint32_t>(status) & 0xFFU);
}

void PrintError(std::string_view message) {
    std::string line = "psf: " + std::string(message);
    std::replace_if(
        line.begin(), line.end(), [](char c) { return c == '\n' || c == '\r'; }, ' ');
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void Print(std::string_view bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

Status Load(VornSrcObj& document, const std::string& file) {
    const Status status = document.LoadFile(file);
    if (status != Status::Done) {
        PosixFiles files;
        const std::string problem = ReadProblem(files, file);
        PrintError(
            file + ": " +
            (problem.empty() ? "not a complete program source file (\"psf check\" tells what it finds)" : problem));
    }
    return status;
}

int Replace(const std::string& file, Existing existing, const std::function<bool(const std::string&)>& write) {
    const int error = ReplaceFile(file, existing, write);
    if (error == EEXIST) {
        PrintError(file + ": exists already; --force replaces it");
    } else if (error != 0) {
        PrintError(file +
                   ": cannot be written: " + (error == ECANCELED ? "the disk may be full" : std::strerror(error)));
    }
    return error;
}

Status Save(const VornSrcObj& document, const std::string& file) {
    const int error = Replace(file, Existing::Replace,
                              [&](const std::string& path) { return document.SaveFile(path) == Status::Done; });
    return error == 0 ? Status::Done : Status::UnexpectedError;
}

} // namespace tessaly::psf
