// Just enough JSON to answer with: values are texts that already are JSON.
#pragma once

#include <cstdio>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tessaly::probe {

inline std::string Quoted(std::string_view utf8) {
    std::string json = "\"";
    for (const char c : utf8) {
        if (c == '"' || c == '\\') {
            json += '\\';
            json += c;
        } else if (static_cast<unsigned char>(c) < 0x20) {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(c));
            json += code;
        } else {
            json += c;
        }
    }
    return json + "\"";
}

inline std::string Bool(bool value) {
    return value ? "true" : "false";
}

inline std::string Array(const std::vector<std::string>& values) {
    std::string json = "[";
    for (const std::string& value : values) {
        json += (json.size() > 1 ? "," : "") + value;
    }
    return json + "]";
}

inline std::string Object(const std::vector<std::pair<std::string_view, std::string>>& members) {
    std::string json = "{";
    for (const auto& [name, value] : members) {
        json += (json.size() > 1 ? "," : "") + Quoted(name) + ":" + value;
    }
    return json + "}";
}

} // namespace tessaly::probe
