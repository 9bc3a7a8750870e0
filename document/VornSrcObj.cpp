// The document's own state; reading, writing and generating live in files of their own.
#include "document/VornSrcObj.h"

#include "document/CCodeGenerator.h"
#include "document/EncodedOutput.h"
#include "platform/system/SequentialFiles.h"

#include <exception>
#include <utility>

namespace tessaly {

namespace {

constexpr std::string_view DefaultReferences = "/* ... include ... */\n\n/* ... variables ...*/\n";

std::size_t EventIndex(std::int32_t index) {
    if (index < 0 || index >= EventCount) {
        throw std::out_of_range("event index " + std::to_string(index));
    }
    return static_cast<std::size_t>(index);
}

} // namespace

VornSrcObj::VornSrcObj(SequentialFiles& files, const CodePage& codePage) : mFiles(files), mCodePage(codePage) {
    Init();
}

VornSrcObj::VornSrcObj(const VornSrcObj& other, SequentialFiles& files)
    : mFiles(files),
      mCodePage(other.mCodePage),
      mContent(other.mContent) {}

void VornSrcObj::TakeContent(VornSrcObj&& other) {
    mContent = std::move(other.mContent);
    mLoadedOK = true;
    mReadError.clear();
}

Status VornSrcObj::Init() {
    PsfContent content;
    content.references = DefaultReferences;
    for (std::size_t i = 0; i < EventTable.size(); ++i) {
        content.eventTexts[i] = SharedText(EventTable[i].defaultText);
    }
    mContent = std::move(content);
    return Status::Done;
}

Status VornSrcObj::GetEventProtoTypeByIndex(std::int32_t index, std::string& prototype) const {
    EventIndex(index);
    prototype.clear();
    return Status::Done;
}

Status VornSrcObj::GetVarCode(std::string& code) const {
    code = mContent.references;
    return Status::Done;
}

Status VornSrcObj::UpdateVarCode(std::string_view code) {
    mContent.references = code;
    return Status::Done;
}

Status VornSrcObj::GetEventCodeByIndex(std::int32_t index, std::string& code) const {
    code = EventCodeAt(index);
    return Status::Done;
}

Status VornSrcObj::UpdateEventCodeByIndex(std::int32_t index, std::string_view code) {
    mContent.eventTexts[EventIndex(index)] = SharedText(code);
    return Status::Done;
}

std::int32_t VornSrcObj::GetFunctionCount() const {
    return mContent.functions.GetCount();
}

Status VornSrcObj::GetFuncName(std::int32_t index, std::string& name) const {
    return mContent.functions.GetName(index, name).value_or(Status::Done);
}

Status VornSrcObj::GetFunction(std::string_view name, std::string& prototype, std::string& code) const {
    return mContent.functions.GetFunction(name, prototype, code);
}

Status VornSrcObj::GetFunctionByIndex(std::int32_t index, std::string& prototype, std::string& code) const {
    return mContent.functions.GetFunctionByIndex(index, prototype, code);
}

Status VornSrcObj::UpdateFunction(std::string_view name, std::string_view prototype, std::string_view code) {
    return mContent.functions.UpdateFunction(name, prototype, code);
}

Status VornSrcObj::AddFunction(std::string_view name, const TextValue& prototype, const TextValue& code) {
    return mContent.functions.AddFunction(name, prototype.Text(), code.Text());
}

Status VornSrcObj::DeleteFunction(std::string_view name) {
    return mContent.functions.DeleteFunction(name);
}

Status VornSrcObj::BuildCCodeFile(const std::string& fileName, CCodeSink* observer) const {
    try {
        EncodedOutput output(mFiles.OpenForOutput(fileName), mCodePage);
        CCodeFileSink sink(output, observer);
        const Status status = BuildCCode(sink);
        output.Close();
        return status;
    } catch (const std::exception&) {
        return Status::GenerationFailed;
    }
}

std::string_view VornSrcObj::EventCodeAt(std::int32_t index) const {
    return mContent.eventTexts[EventIndex(index)].View();
}

} // namespace tessaly
