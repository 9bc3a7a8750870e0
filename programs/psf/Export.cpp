// psf export and import: a file for each member. "order" has a line for each function: its file's name without the ".c"
// and, behind a tab, its stored prototype where there is one.
#include "document/Members.h"
#include "platform/text/Ascii.h"
#include "platform/text/Utf8.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Paths.h"
#include "programs/psf/base/Saving.h"

#include <algorithm>
#include <filesystem>
#include <set>

namespace tessaly::psf {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view OrderName = "order";
constexpr std::string_view CodeExtension = ".c";
constexpr std::string_view HexDigits = "0123456789ABCDEF";

std::string Escape(char c) {
    const auto byte = static_cast<unsigned char>(c);
    return {'%', HexDigits[byte >> 4U], HexDigits[byte & 15U]};
}

// Names that are devices on Windows whatever stands behind their dot.
bool IsDeviceName(const std::string& name) {
    static const std::set<std::string, std::less<>> devices = {"aux", "con", "nul", "prn"};
    const std::string small = SmallLetters(name);
    const bool isPort = small.size() == 4 && (small.starts_with("com") || small.starts_with("lpt"));
    return devices.contains(small) || (isPort && IsDigit(small.back()));
}

// A function's name as that of a file. Whatever is no letter, digit or "_" becomes %XX.
std::string FileStem(std::string_view name) {
    std::string stem;
    for (const char c : name) {
        stem += IsLetter(c) || IsDigit(c) || c == '_' ? std::string(1, c) : Escape(c);
    }
    return IsDeviceName(stem) ? Escape(stem.front()) + stem.substr(1) : stem;
}

// A prototype in one line: controls and "%" become %XX.
std::string OneLine(std::string_view text) {
    std::string line;
    for (const char c : text) {
        line += c == '%' || (c >= 0 && c < ' ') ? Escape(c) : std::string(1, c);
    }
    return line;
}

std::string Unescaped(std::string_view text) {
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool hasDigits = i + 2 < text.size();
        const std::size_t high = hasDigits ? HexDigits.find(text[i + 1]) : HexDigits.npos;
        const std::size_t low = hasDigits ? HexDigits.find(text[i + 2]) : HexDigits.npos;
        if (text[i] == '%' && high != HexDigits.npos && low != HexDigits.npos) {
            result += static_cast<char>(high * 16 + low);
            i += 2;
        } else {
            result += text[i];
        }
    }
    return result;
}

// The path of a member's file below the folder.
std::string MemberFile(const VornSrcObj& document, CCodeOrigin member) {
    const std::string name = member.kind == CCodeOrigin::Kind::Function
                                 ? std::string(FunctionPrefix) + FileStem(document.Functions().NameAt(member.index))
                                 : MemberName(document, member);
    return name + std::string(CodeExtension);
}

std::string OrderOf(const VornSrcObj& document) {
    std::string order;
    for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
        const std::string_view prototype = document.Functions().PrototypeAt(i);
        order += FileStem(document.Functions().NameAt(i));
        order += TrimBack(prototype, "\r\n").empty() ? "" : "\t" + OneLine(prototype);
        order += "\n";
    }
    return order;
}

// Functions that are gone. An import would take their files for new ones.
void RemoveOthers(const std::string& folder, const VornSrcObj& document) {
    std::set<std::string> kept;
    for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
        kept.insert(FileStem(document.Functions().NameAt(i)) + std::string(CodeExtension));
    }
    std::error_code error;
    std::vector<fs::path> others;
    for (fs::directory_iterator entries(ToPath(folder), error); !error && entries != fs::directory_iterator();
         entries.increment(error)) {
        const std::u8string name = entries->path().filename().u8string();
        const std::string plain(name.begin(), name.end());
        if (plain.ends_with(CodeExtension) && !kept.contains(plain)) {
            others.push_back(entries->path());
        }
    }
    for (const fs::path& other : others) {
        fs::remove(other, error);
    }
}

