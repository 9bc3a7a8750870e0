// Members by name.
#include "document/Members.h"

namespace tessaly {

namespace {

using Kind = CCodeOrigin::Kind;

} // namespace

std::optional<CCodeOrigin> FindMember(const VornSrcObj& document, std::string_view name) {
    if (name == ReferencesName) {
        return CCodeOrigin{Kind::References, 0};
    }
    if (name.starts_with(FunctionPrefix)) {
        const auto index = document.Functions().IndexOf(name.substr(FunctionPrefix.size()));
        return index ? std::optional(CCodeOrigin{Kind::Function, *index}) : std::nullopt;
    }
    for (std::int32_t i = 0; i < EventCount; ++i) {
        if (MemberName(document, {Kind::Event, i}) == name) {
            return CCodeOrigin{Kind::Event, i};
        }
    }
    return std::nullopt;
}

std::string MemberName(const VornSrcObj& document, CCodeOrigin member) {
    switch (member.kind) {
    case Kind::Function:
        return std::string(FunctionPrefix).append(document.Functions().NameAt(member.index));
    case Kind::Event:
        return std::string(EventPrefix).append(EventTable.at(static_cast<std::size_t>(member.index)).name);
    default:
        return std::string(ReferencesName);
    }
}

std::string_view MemberText(const VornSrcObj& document, CCodeOrigin member) {
    switch (member.kind) {
    case Kind::Function:
        return document.Functions().CodeAt(member.index);
    case Kind::Event:
        return document.EventCodeAt(member.index);
    default:
        return document.VarCode();
    }
}

Status UpdateMember(VornSrcObj& document, CCodeOrigin member, std::string_view text) {
    switch (member.kind) {
    case Kind::Function:
        return document.UpdateFunction(document.Functions().NameAt(member.index), "", text);
    case Kind::Event:
        return document.UpdateEventCodeByIndex(member.index, text);
    default:
        return document.UpdateVarCode(text);
    }
}

std::vector<CCodeOrigin> AllMembers(const VornSrcObj& document) {
    std::vector<CCodeOrigin> members = {{Kind::References, 0}};
    for (std::int32_t i = 0; i < document.GetFunctionCount(); ++i) {
        members.push_back({Kind::Function, i});
    }
    for (std::int32_t i = 0; i < EventCount; ++i) {
        members.push_back({Kind::Event, i});
    }
    return members;
}

} // namespace tessaly
