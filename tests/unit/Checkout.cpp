// The one file that is compiled anew for each checkout.
#include "tests/unit/Checkout.h"

namespace tessaly {

std::string InCheckout(const std::string& path) {
    return TESSALY_CHECKOUT "/" + path;
}

} // namespace tessaly
