// What the program is and which version of it.
#pragma once

#include <cstdint>
#include <string>

namespace tessaly {

class ApplicationVersion {
public:
    virtual ~ApplicationVersion() = default;

    virtual std::int32_t Major() const = 0;
    virtual std::int32_t Minor() const = 0;
    virtual std::int32_t Revision() const = 0;
    virtual std::string Title() const = 0;
};

} // namespace tessaly
