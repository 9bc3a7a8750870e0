// Every line is looked at for itself: first its front, then what a linker means by it, then its inside.
#include "diagnostics/RewriteMessages.h"

#include "platform/text/Ascii.h"

#include <utility>

namespace tessaly {

MessageRewriter::MessageRewriter(const BuildMap& map, std::string psfPath, Inside inside)
    : mMap(map),
      mPsfPath(std::move(psfPath)),
      mInside(inside),
      mLinker(map) {}

void MessageRewriter::Rewrite(std::string_view line, std::string& result) {
    if (!mCounting) {
        mVotes.Add(mMap, line);
    }
    mCurrent = mCounting.value_or(mVotes.Result());
    const std::optional<LinkerMessages::Message> linker = mLinker.Next(line);
    if (RewriteFront(line, result)) {
        return;
    }
    const std::size_t before = result.size();
    RewriteInside(line, result);
    const bool isUnchanged = result.size() - before == line.size();
    if (isUnchanged && linker && linker->place) {
        result.erase(before);
        result.append(Place(*linker->place)).append(": ").append(linker->text);
        result.append(" (").append(TrimBack(linker->where)).append(")");
    }
}

// A message that begins with its position. False when the line is none.
bool MessageRewriter::RewriteFront(std::string_view line, std::string& result) const {
    const std::optional<FilePosition> position = FindPosition(mMap.File(), line, 0);
    if (!position || position->begin > 0) {
        return false;
    }
    const std::optional<std::string_view> message = MessageBehind(line, position->end);
    const std::optional<std::string> mapped = message ? MapPosition(*position) : std::nullopt;
    if (mapped) {
        result.append(*mapped);
        RewriteInside(*message, result);
        result.append(" (").append(line.substr(0, position->end)).append(")");
    }
    return mapped.has_value();
}

void MessageRewriter::RewriteInside(std::string_view line, std::string& result) const {
    std::size_t copied = 0;
    std::optional<FilePosition> position = FindPosition(mMap.File(), line, 0);
    for (; position; position = FindPosition(mMap.File(), line, position->end)) {
        const std::size_t begin = position->begin;
        const std::size_t end = position->end;
        if (mInside == Inside::OfCompilers && !IsInsidePosition(line.substr(0, begin), line.substr(end))) {
            continue;
        }
        if (const std::optional<std::string> mapped = MapPosition(*position)) {
            result.append(line.substr(copied, begin - copied)).append(*mapped);
            result.append(" (").append(line.substr(begin, end - begin)).append(")");
            copied = end;
        }
    }
    result.append(line.substr(copied));
}

std::optional<std::string> MessageRewriter::MapPosition(const FilePosition& position) const {
    const std::optional<MemberPlace> place = mMap.Find(position.line, mCurrent);
    return place ? std::optional(Place(*place)) : std::nullopt;
}

std::string MessageRewriter::Place(const MemberPlace& place) const {
    std::string text = mPsfPath;
    return text.append(":").append(place.member).append(":").append(std::to_string(place.line));
}

std::string RewriteMessages(const BuildMap& map, std::string_view psfPath, std::string_view output) {
    MessageRewriter rewriter(map, std::string(psfPath), MessageRewriter::Inside::OfCompilers);
    rewriter.SetCounting(CountingOf(map, output));
    std::string result;
    result.reserve(output.size() + output.size() / 4);
    while (!output.empty()) {
        const std::size_t size = output.size();
        std::string_view line = TakeLine(output);
        const bool hasLf = line.size() + output.size() < size;
        const bool hasCr = line.ends_with('\r');
        line.remove_suffix(hasCr ? 1 : 0);
        rewriter.Rewrite(line, result);
        result.append(hasCr ? "\r" : "").append(hasLf ? "\n" : "");
    }
    return result;
}

} // namespace tessaly
