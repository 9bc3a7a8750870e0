// JSON for other programs.
#pragma once

#include <nlohmann/json.hpp>
#include <string>

namespace tessaly::psf {

// `json` in one line, in UTF-8 whatever a path in it may be.
inline std::string ToText(const nlohmann::ordered_json& json) {
    return json.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace);
}

} // namespace tessaly::psf
