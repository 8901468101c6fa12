// One digit of a square root, the next one below the `known` highest: 1 where the remainder allows it. The state has,
// from high to low, the remainder (known + 1 bits), the pairs of the operand's bits that were not looked at yet, and
// the complement of the root's known bits, whose addition subtracts without inverters. With each digit the remainder
// and the root take the bit more that two pending bits leave.
module xfc_root_digit
  #(parameter digits  = 25,   // of the whole root
    parameter known   = 1,    // of them, before this one
    parameter enabled = 1)    // 1: a register behind, 0: none
  (input sysclk, enable,
   input [2*digits:0] state,
   output [2*digits:0] next_state);

  localparam wide_bits = known + 3;                  // four remainders and the next pair
  localparam pending_top = 2 * digits - wide_bits;   // highest bit behind them

  wire [wide_bits-1:0] wide = state[2*digits:pending_top+1];
  // Less four roots and one, modulo 2 ** wide_bits; the carry says that this is not negative.
  wire [wide_bits:0] trial = {1'b0, wide} + {2'b01, state[known-1:0], 2'b11};
  wire digit = trial[wide_bits];
  wire [wide_bits-2:0] remainder = digit ? trial[wide_bits-2:0] : wide[wide_bits-2:0];

  xfc_register #(2 * digits + 1, enabled) root_digit_0
    (sysclk, enable, {remainder, state[pending_top:0], !digit}, next_state);
endmodule