// A text as it is held ends with the line end that a load has added; that of a file is another save's.
std::string_view WithoutLastEnd(std::string_view text) {
    text.remove_suffix(text.ends_with('\n') ? 1 : 0);
    text.remove_suffix(text.ends_with('\r') ? 1 : 0);
    return text;
}

// Reads a folder into a document, and remembers the first thing that goes wrong.
class Importer {
public:
    Importer(Session& session, std::string folder) : mSession(session), mFolder(std::move(folder)) {}

    int Import(VornSrcObj& document) {
        document.Init();
        document.UpdateVarCode(Read(std::string(ReferencesName) + std::string(CodeExtension)));
        const std::string order = ReadRaw(std::string(OrderName));
        std::string_view rest = order;
        while (!rest.empty()) {
            AddFunction(document, TrimBack(TakeLine(rest), "\r"));
        }
        for (std::int32_t i = 0; i < EventCount; ++i) {
            const std::string name(EventTable[static_cast<std::size_t>(i)].name);
            document.UpdateEventCodeByIndex(i, Read(std::string(EventPrefix) + name + std::string(CodeExtension)));
        }
        return mStatus;
    }

private:
    void AddFunction(VornSrcObj& document, std::string_view line) {
        if (line.empty()) {
            return;
        }
        const std::size_t tab = std::min(line.find('\t'), line.size());
        const std::string stem(line.substr(0, tab));
        const std::string prototype = Unescaped(line.substr(std::min(tab + 1, line.size())));
        const std::string code = Read(std::string(FunctionPrefix) + stem + std::string(CodeExtension));
        const Status status = InMemory(document.AddFunction(Unescaped(stem), WithoutLastEnd(prototype), code));
        if (status != Status::Done) {
            Fail(ExitStatus(status), mFolder + "/" + std::string(OrderName) + ": the name \"" + Unescaped(stem) +
                                         "\" collides with the one of an earlier function");
        }
    }

    std::string Read(const std::string& name) { return std::string(WithoutLastEnd(ReadRaw(name))); }

    std::string ReadRaw(const std::string& name) {
        const std::string path = mFolder + "/" + name;
        std::string text;
        try {
            text = ReadWhole(mSession.files, path);
        } catch (const std::system_error& error) {
            Fail(ExitStatus(error.code() == std::errc::no_such_file_or_directory ? Status::NotFound
                                                                                 : Status::LoadFailed),
                 path + ": " + Reason(error.code()));
        }
        if (!IsUtf8(text)) {
            Fail(WrongUsage, path + ": is not UTF-8");
        }
        return text;
    }

    void Fail(int status, const std::string& message) {
        if (mStatus == Success) {
            mStatus = status;
            PrintError(message);
        }
    }

    Session& mSession;
    std::string mFolder;
    int mStatus = Success;
};

} // namespace

int Export(Session& session, const std::string& file, const std::string& folder) {
    return WithDocument(session, file, [&](VornSrcObj& document) {
        for (const std::string_view part : {FunctionPrefix, EventPrefix}) {
            const std::string path = folder + "/" + std::string(part.substr(0, part.size() - 1));
            std::error_code error;
            if (fs::create_directories(ToPath(path), error); error) {
                PrintError(path + ": the folder cannot be made: " + Reason(error));
                return ExitStatus(Status::UnexpectedError);
            }
        }
        for (const CCodeOrigin& member : AllMembers(document)) {
            const std::string path = folder + "/" + MemberFile(document, member);
            if (const int status = SaveBytes(session, MemberText(document, member), path); status != Success) {
                return status;
            }
        }
        RemoveOthers(folder + "/" + std::string(FunctionPrefix), document);
        return SaveBytes(session, OrderOf(document), folder + "/" + std::string(OrderName));
    });
}

int Import(Session& session, const std::string& folder, const std::string& file) {
    VornSrcObj document = session.NewDocument();
    if (const int status = Importer(session, folder).Import(document); status != Success) {
        return status;
    }
    return ChangeFile(file,
                      [&](const std::optional<FileState>& state) { return Save(session, document, file, state); });
}

} // namespace tessaly::psf
