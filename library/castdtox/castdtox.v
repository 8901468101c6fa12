// Converts an IEEE double to XFloat: for an adder (target 0), a multiplier (1) or a divider (2). Nearest, to even
// between two, whatever roundconvert is. What is below exponent 1 after rounding is zero, from 960 on it is infinite; a
// subnormal number is zero.
//   step decide:      flags, the exponent with the single's bias, whether to round up
//   step round:       one carry chain through fraction and exponent
//   step range:       zero or infinite; ones' complement of a negative number
//   step complement:  one more makes it the two's complement; a divider takes sign and magnitude
//   step deliver:     the cycle more of doublespeed and roundconvert together
// Latency 4 + doublespeed * roundconvert cycles.
module castdtox
  #(parameter target = 0, roundconvert = 0, doublespeed = 0, mantissa = 32)
  (input sysclk, reset, enable,
   input [64:1] aa,
   output [mantissa+10:1] cc,
   output ccsat, cczip, ccnan);

  generate
    if (target < 0 || target > 2 || roundconvert < 0 || roundconvert > 1 || doublespeed < 0 || doublespeed > 1 ||
        (mantissa != 32 && mantissa != 36))
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam double_exponent = 11;
  localparam double_fraction = 52;
  localparam signs = target == 0 ? 5 : 1;           // the adder has four guard bits
  localparam fraction_bits = mantissa - signs - 1;
  localparam dropped_bits = double_fraction - fraction_bits;
  localparam wide_bits = double_exponent + 1;       // exponent below zero and above the field
  localparam bias_difference = 896;
  localparam deliver_border = doublespeed * roundconvert;

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

  // round
  wire [wide_bits+fraction_bits-1:0] rounded_d = {exponent, kept} + {{wide_bits+fraction_bits-1{1'b0}}, up};

  wire [wide_bits-1:0] leading;
  wire [fraction_bits-1:0] fraction;
  wire [3:0] round_marks;
  xfc_register #(wide_bits, 1) round_0 (sysclk, enable, rounded_d[wide_bits+fraction_bits-1:fraction_bits], leading);
  xfc_register #(fraction_bits, 1) round_1 (sysclk, enable, rounded_d[fraction_bits-1:0], fraction);
  xfc_register #(4, 1) round_2 (sysclk, enable, marks, round_marks);

  // range: exponents from 960 on have their four high bits set; they are infinite
  wire below_zero = leading[wide_bits-1];
  wire too_small = below_zero | (leading == 0);
  wire too_large = !below_zero & (leading[wide_bits-2] | (&leading[exponent_bits-1:exponent_bits-4]));
  wire [3:0] range_marks_d =
    {round_marks[3:2], !round_marks[2] & !round_marks[0] & (round_marks[1] | too_small),
     !round_marks[2] & (round_marks[0] | (too_large & !round_marks[1]))};
  wire complements = target == 2 ? 1'b0 : round_marks[3];
  wire [fraction_bits:0] significand_d = {1'b1, fraction} ^ {fraction_bits+1{complements}};

  wire [exponent_bits-1:0] range_exponent;
  wire [fraction_bits:0] significand;
  wire [3:0] range_marks;
  xfc_register #(exponent_bits, 1) range_0 (sysclk, enable, leading[exponent_bits-1:0], range_exponent);
  xfc_register #(fraction_bits + 1, 1) range_1 (sysclk, enable, significand_d, significand);
  xfc_register #(4, 1) range_2 (sysclk, enable, range_marks_d, range_marks);

  // complement: the significand is never zero, so nothing is carried into the sign
  wire increment = target == 2 ? 1'b0 : range_marks[3];
  wire [fraction_bits:0] sum = significand + {{fraction_bits{1'b0}}, increment};

  wire [mantissa+exponent_bits-1:0] value;
  wire [2:0] flags, flags_cc;
  xfc_register #(mantissa + exponent_bits, 1) complement_0
    (sysclk, enable, {{signs{range_marks[3]}}, sum, range_exponent}, value);
  xfc_register #(3, 1) complement_1 (sysclk, enable, range_marks[2:0], flags);

  // deliver
  xfc_register #(mantissa + exponent_bits, deliver_border) deliver_0 (sysclk, enable, value, cc);
  xfc_register #(3, deliver_border) deliver_1 (sysclk, enable, flags, flags_cc);

  assign ccsat = flags_cc[0];
  assign cczip = flags_cc[1];
  assign ccnan = flags_cc[2];
endmodule
