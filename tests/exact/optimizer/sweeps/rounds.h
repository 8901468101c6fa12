#pragma once

#include <cstdlib>
#include <string>

namespace xfc::test {

/// Rounds of a test on random cases; XFC_TEST_ROUNDS times as many when that is set, for proofs that take minutes.
[[nodiscard]] inline int rounds(int usual) {
    const char* times = std::getenv("XFC_TEST_ROUNDS");
    return times == nullptr ? usual : usual * std::stoi(times);
}

}  // namespace xfc::test
