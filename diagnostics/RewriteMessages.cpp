// Every line is looked at for itself: first its front, then its inside.
#include "diagnostics/Diagnostics.h"
#include "diagnostics/MessageForms.h"

namespace tessaly {

namespace {

class Rewriter {
public:
    Rewriter(const BuildMap& map, std::string_view psfPath, LineCounting counting)
        : mMap(map),
          mPsfPath(psfPath),
          mCounting(counting) {}

    std::string Run(std::string_view output) {
        mResult.reserve(output.size() + output.size() / 4);
        while (!output.empty()) {
            const std::size_t size = output.size();
            std::string_view line = TakeLine(output);
            const bool hasLf = line.size() + output.size() < size;
            const bool hasCr = line.ends_with('\r');
            line.remove_suffix(hasCr ? 1 : 0);
            RewriteLine(line);
            mResult.append(hasCr ? "\r" : "").append(hasLf ? "\n" : "");
        }
        return std::move(mResult);
    }

private:
    void RewriteLine(std::string_view line) {
        const std::optional<FilePosition> position = FindPosition(mMap.File(), line, 0);
        if (position && position->begin == 0) {
            const std::optional<std::string_view> message = MessageBehind(line, position->end);
            const std::optional<std::string> mapped = MapPosition(*position);
            if (message && mapped) {
                mResult.append(*mapped);
                RewriteInside(*message);
                mResult.append(" (").append(line.substr(0, position->end)).append(")");
                return;
            }
        }
        RewriteInside(line);
    }

    void RewriteInside(std::string_view line) {
        std::size_t copied = 0;
        std::optional<FilePosition> position = FindPosition(mMap.File(), line, 0);
        for (; position; position = FindPosition(mMap.File(), line, position->end)) {
            const std::size_t begin = position->begin;
            const std::size_t end = position->end;
            if (!IsInsidePosition(line.substr(0, begin), line.substr(end))) {
                continue;
            }
            if (const std::optional<std::string> mapped = MapPosition(*position)) {
                mResult.append(line.substr(copied, begin - copied)).append(*mapped);
                mResult.append(" (").append(line.substr(begin, end - begin)).append(")");
                copied = end;
            }
        }
        mResult.append(line.substr(copied));
    }

    std::optional<std::string> MapPosition(const FilePosition& position) const {
        const std::optional<MemberPlace> place = mMap.Find(position.line, mCounting);
        if (!place) {
            return std::nullopt;
        }
        return std::string(mPsfPath) + ":" + std::string(place->member) + ":" + std::to_string(place->line);
    }

    const BuildMap& mMap;
    std::string_view mPsfPath;
    LineCounting mCounting;
    std::string mResult;
};

} // namespace

std::string RewriteMessages(const BuildMap& map, std::string_view psfPath, std::string_view output) {
    return Rewriter(map, psfPath, CountingOf(map, output)).Run(output);
}

} // namespace tessaly
