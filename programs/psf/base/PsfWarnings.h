// Turns what the reader meets on its way through a file into warnings for the user.
#pragma once

#include "document/CCodeGenerator.h"
#include "programs/psf/base/FunctionWarnings.h"

#include <array>

namespace tessaly::psf {

// Observes one load of one document and then looks at what came of it.
class PsfWarnings final : public PsfReadObserver {
public:
    // With `lint`, what each member's text shows by itself is among the warnings.
    explicit PsfWarnings(bool lint) : mLint(lint) {}

    void Tag(PsfLine line) override;
    void Count(PsfLine value) override { mFunctions.Count(value); }
    void Names(PsfLine value) override { mFunctions.Names(value); }
    void Function(PsfStep step, std::int32_t index, PsfLine line) override { mFunctions.Step(step, index, line); }
    void Event(PsfStep step, std::int32_t index, PsfLine line) override;
    void Ignored(PsfLine line) override { mFindings.Ignored(line); }
    std::size_t KeptSize(std::string_view text) override;

    // All warnings for the file and the document that was loaded from it, in the order of their places. `bytes` is the
    // content of the file. To be called once.
    std::vector<PsfWarning> Finish(const VornSrcObj& document, const std::string& bytes, const CodePage& codePage);

    // Where line `line` of a member's text, counted from 1, begins in the file. Good after Finish.
    std::size_t OffsetOf(CCodeOrigin member, std::size_t line, const std::string& bytes) const;

private:
    struct EventText {
        std::uint64_t begin = 0; // its FuncBody= line, 0 when there is none
        bool isStored = false;
    };

    void EventEnded(std::int32_t index, PsfLine line);
    void CheckHeader(std::string_view header);
    bool TagIsMissing(std::uint64_t lastLine); // and so it says
    void CheckEvents(std::uint64_t lastLine);
    void CheckEnd(const std::string& bytes);

    void CheckTexts(const VornSrcObj& document, const std::string& bytes);

    bool mLint;
    std::optional<std::uint64_t> mReferences; // the line of "[GVars]"
    Findings mFindings;
    FunctionWarnings mFunctions{mFindings};
    std::size_t mTagsFound = 0;
    bool mAnyEvent = false;
    std::array<EventText, EventCount> mEvents;
    std::optional<std::uint64_t> mEnd; // the "[EndPSF]" that ended an event's text first
    std::int32_t mEndEvent = 0;
};

} // namespace tessaly::psf
