// What every command of psf needs: the files, the code page, and the one way to complain.
#pragma once

#include "document/CCodeGenerator.h"
#include "document/VornSrcObj.h"
#include "platform/system/AtomicFile.h"
#include "platform/system/CodePages.h"
#include "programs/psf/base/Host.h"

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>

namespace tessaly::psf {

// Exit statuses beside the document's own status codes.
inline constexpr int Success = 0;
inline constexpr int WarningsFound = 1;
inline constexpr int WrongUsage = 64;       // also a bad name, and standard input that is not UTF-8
inline constexpr int OutputFailed = 74;     // standard output cannot be written, or a file may not be
inline constexpr int BeingChanged = 75;     // by another program, again and again
inline constexpr int CompilerMissing = 127; // as a shell has it for a command that it cannot find

// The path that stands for standard input where a command reads a file.
inline constexpr std::string_view StandardInput = "-";

// The files of this machine.
class InputFiles final : public SequentialFiles {
public:
    std::unique_ptr<InputFile> OpenForInput(const std::string& path) override;
    std::unique_ptr<OutputFile> OpenForOutput(const std::string& path) override { return mFiles.OpenForOutput(path); }
    bool FileExists(const std::string& path) const override { return mFiles.FileExists(path); }

    bool takesStandardInput = false; // as "-"; a command that changes a file takes that for a file's name

private:
    SystemFiles mFiles;
};

struct Session {
    InputFiles files;
    std::unique_ptr<CodePage> codePage;
    std::string inputName{StandardInput}; // how messages call standard input
    std::string input;                    // room for the files of a command, one by one
    bool force = false;                   // replace files that exist, and those with several names

    // How messages call `file`.
    const std::string& NameOf(const std::string& file) const {
        return files.takesStandardInput && file == StandardInput ? inputName : file;
    }

    VornSrcObj NewDocument() { return VornSrcObj(files, *codePage); }
};

// A status code as exit status: what does not fit into 8 bits is cut, so 65535 shows as 255.
int ExitStatus(Status status);

inline constexpr std::string_view OutOfMemory = "out of memory";

// Throws std::bad_alloc for UnexpectedError, which an operation in memory has for nothing else. Returns all others.
Status InMemory(Status status);

// Prints "psf: " and `message` on standard error, as one line. Needs no memory, so it can tell that there is none left.
void PrintError(std::string_view message);

// Writes `bytes` to standard output as they are.
void Print(std::string_view bytes);

// Why `document` was not loaded; with a hint who tells more.
std::string LoadProblem(const VornSrcObj& document);
std::string LoadProblemWithHint(const VornSrcObj& document);

// Loads `file`; on failure says so, and why as far as that can be told.
Status Load(Session& session, VornSrcObj& document, const std::string& file);

// Loads `file` and runs `command` on it. Returns the exit status.
int WithDocument(Session& session, const std::string& file, const std::function<int(VornSrcObj&)>& command);

// The member of `document`, which is in `file`, of that name; says so when there is none.
std::optional<CCodeOrigin> FindOrSay(const Session& session, const VornSrcObj& document, const std::string& file,
                                     const std::string& member);

// Tells that a file cannot be read, and why.
using TellUnread = std::function<void(const std::string& file, const std::string& reason)>;
void PrintUnread(const std::string& file, const std::string& reason);

// Reads all of `file`, which may be standard input, into `bytes`. False, and it tells why, when that cannot be.
bool ReadInput(Session& session, const std::string& file, std::string& bytes, const TellUnread& tell = PrintUnread);

struct CompilerSettings {
    std::string batchFile; // FCompBat
    std::string cFile;     // FCompFileName
};

// "" for what is not set.
CompilerSettings ReadCompilerSettings(SequentialFiles& files);

// The name of an error. A common one has the same English name on every system.
std::string Reason(std::error_code error);

} // namespace tessaly::psf
