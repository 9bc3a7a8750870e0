// Loading, saving and printing for all commands.
#include "programs/psf/Session.h"

#include "programs/psf/Printable.h"

#include <cstdio>
#include <cstring>
#include <system_error>

namespace tessaly::psf {

namespace {

// Why `file` cannot be read, "" when it can.
std::string ReadProblem(const std::string& file) {
    try {
        char byte = 0;
        SystemFiles().OpenForInput(file)->Read(&byte, 1);
        return "";
    } catch (const std::system_error& error) {
        return Reason(error.code());
    }
}

} // namespace

int ExitStatus(Status status) {
    return static_cast<int>(static_cast<std::uint32_t>(status) & 0xFFU);
}

void PrintError(std::string_view message) {
    char piece[1024] = "psf: ";
    std::size_t size = std::strlen(piece);
    for (std::size_t position = 0; position < message.size();) {
        constexpr std::size_t longestCharacter = 4;
        if (size + longestCharacter >= sizeof piece) {
            std::fwrite(piece, 1, size, stderr);
            size = 0;
        }
        const bool lineEnd = message[position] == '\n' || message[position] == '\r';
        const std::string_view shown = NextPrintable(message, position);
        size += (lineEnd ? " " : shown).copy(piece + size, longestCharacter);
    }
    piece[size++] = '\n';
    std::fwrite(piece, 1, size, stderr);
}

void Print(std::string_view bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

std::string Reason(std::error_code error) {
    const std::error_condition common = error.default_error_condition();
    return common.category() == std::generic_category() ? common.message() : error.message();
}

std::string_view LoadProblem(const VornSrcObj& document) {
    return document.RanOutOfMemory() ? OutOfMemory : "not a complete program source file";
}

Status Load(VornSrcObj& document, const std::string& file) {
    const Status status = document.LoadFile(file);
    if (status != Status::Done) {
        std::string problem = ReadProblem(file);
        if (problem.empty()) {
            problem = LoadProblem(document);
            problem += document.RanOutOfMemory() ? "" : " (\"psf check\" tells what it finds)";
        }
        PrintError(file + ": " + problem);
    }
    return status;
}

std::error_code Replace(const std::string& file, Existing existing,
                        const std::function<bool(const std::string&)>& write) {
    const std::error_code error = ReplaceWhole(file, existing, write);
    if (error == std::errc::file_exists) {
        PrintError(file + ": exists already; --force replaces it");
    } else if (error) {
        PrintError(file + ": cannot be written: " +
                   (error == std::errc::operation_canceled ? "the disk may be full" : Reason(error)));
    }
    return error;
}

Status Save(const VornSrcObj& document, const std::string& file) {
    const std::error_code error = Replace(
        file, Existing::Replace, [&](const std::string& path) { return document.SaveFile(path) == Status::Done; });
    return error ? Status::UnexpectedError : Status::Done;
}

} // namespace tessaly::psf
