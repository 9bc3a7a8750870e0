// The rows of a PSF file, in order.
#include "document/EncodedOutput.h"
#include "document/PsfKeys.h"
#include "document/VornSrcObj.h"
#include "platform/system/SequentialFiles.h"
#include "platform/text/Ascii.h"

#include <exception>
#include <string>

namespace tessaly {

namespace {

std::string_view InForm(std::string_view text, PsfForm form) {
    return form == PsfForm::Normal ? TrimBack(text, "\r\n") : text;
}

void WriteFunctionList(const FuncObject& functions, EncodedOutput& output) {
    // One blank stands where a negative number would have its sign.
    output.WriteLine(NumFuncsKey, " " + std::to_string(functions.GetCount()));
    output.WriteAscii(FuncNamesKey);
    for (std::int32_t i = 0; i < functions.GetCount(); ++i) {
        output.WriteAscii(i > 0 ? "," : "");
        output.Write(functions.NameAt(i));
    }
    output.WriteLine("");
}

} // namespace

Status VornSrcObj::SaveFile(const std::string& fileName, PsfForm form, SequentialFiles* other) const {
    try {
        EncodedOutput output((other != nullptr ? *other : mFiles).OpenForOutput(fileName), mCodePage);
        output.WriteLine("[BeginPSF]");
        output.WriteLine("Comment= Do not modify this file! Doing so will produce unpredictable results!!!");
        output.WriteLine("FileName="); // the key alone: the name is never written
        output.WriteLine(GVarsTag);
        output.WriteLine(InForm(mContent.references, form));
        output.WriteLine(GFuncsTag);
        WriteFunctionList(mContent.functions, output);
        output.WriteLine(FuncCodeTag);
        for (std::int32_t i = 0; i < mContent.functions.GetCount(); ++i) {
            output.WriteAscii("[");
            output.Write(mContent.functions.NameAt(i));
            output.WriteAscii("]\r\n");
            output.WriteLine(ProtoTypeKey, InForm(mContent.functions.PrototypeAt(i), form));
            output.WriteLine(FuncBodyKey, InForm(mContent.functions.CodeAt(i), form));
        }
        output.WriteLine(EventCodeTag);
        for (std::size_t i = 0; i < EventTable.size(); ++i) {
            output.WriteLine(EventTable[i].tag);
            output.WriteLine(FuncBodyKey, InForm(mContent.eventTexts[i].View(), form));
        }
        output.WriteLine(EndPsfTag);
        output.Close();
        return Status::Done;
    } catch (const std::exception&) {
        return Status::UnexpectedError;
    }
}

} // namespace tessaly
