#pragma once

namespace xfc::test {

/// Two inputs and two outputs, 23 cycles: y = sqrt(t) with t = a + 1.5, and z = b (double) delayed to the end by one of
/// two delays, of which the second was merged into the first. Slots:
///
///     0 a   3 castftox   5 + (constant 1.5)   6 castxtof   7 t (wire)   8 sqrt   2 y
///     1 b   9 delay      4 z                  10 delay (removed)
void build_two_outputs();

/// Two wires that drive each other: no inputs, no outputs; a pipeline of one cycle.
void build_no_outputs();

}  // namespace xfc::test
