// Tables of what a function makes of its argument.
#pragma once

#include <gtest/gtest.h>
#include <initializer_list>
#include <type_traits>
#include <utility>

namespace tessaly {

// Each row is what is given and what must come of it.
template <typename Result, typename Given>
void ExpectEach(Result (*function)(Given), std::initializer_list<std::pair<std::remove_cvref_t<Given>, Result>> rows) {
    for (const auto& [given, result] : rows) {
        EXPECT_EQ(function(given), result) << "of " << testing::PrintToString(given);
    }
}

} // namespace tessaly
