// Checks without expected output: two readers against each other, and a document against itself after a round trip.
#include "tests/unit/document/Agreement.h"

#include "document/VornSrcObj.h"
#include "tests/desktop/SequentialFiles.h"
#include "tests/unit/document/LiteralReader.h"

#include <algorithm>

namespace tessaly {

namespace {

std::string Encode(std::string_view text, const CodePage& codePage) {
    std::string bytes;
    codePage.AppendEncoded(text, bytes);
    return bytes;
}

// The rows of a PSF file for a document, in the order of the format.
std::string WriteLiterally(const LiteralDocument& document, const CodePage& codePage) {
    const std::string end = "\r\n";
    std::string names;
    for (std::size_t i = 0; i < document.functions.size(); ++i) {
        names += (i > 0 ? "," : "") + document.functions[i].name;
    }
    std::string text = "[BeginPSF]\r\nComment= Do not modify this file! Doing so will produce unpredictable "
                       "results!!!\r\nFileName=\r\n[GVars]\r\n";
    text += document.varCode + end + "[GFuncs]" + end;
    text += "NumFuncs= " + std::to_string(document.functions.size()) + end + "FuncNames=" + names + end;
    text += "[FuncCode]" + end;
    for (const LiteralFunction& function : document.functions) {
        text += "[" + function.name + "]" + end + "ProtoType=" + function.prototype + end;
        text += "FuncBody=" + function.code + end;
    }
    text += "[EventCode]" + end;
    const char* const names9[] = {"OnError", "OnFrame",   "OnKey",    "OnStart", "OnStop",
                                  "OnTimer", "OnTrigger", "OnSerial", "OnMsg"};
    for (std::size_t i = 0; i < document.eventCodes.size(); ++i) {
        text += "[" + std::string(names9[i]) + "]" + end + "FuncBody=" + document.eventCodes[i] + end;
    }
    return Encode(text + "[EndPSF]" + end, codePage);
}

// The generated C file, row by row; `failed` when a function's code begins with "{".
std::string GenerateLiterally(const LiteralDocument& document, const CodePage& codePage, bool& failed) {
    const std::string end = "\r\n";
    std::string text = "\r\n#include <stdlib.h>\r\n#include \"vexlib.h\"\r\n#include \"tornem.h\"\r\n#include "
                       "<stdio.h>\r\nvoid OnShutdown(){} /* this function is inserted here for compilation purposes "
                       "it is not used by this version of the client */\n\r\n/* Global Variables */\r\n\n\r\n";
    text += document.varCode + end + "\n\r\n/* Global Function Prototypes */\r\n";
    failed = false;
    for (const LiteralFunction& function : document.functions) {
        const std::size_t brace = function.code.find('{');
        if (brace == 0) {
            failed = true;
            return Encode(text, codePage);
        }
        std::string prototype = function.code.substr(0, brace);
        if (brace != std::string::npos) {
            while ((static_cast<unsigned char>(prototype.back()) & 0xC0U) == 0x80U) {
                prototype.pop_back();
            }
            prototype.pop_back();
        }
        text += prototype + ";" + end;
    }
    text += "/* Global Functions */\r\n";
    for (const LiteralFunction& function : document.functions) {
        text += function.code + end;
    }
    text += "\n\r\n/* Event Code */\r\n";
    for (const std::string& code : document.eventCodes) {
        text += code + end;
    }
    text += "int main(int argc, char *argv[]) \r\n{\r\ninitialize(argc,argv);\r\nEventLoop();\r\nreturn 0;\r\n}\r\n";
    return Encode(text, codePage);
}

// "" when the document agrees with the literal reader, else the difference.
std::string Compare(const VornSrcObj& document, Status status, const LiteralDocument& expected) {
    if (static_cast<int>(status) != expected.status) {
        return "status " + std::to_string(static_cast<int>(status)) + ", not " + std::to_string(expected.status);
    }
    if (document.LoadedOK() != (status == Status::Done)) {
        return "LoadedOK does not agree with the status";
    }
    if (document.VarCode() != expected.varCode) {
        return "references";
    }
    const FuncObject& functions = document.Functions();
    if (static_cast<std::size_t>(functions.GetCount()) != expected.functions.size()) {
        return "number of functions";
    }
    for (std::int32_t i = 0; i < functions.GetCount(); ++i) {
        const LiteralFunction& function = expected.functions[static_cast<std::size_t>(i)];
        if (functions.NameAt(i) != function.name || functions.PrototypeAt(i) != function.prototype ||
            functions.CodeAt(i) != function.code) {
            return "function " + std::to_string(i);
        }
    }
    for (std::int32_t i = 0; i < EventCount; ++i) {
        if (document.EventCodeAt(i) != expected.eventCodes[static_cast<std::size_t>(i)]) {
            return "event " + std::to_string(i);
        }
    }
    return "";
}

// Whether every value must come back, with one CR LF more. No line may look like a tag or a key, no name may be cut,
// and no byte may be unreadable, as it can be in a multi-byte code page.
bool IsPlain(const LiteralDocument& document) {
    const auto plain = [](const std::string& text) {
        return text.find_first_of("[=") == std::string::npos && text.find("\uFFFD") == std::string::npos;
    };
    const auto plainFunction = [&](const LiteralFunction& function) {
        return plain(function.name) && function.name.find(',') == std::string::npos && plain(function.prototype) &&
               plain(function.code);
    };
    return plain(document.varCode) &&
           std::all_of(document.functions.begin(), document.functions.end(), plainFunction) &&
           std::all_of(document.eventCodes.begin(), document.eventCodes.end(), plain);
}

LiteralDocument Grown(LiteralDocument document) {
    document.status = 0;
    document.varCode += "\r\n";
    for (LiteralFunction& function : document.functions) {
        function.prototype += "\r\n";
        function.code += "\r\n";
    }
    for (std::string& code : document.eventCodes) {
        code += "\r\n";
    }
    return document;
}

} // namespace

std::string FindDisagreement(const std::string& bytes, const CodePage& codePage, std::size_t readSize) {
    memory::SequentialFiles files;
    files.readSize = readSize;
    files.contents["in"] = bytes;
    VornSrcObj document(files, codePage);
    const LiteralDocument expected = ReadLiterally(bytes, codePage);
    if (const std::string what = Compare(document, document.LoadFile("in"), expected); !what.empty()) {
        return "load: " + what;
    }

    bool failed = false;
    const std::string code = GenerateLiterally(expected, codePage, failed);
    if (document.BuildCCodeFile("c") != (failed ? Status::GenerationFailed : Status::Done)) {
        return "generate: status";
    }
    if (files.contents["c"] != code) {
        return "generate: text";
    }

    if (document.SaveFile("saved") != Status::Done || files.contents["saved"] != WriteLiterally(expected, codePage)) {
        return "save";
    }
    VornSrcObj again(files, codePage);
    const Status status = again.LoadFile("saved");
    if (const std::string what = Compare(again, status, ReadLiterally(files.contents["saved"], codePage));
        !what.empty()) {
        return "load again: " + what;
    }
    if (IsPlain(expected)) {
        if (const std::string what = Compare(again, status, Grown(expected)); !what.empty()) {
            return "round trip: " + what;
        }
    }
    return files.OpenCount() == 0 ? "" : "a file was left open";
}

} // namespace tessaly
