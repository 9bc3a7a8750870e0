// The generated C file: a fixed frame of literal lines into which the user's texts are pasted unchanged.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace tessaly {

class EncodedOutput;

// The origin of a piece of the generated file: the frame, or a member's text, always from its first character on.
struct CCodeOrigin {
    enum class Kind { Frame, References, Function, Event };
    Kind kind = Kind::Frame;
    std::int32_t index = 0; // of the function or event
};

// Takes the generated file piece by piece, in order.
class CCodeSink {
public:
    virtual ~CCodeSink() = default;
    virtual void Write(std::string_view text, CCodeOrigin origin) = 0;
};

// Sends everything on to a file, and then to `observer`, where given, until that throws.
class CCodeFileSink final : public CCodeSink {
public:
    explicit CCodeFileSink(EncodedOutput& output, CCodeSink* observer = nullptr)
        : mOutput(output),
          mObserver(observer) {}
    void Write(std::string_view text, CCodeOrigin origin) override;

private:
    EncodedOutput& mOutput;
    CCodeSink* mObserver;
};

// The prototype that the C file declares for a function: its code up to the first "{", without the last character
// before that. Without a "{" it is all of the code. With the brace on a line of its own a CR stays at the end. False
// when the code begins with "{", which no prototype can be cut from.
bool CutPrototype(std::string_view code, std::string_view& prototype);

// The "#include" lines at the front of each generated file, and what else stands there.
std::string_view CCodeHead();

} // namespace tessaly
