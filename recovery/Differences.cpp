// Members are matched by name.
#include "recovery/Differences.h"

#include "document/Members.h"
#include "platform/text/Ascii.h"

#include <algorithm>
#include <unordered_map>

namespace tessaly {

namespace {

std::unordered_map<std::string, std::string_view> TextsByName(const VornSrcObj& document) {
    std::unordered_map<std::string, std::string_view> texts;
    for (const CCodeOrigin& member : AllMembers(document)) {
        texts.emplace(MemberName(document, member), WithoutLastBreaks(MemberText(document, member)));
    }
    return texts;
}

} // namespace

std::string_view WithoutLastBreaks(std::string_view text) {
    return TrimBack(text, "\r\n");
}

std::vector<std::string> DifferingMembers(const VornSrcObj& a, const VornSrcObj& b) {
    std::unordered_map<std::string, std::string_view> others = TextsByName(b);
    std::vector<std::string> names;
    for (const CCodeOrigin& member : AllMembers(a)) {
        const std::string name = MemberName(a, member);
        const auto other = others.find(name);
        if (other == others.end() || other->second != WithoutLastBreaks(MemberText(a, member))) {
            names.push_back(name);
        }
        others.erase(name);
    }
    for (const CCodeOrigin& member : AllMembers(b)) {
        if (std::string name = MemberName(b, member); others.contains(name)) {
            names.push_back(std::move(name));
        }
    }
    return names;
}

bool AreSame(const VornSrcObj& a, const VornSrcObj& b) {
    if (a.GetFunctionCount() != b.GetFunctionCount()) {
        return false;
    }
    for (std::int32_t i = 0; i < a.GetFunctionCount(); ++i) {
        if (a.Functions().NameAt(i) != b.Functions().NameAt(i)) {
            return false;
        }
    }
    const std::vector<CCodeOrigin> members = AllMembers(a); // and those of `b`
    return std::all_of(members.begin(), members.end(),
                       [&](const CCodeOrigin& member) { return MemberText(a, member) == MemberText(b, member); });
}

} // namespace tessaly
