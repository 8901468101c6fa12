// Converts an XFloat value in adder form to an IEEE single: nearest, to even between two. What is below the smallest
// normal number after rounding is zero, what is too large is infinite; nan is 7FC00000. Exponent field 0 is zero.
//   step complement:  ones' complement of a negative mantissa, one low unit short of its magnitude
//   step count:       leading zeros
//   step coarse:      shift left by whole bytes; the exponent of the leading one
//   step fine:        shift left by single bits
//   step decide:      whether to round up; a mantissa of nothing but zeros is zero
//   step round:       one carry chain for rounding, for the missing unit and into the exponent
//   step pack:        range and flags
// Latency 3 + 2 * normspeed cycles: without the registers behind complement and decide when normspeed is 1.
module xfc_round_xfloat
  #(parameter mantissa = 32, normspeed = 2)
  (input sysclk, reset, enable,
   input [mantissa+10:1] aa,
   input aasat, aazip, aanan,
   output [32:1] cc);

  generate
    if ((mantissa != 32 && mantissa != 36) || normspeed < 1 || normspeed > 2)
      parameter_missing_or_out_of_range refused ();
  endgenerate
  wire unused = &{1'b0, reset};

  localparam exponent_bits = 10;
  localparam guard_bits = 4;
  localparam fraction_bits = 23;
  localparam ieee_exponent = 8;
  localparam magnitude_bits = mantissa - 1;
  localparam dropped_bits = magnitude_bits - fraction_bits - 1;
  localparam fine_levels = 3;                       // distances below 8
  localparam levels = 5 + mantissa / 36;            // enough to count and shift magnitude_bits
  localparam coarse_levels = levels - fine_levels;
  localparam wide_bits = exponent_bits + 2;         // exponent below zero and above the field
  localparam optional_border = normspeed - 1;

  // complement
  wire [mantissa-1:0] mantissa_in = aa[mantissa+exponent_bits:exponent_bits+1];
  wire sign = mantissa_in[mantissa-1];
  wire [magnitude_bits-1:0] magnitude_d = mantissa_in[magnitude_bits-1:0] ^ {magnitude_bits{sign}};
  wire [exponent_bits-1:0] exponent_d = aa[exponent_bits:1];
  wire zero = aazip | (exponent_d == 0);
  wire [3:0] marks_d = {sign, aanan, zero, aasat};   // sign, nan, zip, sat

  wire [magnitude_bits-1:0] magnitude;
  wire [exponent_bits-1:0] exponent;
  wire [3:0] marks;
  xfc_register #(magnitude_bits, optional_border) complement_0 (sysclk, enable, magnitude_d, magnitude);
  xfc_register #(exponent_bits, optional_border) complement_1 (sysclk, enable, exponent_d, exponent);
  xfc_register #(4, optional_border) complement_2 (sysclk, enable, marks_d, marks);

  // count
  wire [levels-1:0] zeros_d;
  xfc_leading_zeros #(magnitude_bits, levels) count_zeros (magnitude, zeros_d);

  wire [levels-1:0] zeros;
  wire [magnitude_bits-1:0] count_magnitude;
  wire [exponent_bits-1:0] count_exponent;
  wire [3:0] count_marks;
  xfc_register #(levels, 1) count_0 (sysclk, enable, zeros_d, zeros);
  xfc_register #(magnitude_bits, 1) count_1 (sysclk, enable, magnitude, count_magnitude);
  xfc_register #(exponent_bits, 1) count_2 (sysclk, enable, exponent, count_exponent);
  xfc_register #(4, 1) count_3 (sysclk, enable, marks, count_marks);

  // coarse: a negative mantissa is followed by ones, for the missing unit belongs to its lowest bit
  wire [magnitude_bits-1:0] coarse_d;
  xfc_shift_left #(magnitude_bits, coarse_levels, 1 << fine_levels) shift_coarse
    (count_magnitude, zeros[levels-1:fine_levels], count_marks[3], coarse_d);
  wire [wide_bits-1:0] leading_d =   // two's complement
    {2'b00, count_exponent} + guard_bits[wide_bits-1:0] - {{wide_bits-levels{1'b0}}, zeros};

  wire [magnitude_bits-1:0] coarse;
  wire [wide_bits-1:0] leading;
  wire [fine_levels-1:0] fine_zeros;
  wire [3:0] coarse_marks;
  xfc_register #(magnitude_bits, 1) coarse_0 (sysclk, enable, coarse_d, coarse);
  xfc_register #(wide_bits, 1) coarse_1 (sysclk, enable, leading_d, leading);
  xfc_register #(fine_levels, 1) coarse_2 (sysclk, enable, zeros[fine_levels-1:0], fine_zeros);
  xfc_register #(4, 1) coarse_3 (sysclk, enable, count_marks, coarse_marks);

  // fine
  wire [magnitude_bits-1:0] normal_d;
  xfc_shift_left #(magnitude_bits, fine_levels, 1) shift_fine (coarse, fine_zeros, coarse_marks[3], normal_d);

  wire [magnitude_bits-1:0] normal;
  wire [wide_bits-1:0] fine_exponent;
  wire [3:0] fine_marks;
  xfc_register #(magnitude_bits, 1) fine_0 (sysclk, enable, normal_d, normal);
  xfc_register #(wide_bits, 1) fine_1 (sysclk, enable, leading, fine_exponent);
  xfc_register #(4, 1) fine_2 (sysclk, enable, coarse_marks, fine_marks);

  // decide
  wire up_d;
  xfc_round_even #(dropped_bits) round_even (normal[dropped_bits], normal[dropped_bits-1:0], fine_marks[3], up_d);
  wire [3:0] decide_marks_d = {fine_marks[3:2], fine_marks[1] | !normal[magnitude_bits-1], fine_marks[0]};

  wire up;
  wire [fraction_bits-1:0] kept;
  wire [wide_bits-1:0] decide_exponent;
  wire [3:0] decide_marks;
  xfc_register #(1, optional_border) decide_0 (sysclk, enable, up_d, up);
  xfc_register #(fraction_bits, optional_border) decide_1
    (sysclk, enable, normal[magnitude_bits-2:dropped_bits], kept);
  xfc_register #(wide_bits, optional_border) decide_2 (sysclk, enable, fine_exponent, decide_exponent);
  xfc_register #(4, optional_border) decide_3 (sysclk, enable, decide_marks_d, decide_marks);

  // round
  wire [wide_bits+fraction_bits-1:0] rounded_d = {decide_exponent, kept} + {{wide_bits+fraction_bits-1{1'b0}}, up};

  wire [wide_bits+fraction_bits-1:0] rounded;
  wire [3:0] round_marks;
  xfc_register #(wide_bits + fraction_bits, 1) round_0 (sysclk, enable, rounded_d, rounded);
  xfc_register #(4, 1) round_1 (sysclk, enable, decide_marks, round_marks);

  // pack
  wire [wide_bits-1:0] rounded_exponent = rounded[wide_bits+fraction_bits-1:fraction_bits];
  wire below_zero = rounded_exponent[wide_bits-1];
  wire too_small = below_zero | (rounded_exponent == 0);
  wire too_large = !below_zero & ((|rounded_exponent[wide_bits-2:ieee_exponent]) |
                                  (&rounded_exponent[ieee_exponent-1:0]));
  wire flushed = !round_marks[0] & (round_marks[1] | too_small);
  wire infinite = round_marks[0] | too_large;
  wire [31:0] packed_d =
    round_marks[2] ? 32'h7FC00000 :
    flushed ? {round_marks[3], 31'd0} :
    infinite ? {round_marks[3], {ieee_exponent{1'b1}}, {fraction_bits{1'b0}}} :
    {round_marks[3], rounded_exponent[ieee_exponent-1:0], rounded[fraction_bits-1:0]};

  xfc_register #(32, 1) pack_0 (sysclk, enable, packed_d, cc);
endmodule
