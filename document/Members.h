// The members of a document by their names: "references", "functions/NAME", "events/OnKey".
// A CCodeOrigin here is never the frame.
#pragma once

#include "document/CCodeGenerator.h"
#include "document/VornSrcObj.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

// What stands in front of a name, and the one name without it.
inline constexpr std::string_view FunctionPrefix = "functions/";
inline constexpr std::string_view EventPrefix = "events/";
inline constexpr std::string_view ReferencesName = "references";

// The member called `name`; no value when the document has none of that name. Names are matched exactly.
std::optional<CCodeOrigin> FindMember(const VornSrcObj& document, std::string_view name);

// The name of a member.
std::string MemberName(const VornSrcObj& document, CCodeOrigin member);

// The text of a member, good until the document changes.
std::string_view MemberText(const VornSrcObj& document, CCodeOrigin member);

// Replaces the text of a member. A function then has an empty stored prototype, as after an edit in the window.
Status UpdateMember(VornSrcObj& document, CCodeOrigin member, std::string_view text);

// All members in document order: the references, the functions, the nine events.
std::vector<CCodeOrigin> AllMembers(const VornSrcObj& document);

} // namespace tessaly
