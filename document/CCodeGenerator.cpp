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

class Generator {
public:
    Generator(const VornSrcObj& document, CCodeSink& sink) : mDocument(document), mSink(sink) {}

    bool Run() {
        Frame(Head);
        Frame(Separator);
        Frame("/* Global Variables */\r\n");
        Frame(Separator);
        Member(mDocument.VarCode(), {CCodeOrigin::Kind::References, 0}, CLineEnd);
        Frame(Separator);
        Frame("/* Global Function Prototypes */\r\n");
        if (!Prototypes()) {
            return false;
        }
        Frame("/* Global Functions */\r\n");
        for (std::int32_t i = 0; i < mDocument.GetFunctionCount(); ++i) {
            Member(mDocument.Functions().CodeAt(i), {CCodeOrigin::Kind::Function, i}, CLineEnd);
        }
        Frame(Separator);
        Frame("/* Event Code */\r\n");
        for (std::int32_t i = 0; i < EventCount; ++i) {
            Member(mDocument.EventCodeAt(i), {CCodeOrigin::Kind::Event, i}, CLineEnd);
        }
        Frame(Tail);
        return true;
    }

private:
    void Frame(std::string_view text) { mSink.Write(text, {}); }

    void Member(std::string_view text, CCodeOrigin origin, std::string_view end) {
        mSink.Write(text, origin);
        Frame(end);
    }

    // The stored prototypes have no part in this, kept on purpose: the code text alone counts.
    bool Prototypes() {
        for (std::int32_t i = 0; i < mDocument.GetFunctionCount(); ++i) {
            std::string_view prototype;
            if (!CutPrototype(mDocument.Functions().CodeAt(i), prototype)) {
                return false;
            }
            Member(prototype, {CCodeOrigin::Kind::Function, i}, ";\r\n");
        }
        return true;
    }

    const VornSrcObj& mDocument;
    CCodeSink& mSink;
};

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

Status VornSrcObj::BuildCCode(CCodeSink& sink) const {
    return Generator(*this, sink).Run() ? Status::Done : Status::GenerationFailed;
}

} // namespace tessaly
