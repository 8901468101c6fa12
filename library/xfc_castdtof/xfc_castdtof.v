// Converts an IEEE double to an IEEE single: nearest, to even between two, whatever roundconvert is. What is below the
// smallest normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Subnormal is zero.
//   cycle 1  decide:  flags, the exponent with the single's bias, whether to round up
//   cycle 2  pack:    one carry chain through fraction and exponent; range and flags
// Latency 2 cycles. mantissa changes nothing.
module xfc_castdtof
  #(parameter roundconvert = 0, mantissa = 32)
  (input sysclk, reset, enable,
   input [64:1] aa,
   output [32:1] cc);

  generate
    if (roundconvert < 0 || roundconvert > 1 || (mantissa != 32 && mantissa != 36))
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam double_exponent = 11;
  localparam double_fraction = 52;
  localparam ieee_exponent = 8;
  localparam fraction_bits = 23;
  localparam dropped_bits = double_fraction - fraction_bits;
  localparam wide_bits = double_exponent + 1;       // exponent below zero and above the field
  localparam bias_difference = 896;

  // decide
  wire [double_exponent-1:0] exponent_in = aa[63:53];
  wire [double_fraction-1:0] fraction_in = aa[double_fraction:1];
  wire exponent_is_zero = exponent_in == 0;
  wire exponent_is_ones = &exponent_in;
  wire fraction_is_zero = fraction_in == 0;
  wire [3:0] marks_d =   // sign, nan, zip, sat
    {aa[64], exponent_is_ones & !fraction_is_zero, exponent_is_zero, exponent_is_ones & fraction_is_zero};
  wire [wide_bits-1:0] exponent_d = {1'b0, exponent_in} - bias_difference[wide_bits-1:0];   // two's complement
  wire up_d;
  xfc_round_even #(dropped_bits) round_even
    (fraction_in[dropped_bits], fraction_in[dropped_bits-1:0], 1'b0, up_d);

  wire [3:0] marks;
  wire [wide_bits-1:0] exponent;
  wire [fraction_bits-1:0] kept;
  wire up;
  xfc_register #(4, 1) decide_0 (sysclk, enable, marks_d, marks);
  xfc_register #(wide_bits, 1) decide_1 (sysclk, enable, exponent_d, exponent);
  xfc_register #(fraction_bits, 1) decide_2 (sysclk, enable, fraction_in[double_fraction-1:dropped_bits], kept);
  xfc_register #(1, 1) decide_3 (sysclk, enable, up_d, up);

  // pack
  wire [wide_bits+fraction_bits-1:0] rounded = {exponent, kept} + {{wide_bits+fraction_bits-1{1'b0}}, up};
  wire [wide_bits-1:0] rounded_exponent = rounded[wide_bits+fraction_bits-1:fraction_bits];
  wire below_zero = rounded_exponent[wide_bits-1];
  wire too_small = below_zero | (rounded_exponent == 0);
  wire too_large = !below_zero & ((|rounded_exponent[wide_bits-2:ieee_exponent]) |
                                  (&rounded_exponent[ieee_exponent-1:0]));
  wire flushed = !marks[0] & (marks[1] | too_small);
  wire infinite = marks[0] | too_large;
  wire [31:0] packed_d =
    marks[2] ? 32'h7FC00000 :
    flushed ? {marks[3], 31'd0} :
    infinite ? {marks[3], {ieee_exponent{1'b1}}, {fraction_bits{1'b0}}} :
    {marks[3], rounded_exponent[ieee_exponent-1:0], rounded[fraction_bits-1:0]};

  xfc_register #(32, 1) pack_0 (sysclk, enable, packed_d, cc);
endmodule
