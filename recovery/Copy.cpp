// A document is saved and loaded in memory here; what goes to the disk are whole files.
#include "recovery/Copy.h"

#include "document/Members.h"
#include "platform/system/MemoryFile.h"
#include "platform/text/Ascii.h"
#include "recovery/Differences.h"

#include <algorithm>
#include <new>
#include <tuple>

namespace tessaly {

namespace {

constexpr std::string_view PsfEnding = ".PSF";
constexpr std::string_view OriginEnding = ".origin";

// No origin that was ever written is longer.
constexpr std::size_t LongestOrigin = 1'000'000;

std::string PathIn(const std::string& folder, std::string_view stem, std::string_view ending) {
    return (folder + "/").append(stem).append(ending);
}

// What a saved text gains when it is loaded.
std::string_view WithoutGainedBreak(std::string_view text) {
    return text.ends_with("\r\n") ? text.substr(0, text.size() - 2) : text;
}

void TakeOffGainedBreaks(VornSrcObj& document) {
    document.UpdateVarCode(std::string(WithoutGainedBreak(document.VarCode())));
    for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
        const FuncObject& functions = document.Functions();
        document.UpdateFunction(std::string(functions.NameAt(i)),
                                std::string(WithoutGainedBreak(functions.PrototypeAt(i))),
                                std::string(WithoutGainedBreak(functions.CodeAt(i))));
    }
    for (std::int32_t i = 0; i < EventCount; ++i) {
        document.UpdateEventCodeByIndex(i, std::string(WithoutGainedBreak(document.EventCodeAt(i))));
    }
}

// Nothing else than memory can be short.
void SaveTo(MemoryFile& file, const VornSrcObj& document) {
    if (document.SaveFile("", PsfForm::AsHeld, &file) != Status::Done) {
        throw std::bad_alloc();
    }
}

} // namespace

// A document of many functions is copied only where the pane has another text than it.
void GetSavedBytes(const WindowContent& content, std::string& bytes) {
    MemoryFile file({}, std::move(bytes));
    const std::optional<CCodeOrigin> member = FindMember(content.document, content.item);
    const bool isAdded = !member && content.item.starts_with(FunctionPrefix);
    if (isAdded || (member && MemberText(content.document, *member) != content.paneText)) {
        VornSrcObj copy(content.document, file);
        if (isAdded) {
            copy.AddFunction(content.item.substr(FunctionPrefix.size()), "", std::string(content.paneText));
        } else {
            UpdateMember(copy, *member, content.paneText);
        }
        SaveTo(file, copy);
    } else {
        SaveTo(file, content.document);
    }
    bytes = file.TakeWritten();
}

Origin OriginOf(const WindowContent& content) {
    Origin origin;
    origin.path = content.path;
    origin.file = content.file;
    origin.language = content.language;
    origin.item = content.item;
    origin.caret = content.caret;
    return origin;
}

Copy CopyAt(const std::string& folder, const std::string& stem) {
    return {PathIn(folder, stem, PsfEnding), PathIn(folder, stem, OriginEnding), {}};
}

std::error_code WriteCopy(PrivateFiles& own, const std::string& folder, const std::string& stem, std::string_view bytes,
                          const Origin& origin, Flushing flushing) {
    const std::error_code error = own.Write(PathIn(folder, stem, PsfEnding), bytes, flushing);
    return error ? error : own.Write(PathIn(folder, stem, OriginEnding), WriteOrigin(origin), flushing);
}

std::error_code RewriteCopy(PrivateFiles& own, const std::string& folder, const std::string& stem,
                            std::string_view bytes, const Origin& origin, Flushing flushing) {
    const std::error_code error = own.Rewrite(PathIn(folder, stem, PsfEnding), bytes, flushing);
    return error ? error : own.Rewrite(PathIn(folder, stem, OriginEnding), WriteOrigin(origin), flushing);
}

std::optional<Copy> ReadCopy(SequentialFiles& files, const std::string& folder, const std::string& stem) {
    try {
        Copy copy = CopyAt(folder, stem);
        const std::optional<Origin> origin = ReadOrigin(ReadWhole(files, copy.originPath, LongestOrigin));
        if (!origin || MarkOfFile(files, copy.path) != origin->copy) {
            return std::nullopt;
        }
        copy.origin = *origin;
        return copy;
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

std::vector<Copy> ReadCopies(SequentialFiles& files, const PrivateFiles& own, const std::string& folder) {
    std::vector<FolderEntry> entries;
    if (own.List(folder, entries)) {
        return {};
    }
    std::vector<Copy> copies;
    for (const FolderEntry& entry : entries) {
        if (entry.name.ends_with(OriginEnding)) {
            const std::string stem = entry.name.substr(0, entry.name.size() - OriginEnding.size());
            if (std::optional<Copy> copy = ReadCopy(files, folder, stem)) {
                copies.push_back(std::move(*copy));
            }
        }
    }
    SortNewestFirst(copies);
    return copies;
}

void SortNewestFirst(std::vector<Copy>& copies) {
    std::sort(copies.begin(), copies.end(), [](const Copy& a, const Copy& b) {
        return std::tie(b.origin.time, b.origin.number, b.path) < std::tie(a.origin.time, a.origin.number, a.path);
    });
}

std::error_code RemoveCopy(PrivateFiles& own, const Copy& copy) {
    const std::error_code error = own.Remove(copy.path);
    const std::error_code originError = own.Remove(copy.originPath);
    return error ? error : originError;
}

std::unique_ptr<CodePage> CodePageOf(const Origin& origin) {
    return origin.codePage.empty() ? nullptr : MakeCodePage(origin.codePage);
}

Status LoadCopy(SequentialFiles& files, const Copy& copy, VornSrcObj& document) {
    std::string bytes;
    try {
        bytes = ReadWhole(files, copy.path);
    } catch (const std::system_error&) {
        return Status::LoadFailed;
    }
    MemoryFile file(bytes);
    const std::unique_ptr<CodePage> codePage = CodePageOf(copy.origin);
    VornSrcObj loaded = codePage ? VornSrcObj(file, *codePage) : VornSrcObj(document, file);
    if (MarkOf(bytes) != copy.origin.copy || loaded.LoadFile("") != Status::Done) {
        return Status::LoadFailed;
    }
    TakeOffGainedBreaks(loaded);
    document.TakeContent(std::move(loaded));
    return Status::Done;
}

bool IsTextOf(SequentialFiles& files, const std::string& path, const std::string& bytes, const VornSrcObj& document) {
    if (!path.empty() && MarkOfFile(files, path) == MarkOf(bytes)) {
        return true;
    }
    MemoryFile file(bytes);
    VornSrcObj copy(document, file);
    VornSrcObj there(document, files);
    const Status status = path.empty() ? there.Init() : there.LoadFile(path);
    if (status != Status::Done || copy.LoadFile("") != Status::Done) {
        return false;
    }
    TakeOffGainedBreaks(copy);
    return AreSame(copy, there);
}

} // namespace tessaly
