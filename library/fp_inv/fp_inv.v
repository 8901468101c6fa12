// One divided by an IEEE single, correctly rounded to nearest for every operand; no quotient is halfway between two
// numbers. Subnormal numbers and results are zero, 1 / 0 is infinite, both with the operand's sign.
//   step unpack:  the operand's significand times three; what is special; the result's exponent
//   step digit:   a base 4 digit of 2 / significand a cycle, the last one with the bit behind the fraction
//   step round:   one carry chain, the quotient being too far below 2 to reach it; fraction of a special result
// Latency 14 cycles: a register behind unpack, each of the 12 digits, and round. `synthesize` changes nothing.
module fp_inv
  #(parameter synthesize = 0)
  (input sysclk, reset, enable,
   input signin,
   input [8:1] exponentin,
   input [23:1] mantissain,
   output signout,
   output [8:1] exponentout,
   output [23:1] mantissaout);

  generate
    if (synthesize < 0 || synthesize > 1) parameter_missing_or_out_of_range refused ();
  endgenerate

  localparam exponent_bits = 8;
  localparam fraction_bits = 23;
  localparam significand_bits = fraction_bits + 1;
  localparam digits = 12;
  localparam quotient_bits = 2 * digits + 1;             // hidden one, fraction, one to round
  localparam state_bits = 3 * significand_bits + 1 + quotient_bits;
  localparam aside_bits = exponent_bits + 3;             // sign, nan, special, exponent of the result
  localparam [exponent_bits-1:0] largest_power = 254;    // of two whose reciprocal is no zero, as a field, and one more

  // unpack
  wire zero = exponentin == 0;
  wire power_of_two = mantissain == 0;
  wire infinite_or_nan = &exponentin;
  wire nan = infinite_or_nan & !power_of_two;
  // The exponent field of a power of two and of any other number add up to 254 and 253.
  wire [exponent_bits-1:0] inverse_exponent = largest_power - exponentin - {{exponent_bits-1{1'b0}}, !power_of_two};
  wire too_small = infinite_or_nan | (exponentin == largest_power) | ((exponentin == largest_power - 8'd1) &
                                                                      !power_of_two);
  wire [exponent_bits-1:0] result_exponent =
    nan | zero ? {exponent_bits{1'b1}} : too_small ? {exponent_bits{1'b0}} : inverse_exponent;
  wire special = zero | too_small | power_of_two;
  wire [aside_bits-1:0] aside_d = {signin & !nan, nan, special, result_exponent};
  wire [significand_bits-1:0] divisor = {1'b1, mantissain};
  wire [significand_bits+1:0] triple = {2'b00, divisor} + {1'b0, divisor, 1'b0};
  // Two less the divisor, below the divisor: the quotient's hidden one is taken off.
  wire [significand_bits-1:0] remainder = {significand_bits{1'b0}} - divisor;
  wire [state_bits-1:0] unpack_d =
    {remainder, ~divisor, ~triple[significand_bits+1:2], divisor[1:0] == 0, {quotient_bits-1{1'b0}}, 1'b1};
  wire unused_low = &{1'b0, triple[1:0]};

  // What is known behind the step unpack and each digit.
  genvar known;
  generate
    for (known = 0; known <= digits; known = known + 1) begin : after
      wire [state_bits-1:0] state;
      wire [aside_bits-1:0] aside;
      if (known == 0) begin : step_unpack
        xfc_register #(state_bits, 1) unpack_0 (sysclk, enable, unpack_d, state);
        xfc_register #(aside_bits, 1) unpack_1 (sysclk, enable, aside_d, aside);
      end else begin : step_digit
        xfc_divide_digit #(significand_bits, quotient_bits, 1) next_digit
          (sysclk, enable, after[known-1].state, state);
        xfc_register #(aside_bits, 1) digit_0 (sysclk, enable, after[known-1].aside, aside);
      end
    end
  endgenerate

  // round
  wire [state_bits-1:0] last_state = after[digits].state;
  wire [quotient_bits-1:0] quotient = last_state[quotient_bits-1:0];
  wire sign, round_nan, round_special;
  wire [exponent_bits-1:0] exponent;
  assign {sign, round_nan, round_special, exponent} = after[digits].aside;
  wire [fraction_bits-1:0] rounded = quotient[fraction_bits:1] + {{fraction_bits-1{1'b0}}, quotient[0]};
  wire [fraction_bits-1:0] fraction = round_special ? {round_nan, {fraction_bits-1{1'b0}}} : rounded;
  wire unused = &{1'b0, reset, quotient[quotient_bits-1], last_state[state_bits-1:quotient_bits]};

  xfc_register #(1 + exponent_bits + fraction_bits, 1) round_0
    (sysclk, enable, {sign, exponent, fraction}, {signout, exponentout, mantissaout});
endmodule
