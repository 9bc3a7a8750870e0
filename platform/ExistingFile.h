// What becomes of a file that is there already when another one is to take its name.
#pragma once

namespace tessaly {

enum class Existing { Replace, Keep };

} // namespace tessaly
