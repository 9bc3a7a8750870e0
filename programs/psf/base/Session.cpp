// Loading, saving and printing for all commands.
#include "programs/psf/base/Session.h"

#include "document/Members.h"
#include "programs/psf/base/Printable.h"

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <new>
#include <system_error>
#include <utility>

namespace tessaly::psf {

namespace {

class StandardInputFile final : public InputFile {
public:
    std::size_t Read(char* buffer, std::size_t size) override {
        const std::size_t count = std::fread(buffer, 1, size, stdin);
        if (count == 0 && std::ferror(stdin) != 0) {
            throw std::system_error(errno, std::generic_category(), "read");
        }
        return count;
    }

    void Close() override {}
};

} // namespace

std::unique_ptr<InputFile> InputFiles::OpenForInput(const std::string& path) {
    if (takesStandardInput && path == StandardInput) {
        return std::make_unique<StandardInputFile>();
    }
    return mFiles.OpenForInput(path);
}

int ExitStatus(Status status) {
    return static_cast<int>(static_cast<std::uint32_t>(status) & 0xFFU);
}

Status InMemory(Status status) {
    if (status == Status::UnexpectedError) {
        throw std::bad_alloc();
    }
    return status;
}

void PrintError(std::string_view message) {
    std::fflush(stdout); // what was printed before stands before it, also where both go to one place
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
    std::fflush(stderr); // not everywhere does it go out by itself, and somebody may be waiting for it
}

void Print(std::string_view bytes) {
    std::fwrite(bytes.data(), 1, bytes.size(), stdout);
}

std::string Reason(std::error_code error) {
    const std::error_condition common = error.default_error_condition();
    return common.category() == std::generic_category() ? common.message() : error.message();
}

std::string LoadProblem(const VornSrcObj& document) {
    const std::error_code error = document.ReadError();
    if (error == std::errc::not_enough_memory) {
        return std::string(OutOfMemory);
    }
    return error ? Reason(error) : "not a complete PSF file";
}

std::string LoadProblemWithHint(const VornSrcObj& document) {
    return LoadProblem(document) + (document.ReadError() ? "" : " (\"psf check\" tells what it finds)");
}

Status Load(Session& session, VornSrcObj& document, const std::string& file) {
    const Status status = document.LoadFile(file);
    if (status != Status::Done) {
        PrintError(session.NameOf(file) + ": " + LoadProblemWithHint(document));
    }
    return status;
}

int WithDocument(Session& session, const std::string& file, const std::function<int(VornSrcObj&)>& command) {
    VornSrcObj document = session.NewDocument();
    const Status status = Load(session, document, file);
    return status == Status::Done ? command(document) : ExitStatus(status);
}

std::optional<CCodeOrigin> FindOrSay(const Session& session, const VornSrcObj& document, const std::string& file,
                                     const std::string& member) {
    const std::optional<CCodeOrigin> found = FindMember(document, member);
    if (!found) {
        PrintError(session.NameOf(file) + ": there is no member \"" + member + "\"");
    }
    return found;
}

void PrintUnread(const std::string& file, const std::string& reason) {
    PrintError(file + ": " + reason);
}

bool ReadInput(Session& session, const std::string& file, std::string& bytes, const TellUnread& tell) {
    const bool before = std::exchange(session.files.takesStandardInput, true);
    std::string problem;
    try {
        ReadWhole(session.files, file, bytes);
    } catch (const std::system_error& error) {
        problem = Reason(error.code());
    } catch (const std::bad_alloc&) {
        problem = OutOfMemory;
    }
    if (!problem.empty()) {
        tell(file == StandardInput ? session.inputName : file, problem);
    }
    session.files.takesStandardInput = before;
    return problem.empty();
}

} // namespace tessaly::psf
