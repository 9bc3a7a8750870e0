// Warnings for [GFuncs] and [FuncCode]: the list of functions and their sections.
#pragma once

#include "document/VornSrcObj.h"
#include "programs/psf/base/Findings.h"

namespace tessaly::psf {

class FunctionWarnings {
public:
    explicit FunctionWarnings(Findings& findings) : mFindings(findings) {}

    // What the reader meets.
    void Count(PsfLine value);
    void Names(PsfLine value);
    void Step(PsfStep step, std::int32_t index, PsfLine line);

    bool AreAnnounced() const { return mCount > 0; }

    // A count or a section is wrong, so no event was read.
    bool EventsAreLost() const { return mFileIsOver || mSectionsMissing; }

    // Where the text of a function of the document begins in the file, once Finish was called: its FuncBody= line.
    std::uint64_t TextBegin(std::size_t index) const { return index < mRead.size() ? mRead[index].body : 0; }

    // Warns of what only shows behind the load.
    void Finish(const FuncObject& functions, const std::string& bytes, const CodePage& codePage);

private:
    // A function and where its parts begin in the file.
    struct Section {
        std::int32_t index = -1; // in the list of names
        std::uint64_t header = 0;
        std::uint64_t prototype = 0;
        std::uint64_t body = 0;
    };

    void Begin(std::int32_t index, std::uint64_t offset) { mSection = {index, offset, offset, offset}; }
    void Ended(std::int32_t index, PsfLine line);
    void Lost(std::int32_t index, PsfLine line);
    void CheckDropped(const FuncObject& functions);
    void CheckFunction(const Section& section, const std::string& member, std::string_view prototype,
                       std::string_view code);
    void CheckNames(const std::string& bytes, const CodePage& codePage);
    std::string_view NameOf(std::int32_t index) const;
    std::string Member(std::int32_t index) const;

    Findings& mFindings;
    std::int32_t mCount = 0;
    std::uint64_t mCountLine = 0;
    std::string mNamesText;
    std::deque<std::string_view> mNames; // pieces of mNamesText
    std::uint64_t mNamesLine = 0;
    Section mSection;
    std::deque<Section> mRead;     // behind Finish those of the functions of the document, in their order
    bool mSectionsMissing = false; // and this has its warning
    bool mFileIsOver = false;      // before the events
};

} // namespace tessaly::psf
