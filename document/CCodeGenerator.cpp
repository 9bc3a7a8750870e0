// The C generator. The uneven empty lines of the frame are its layout: kept on purpose, do not even them out.
#include "document/CCodeGenerator.h"

#include "document/EncodedOutput.h"
#include "document/VornSrcObj.h"
#include "platform/text/Utf8.h"

#include <exception>

namespace tessaly {

namespace {

constexpr std::string_view CLineEnd = "\r\n";

// A lone LF and a line end: to a compiler two line breaks.
constexpr std::string_view Separator = "\n\r\n";

constexpr std::string_view Head = "\r\n"
                                  "#include <stdlib.h>\r\n"
                                  "#include \"vexlib.h\"\r\n"
                                  "#include \"tornem.h\"\r\n"
                                  "#include <stdio.h>\r\n"
                                  "void OnShutdown(){} /* this function is inserted here for compilation purposes it "
                                  "is not used by this version of the client */";

constexpr std::string_view Tail = "int main(int argc, char *argv[]) \r\n"
                                  "{\r\n"
                                  "initialize(argc,argv);\r\n"
                                  "EventLoop();\r\n"
                                  "return 0;\r\n"
                                  "}\r\n";

// Where the last character of `text`, which is not empty, begins.
std::size_t LastCharacter(std::string_view text) {
    std::size_t position = text.size() - 1;
    while (position > 0 && IsContinuation(text[position])) {
        --position;
    }
    return position;
}

} // namespace

void CCodeFileSink::Write(std::string_view text, CCodeOrigin origin) {
    if (origin.kind == CCodeOrigin::Kind::Frame) {
        mOutput.WriteAscii(text);
    } else {
        mOutput.Write(text);
    }
    try {
        if (mObserver != nullptr) {
            mObserver->Write(text, origin);
        }
    } catch (const std::exception&) {
        mObserver = nullptr;
    }
}

bool CutPrototype(std::string_view code, std::string_view& prototype) {
    const std::size_t brace = code.find('{');
    if (brace == 0) {
        return false;
    }
    prototype = brace == std::string_view::npos ? code : code.substr(0, LastCharacter(code.substr(0, brace)));
    return true;
}

std::string_view CCodeHead() {
    return Head;
}

// The stored prototypes have no part in this, kept on purpose: the code text alone counts.
Status VornSrcObj::BuildCCode(CCodeSink& sink) const {
    const auto frame = [&sink](std::string_view text) { sink.Write(text, {}); };
    const auto member = [&](std::string_view text, CCodeOrigin origin, std::string_view end) {
        sink.Write(text, origin);
        frame(end);
    };
    frame(Head);
    frame(Separator);
    frame("/* Global Variables */\r\n");
    frame(Separator);
    member(VarCode(), {CCodeOrigin::Kind::References, 0}, CLineEnd);
    frame(Separator);
    frame("/* Global Function Prototypes */\r\n");
    for (std::int32_t i = 0; i < GetFunctionCount(); ++i) {
        std::string_view prototype;
        if (!CutPrototype(Functions().CodeAt(i), prototype)) {
            return Status::GenerationFailed;
        }
        member(prototype, {CCodeOrigin::Kind::Function, i}, ";\r\n");
    }
    frame("/* Global Functions */\r\n");
    for (std::int32_t i = 0; i < GetFunctionCount(); ++i) {
        member(Functions().CodeAt(i), {CCodeOrigin::Kind::Function, i}, CLineEnd);
    }
    frame(Separator);
    frame("/* Event Code */\r\n");
    for (std::int32_t i = 0; i < EventCount; ++i) {
        member(EventCodeAt(i), {CCodeOrigin::Kind::Event, i}, CLineEnd);
    }
    frame(Tail);
    return Status::Done;
}

} // namespace tessaly
