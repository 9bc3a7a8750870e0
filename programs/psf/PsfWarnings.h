// Turns what the reader meets on its way through a file into warnings for the user.
#pragma once

#include "document/PsfReadObserver.h"
#include "document/VornSrcObj.h"
#include "platform/text/CodePage.h"

#include <array>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly::psf {

struct PsfWarning {
    std::uint64_t offset; // in the file, in bytes
    std::string text;     // "MEMBER: ..."
};

// Observes one load of one document and then looks at what came of it.
class PsfWarnings final : public PsfReadObserver {
public:
    // `document` is the one being loaded.
    explicit PsfWarnings(const VornSrcObj& document) : mDocument(document) {}

    void Notice(const PsfNotice& notice) override;

    // All warnings for the file, whose content is `bytes`, in the order of their places. To be called once, after
    // the load. There are at most 10,000; the last one then says so.
    std::vector<PsfWarning> Finish(const std::string& bytes, const CodePage& codePage);

private:
    // A function that was read, and where its parts begin in the file.
    struct Section {
        std::int32_t index = 0; // in the list of names
        std::uint64_t header = 0;
        std::uint64_t prototype = 0;
        std::uint64_t body = 0;
        bool dropped = false;
    };
    // From `offset` on the bytes of the file belong to `member`; "" for what is not kept.
    struct Stretch {
        std::uint64_t offset;
        std::string member;
    };

    void NoticeFunction(const PsfNotice& notice);
    void NoticeEvent(const PsfNotice& notice);
    void NoticeTag(const PsfNotice& notice);
    void NoticeNames(const PsfNotice& notice);
    void FunctionEnded(const PsfNotice& notice);
    void FunctionLost(const PsfNotice& notice);
    void TakeIgnored(const std::string& beforeWhat, const std::string& member);
    void CheckMissingTags(std::uint64_t lastLine);
    void CheckEvents(std::uint64_t lastLine);
    void CheckDropped();
    void CheckFunctions();
    void CheckFunction(const Section& section, std::int32_t index);
    void CheckNames(const std::string& bytes, const CodePage& codePage);
    void CheckEnd(const std::string& bytes);
    void CheckCharacters(const std::string& bytes, const CodePage& codePage);

    std::string_view NameOf(std::int32_t index) const;
    std::string FunctionMember(std::int32_t index) const;
    std::string CollisionOf(std::string_view name);
    void Warn(std::uint64_t offset, const std::string& member, const std::string& text);

    const VornSrcObj& mDocument;
    std::vector<PsfWarning> mWarnings;
    std::vector<std::string> mTags;
    std::vector<Stretch> mStretches;

    std::int32_t mCount = 0;
    std::uint64_t mCountLine = 0;
    std::string mNamesText;
    std::vector<std::string_view> mNames; // pieces of mNamesText
    std::uint64_t mNamesLine = 0;

    std::optional<std::uint64_t> mIgnored; // the first line that was ignored since the last that counted
    bool mIgnoredIsTold = false;           // the loss of these lines has its warning already
    std::uint64_t mTerminator = 0;         // the tag line that ended a text, where one did
    std::string mTerminated;               // and the member whose text that was
    std::string mTerminatorText;

    Section mSection;
    std::int32_t mLastHeader = -1;
    std::vector<Section> mRead;                          // in the order of the file, and so of the document's functions
    std::map<std::string_view, std::string> mCollisions; // by name, a piece of mNamesText
    std::string_view mLastCollision;
    std::string mShownCollision;
    bool mSectionsMissing = false;
    bool mCountIsBad = false;

    bool mEventFound = false;
    std::array<bool, EventCount> mStored = {};
    std::array<std::uint64_t, EventCount> mEventLine = {};
    std::optional<std::uint64_t> mEnd; // the "[EndPSF]" that ended an event's text first
    std::int32_t mEndEvent = 0;
};

} // namespace tessaly::psf
