// Built in when XFC_VERIFY is on: checks the graph after every pass and stops the process at the first violation.

#include <cstdio>
#include <cstdlib>

#include "optimizer/optimizer.h"
#include "optimizer/verifier.h"

namespace xfc {

namespace {

/// Rows of the pass table from which on something more, or less, holds.
constexpr std::size_t first_pass = 0;
constexpr std::size_t conversions_pass = 2;
constexpr std::size_t delays_pass = 9;

void check_after_pass(std::size_t index) {
    static bool agreed = false;
    if (index == first_pass) {
        agreed = consumers_agree();
    }
    std::string violation = verify_graph({.every_consumer_agrees = agreed && index <= delays_pass,
                                          .acyclic = agreed && index >= conversions_pass});
    if (violation.empty() && agreed && index == delays_pass) {
        violation = verify_schedule();
    }
    if (!violation.empty()) {
        std::fprintf(stderr, "graph check after \"%s\": %s\n", std::string(optimizer_passes()[index].banner).c_str(),
                     violation.c_str());
        std::abort();
    }
}

const bool installed = [] {
    after_optimizer_pass = check_after_pass;
    return true;
}();

}  // namespace

}  // namespace xfc
