// The rows of a PSF file, in order.
#include "document/EncodedOutput.h"
#include "document/PsfFile.h"
#include "document/PsfKeys.h"

#include <string>

namespace tessaly {

namespace {

void WriteValue(EncodedOutput& output, std::string_view key, std::string_view value) {
    output.WriteAscii(key);
    output.WriteLine(value);
}

void WriteFunctionList(const FuncObject& functions, EncodedOutput& output) {
    // One blank stands where a negative number would have its sign.
    WriteValue(output, NumFuncsKey, " " + std::to_string(functions.GetCount()));
    output.WriteAscii(FuncNamesKey);
    for (std::int32_t i = 0; i < functions.GetCount(); ++i) {
        output.WriteAscii(i > 0 ? "," : "");
        output.Write(functions.NameAt(i));
    }
    output.WriteLine("");
}

void WriteFunction(const FuncObject& functions, std::int32_t index, EncodedOutput& output) {
    output.WriteAscii("[");
    output.Write(functions.NameAt(index));
    output.WriteAscii("]\r\n");
    WriteValue(output, ProtoTypeKey, functions.PrototypeAt(index));
    WriteValue(output, FuncBodyKey, functions.CodeAt(index));
}

} // namespace

void WritePsf(const PsfContent& content, EncodedOutput& output) {
    output.WriteLine("[BeginPSF]");
    output.WriteLine("Comment= Do not modify this file! Doing so will produce unpredictable results!!!");
    output.WriteLine("FileName="); // the key alone: the name is never written
    output.WriteLine(GVarsTag);
    output.WriteLine(content.references);
    output.WriteLine(GFuncsTag);
    WriteFunctionList(content.functions, output);
    output.WriteLine(FuncCodeTag);
    for (std::int32_t i = 0; i < content.functions.GetCount(); ++i) {
        WriteFunction(content.functions, i, output);
    }
    output.WriteLine(EventCodeTag);
    for (std::size_t i = 0; i < EventTable.size(); ++i) {
        output.WriteLine(EventTable[i].tag);
        WriteValue(output, FuncBodyKey, content.eventTexts[i].View());
    }
    output.WriteLine(EndPsfTag);
}

} // namespace tessaly
