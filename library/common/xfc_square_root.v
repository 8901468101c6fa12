// Square root of an IEEE number, digit by digit, rounded to nearest; no root is halfway between two numbers. Subnormal
// numbers are zero, the root of -0 is -0, that of any other negative number is nan.
//   step unpack:  what is special; the result's exponent, half the operand's
//   step first:   the operand moved by a place when its exponent is odd; the root's highest digit is 1
//   step digit:   a digit a cycle, down to the one behind the fraction
//   step round:   one carry chain; the root is too far below 2 to reach it
//   step pack:    fraction of a special result
// Latency fraction_bits + 5 cycles, a register behind every step and digit.
module xfc_square_root
  #(parameter exponent_bits = 8,
    parameter fraction_bits = 23)
  (input sysclk, enable, sign,
   input [exponent_bits-1:0] exponent,
   input [fraction_bits-1:0] fraction,
   output [exponent_bits+fraction_bits:0] root);

  localparam digits = fraction_bits + 2;             // hidden one, fraction, one to round
  localparam state_bits = 2 * digits + 1;
  localparam aside_bits = exponent_bits + 3;         // sign, nan, special, exponent of the result
  localparam half_bias = (1 << (exponent_bits - 2)) - 1;   // without the one that an odd exponent adds

  // unpack
  wire zero = exponent == 0;
  wire infinite_or_nan = &exponent;
  wire nan = (infinite_or_nan & (|fraction)) | (sign & !zero);
  wire special = zero | infinite_or_nan | nan;
  wire [exponent_bits-1:0] half =
    {1'b0, exponent[exponent_bits-1:1]} + half_bias[exponent_bits-1:0] + {{exponent_bits-1{1'b0}}, exponent[0]};
  wire [exponent_bits-1:0] root_exponent =
    nan | infinite_or_nan ? {exponent_bits{1'b1}} : zero ? {exponent_bits{1'b0}} : half;
  wire [aside_bits-1:0] aside_d = {sign & !nan, nan, special, root_exponent};

  wire [aside_bits-1:0] unpack_aside;
  wire [fraction_bits-1:0] unpacked;
  wire one_place;
  xfc_register #(aside_bits, 1) unpack_0 (sysclk, enable, aside_d, unpack_aside);
  xfc_register #(fraction_bits, 1) unpack_1 (sysclk, enable, fraction, unpacked);
  xfc_register #(1, 1) unpack_2 (sysclk, enable, !exponent[0], one_place);

  // first: the pair of bits before the point is 1, 2 or 3; the highest digit takes 1 off
  wire top = unpacked[fraction_bits-1];
  wire [state_bits-1:0] first_d =
    one_place ? {top, !top, unpacked[fraction_bits-2:0], {fraction_bits+3{1'b0}}, 1'b0} :
    {2'b00, unpacked, {fraction_bits+2{1'b0}}, 1'b0};

  // What is known behind the step first and each digit.
  genvar known;
  generate
    for (known = 0; known < digits; known = known + 1) begin : after
      wire [state_bits-1:0] state;
      wire [aside_bits-1:0] aside;
      if (known == 0) begin : step_first
        xfc_register #(state_bits, 1) first_0 (sysclk, enable, first_d, state);
        xfc_register #(aside_bits, 1) first_1 (sysclk, enable, unpack_aside, aside);
      end else begin : step_digit
        xfc_root_digit #(digits, known, 1) next_digit (sysclk, enable, after[known-1].state, state);
        xfc_register #(aside_bits, 1) digit_0 (sysclk, enable, after[known-1].aside, aside);
      end
    end
  endgenerate

  // round
  wire [state_bits-1:0] last_state = after[digits-1].state;
  wire [digits-1:0] digits_found = ~last_state[digits-1:0];
  wire unused = &{1'b0, last_state[state_bits-1:digits], digits_found[digits-1]};
  wire [fraction_bits-1:0] rounded_d =
    digits_found[fraction_bits:1] + {{fraction_bits-1{1'b0}}, digits_found[0]};

  wire [fraction_bits-1:0] rounded;
  wire [aside_bits-1:0] round_aside;
  xfc_register #(fraction_bits, 1) round_0 (sysclk, enable, rounded_d, rounded);
  xfc_register #(aside_bits, 1) round_1 (sysclk, enable, after[digits-1].aside, round_aside);

  // pack
  wire round_sign, round_nan, round_special;
  wire [exponent_bits-1:0] round_exponent;
  assign {round_sign, round_nan, round_special, round_exponent} = round_aside;
  wire [fraction_bits-1:0] packed_d = round_special ? {round_nan, {fraction_bits-1{1'b0}}} : rounded;

  xfc_register #(1 + exponent_bits + fraction_bits, 1) pack_0
    (sysclk, enable, {round_sign, round_exponent, packed_d}, root);
endmodule
