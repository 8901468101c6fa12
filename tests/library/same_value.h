#pragma once

#include "exact_value.h"

// The promise that exact conversions share.

namespace xfc::proof {

/// Whether both say the same: the same number, or the same sign of the same kind. The sign of a nan does not
/// count.
inline bool same_value(const exact_value& a, const exact_value& b) {
    if (a.is != b.is || a.is == exact_value::kind::nan) {
        return a.is == b.is;
    }
    if (a.negative != b.negative || a.is != exact_value::kind::number) {
        return a.negative == b.negative;
    }
    mpfr_number first(128);
    mpfr_number second(128);
    set_exactly(first, a);
    set_exactly(second, b);
    return mpfr_equal_p(static_cast<mpfr_srcptr>(first), static_cast<mpfr_srcptr>(second)) != 0;
}

}  // namespace xfc::proof
