// What the texts of a document show by themselves, without a compiler: what they leave open, and what the generated C
// file will not bear. A text of which this says nothing may still be wrong.
#pragma once

#include "document/CCodeGenerator.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tessaly {

class VornSrcObj;

// The names of rules. They are what other tools go by, so none ever changes.
namespace rule {
inline constexpr std::string_view OpenComment = "open-comment";
inline constexpr std::string_view OpenBrace = "open-brace";
inline constexpr std::string_view OpenConditional = "open-if";
inline constexpr std::string_view OpenDeclaration = "open-declaration";
inline constexpr std::string_view OpenString = "open-string";
inline constexpr std::string_view StrayBrace = "stray-brace";
inline constexpr std::string_view PrototypeCut = "prototype-cut";
inline constexpr std::string_view PrototypeComment = "prototype-comment";
inline constexpr std::string_view HandlerMissing = "handler-missing";
inline constexpr std::string_view ReservedName = "reserved-name";
inline constexpr std::string_view SameName = "same-name";
inline constexpr std::string_view ConflictMarker = "conflict-marker";
inline constexpr std::string_view LineEnds = "line-ends";
inline constexpr std::string_view CodePageLoss = "code-page";
inline constexpr std::string_view Utf8Bytes = "utf-8";
} // namespace rule

struct Finding {
    CCodeOrigin member;   // never the frame
    std::size_t line = 0; // in its text, from 1: LF, CR LF and CR each end one
    std::string_view rule;
    std::string message;

    // A compiler says nothing, or points elsewhere.
    bool isHiddenFromCompilers = false;
};

// All findings in document order, those of one member by their lines. Every one is the sign of one mistake: what it may
// have caused behind it in the same text is left out.
std::vector<Finding> Lint(const VornSrcObj& document);

} // namespace tessaly
