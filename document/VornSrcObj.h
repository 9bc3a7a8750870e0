// The program source document: everything that one PSF file holds and that one C file is made of.
// It shows no messages; its callers turn the status codes into them.
#pragma once

#include "document/PsfFile.h"
#include "document/Status.h"
#include "document/TextValue.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <system_error>

namespace tessaly {

class CCodeSink;
class CodePage;
class PsfReadObserver;
class SequentialFiles;

// Function indices run from 0 to GetFunctionCount - 1 and event indices from 0 to 8 (see EventTable).
// An event index outside that range is a mistake of the program: std::out_of_range.
class VornSrcObj {
public:
    // A document in its default state. `files` and `codePage` must outlive it.
    VornSrcObj(SequentialFiles& files, const CodePage& codePage);

    // A copy of the content of `other` that is loaded and saved by way of `files`, which must outlive it.
    VornSrcObj(const VornSrcObj& other, SequentialFiles& files);

    // Takes over the content of `other`, as after a load that went well.
    void TakeContent(VornSrcObj&& other);

    // Back to the defaults: the default references and handler texts, no functions. Always Done.
    Status Init();

    // `prototype` = "": the handler texts carry their own prototypes. Done.
    Status GetEventProtoTypeByIndex(std::int32_t index, std::string& prototype) const;

    // Fills the document from a PSF file, after an Init. Done when the file was read to its end tag.
    // LoadFailed for a missing or unreadable file, a NumFuncs= value that is no number, or a file without its
    // end tag; what was read until then stays in the document, the rest keeps its defaults.
    // A function whose name collides with an earlier one is dropped without a word. `observer`, where given,
    // is told what the reader meets.
    Status LoadFile(const std::string& fileName, PsfReadObserver* observer = nullptr);

    // The global references text. Done.
    Status GetVarCode(std::string& code) const;
    Status UpdateVarCode(std::string_view code);

    // The whole text of an event handler. Done.
    Status GetEventCodeByIndex(std::int32_t index, std::string& code) const;
    Status UpdateEventCodeByIndex(std::int32_t index, std::string_view code);

    std::int32_t GetFunctionCount() const;

    // FuncObject::GetName, with its "no value" of an empty table as Done.
    Status GetFuncName(std::int32_t index, std::string& name) const;

    // The operations of FuncObject; their status codes pass through unchanged.
    Status GetFunction(std::string_view name, std::string& prototype, std::string& code) const;
    Status GetFunctionByIndex(std::int32_t index, std::string& prototype, std::string& code) const;
    Status UpdateFunction(std::string_view name, std::string_view prototype, std::string_view code);
    Status AddFunction(std::string_view name, const TextValue& prototype, const TextValue& code);
    Status DeleteFunction(std::string_view name);

    // Writes the whole document to a PSF file in place of what is there. Done, or UnexpectedError on any
    // failure, which leaves the file as far as it was written. Where `other` is given, it takes the place of `files`.
    Status SaveFile(const std::string& fileName, PsfForm form = PsfForm::AsHeld,
                    SequentialFiles* other = nullptr) const;

    // Writes the generated C file in place of what is there. Done, or GenerationFailed when the file cannot be
    // written or a function's code begins with "{"; the file then holds what was written before the failure.
    // `observer`, where given, is told each piece behind the file; what it throws only ends the telling.
    Status BuildCCodeFile(const std::string& fileName, CCodeSink* observer = nullptr) const;

    // Generates the same C code into `sink`, in the same order. Done, or GenerationFailed as above.
    Status BuildCCode(CCodeSink& sink) const;

    // The code page of its files.
    const CodePage& Encoding() const { return mCodePage; }

    // True when the last LoadFile read its file to the end tag. No operation reads it.
    bool LoadedOK() const { return mLoadedOK; }

    // Why the last LoadFile did not get to read its file; none when all of it was read. errc::not_enough_memory when
    // memory was short: nothing is known about the file then.
    std::error_code ReadError() const { return mReadError; }

    // The texts without copying, good until the document changes.
    const FuncObject& Functions() const { return mContent.functions; }
    std::string_view VarCode() const { return mContent.references; }
    std::string_view EventCodeAt(std::int32_t index) const;

private:
    SequentialFiles& mFiles;
    const CodePage& mCodePage;
    bool mLoadedOK = false;
    std::error_code mReadError;
    PsfContent mContent;
};

} // namespace tessaly
