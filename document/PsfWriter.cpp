// The rows of a PSF file, in order.
#include "document/EncodedOutput.h"
#include "document/PsfFile.h"
#include "document/PsfKeys.h"
#include "platform/text/Ascii.h"

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

void WritePsf(const PsfContent& content, EncodedOutput& output, PsfForm form) {
    output.WriteLine("[BeginPSF]");
    output.WriteLine("Comment= Do not modify this file! Doing so will produce unpredictable results!!!");
    output.WriteLine("FileName="); // the key alone: the name is never written
    output.WriteLine(GVarsTag);
    output.WriteLine(InForm(content.references, form));
    output.WriteLine(GFuncsTag);
    WriteFunctionList(content.functions, output);
    output.WriteLine(FuncCodeTag);
    for (std::int32_t i = 0; i < content.functions.GetCount(); ++i) {
        output.WriteAscii("[");
        output.Write(content.functions.NameAt(i));
        output.WriteAscii("]\r\n");
        output.WriteLine(ProtoTypeKey, InForm(content.functions.PrototypeAt(i), form));
        output.WriteLine(FuncBodyKey, InForm(content.functions.CodeAt(i), form));
    }
    output.WriteLine(EventCodeTag);
    for (std::size_t i = 0; i < EventTable.size(); ++i) {
        output.WriteLine(EventTable[i].tag);
        output.WriteLine(FuncBodyKey, InForm(content.eventTexts[i].View(), form));
    }
    output.WriteLine(EndPsfTag);
}

} // namespace tessaly
