#include "ui/FindEverywhere.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"

#include <algorithm>

namespace tessaly {

namespace {

// Goes through the lines of a text from the first one on.
class LinesInOrder {
public:
    explicit LinesInOrder(std::string_view text) : mRest(text) {}

    // Not in front of the one that was asked for last.
    std::string_view Line(std::size_t number) {
        for (; mNumber < number; ++mNumber) {
            const std::size_t end = LineLength(mRest);
            mRest.remove_prefix(std::min(end + (mRest.substr(end, 2) == "\r\n" ? 2 : 1), mRest.size()));
        }
        return mRest.substr(0, LineLength(mRest));
    }

private:
    std::string_view mRest;
    std::size_t mNumber = 0;
};

Diagnostic PlaceOf(const std::string& member, const Match& match, std::string_view line) {
    Diagnostic place;
    place.kind = DiagnosticKind::Note;
    place.member = member;
    place.line = match.begin.line + 1;
    place.column = match.begin.column + 1;
    place.text = TrimBack(TrimFront(line));
    return place;
}

} // namespace

FoundPlaces FindEverywhere(const VornSrcObj& document, const ShownMember& shown, std::string_view wanted,
                           FindOptions options, std::size_t most) {
    FoundPlaces found;
    for (const CCodeOrigin member : AllMembers(document)) {
        const std::string name = MemberName(document, member);
        const std::string_view text = name == shown.name ? std::string_view(shown.text) : MemberText(document, member);
        const std::vector<Match> matches = FindAll(text, wanted, options);
        LinesInOrder lines(text);
        for (const Match& match : matches) {
            if (found.places.size() < most) {
                found.places.push_back(PlaceOf(name, match, lines.Line(match.begin.line)));
                found.texts.try_emplace(name, text);
            }
        }
        found.count += matches.size();
    }
    return found;
}

} // namespace tessaly
