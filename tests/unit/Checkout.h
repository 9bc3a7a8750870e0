// Where the tests find what lies in the tree.
#pragma once

#include <string>

namespace tessaly {

// A file or folder of the checkout that these tests were built from, by its path there.
std::string InCheckout(const std::string& path);

} // namespace tessaly
