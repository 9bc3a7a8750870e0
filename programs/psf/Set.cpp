// The new text is read before the file: whoever makes it may take long, and others may change the file meanwhile.
#include "document/Members.h"
#include "platform/text/Utf8.h"
#include "programs/psf/Commands.h"
#include "programs/psf/base/Saving.h"

#include <algorithm>
#include <cstdio>
#include <set>
#include <utility>

namespace tessaly::psf {

namespace {

constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";

// Standard input without its mark. No value, and it says so, when it is no text.
std::optional<std::string> ReadText(Session& session) {
    std::string text;
    if (!ReadInput(session, std::string(StandardInput), text)) {
        return std::nullopt;
    }
    if (!IsUtf8(text)) {
        PrintError("standard input is not UTF-8");
        return std::nullopt;
    }
    return text.starts_with(ByteOrderMark) ? text.substr(ByteOrderMark.size()) : text;
}

// Which characters of `text` the code page lacks, and the line where each stands first; "" when it has all.
std::string LackingCharacters(const CodePage& codePage, std::string_view text) {
    constexpr std::size_t mostShown = 5;
    std::string list;
    std::set<char32_t> seen;
    for (std::size_t position = AsciiPrefix(text); position < text.size();
         position += AsciiPrefix(text.substr(position))) {
        const std::size_t start = position;
        const char32_t character = ReadUtf8(text, position);
        std::string encoded;
        codePage.AppendEncoded(text.substr(start, position - start), encoded);
        if (encoded != "?" || !seen.insert(character).second) {
            continue;
        }
        if (seen.size() > mostShown) {
            return list + ", ...";
        }
        char name[16];
        std::snprintf(name, sizeof name, "U+%04X", static_cast<unsigned>(character));
        const auto line = 1 + std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(start), '\n');
        list += std::string(list.empty() ? "" : ", ") + name + " in line " + std::to_string(line);
    }
    return list;
}

} // namespace

int Set(Session& session, const std::string& file, const std::string& member, bool strict) {
    const std::optional<std::string> text = ReadText(session);
    if (!text) {
        return WrongUsage;
    }
    bool isTold = false;
    return ChangeDocument(session, file, [&](VornSrcObj& document) {
        const std::optional<CCodeOrigin> found = FindOrSay(session, document, file, member);
        if (!found) {
            return ExitStatus(Status::NotFound);
        }
        const std::string lacking = LackingCharacters(*session.codePage, *text);
        if (!lacking.empty() && !std::exchange(isTold, true)) {
            PrintError(file + ": " + member + ": characters that the code page lacks" +
                       (strict ? ": " : " become \"?\": ") + lacking);
        }
        if (!lacking.empty() && strict) {
            return WrongUsage;
        }
        const Status status = UpdateMember(document, *found, *text);
        if (status != Status::Done) {
            PrintError(file + ": the text of \"" + member + "\" cannot be replaced");
        }
        return ExitStatus(status);
    });
}

} // namespace tessaly::psf
