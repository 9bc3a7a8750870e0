// The parameters of the call that is being typed.
#pragma once

#include "editing/Names.h"

#include <optional>
#include <string>

namespace tessaly {

struct ParameterHint {
    Place open;              // the "(" of the call
    std::string declaration; // of what is called
    std::size_t begin = 0;   // of the parameter in it that is being typed, in bytes
    std::size_t end = 0;     // the same as `begin` where there is none

    bool operator==(const ParameterHint&) const = default;
};

// Of the innermost call that `caret` is in. No value outside of calls and for what is not known.
std::optional<ParameterHint> ParameterHintAt(const TextLines& lines, Place caret, const KnownNames& names);

} // namespace tessaly
