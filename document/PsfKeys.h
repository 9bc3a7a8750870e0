// The tags and keys of a PSF file. A tag counts only as a whole line, exactly so; a key anywhere in a line,
// in any case.
#pragma once

#include <string_view>

namespace tessaly {

inline constexpr std::string_view GVarsTag = "[GVars]";
inline constexpr std::string_view GFuncsTag = "[GFuncs]";
inline constexpr std::string_view FuncCodeTag = "[FuncCode]";
inline constexpr std::string_view EventCodeTag = "[EventCode]";
inline constexpr std::string_view EndPsfTag = "[EndPSF]";

inline constexpr std::string_view NumFuncsKey = "NumFuncs=";
inline constexpr std::string_view FuncNamesKey = "FuncNames=";
inline constexpr std::string_view ProtoTypeKey = "ProtoType=";
inline constexpr std::string_view FuncBodyKey = "FuncBody=";

} // namespace tessaly
